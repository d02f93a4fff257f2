#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# other_versions_are_refused.sh CMAKE PREFIX WORK VERSION: a minor version stands for one interface.
set -euo pipefail
cmake=$1 prefix=$2 work=$3 version=$4
IFS=. read -r major minor _ <<<"$version"

configure() {
    rm -rf "$work"
    "$cmake" -S consumer -B "$work" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DWANTED_VERSION="$1" >"$work.log" 2>&1
}

configure "$major.$minor" || { cat "$work.log"; echo "version $major.$minor was refused" >&2; exit 1; }
others=("$major.$((minor + 1))" "$((major + 1)).0")
((minor == 0)) || others+=("$major.$((minor - 1))")
for other in "${others[@]}"; do
    if configure "$other"; then
        echo "version $other was accepted" >&2
        exit 1
    fi
    grep "version: $version" "$work.log" || { cat "$work.log"; exit 1; }
done
