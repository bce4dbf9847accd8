#!/usr/bin/env bash
# Takes a picture of every tab of the settings window, at 96 and at 192 dots per inch:
# screenshots.sh [x86|x64] [folder] [build folder]
#
# The pictures go to build/screenshots unless a folder is named; the build, in
# build/<architecture>-release unless another is named, must have been made. Fails when a picture
# cannot be taken, has not the window's width, or shows next to nothing. The pictures in
# docs/images/ are copies of these.
set -euo pipefail
# shellcheck source=scripts/wine-common.sh
. "$(dirname "$0")/wine-common.sh"

architecture=${1:-x86}
folder=$(realpath -m "${2:-$top/build/screenshots}")
build=$(realpath -m "${3:-$top/build/$architecture-release}")
[ -f "$build/tests/drive.exe" ] || fail "build $architecture-release first: ./test.sh $architecture"

if [ "${CORVANE_DESKTOP:-}" != "$architecture" ]; then
    exec "$top/scripts/with-desktop.sh" "$architecture" "$0" "$architecture" "$folder" "$build"
fi
use_wine "$architecture"
wine=$top/scripts/wine-$architecture.sh

windows_path() { printf 'Z:%s' "${1//\//\\}"; }
drive() { "$wine" "$build/tests/drive.exe" "$(windows_path "$build/controls.tsv")" "$@"; }
set_text() { "$wine" reg add "$1" /v "$2" /t REG_SZ /d "$3" /f >/dev/null; }
set_dpi() {
    "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
}

# A program folder wired with 3CX, so that the window comes up without warnings and names no user.
place=$prefix/drive_c/CorvaneTo3CX
mkdir -p "$place" "$folder"
cp "$build/CorvaneTo3CX.exe" "$build/standin/CallTriggerCmd.exe" "$place"
: >"$place/CommandLineAPIPlugin.dll"
program_path='C:\CorvaneTo3CX\CorvaneTo3CX.exe'
set_text 'HKLM\SOFTWARE\3CX\3CXPhone for Windows' Path 'C:\CorvaneTo3CX\'
set_text 'HKLM\SOFTWARE\3CX\CRM' CallNotifierPath "$program_path"
set_text 'HKLM\SOFTWARE\3CX\CRM' CommandLineAPILogLevel ImportantEvents
set_text 'HKLM\SOFTWARE\3CX\CRM' CommandLineAPILogPath 'C:\CorvaneTo3CX\Logs\'
"$wine" reg delete 'HKCU\SOFTWARE\Halvorn Systems\CorvaneTo3CX' /f >/dev/null 2>&1 ||
    say "there were no settings yet"

# picture <name> <width in twips>: the program's window without the desktop around it.
picture() {
    local window file=$folder/$1-$dpi.png expected width share=0
    window=$(xwininfo -root -tree | awk '!seen && /"Halvorn Corvane to 3CX"/ { print $1; seen = 1 }')
    [ -n "$window" ] || fail "the window is not there"
    # Until everything is painted, two pictures in a row differ.
    local before='' now=
    for _ in $(seq 20); do
        sleep 0.2
        import -window "$window" "$file"
        now=$(identify -format '%#' "$file")
        [ "$now" != "$before" ] || break
        before=$now
    done
    expected=$(($2 * dpi / 1440))
    width=$(identify -format '%w' "$file")
    [ "$width" -ge "$expected" ] && [ "$width" -le $((expected + 1)) ] ||
        fail "$file is $width pixels wide and not $expected"
    share=$(convert "$file" -format '%c' histogram:info:- |
        awk '{ count = $1 + 0; all += count; if (count > most) most = count }
             END { printf "%d", 100 * most / all }')
    [ "$share" -le 95 ] || fail "$file shows nothing: $share % of it are one colour"
}

program=
end_program() {
    [ -z "$program" ] || kill "$program" 2>/dev/null || :
    set_dpi 96
}
trap end_program EXIT

for dpi in 96 192; do
    say "pictures at $dpi dots per inch"
    set_dpi "$dpi"
    "$wine" "$program_path" &
    program=$!
    drive wait
    tab=0
    for name in general callerid-handling goldmine-history advanced status about; do
        drive tab tabstripOptions "$tab"
        picture "$name" 7570
        tab=$((tab + 1))
    done
    drive tab tabstripOptions 0
    drive click cmdParams
    tab=0
    for name in params-from-goldmine params-from-3cx paths registry; do
        drive tab tabstripParams "$tab"
        picture "$name" 13920
        tab=$((tab + 1))
    done
    drive close
    wait "$program"
    program=
done
rm -r "$place"
