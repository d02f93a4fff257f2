#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# installed_headers_stand_alone.sh INCLUDEDIR: each installed header compiles by itself, the C headers as C too.
set -euo pipefail
cd "$1"

# As the headers of the system, which they are: what they are warned of is not ours.
read -ra qt < <(pkg-config --cflags Qt5Widgets | sed 's/-I/-isystem /g')
warnings=(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror)
mapfile -t headers < <(find . -name '*.h' | sort)
((${#headers[@]} > 10)) || { echo "only ${#headers[@]} headers are installed" >&2; exit 1; }

printf '%s\0' "${headers[@]}" |
    xargs -0 -P 2 -I '{}' "$CXX" -std=c++20 -fPIC -fsyntax-only "${warnings[@]}" -I . "${qt[@]}" -include '{}' -x c++ /dev/null
for header in tavilib/tavirecords.h tavilib/instrumentplugin.h; do
    "$CC" -std=c11 -fsyntax-only "${warnings[@]}" -I . -include "$header" -x c /dev/null
done
echo "${#headers[@]} headers stand alone"
