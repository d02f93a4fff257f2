#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# readme_example_compiles.sh LIBDIR README WORK: the README's first program compiles and links as it stands.
set -euo pipefail
libdir=$1 readme=$2 work=$3

mkdir -p "$work"
awk '/^```cpp$/ { inside = 1; next } /^```$/ { if (inside) exit } inside' "$readme" >"$work/example.cpp"
grep -q 'SpectroBuddy buddy' "$work/example.cpp" || { echo "the example is not where it was" >&2; exit 1; }
export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags --libs taviwidgets)
"$CXX" -std=c++20 -fPIC -Wall -Wextra -Werror "$work/example.cpp" -o "$work/example" "${flags[@]}"
