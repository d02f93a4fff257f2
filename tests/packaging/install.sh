#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# install.sh CMAKE BUILD PREFIX LIBDIR: installs what was built, and moves it, so that whatever names the place of
# installation breaks in the tests that use the tree.
set -euo pipefail
cmake=$1 build=$2 prefix=$3 libdir=$4

rm -rf "$prefix" "$prefix-before-move"
"$cmake" --install "$build" --prefix "$prefix-before-move"
mv "$prefix-before-move" "$prefix"

if find "$prefix" -name '*_p.h' | grep .; then
    echo "private headers are installed" >&2
    exit 1
fi
for file in pkgconfig/taviwidgets.pc cmake/TaviWidgets/TaviWidgetsConfig.cmake; do
    [[ -f $libdir/$file ]] || { echo "$file is not installed" >&2; exit 1; }
done
find "$prefix/share/doc" -name LICENSE | grep . || { echo "LICENSE is not installed" >&2; exit 1; }
