#!/usr/bin/env bash
# The script that prepares the INI files of all users of a GoldMine folder, under Wine's script host:
# goldmine-users-test.sh <x86|x64>
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd -P)
# shellcheck source=scripts/wine-common.sh
. "$top/scripts/wine-common.sh"
architecture=$1
if [ "${CORVANE_DESKTOP:-}" != "$architecture" ]; then
    exec "$top/scripts/with-desktop.sh" "$architecture" "$0" "$architecture"
fi
use_wine "$architecture"
work=$prefix/drive_c/corvane-users-test
trap 'rm -rf "$work"' EXIT
rm -rf "$work"
mkdir -p "$work/Gold Mine" "$work/before" "$work/expected"
data="$work/Gold Mine"
failed() { echo "FAILED: $*" >&2; exit 1; }
program='C:\CorvaneTo3CX\CorvaneTo3CX.exe'
dial="DDEDial=&Dial,,$program %s"

# script <expected exit code> <words...>; what it said goes to $work/said.
script() {
    local expected=$1 code=0
    shift
    "$top/scripts/wine-$architecture.sh" cscript.exe //nologo 'C:\corvane-users-test\prepare.js' "$@" \
        >"$work/said" 2>&1 </dev/null || code=$?
    [ "$code" -eq "$expected" ] || failed "$* ended with $code: $(cat "$work/said")"
}
said() { tr -d '\r' <"$work/said" | grep -qxF -- "$1" || failed "not said: $1, but: $(cat "$work/said")"; }
# file <name> <line...>
file() {
    printf '%s\r\n' "${@:2}" >"$data/$1"
    cp "$data/$1" "$work/before/"
}
expect() { printf '%s\r\n' "${@:2}" >"$work/expected/$1"; }
same() {
    cmp "$1" "$2" || failed "$2 is: $(cat "$2")"
}

cp "$top/packaging/settings/prepare-goldmine-users.js" "$work/prepare.js"
file MASTER.INI '[GoldMine]' 'Name=M'
expect MASTER.INI '[GoldMine]' 'Name=M' '[Modem]' 'DeviceID=0' "$dial" 'TAPITranslation=0'
file ANNA.INI '[modem]' 'deviceid=-1' 'ddedial=old' '' '[GoldMine]' 'TAPITranslation=1'
expect ANNA.INI '[modem]' 'DeviceID=0' "$dial" 'TAPITranslation=0' '' '[GoldMine]' 'TAPITranslation=1'
file OTTO.ini '[GoldMine]' '[Modem]' 'Port=COM1' 'DeviceID=5' 'TAPITranslation=2' '[Last]' $'\xFCber=1'
expect OTTO.ini '[GoldMine]' '[Modem]' 'Port=COM1' 'DeviceID=5' 'TAPITranslation=2' "$dial" '[Last]' $'\xFCber=1'
printf '[GoldMine]\r\n[Modem]\r\nTAPITranslation=1' >"$data/ENDLESS.INI"
cp "$data/ENDLESS.INI" "$work/before/"
expect ENDLESS.INI '[GoldMine]' '[Modem]' 'TAPITranslation=0' 'DeviceID=0' "$dial"
file GM.INI '[GoldMine]' 'HTML_Cal_Notes=0'
file PREDIAL.INI '[Prefix]' 'Local=9'
: >"$data/EMPTY.INI"
users=(MASTER.INI ANNA.INI OTTO.ini ENDLESS.INI)

script 0 'C:\corvane-users-test\Gold Mine' "$program"
for user in "${users[@]}"; do
    said "$user: prepared"
    same "$work/expected/$user" "$data/$user"
    same "$work/before/$user" "$data/$user.bak-CorvaneTo3CX"
done
for other in GM.INI PREDIAL.INI; do
    same "$work/before/$other" "$data/$other"
done
[ "$(ls "$data" | wc -l)" -eq 11 ] || failed "the folder holds: $(ls "$data")"

script 0 'C:\corvane-users-test\Gold Mine' "$program"
for user in "${users[@]}"; do
    said "$user: was prepared already"
    same "$work/expected/$user" "$data/$user"
done

# GoldMine has written something since, which stays; whoever dials by something else is left alone.
printf '[New]\r\na=1\r\n' >>"$data/OTTO.ini"
sed -i 's/^DDEDial.*/DDEDial=mine\r/' "$data/ENDLESS.INI"
script 0 'C:\corvane-users-test\Gold Mine' "$program" /undo
said "MASTER.INI: undone"
said "ENDLESS.INI: dials by something else; nothing undone"
same "$work/before/MASTER.INI" "$data/MASTER.INI"
printf '[New]\r\na=1\r\n' >>"$work/before/OTTO.ini"
same "$work/before/OTTO.ini" "$data/OTTO.ini"
expect ANNA.INI '[modem]' 'DeviceID=-1' 'DDEDial=old' '' '[GoldMine]' 'TAPITranslation=1'
same "$work/expected/ANNA.INI" "$data/ANNA.INI"
[ "$(ls "$data" | grep -c bak)" -eq 1 ] || failed "copies are left: $(ls "$data")"
script 0 'C:\corvane-users-test\Gold Mine' "$program" /undo
said "MASTER.INI: has no copy; nothing undone"

script 2 'C:\corvane-users-test\Gold Mine'
script 2 'C:\corvane-users-test\Nothing' "$program"
script 2 'C:\corvane-users-test\Gold Mine' 'C:\My Programs\CorvaneTo3CX.exe'
script 2 'C:\corvane-users-test\Gold Mine' "$program" /undone
