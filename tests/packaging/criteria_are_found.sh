#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# criteria_are_found.sh LIBDIR WORK: the installed library finds the criteria sets that were installed with it.
set -euo pipefail
libdir=$1 work=$2

rm -rf "$work"
mkdir -p "$work"
export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags taviwidgets)
"$CXX" -std=c++20 -fPIC consumer/criteria.cpp -o "$work/criteria" "${flags[@]}" -L"$libdir" -lTavilib
# Those of this machine's user and system would hide that ours are missing.
said=$(env -u TAVI_CRITERIA_PATH XDG_DATA_HOME="$work" XDG_DATA_DIRS="$work" LD_LIBRARY_PATH="$libdir" \
    "$work/criteria")
echo "$said"
[[ $said == $'iso12647-7-2007\niso12647-7-2016' ]] || { echo "expected: both editions" >&2; exit 1; }
