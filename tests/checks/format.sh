#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# format.sh: every source is as clang-format leaves it. To mend: clang-format-14 -i FILE
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/checks/own_files.sh

mapfile -d '' -t files < <(own_files '*.h' '*.cpp' '*.c')
expect_files 20 "${#files[@]}"
printf '%s\0' "${files[@]}" | xargs -0 -n 20 -P "$(nproc)" clang-format-14 --style=file --dry-run -Werror
echo "${#files[@]} files are formatted"
