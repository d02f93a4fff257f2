#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumer_with_pkgconfig.sh LIBDIR WORK: a program built by hand with what pkg-config says runs.
set -euo pipefail
libdir=$1 work=$2

rm -rf "$work"
mkdir -p "$work"
export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags --libs taviwidgets)
"$CXX" -std=c++20 -fPIC consumer/main.cpp -o "$work/consumer" "${flags[@]}"
"$CXX" -std=c++20 -fPIC consumer/lists.cpp -o "$work/lists" "${flags[@]}"
LD_LIBRARY_PATH=$libdir ./lists_says.sh "$work/lists"
LD_LIBRARY_PATH=$libdir exec ./consumer_says.sh "$work/consumer"
