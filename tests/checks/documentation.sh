#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# documentation.sh DOXYFILE OUTPUT: the reference of the installed headers is made without an error, and every class
# and operation in it is documented. OUTPUT/html/index.html is the reference.
#
# Left out, because a comment there would only echo the name: fields and type names, what namespace detail holds,
# construction and assignment, and an overload that stands right below its documented sister.
set -euo pipefail
doxyfile=$1 output=$2

rm -rf "$output"
mkdir -p "$output"
doxygen "$doxyfile" >"$output/log" 2>&1 || { cat "$output/log" >&2; exit 1; }

# Whether line $2 of header $1 declares an overload of $3 within the four lines above it.
below_its_sister() {
    local from=$(($2 > 4 ? $2 - 4 : 1))
    sed -n "${from},$(($2 - 1))p" "$1" | grep -qE "(^|[^A-Za-z0-9_])$3\("
}

excused() {
    local file line name
    [[ $1 == *" is not documented." ]] || return 1
    [[ $1 == *"of namespace "*"::detail is not"* ]] && return 0
    [[ $1 =~ \((variable|typedef|enumvalue)\)\ of\  ]] && return 0
    [[ $1 =~ ^(.*):([0-9]+):\ .*Member\ ([^ \(]+)\( ]] || return 1
    file=${BASH_REMATCH[1]} line=${BASH_REMATCH[2]} name=${BASH_REMATCH[3]}
    [[ $name == operator= || $1 =~ \ of\ (class|struct)\ ([A-Za-z0-9_]+::)*~?"${name#\~}"\ is\ not ]] && return 0
    below_its_sister "$file" "$line" "$name"
}

failures=0
# Doxygen does not miss comments on the functions of a file that says nothing of itself.
mapfile -t headers < <(sed -n '/^INPUT /,/[^\\]$/p' "$doxyfile" | grep -oE '/[^ ]+\.h')
for header in "${headers[@]}"; do
    if grep -qE '^(TAVI[A-Z0-9]*_EXPORT|extern "C"|inline) ?' "$header" && ! grep -q '@file' "$header"; then
        echo "$header: declares functions and has no @file" >&2
        failures=$((failures + 1))
    fi
done
((${#headers[@]} > 10)) || { echo "only ${#headers[@]} headers were read" >&2; exit 1; }

while IFS= read -r text; do
    [[ -n $text ]] || continue
    excused "$text" && continue
    echo "$text" >&2
    failures=$((failures + 1))
done <"$output/log"
echo "$failures findings"
exit $((failures > 0))
