# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# To be sourced. own_files PATTERN...: our files whose names match, each ended by a null byte; known to git or new, or
# where there is no git all but what builds leave. Paths are relative to the project's folder, the current one.
own_files() {
    local pattern names=()
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -z --cached --others --exclude-standard --deduplicate -- "$@" |
            while IFS= read -r -d '' file; do
                if [[ -f $file && $file != *.md ]]; then printf '%s\0' "$file"; fi
            done
    else
        for pattern in "$@"; do names+=(-o -path "./$pattern" -o -path "./*/$pattern"); done
        find . \( -path ./build -o -path ./out -o -path ./.git \) -prune -o \
            -type f ! -name '*.md' \( "${names[@]:1}" \) -printf '%P\0'
    fi
}

# Ends the check where hardly any file was found: then it looked in the wrong place, and its silence means nothing.
expect_files() {
    local wanted=$1 found=$2
    if ((found < wanted)); then
        echo "only $found files were found" >&2
        exit 1
    fi
}
