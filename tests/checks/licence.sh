#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# licence.sh: every source, script and CMake file names its licence within its first three lines.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/checks/own_files.sh

mapfile -d '' -t files < <(own_files '*.h' '*.cpp' '*.c' '*.cmake' '*.in' '*.sh' '*CMakeLists.txt' 'script/*' '.ci/*')
expect_files 20 "${#files[@]}"

failures=0
for file in "${files[@]}"; do
    if ! head -n 3 "$file" | grep -q 'SPDX-License-Identifier: MIT'; then
        echo "$file: no line SPDX-License-Identifier: MIT" >&2
        failures=1
    fi
done
((failures)) || echo "${#files[@]} files name their licence"
exit "$failures"
