#!/usr/bin/env bash
# check-tidy.sh [file or folder ...]: fails when clang-tidy finds something in the program, its
# set-up or the practice GoldMine, or in what is named, and then says what; .clang-tidy says what it looks for.
# Needs no build: the flags stand here, those of MinGW for what talks to Windows.
#
# Many sources are read as one unit: most of the time goes into the headers, which are then read once.
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

# unit_of <file>: the unit that it is read in. Of entry points there can be one in each.
unit_of() {
    case $1 in
    */main.cpp | standin/tools/* | cmake/*) echo "${1//\//.}" ;;
    standin/*) echo standin.cpp ;;
    packaging/* | src/platform/* | src/ui/window/* | src/check/platform/*) echo windows.cpp ;;
    src/check/*) echo check.cpp ;;
    *) echo program.cpp ;;
    esac
}

# tidy <unit>: what clang-tidy says of it, when that is anything, at the places in the sources.
tidy() {
    local flags=(-std=c++20 -Wall -Wextra -Wreserved-identifier -Wzero-as-null-pointer-constant
        -fdelayed-template-parsing -Xclang -analyzer-config -Xclang mode=shallow)
    case $1 in
    windows.cpp | src.* | packaging.* | standin*)
        # As in cmake/ProjectOptions.cmake; the extensions are for __uuidof.
        flags+=(--target=x86_64-w64-windows-gnu -fms-extensions -nostdlibinc
            -isystem "$mingw" -isystem "$mingw/x86_64-w64-mingw32"
            -isystem /usr/x86_64-w64-mingw32/include
            -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN -DNOMINMAX
            -D_WIN32_WINNT=0x0601 -DWINVER=0x0601)
        ;;
    esac
    case $1 in
    standin*) flags+=(-Istandin -isystem "$sqlite") ;;
    *) flags+=(-Isrc -Ipackaging -I"$work") ;;
    esac
    local unit=$work/units/$1 said
    said=$(clang-tidy --quiet --config-file=.clang-tidy "$unit" -- "${flags[@]}" 2>&1) || {
        awk -F: -v OFS=: -v unit="$unit" '
            NR == FNR && /^#line/ { split($0, part, "\""); first = FNR }
            NR == FNR { file[FNR] = part[2]; line[FNR] = FNR - first; next }
            $1 == unit { at = $2; $1 = file[at]; $2 = line[at] }
            1' "$unit" - <<<"$said"
        return 1
    }
}
export -f tidy
export mingw sqlite work

# The sources stand in their unit rather than being included: some checks look at no included file.
[ $# -gt 0 ] || set -- cmake packaging src standin
mkdir "$work/units"
find "$@" -name '*.cpp' | LC_ALL=C sort | while read -r file; do
    { printf '#line 1 "%s"\n' "$file" && cat "$file"; } >>"$work/units/$(unit_of "$file")"
done
[ -n "$(ls "$work/units")" ] || fail "no source here: $*"

# The largest first, so that no core waits long for another at the end. A finding in a header is
# found by all who include it, and told once.
find "$work/units" -type f -printf '%s %f\n' | sort -rn | cut -d' ' -f2 |
    xargs -P "$(nproc)" -I{} bash -c 'tidy {}' |
    awk '/: (warning|error): / { told = seen[$0]++ } !told' >&2
