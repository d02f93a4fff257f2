#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# base_libraries_of_a_suite.sh CMAKE SOURCE PREFIX WORK: with TAVI_BASE_LIBRARIES=system the base libraries are taken
# from where a suite is installed, and a reader is told what to do where they are not.
set -euo pipefail
cmake=$1 source=$2 prefix=$3 work=$4

configure() {
    rm -rf "$work"
    "$cmake" -S "$source" -B "$work" -G Ninja -DTAVI_BASE_LIBRARIES=system -DTAVI_BUILD_TESTS=OFF \
        -DTAVI_BUILD_APPS=OFF -DTAVI_BUILD_BENCH=OFF "$@" 2>&1 | tee "$work.log"
}

# Libraries are looked for in an empty folder only, whatever this machine has.
if configure -DCMAKE_FIND_ROOT_PATH="$work" -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY; then
    echo "configured without a suite" >&2
    exit 1
fi
grep -q "TAVI_BASE_LIBRARIES=bundled" "$work.log" ||
    { echo "the message does not tell what to do" >&2; exit 1; }

configure -DCMAKE_PREFIX_PATH="$prefix"
grep -F "$prefix" "$work/CMakeCache.txt" | grep TaviBase_LIB_LIBRARY
