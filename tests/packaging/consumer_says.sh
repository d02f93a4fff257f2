#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumer_says.sh PROGRAM: the consumer runs and prints what the libraries should have told it.
set -euo pipefail

said=$(QT_QPA_PLATFORM=offscreen "$1")
echo "$said"
expected="Spectrophotometer (offline) 50"
[[ $said == "$expected" ]] || { echo "expected: $expected" >&2; exit 1; }
