# Read by the scripts that play calls on a desktop with the practice GoldMine and this program's
# release build. Needs the variable architecture: x86 or x64.
# shellcheck shell=bash
# shellcheck disable=SC2034  # The variables are for the readers.

# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

built=$top/build/${architecture:?}-release
drive=$CORVANE_WINEPREFIX/drive_c
goldmine=$drive/GoldMine
journal=$goldmine/journal.txt
user_ini=$goldmine/MASTER.INI
log="$drive/ProgramData/Halvorn Systems/CorvaneTo3CX/CorvaneTo3CX.log"
goldmine_process=
program='C:\CorvaneTo3CX\CorvaneTo3CX.exe'

wine() { "$top/scripts/wine-$architecture.sh" "$@"; }

line_count() { if [ -f "$1" ]; then wc -l <"$1"; else echo 0; fi; }
lines_after() { if [ -f "$1" ]; then tail -n "+$(($2 + 1))" "$1"; fi; }

# use_settings <line...>: lines of the program's key, as a registry file has them.
use_settings() {
    {
        printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX]\r\n'
        printf '%s\r\n' "$@"
    } >"$drive/settings.reg"
    wine regedit.exe /S 'C:\settings.reg' </dev/null
}

# set_the_stage: the programs are installed, with no settings and no log; GoldMine is not running.
set_the_stage() {
    rm -rf "$goldmine" "$drive/CorvaneTo3CX" "$drive/3CXPhone" "$drive/Recordings" \
        "$drive/ProgramData/Halvorn Systems"
    mkdir -p "$goldmine" "$drive/CorvaneTo3CX" "$drive/3CXPhone" "$drive/Recordings"
    cp "$built/CorvaneTo3CX.exe" "$built/CorvaneCheck.exe" "$drive/CorvaneTo3CX/"
    cp "$built/standin/gmw.exe" "$goldmine/"
    cp "$built/standin/CallTriggerCmd.exe" "$built/standin/ring.exe" "$built/standin/answer.exe" \
        "$drive/3CXPhone/"
    : >"$drive/3CXPhone/CommandLineAPIPlugin.dll"

    # What the installers of 3CX and of this program leave in the registry.
    sed 's/$/\r/' >"$drive/settings.reg" <<'REG'
REGEDIT4

[-HKEY_CURRENT_USER\SOFTWARE\Halvorn Systems]

[HKEY_LOCAL_MACHINE\SOFTWARE\FrontRange Solutions\GoldMine]
"InstallDir"="C:\\GoldMine\\"

[HKEY_LOCAL_MACHINE\SOFTWARE\3CX\3CXPhone for Windows]
"Path"="C:\\3CXPhone\\"

[HKEY_LOCAL_MACHINE\SOFTWARE\3CX\CRM]
"CallNotifierPath"="C:\\CorvaneTo3CX\\CorvaneTo3CX.exe"
REG
    wine regedit.exe /S 'C:\settings.reg' </dev/null
    wine 'C:\GoldMine\gmw.exe' /RegServer
}

# mark: what is written from here on is new to the functions below.
mark() {
    logged=$(line_count "$log")
    asked=$(line_count "$journal")
}
new_log() { lines_after "$log" "$logged" | tr -d '\r'; }
new_journal() { lines_after "$journal" "$asked"; }

goldmine_takes_clients() { grep -qx '# clients can connect' <<<"$(new_journal)"; }
# start_goldmine [option...]: and sets goldmine_process.
start_goldmine() {
    mark
    wine 'C:\GoldMine\gmw.exe' "$@" '/Data:C:\GoldMine' </dev/null &
    goldmine_process=$!
    wait_until "GoldMine takes clients" goldmine_takes_clients
}
# close_program <process> <exe>: as by the close button of its window.
close_program() {
    wine taskkill.exe /IM "$2" >/dev/null
    wait "$1" || fail "$2 ended with exit code $?"
}

