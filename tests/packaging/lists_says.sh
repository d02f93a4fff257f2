#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# lists_says.sh PROGRAM: the consumer of libtaviqt3 alone runs and prints what it put into a list.
set -euo pipefail

said=$("$1")
echo "$said"
[[ $said == $'cyan\nmagenta' ]] || { echo "expected: cyan, magenta" >&2; exit 1; }
