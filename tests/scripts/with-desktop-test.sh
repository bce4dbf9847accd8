#!/usr/bin/env bash
# What scripts/with-desktop.sh does to what it finds, and to what hangs: it deletes nobody's folder, a
# session that was killed is not in the way of the next one, and a program that hangs says where.
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd -P)
work=$(mktemp -d)
xvfb=
link=$top/build/wine/link-of-a-test.$$
trap '[ -z "$xvfb" ] || kill "$xvfb" || :; rm -rf "$work" "$link"' EXIT
failed() { echo "FAILED: $*" >&2; exit 1; }
desktop() { "$top/scripts/with-desktop.sh" x64 "$@"; }

mkdir -p "$work/home" "$top/build/wine"
echo precious >"$work/home/letter"
ln -s "$work/home" "$link"
for prefix in "$work/home" "$link" "$top/build/wine/$(realpath --relative-to "$top/build/wine" "$work/home")"; do
    answer=0
    CORVANE_WINEPREFIX=$prefix desktop true 2>"$work/said" || answer=$?
    [ "$answer" -eq 1 ] || failed "$prefix was taken for a prefix (exit code $answer)"
    grep -q "stays as it is" "$work/said" || failed "not said why: $(cat "$work/said")"
    [ "$(ls -A "$work/home")" = letter ] || failed "the folder holds $(ls -A "$work/home")"
done

# The session kills itself; its server stays, and so would its display but for the test.
# shellcheck disable=SC2016  # The session's shell expands its own variables.
desktop sh -c 'pgrep -P "$PPID" -x Xvfb >"$0"; kill -9 "$PPID"' "$work/xvfb" 2>/dev/null && failed "it lived on"
xvfb=$(cat "$work/xvfb")
desktop true || failed "a session after a killed one does not begin"

# A program that hangs ends with what it was at, and one that does not as if nobody had waited.
answer=0
CORVANE_STACKS_AFTER=2 desktop "$top/scripts/wine-x64.sh" wineboot.exe || failed "a program that ends failed"
CORVANE_STACKS_AFTER=2 desktop "$top/scripts/wine-x64.sh" notepad.exe >"$work/said" 2>&1 || answer=$?
[ "$answer" -eq 124 ] || failed "a hanging program ended with $answer"
grep -q 'Backtracing for thread .*notepad\.exe' "$work/said" || failed "no stacks: $(cat "$work/said")"
