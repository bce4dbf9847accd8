#!/usr/bin/env bash
# check-tidy.sh [file or folder ...]: fails when clang-tidy finds something in the program, its
# set-up or the practice GoldMine, or in what is named, and then says what; .clang-tidy says what it looks for.
# Needs no build: the flags stand here, those of MinGW for what talks to Windows.
#
# The tests are left out: with GoogleTest's headers, they would take several times as long as all
# the rest. For the sake of time, too, templates that nobody uses stay unread, and the analyzer
# follows calls a few steps deep only.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"
command -v clang-tidy >/dev/null || fail "no clang-tidy here: run scripts/setup.sh test"
mingw=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
sqlite=build/_deps/sqlite
[ -f "$sqlite/sqlite3.h" ] || scripts/get-sqlite.sh "$sqlite"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The version's numbers do not matter here.
sed 's/@[A-Z_]*@/0/' cmake/Version.h.in >"$work/Version.h"

# tidy <file>: what clang-tidy says of the file, when that is anything.
tidy() {
    local flags=(-std=c++20 -Wall -Wextra -Wreserved-identifier -Wzero-as-null-pointer-constant
        -fdelayed-template-parsing -Xclang -analyzer-config -Xclang mode=shallow)
    case $1 in
    src/platform/* | src/ui/window/* | src/app/main.cpp | src/check/platform/* | src/check/main.cpp | \
        standin/* | packaging/*)
        # As in cmake/ProjectOptions.cmake; the extensions are for __uuidof.
        flags+=(--target=x86_64-w64-windows-gnu -fms-extensions -nostdlibinc
            -isystem "$mingw" -isystem "$mingw/x86_64-w64-mingw32"
            -isystem /usr/x86_64-w64-mingw32/include
            -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN -DNOMINMAX
            -D_WIN32_WINNT=0x0601 -DWINVER=0x0601)
        ;;
    esac
    case $1 in
    standin/*) flags+=(-Istandin -isystem "$sqlite") ;;
    *) flags+=(-Isrc -Ipackaging -I"$work") ;;
    esac
    local said
    said=$(clang-tidy --quiet "$1" -- "${flags[@]}" 2>&1) || { printf '%s\n' "$said"; return 1; }
}
export -f tidy
export mingw sqlite work

# The largest first, so that no core waits long for another at the end. A finding in a header is
# found by all who include it, and told once.
if [ $# -eq 0 ]; then
    set -- cmake packaging src standin
fi
find "$@" -name '*.cpp' -printf '%s %p\n' | sort -rn | cut -d' ' -f2 |
    xargs -P "$(nproc)" -I{} bash -c 'tidy {}' |
    awk '/: (warning|error): / { told = seen[$0]++ } !told' >&2
