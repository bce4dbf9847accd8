#!/usr/bin/env bash
# The set-up under Wine: installer-test.sh <x86|x64>
# x86 is what is shipped; x64 shows the 32-bit registry view of a 64-bit system, with a set-up and a
# program that a Wine without 32-bit side can run. A Wine prefix of its own, so that nobody else's
# settings are touched.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd -P)
# shellcheck source=scripts/common.sh
. "$here/../../scripts/common.sh"
# shellcheck disable=SC2034  # wait_until reads it.
patience=60
architecture=$1
build=$top/build/$architecture-release

if [ "${CORVANE_INSTALLER_TEST:-}" != "$architecture" ]; then
    export CORVANE_INSTALLER_TEST=$architecture
    export CORVANE_WINEPREFIX=$top/build/wine/installer-$architecture
    # What killed tests left goes with the prefix.
    rm -rf "$CORVANE_WINEPREFIX"
    exec "$top/scripts/with-desktop.sh" "$architecture" "$here/${0##*/}" "$architecture"
fi

drive=$CORVANE_WINEPREFIX/drive_c
folder=$drive/CorvaneTo3CX
program='C:\CorvaneTo3CX\CorvaneTo3CX.exe'
title='Halvorn Corvane to 3CX'
common="$drive/ProgramData/Halvorn Systems"
log="$common/CorvaneTo3CX/CorvaneTo3CX.log"
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvaneTo3CX'
crm_key='HKLM\SOFTWARE\3CX\CRM'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
version=$(program_version)
failures=0

wine() { "$top/scripts/wine-$architecture.sh" "$@"; }
wrong() {
    printf 'FAILED: %s\n' "$*" >&2
    failures=$((failures + 1))
}
is() { [ "$2" = "$3" ] || wrong "$1 is '$3' and not '$2'"; }
there() { [ -e "$1" ] || wrong "$1 is missing"; }
gone() { [ ! -e "$1" ] || wrong "$1 is still there"; }

# run <expected exit code> <words...>: as an administrator's command file does, without quotation
# marks around /D=; what it said goes to $work/said.
run() {
    local expected=$1 code=0
    shift
    printf '@%s\r\n@exit %%errorlevel%%\r\n' "$*" >"$drive/command.cmd"
    wine cmd.exe /c 'C:\command.cmd' >"$work/said" 2>&1 </dev/null || code=$?
    rm "$drive/command.cmd"
    [ "$code" -eq "$expected" ] || wrong "$* ended with $code and not $expected: $(cat "$work/said")"
}
said() { grep -qF -- "$1" "$work/said" || wrong "not said: $1, but: $(cat "$work/said")"; }
# value <key> <name>: of the 32-bit view; empty when there is none.
value() {
    wine reg query "$1" /v "$2" /reg:32 2>/dev/null </dev/null | tr -d '\r' |
        sed -n "s/^ *$2 *REG_[A-Z]* *//p"
}
# set_value <key> <name> <text> [view]
set_value() { wine reg add "$1" /v "$2" /t REG_SZ /d "$3" /f "/reg:${4:-32}" >/dev/null </dev/null; }
uninstall() {
    # A copy that stays until it is done, as docs/installation.md says for scripts.
    cp "$folder/uninstall.exe" "$drive/uninstall-copy.exe"
    run "$1" 'C:\uninstall-copy.exe' /S "${@:2}" '_?=C:\CorvaneTo3CX'
    rm "$drive/uninstall-copy.exe"
}
chapter() { printf '== %s\n' "$*"; }

# Everything that a set-up could leave: files, and the machine's and the user's registry.
snapshot() {
    (cd "$drive" && find . -path ./windows/temp -prune -o -path '*/Temp/*' -prune -o -print | sort)
    local root
    for root in 'HKLM\Software' 'HKCU\Software'; do
        wine reg export "$root" 'C:\export.reg' /y /reg:32 >/dev/null </dev/null
        # Wine registers classes of its own at a first use.
        iconv -f UTF-16 -t UTF-8 "$drive/export.reg" | tr -d '\r' |
            awk '/^\[/ { classes = tolower($0) ~ /\\software\\classes[\\\]]/ } !classes'
        rm "$drive/export.reg"
    done
}
same_as_before() {
    snapshot >"$work/after"
    diff "$work/before" "$work/after" >"$work/difference" ||
        wrong "$1 left something: $(cat "$work/difference")"
}

make_setup() {
    "$top/scripts/make-installer.sh" "$architecture" "$work/payload" "$drive/$1.exe" "$2" ||
        fail "the set-up was not made"
}

chapter "the set-ups, of three versions"
"$top/scripts/collect-payload.sh" "$architecture" "$work/payload"
make_setup current "$version"
make_setup newer 99.0.0.1
make_setup older 0.9.0.9
snapshot >"$work/before"

chapter "folders that are refused"
# Blanks are refused whatever stands there; so is what GoldMine takes for more than a path.
for bad in 'C:\My Folder' 'C:\a,b' 'C:\a%%b'; do
    run 4 'C:\current.exe' /S "/D=$bad"
    said "cannot be used"
done
for bad in '/D=C:\' '/D=\\server\share\CorvaneTo3CX' '"/D=C:\My Folder"'; do
    run 4 'C:\current.exe' /S "$bad"
    said "without quotation marks"
done
gone "$folder"
mkdir "$folder"
echo theirs >"$folder/version.dll"
run 5 'C:\current.exe' /S
said "is not the set-up's own"
is "what somebody put there" theirs "$(cat "$folder/version.dll")"
rm -r "$folder"
mkdir "$drive/elsewhere"
ln -s "$drive/elsewhere" "$folder"
run 5 'C:\current.exe' /S
is "what the link leads to" '' "$(ls -A "$drive/elsewhere")"
rm "$folder"
ln -s "$drive/elsewhere" "$drive/link"
run 5 'C:\current.exe' /S '/D=C:\link\CorvaneTo3CX'
is "what the link above leads to" '' "$(ls -A "$drive/elsewhere")"
rm "$drive/link"
rmdir "$drive/elsewhere"
mkdir -m 777 "$drive/open"
run 5 'C:\current.exe' /S '/D=C:\open\CorvaneTo3CX'
is "what is in the folder that all may write to" '' "$(ls -A "$drive/open")"
rmdir "$drive/open"
same_as_before "a refused set-up"

chapter "install"
wine reg add "$crm_key" /v CommandLineAPILogLevel /t REG_SZ /d ImportantEvents /f /reg:32 >/dev/null </dev/null
set_value "$crm_key" CallNotifierPath 'C:\Other\Notifier.exe'
set_value 'HKLM\SOFTWARE\3CX\3CXPhone for Windows' Path 'C:\3CXPhone\'
# What the program looks into, it makes; and the last one every Windows has.
for key in 'FrontRange Solutions\GoldMine' '3CX\MyPhone' \
    'Microsoft\Windows\CurrentVersion\Uninstall'; do
    wine reg add "HKLM\\SOFTWARE\\$key" /f /reg:32 >/dev/null </dev/null
done
snapshot >"$work/before"
mkdir "$drive/3CXPhone"
# An empty folder is made anew, and an open log of before goes aside.
mkdir -m 777 "$folder"
mkdir -p "$common"
chmod 777 "$common"
echo old >"$common/old.txt"
run 0 'C:\current.exe' /S
said "CommandLineAPIPlugin.dll is missing in C:\\3CXPhone\\"
said "is now C:\\ProgramData\\Halvorn Systems.before-setup-1"
is "the log of before" old "$(cat "$common.before-setup-1/old.txt")"
rm -r "$common.before-setup-1"
for file in CorvaneTo3CX.exe CorvaneCheck.exe uninstall.exe CorvaneTo3CX-settings.reg prepare-goldmine-users.js \
    docs/installation.html docs/user-guide.html docs/images/caller-found.png; do
    there "$folder/$file"
done
there "$log"
is "what others may do in the folder" 0 "$((0$(stat -c %a "$folder") & 2))"
is "what others may do with the log" 0 "$((0$(stat -c %a "$(dirname "$log")") & 2))"
cmp "$work/payload/CorvaneTo3CX.exe" "$folder/CorvaneTo3CX.exe" || wrong "that is not the program"
is CallNotifierPath "$program" "$(value "$crm_key" CallNotifierPath)"
is "what 3CX set" ImportantEvents "$(value "$crm_key" CommandLineAPILogLevel)"
is DisplayName "$title" "$(value "$uninstall_key" DisplayName)"
is DisplayVersion "$version" "$(value "$uninstall_key" DisplayVersion)"
is Publisher 'Halvorn Systems' "$(value "$uninstall_key" Publisher)"
is InstallLocation 'C:\CorvaneTo3CX' "$(value "$uninstall_key" InstallLocation)"
is QuietUninstallString '"C:\CorvaneTo3CX\uninstall.exe" /S' \
    "$(value "$uninstall_key" QuietUninstallString)"
size=$(($(value "$uninstall_key" EstimatedSize)))
[ "$size" -gt 500 ] && [ "$size" -lt 10000 ] || wrong "EstimatedSize is $size KB"
shortcut=$(find "$drive/ProgramData" -name "$title.lnk")
grep -qaF "$program" "$shortcut" || iconv -f UTF-16LE -t UTF-8//IGNORE "$shortcut" | grep -qaF "$program" ||
    wrong "the shortcut does not lead to $program letter for letter"

chapter "a call"
mkdir "$drive/GoldMine"
cp "$build/standin/gmw.exe" "$drive/GoldMine/"
cp "$build/standin/CallTriggerCmd.exe" "$drive/3CXPhone/"
cp "$build/standin/ring.exe" "$build/standin/answer.exe" "$drive/"
: >"$drive/3CXPhone/CommandLineAPIPlugin.dll"
if [ "$architecture" = x64 ]; then
    # This program reads the other view; the shipped one reads what the set-up wrote.
    set_value "$crm_key" CallNotifierPath "$program" 64
    set_value 'HKLM\SOFTWARE\3CX\3CXPhone for Windows' Path 'C:\3CXPhone\' 64
fi
wine 'C:\GoldMine\gmw.exe' /RegServer
wine 'C:\GoldMine\gmw.exe' /Fresh '/Data:C:\GoldMine' </dev/null &
goldmine=$!
takes_clients() { grep -qsx '# clients can connect' "$drive/GoldMine/journal.txt"; }
wait_until "GoldMine takes clients" takes_clients
# What is asked at a first run is answered beforehand, with the installed script.
wine cscript.exe //nologo 'C:\CorvaneTo3CX\prepare-goldmine-users.js' 'C:\GoldMine' "$program" \
    </dev/null >"$work/said" || wrong "the script did not prepare GoldMine: $(cat "$work/said")"
settings='HKCU\Software\Halvorn Systems\CorvaneTo3CX'
set_value "$settings" chkWriteLog 1
wine 'C:\ring.exe' "$(value "$crm_key" CallNotifierPath)" call 5551234567 /Wait:60 >"$work/said" </dev/null ||
    wrong "the call was not handled: $(cat "$work/said")"
grep -q 'Found (555)123-4567 in a primary contact record' "$log" || wrong "the log says: $(cat "$log")"
wine taskkill.exe /IM gmw.exe >/dev/null </dev/null
wait "$goldmine" || wrong "GoldMine ended with $?"

chapter "upgrade while a run waits in a box"
rm "$drive/3CXPhone/CallTriggerCmd.exe"
wine "$program" /N:S /I:7 </dev/null &
waiting=$!
wine 'C:\answer.exe' "$title" >"$work/box" </dev/null || wrong "no box came"
grep -q 'could not be found' "$work/box" || wrong "the box says: $(cat "$work/box")"
touch "$folder/mine.txt"
set_value "$crm_key" CallNotifierPath 'C:\CorvaneTo3CX\EchoParams.cmd'
run 0 'C:\newer.exe' /S
is "the version" 99.0.0.1 "$(value "$uninstall_key" DisplayVersion)"
is CallNotifierPath "$program" "$(value "$crm_key" CallNotifierPath)"
cmp "$work/payload/CorvaneTo3CX.exe" "$folder/CorvaneTo3CX.exe" || wrong "that is not the program"
kill -0 "$waiting" || wrong "the waiting run was ended"
wine 'C:\answer.exe' "$title" OK >"$work/box" </dev/null || wrong "the box cannot be answered"
wait "$waiting" || wrong "the waiting run ended with $?"

chapter "downgrade, and another folder"
run 6 'C:\older.exe' /S
said "0.9.0.9 is older"
is "the version" 99.0.0.1 "$(value "$uninstall_key" DisplayVersion)"
run 9 'C:\newer.exe' /S '/D=C:\Elsewhere'
gone "$drive/Elsewhere"
run 0 'C:\newer.exe' /S '/D=c:\corvaneto3cx'
is "CallNotifierPath in the folder's letters" "$program" "$(value "$crm_key" CallNotifierPath)"
[ -z "$(find "$folder" -name '*.exe.old-*' -o -name '*.new')" ] || wrong "old programs are left"

chapter "uninstall"
uninstall 0
said "The log is left in"
said "holds files that the set-up did not make"
is "what is left in the folder" mine.txt "$(ls -A "$folder")"
is CallNotifierPath 'C:\Other\Notifier.exe' "$(value "$crm_key" CallNotifierPath)"
there "$log"
is "a setting" 1 "$(value "$settings" chkWriteLog)"
is "the uninstall entry" '' "$(value "$uninstall_key" DisplayName)"
gone "$shortcut"
rm -r "$folder"

chapter "uninstall that asks for everything; the notifier is another's meanwhile"
run 0 'C:\current.exe' /S
wine "$program" /N:S /I:7 </dev/null &
waiting=$!
wine 'C:\answer.exe' "$title" >"$work/box" </dev/null || wrong "no box came"
set_value "$crm_key" CallNotifierPath 'D:\Third\Notifier.exe'
uninstall 0 /ALL
said "3CX still starts D:\\Third\\Notifier.exe"
# As on Windows: what runs can be renamed but not deleted before it ends.
said "The program is still running"
is "what is left in the folder" CorvaneTo3CX.exe.old-0 "$(ls -A "$folder")"
wine 'C:\answer.exe' "$title" OK >"$work/box" </dev/null || wrong "the box cannot be answered"
wait "$waiting" || wrong "the waiting run ended with $?"
rm -r "$folder"
is CallNotifierPath 'D:\Third\Notifier.exe' "$(value "$crm_key" CallNotifierPath)"
set_value "$crm_key" CallNotifierPath 'C:\Other\Notifier.exe'
wine 'C:\GoldMine\gmw.exe' /UnregServer
rm -r "$drive/GoldMine" "$drive/3CXPhone" "$drive/ring.exe" "$drive/answer.exe"
[ "$architecture" = x86 ] || wine reg delete 'HKLM\SOFTWARE\3CX' /f /reg:64 >/dev/null </dev/null
same_as_before "install and uninstall"

chapter "where 3CX is not installed, by the uninstall entry's own command"
wine reg delete 'HKLM\SOFTWARE\3CX' /f /reg:32 >/dev/null </dev/null
snapshot >"$work/before"
run 0 'C:\current.exe' /S
said "CommandLineAPIPlugin.dll is missing in the folder of 3CXPhone for Windows, which was not found"
run 0 "$(value "$uninstall_key" QuietUninstallString) /ALL"
folder_is_gone() { [ ! -e "$folder" ] && [ -z "$(value "$uninstall_key" InstallLocation)" ]; }
wait_until "the folder is gone" folder_is_gone
same_as_before "install and uninstall without 3CX"

chapter "by hand"
cp "$build/standin/answer.exe" "$drive/"
# press <button>: on a page or in a box; NSIS puts a blank behind the titles of most pages.
press() {
    local deadline=$((SECONDS + 60)) blank
    while [ "$SECONDS" -lt "$deadline" ]; do
        for blank in '' ' '; do
            wine 'C:\answer.exe' "$title Setup$blank" "$1" /Wait:2 >"$work/box" 2>&1 </dev/null && return
            ! grep -q 'the dialog stays' "$work/box" || return 0 # with its next page
        done
    done
    fail "there is no $1: $(cat "$work/box")"
}
wine 'C:\newer.exe' </dev/null &
setup=$!
press Install
press OK # to the missing plug-in
press Close
wait "$setup" || wrong "the set-up ended with $?"
there "$folder/CorvaneTo3CX.exe"
wine 'C:\older.exe' </dev/null &
setup=$!
press No
grep -q "Replace it by the older" "$work/box" || wrong "not asked, but: $(cat "$work/box")"
press OK
code=0
wait "$setup" || code=$?
is "the exit code of a refused downgrade" 6 "$code"

[ "$failures" -eq 0 ] || fail "$failures checks failed"
