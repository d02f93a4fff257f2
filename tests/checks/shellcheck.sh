#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# No findings of shellcheck in the shell scripts.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/checks/own_files.sh

mapfile -d '' -t files < <(own_files '*.sh' 'script/*' '.ci/*')
expect_files 10 "${#files[@]}"
shellcheck "${files[@]}"
echo "${#files[@]} scripts are clean"
