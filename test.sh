#!/usr/bin/env bash
# Builds everything and runs every test; installs what the machine lacks first.
#   ./test.sh                                all three: native, x64, x86
#   ./test.sh native|x64|x86 [ctest args]    one of them
#
#   native  the parts without Windows headers, under AddressSanitizer and UBSan
#   x64     the 64-bit programs under Wine: unit, Windows and end-to-end tests
#   x86     the same with the 32-bit programs
# Fails when any of them fails, and when there is no Wine for one of them.
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=scripts/common.sh
. scripts/common.sh

kinds=(native x64 x86)
case ${1:-} in
'') ;;
native | x64 | x86)
    kinds=("$1")
    shift
    ;;
*)
    sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "$0" >&2
    exit 2
    ;;
esac

began=$SECONDS
needs_x86=
[[ " ${kinds[*]} " != *" x86 "* ]] || needs_x86=x86
say "setting up"
scripts/setup.sh test $needs_x86 || fail "the set-up failed"
mkdir -p build/test

# build <preset> <log>: shows each step on a terminal; elsewhere, where a failure must be easy to
# find, how far it is now and then, and what a failed build printed.
build() {
    local command=(cmake --build --preset "$1" -j "$(nproc)")
    if [ -t 1 ]; then
        "${command[@]}"
    else
        "${command[@]}" 2>&1 | tee "$2" | awk '
            /^\[[0-9]+\/[0-9]+\]/ && systime() - told >= 20 {
                told = systime()
                print "   built " $1
                fflush()
            }' || { cat "$2" >&2; return 1; }
    fi
}

# build_kind <native|x64|x86>
build_kind() {
    local preset
    preset=$(preset_of "$1")
    say "$preset: configure and build ($((SECONDS - began)) s so far)"
    cmake --preset "$preset" >"build/test/$1.configure.log" 2>&1 ||
        { cat "build/test/$1.configure.log" >&2; return 1; }
    build "$preset" "build/test/$1.build.log"
}

preset_of() { [ "$1" = native ] && echo native-asan || echo "$1-release"; }

# test_kind <native|x64|x86> [ctest args]: ctest's end goes into a file. The tests of a Windows
# desktop wait more than they work, so others run beside them, though it has one core.
test_kind() {
    local kind=$1 desktop=() jobs=2
    shift
    if [ "$kind" = native ]; then
        jobs=$(nproc)
    else
        desktop=(scripts/with-desktop.sh "$kind")
    fi
    say "$kind: tests ($((SECONDS - began)) s so far)"
    "${desktop[@]}" ctest --preset "$(preset_of "$kind")" -V -j "$jobs" "$@" 2>&1 |
        tee "build/test/$kind.log" |
        awk -v "kind=$kind" -f scripts/ctest-lines.awk -f scripts/test-output.awk
}

failed=()
built=()
for kind in "${kinds[@]}"; do
    rm -f "build/test/$kind.log"
    if build_kind "$kind"; then
        built+=("$kind")
    else
        failed+=("$kind")
    fi
done

# The native tests take all cores; then each of the Windows desktops takes its own, in a process
# group that can be ended whole.
declare -A running
end_tests() {
    local kind
    for kind in "${!running[@]}"; do
        kill -- "-${running[$kind]}" 2>/dev/null || :
    done
    exit 130
}
[[ " ${built[*]} " != *" native "* ]] || test_kind native "$@" || failed+=(native)
trap end_tests INT TERM
set -m
for kind in "${built[@]}"; do
    [ "$kind" != native ] || continue
    test_kind "$kind" "$@" </dev/null &
    running[$kind]=$!
done
set +m
for kind in "${!running[@]}"; do
    wait "${running[$kind]}" || failed+=("$kind")
done

say "summary"
for kind in "${kinds[@]}"; do
    printf '\n%s\n' "$kind"
    if [ -f "build/test/$kind.log" ]; then
        sed -n '/tests passed\|tests failed\|No tests were found\|Total Test time/p' \
            "build/test/$kind.log"
    else
        echo "not tested: it did not build"
    fi
done

echo
if [ "${#failed[@]}" -gt 0 ]; then
    for kind in "${failed[@]}"; do
        [ ! -f "build/test/$kind.log" ] ||
            awk -f scripts/ctest-lines.awk -f scripts/test-failures.awk "build/test/$kind.log" |
            sed "s/^/$kind:/"
    done
    echo "FAILED: ${failed[*]} (after $((SECONDS - began)) s)"
    exit 1
fi
echo "PASSED: ${kinds[*]} (after $((SECONDS - began)) s)"
