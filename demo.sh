#!/usr/bin/env bash
# Shows Corvane to 3CX at work with the practice GoldMine: ./demo.sh [x86|x64]
# Installs what the machine lacks, builds, plays inbound calls and an outbound one, and prints what the
# program, GoldMine and 3CX did. The exit code is 1 when something did not go as told. The screenshots
# and the program's log are left in build/demo/.
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=scripts/common.sh
. scripts/common.sh

architecture=${1:-x86}
case $architecture in
x86 | x64) ;;
*) echo "usage: ${0##*/} [x86|x64]" >&2; exit 2 ;;
esac

say "setting up"
scripts/setup.sh demo "$architecture" || fail "the set-up failed"

say "building $architecture-release"
mkdir -p build/demo
cmake --preset "$architecture-release" >build/demo/configure.log 2>&1 ||
    { cat build/demo/configure.log >&2; fail "the build could not be configured"; }
cmake --build --preset "$architecture-release" --target src/all standin/all -j "$(nproc)" >&2

# A Wine prefix of its own, so that tests and demonstration do not see each other's settings.
export CORVANE_WINEPREFIX=$top/build/wine/demo-$architecture
exec scripts/with-desktop.sh "$architecture" scripts/demo-story.sh "$architecture"
