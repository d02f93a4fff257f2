#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# with_display.sh: what script/with-display promises beside the display itself, which tst_testdisplay looks at.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit 1
# As a first one, even inside another.
unset TAVI_DISPLAY_SCREENS DISPLAY
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
failures=0

check() {
    local name=$1
    shift
    if "$@"; then echo "passed: $name"; else
        echo "FAILED: $name" >&2
        failures=$((failures + 1))
    fi
}
status_of() { "$@" >/dev/null 2>&1; echo $?; }
is() { [[ $1 == "$2" ]] || { echo "'$1' is not '$2'" >&2; false; }; }
nothing_left() { is "$(ls -A "$TMPDIR")" ""; }

check "the status of the command is handed on" is "$(status_of script/with-display bash -c 'exit 7')" 7
check "a command killed by a signal is told" is "$(status_of script/with-display bash -c 'kill -KILL $$')" 137
check "a command that is not there is told" is "$(status_of script/with-display ./no-such-command)" 127
check "without a command it is a usage error" is "$(status_of script/with-display)" 2
check "standard input reaches the command" is "$(echo ink | script/with-display cat)" ink
check "inside another it uses that one" \
    is "$(script/with-display bash -c 'echo $DISPLAY; script/with-display bash -c "echo \$DISPLAY"' | uniq | wc -l)" 1
check "Xvfb alone gives one screen" \
    is "$(TAVI_DISPLAY_SERVER=xvfb script/with-display bash -c 'echo $TAVI_DISPLAY_SCREENS')" 1
check "an unknown server is refused" is "$(TAVI_DISPLAY_SERVER=x status_of script/with-display true)" 125
check "nothing is left behind" nothing_left

# Two at once have displays of their own: each waits until the other has said which.
script/with-display bash -c 'echo $DISPLAY >$TMPDIR/a; until [[ -s $TMPDIR/b ]]; do sleep 0.05; done' &
first=$!
script/with-display bash -c 'echo $DISPLAY >$TMPDIR/b; until [[ -s $TMPDIR/a ]]; do sleep 0.05; done'
second_status=$?
wait "$first"
check "two at once both end well" is "$? $second_status" "0 0"
check "two at once have two displays" is "$(cat "$TMPDIR/a" "$TMPDIR/b" | sort -u | wc -l)" 2
rm -f "$TMPDIR/a" "$TMPDIR/b"

# A signal stops all of it.
script/with-display bash -c 'echo $DISPLAY >$TMPDIR/a; exec sleep 600' &
script=$!
until [[ -s $TMPDIR/a ]]; do sleep 0.05; done
display=$(<"$TMPDIR/a")
kill -TERM "$script"
wait "$script"
check "a signal is told by the status" is "$?" 143
check "a signal ends the server" is "$(DISPLAY=$display status_of xprop -root)" 1
rm -f "$TMPDIR/a"
check "a signal leaves nothing behind" nothing_left

exit $((failures > 0))
