#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# no_path_of_the_build.sh PREFIX SOURCE BUILD: no text file of the installed tree names a folder of this machine, and
# no library or program looks for others outside its own tree.
set -euo pipefail
prefix=$1 source=$2 build=$3
failures=0

if grep -rIF -e "$source" -e "$build" -e "$prefix" "$prefix"; then
    echo "paths of the build are installed" >&2
    failures=1
fi
while IFS= read -r -d '' file; do
    while IFS= read -r path; do
        [[ $path == "\$ORIGIN"* ]] || { echo "$file: looks in '$path'" >&2; failures=1; }
    done < <(readelf -d "$file" 2>/dev/null | sed -n 's/.*(R\(UN\)\{0,1\}PATH).*\[\(.*\)\]/\2/p' | tr : '\n')
done < <(find "$prefix" -type f -print0)
exit "$failures"
