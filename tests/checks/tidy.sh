#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# tidy.sh CMAKE WORK [FILE...]: no findings of clang-tidy in our sources, or in the files named.
#
# It works on a configuration of its own, for clang and without precompiled headers: those of another compiler confuse
# it, and without them a source must include what it uses. A file that was clean is looked at again when it, its
# command, .clang-tidy or any of our headers has changed.
set -euo pipefail
cmake=$1 work=$2
shift 2
cd "$(dirname "$0")/../.."
. tests/checks/own_files.sh

mkdir -p "$work"
"$cmake" -S . -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER=clang-14 \
    -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
    -DCMAKE_GLOBAL_AUTOGEN_TARGET=ON -DCMAKE_AUTOGEN_ORIGIN_DEPENDS=OFF -DTAVI_CCACHE=OFF -DTAVI_TEST_SET=units >/dev/null
"$cmake" --build "$work/build" --target autogen -- --quiet

database=$work/build/compile_commands.json
if (($# == 0)); then
    # What CMake makes in the build folder is not ours to mend.
    mapfile -t files < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$database" | grep -v "^$work/" | sort -u)
    expect_files 10 "${#files[@]}"
else
    files=("$@")
fi

headers=$(own_files '*.h' .clang-tidy | sort -z | xargs -0 cat | sha256sum)
mkdir -p "$work/clean"

tidy() {
    local file=$1 stamp log
    stamp=$work/clean/$({ echo "$headers"; grep -F "$file" "$database"; cat "$file"; } | sha256sum | cut -c1-32)
    [[ ! -f $stamp ]] || return 0
    log=$stamp.log
    if clang-tidy-14 -p "$work/build" --quiet --header-filter="^$PWD/(src|apps|plugins|tests|bench|fuzz)/" \
        "$file" >"$log" 2>&1; then
        mv "$log" "$stamp"
    else
        grep -vE '^[0-9]+ warnings? (generated|treated)' "$log"
        rm -f "$log"
        return 1
    fi
}
export -f tidy
export headers work database

if ! printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'tidy "$0"'; then
    echo "clang-tidy has findings" >&2
    exit 1
fi
echo "${#files[@]} files are clean"
