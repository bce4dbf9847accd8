#!/usr/bin/env bash
# Builds one test program and runs it, or those of its tests that a filter names:
#   one-test.sh <native|x64|x86> <program> [filter]
#   one-test.sh native unit_tests 'DialerTest.*'
# Nothing is installed: ./test.sh has run before.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"

run=()
case ${1:-} in
native) preset=native-asan suffix='' ;;
x64 | x86)
    preset=$1-release suffix=.exe
    run=(scripts/with-desktop.sh "$1" "scripts/wine-$1.sh")
    ;;
*) preset='' ;;
esac
if [ -z "$preset" ] || [ $# -lt 2 ] || [ $# -gt 3 ]; then
    sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "$0" >&2
    exit 2
fi

[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)" --target "$2" >&2
exec "${run[@]}" "build/$preset/tests/$2$suffix" "--gtest_filter=${3:-*}"
