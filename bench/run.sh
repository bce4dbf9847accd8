#!/usr/bin/env bash
# Times the program beside what it is compared with, and says whether it meets its goals:
#   bench/run.sh [rounds]    40 rounds unless told otherwise, after five that do not count
# Installs what the machine lacks and builds first. The table is printed and written to
# bench/results.md. Fails when a goal is missed. The machine should have nothing else to do.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

rounds=${1:-40}
[[ $rounds =~ ^[1-9][0-9]*$ ]] || { sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "$0" >&2; exit 2; }

say "setting up"
scripts/setup.sh demo x86 || fail "the set-up failed"
say "building"
mkdir -p build/bench
cmake --preset x86-release >build/bench/configure.log 2>&1 ||
    { cat build/bench/configure.log >&2; fail "the build could not be configured"; }
cmake --build --preset x86-release --target bench standin/all -j "$(nproc)" >&2
# Static: it runs among the 32-bit files of Wine too.
g++ -std=c++20 -O2 -static -Wall -Wextra -Wconversion bench/side_by_side.cpp \
    -o build/bench/side_by_side
for count in 1000 10000 100000; do
    [ -f "build/bench/$count.made" ] ||
        cmake "-DFOLDER=$top/build/bench/$count" "-DCOUNT=$count" \
            -P tests/windows/MakeRecordings.cmake
    touch "build/bench/$count.made"
done

export CORVANE_WINEPREFIX=$top/build/wine/bench
exec scripts/with-desktop.sh x86 bench/story.sh "$rounds"
