#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# only_our_names_are_exported.sh LIBDIR INCLUDEDIR SOURCE MAJOR: every symbol that a library defines for others is
# declared in an installed header, and each library says its SONAME.
#
# What a private header marks as exported, and the namespace it stands in, is meant for our other libraries and tests,
# and is allowed too.
# Weak symbols are left out: they are instances of other libraries' templates, shared by design. So are the linker's
# own marks of a library's sections.
set -euo pipefail
libdir=$1 includedir=$2 source=$3 major=$4
failures=0

words=$(mktemp)
trap 'rm -f "$words"' EXIT
{
    find "$includedir" -name '*.h' -exec cat {} +
    find "$source/src" -name '*_p.h' -exec grep -lZ _EXPORT {} + | xargs -0 grep -hE '_EXPORT|^namespace [A-Za-z]'
} | grep -oE '[A-Za-z_][A-Za-z0-9_]*' | sort -u >"$words"

# The outermost name of a demangled symbol: "vtable for A::B" and "A::f(int)" give A, "g(int)" gives g.
outermost() {
    sed -E 's/^(vtable for|VTT for|typeinfo for|typeinfo name for|guard variable for|(non-)?virtual thunk to) //
            s/[^A-Za-z0-9_].*//' | sort -u
}

for library in Tavilib taviapp taviqt3 taviwidgets; do
    file=$libdir/lib$library.so
    soname=$(readelf -d "$file" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
    if [[ $soname != "lib$library.so.$major" ]]; then
        echo "$file: SONAME is '$soname'" >&2
        failures=$((failures + 1))
    fi
    names=$(nm -D --defined-only "$file" | awk '$2 ~ /^[A-TX-Z]$/ && $2 != "V" {print $3}' | c++filt | outermost |
        sed -E '/^(__bss_start|_edata|_end|_init|_fini)$/d')
    echo "$soname exports: ${names//$'\n'/ }"
    leaks=$(comm -23 <(echo "$names") "$words" | sed '/^$/d')
    if [[ -n $leaks ]]; then
        echo "$file: exported, but in no installed header: ${leaks//$'\n'/ }" >&2
        failures=$((failures + 1))
    fi
done
exit $((failures > 0))
