#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumer_says.sh PROGRAM: the consumer runs and prints what the libraries should have told it.
set -euo pipefail

said=$("$1")
echo "$said"
[[ $said == "/ink ffffff" ]] || { echo "expected: /ink ffffff" >&2; exit 1; }
