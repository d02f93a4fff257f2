#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# demo.sh: script/demo, without a display, leaves three measured lists and a picture.
set -euo pipefail
cd "$(dirname "$0")/../.."

rm -rf out
env -u DISPLAY -u TAVI_DISPLAY_SCREENS script/demo
expect() {
    local rows
    rows=$(tail -n +2 "out/$1.tsv" | wc -l)
    [[ $rows == "$2" ]] || { echo "out/$1.tsv has $rows patches, not $2" >&2; exit 1; }
    [[ $(head -n 1 "out/$1.tsv") == $'name\tL\ta\tb' ]] || { echo "out/$1.tsv has another header" >&2; exit 1; }
}
expect characterisation 1617
expect labtext 1617
expect strip 72
[[ $(head -c 8 out/proofcheck.png | od -An -c | tr -d ' \n') == '211PNG\r\n032\n' ]] || { echo "no picture" >&2; exit 1; }
