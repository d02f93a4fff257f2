#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumer_with_cmake.sh CMAKE PREFIX WORK: a project that says find_package(TaviWidgets) builds and runs.
set -euo pipefail
cmake=$1 prefix=$2 work=$3

rm -rf "$work"
"$cmake" -S consumer -B "$work" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
"$cmake" --build "$work"
./lists_says.sh "$work/lists"
exec ./consumer_says.sh "$work/consumer"
