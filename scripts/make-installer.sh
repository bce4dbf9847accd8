#!/usr/bin/env bash
# Makes the set-up out of a build: make-installer.sh <x86|x64> <payload folder> <set-up.exe> [version]
# The payload is what scripts/collect-payload.sh has put together. The x86 one is shipped; the x64 one
# is for the tests on machines whose Wine has no 32-bit side. CORVANE_SIGN names a command that signs
# the files whose names follow it; another version than the program's is for tests of upgrades.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -ge 3 ] || { echo "usage: ${0##*/} <x86|x64> <payload folder> <set-up.exe> [version]" >&2; exit 2; }
architecture=$1
payload=$(realpath "$2")
output=$(realpath -m "$3")
version=${4:-$(program_version)}
case $architecture in
x86) cpu=x86-unicode ;;
x64) cpu=amd64-unicode ;;
*) fail "no such architecture: $architecture" ;;
esac

defines=("-DVERSION=$version" "-DPAYLOAD=$payload" "-DOUTPUT=$output" "-DCPU=$cpu"
    "-DLIBRARY=$top/build/$architecture-release/packaging/CorvaneSetup.dll"
    "-DICON=$top/src/resources/CorvaneTo3CX.ico")
[ -z "${CORVANE_SIGN:-}" ] || defines+=("-DSIGN=$CORVANE_SIGN")
mkdir -p "$(dirname "$output")"
makensis -V2 -WX -NOCONFIG -INPUTCHARSET UTF8 "${defines[@]}" "$top/packaging/installer/CorvaneTo3CX.nsi" >&2 ||
    fail "the set-up could not be made"
