#!/usr/bin/env bash
# The story that ./demo.sh tells, on the desktop that it has set up: demo-story.sh <x86|x64>
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

architecture=$1
built=$top/build/$architecture-release
pictures=$top/build/demo
drive=$CORVANE_WINEPREFIX/drive_c
goldmine=$drive/GoldMine
log="$drive/ProgramData/Halvorn Systems/CorvaneTo3CX/CorvaneTo3CX.log"
journal=$goldmine/journal.txt
call_trigger_log=$drive/3CXPhone/CallTriggerCmd.log
pictures_taken=0

# No event takes longer than this; one that does waits in a message box that nobody answers.
longest_run=60

wine() { "$top/scripts/wine-$architecture.sh" "$@"; }

chapter() { printf '\n=== %s\n' "$*"; }
tell() { printf '\n  %s\n' "$*"; }
indented() { sed 's/\r$//; s/^/    /'; }

# wait_until <what> <command...>: polls, and gives up after 30 seconds.
wait_until() {
    local what=$1 deadline=$((SECONDS + 30))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || fail "waited in vain until $what"
        sleep 0.1
    done
}

# picture <name>: takes the desktop once it has stopped changing.
picture() {
    local file before='' now deadline=$((SECONDS + 20))
    pictures_taken=$((pictures_taken + 1))
    file=$pictures/$(printf %02d "$pictures_taken")-$1.png
    while :; do
        import -window root "$file"
        now=$(identify -format '%#' "$file")
        [ "$now" != "$before" ] || break
        [ "$SECONDS" -lt "$deadline" ] || fail "the desktop does not come to rest for $file"
        before=$now
        sleep 0.4
    done
    tell "(screenshot: ${file#"$top"/})"
}

line_count() { if [ -f "$1" ]; then wc -l <"$1"; else echo 0; fi; }
lines_after() { if [ -f "$1" ]; then tail -n "+$(($2 + 1))" "$1"; fi; }

# corvane <arguments...>: one run of the program, with what it logged and what it asked GoldMine.
corvane() {
    local logged asked
    logged=$(line_count "$log")
    asked=$(line_count "$journal")
    printf '\n  > CorvaneTo3CX.exe %s\n' "$*"
    if ! timeout "$longest_run" "$top/scripts/wine-$architecture.sh" \
        'C:\CorvaneTo3CX\CorvaneTo3CX.exe' "$@"; then
        picture unfinished
        fail "the program did not finish: see the screenshot"
    fi
    tell "The program's log:"
    lines_after "$log" "$logged" | indented
    tell "What GoldMine was asked, and the events it raised:"
    lines_after "$journal" "$asked" | grep '^[>!] ' | indented || tell "  nothing"
}

# use_settings <line...>: lines of the program's key, as a registry file has them.
use_settings() {
    {
        printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX]\r\n'
        printf '%s\r\n' "$@"
    } >"$drive/settings.reg"
    wine regedit.exe /S 'C:\settings.reg' </dev/null
}

set_the_stage() {
    rm -rf "$goldmine" "$drive/CorvaneTo3CX" "$drive/3CXPhone" "$drive/Recordings" \
        "$drive/ProgramData/Halvorn Systems"
    mkdir -p "$goldmine" "$drive/CorvaneTo3CX" "$drive/3CXPhone" "$drive/Recordings"
    cp "$built/CorvaneTo3CX.exe" "$drive/CorvaneTo3CX/"
    cp "$built/standin/gmw.exe" "$goldmine/"
    cp "$built/standin/CallTriggerCmd.exe" "$drive/3CXPhone/"
    : >"$drive/3CXPhone/CommandLineAPIPlugin.dll"
    printf '[GoldMine]\r\n[Modem]\r\nDeviceID=0\r\nTAPITranslation=0\r\nDDEDial=%s\r\n' \
        '&Dial,,C:\CorvaneTo3CX\CorvaneTo3CX.exe %s' >"$goldmine/MASTER.INI"

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

goldmine_takes_clients() { grep -qx '# clients can connect' "$journal" 2>/dev/null; }

mkdir -p "$pictures"
rm -f "$pictures"/*.png

chapter "The practice GoldMine starts"
set_the_stage
wine 'C:\GoldMine\gmw.exe' /Fresh '/Data:C:\GoldMine' </dev/null &
goldmine_process=$!
wait_until "GoldMine takes clients" goldmine_takes_clients
tell "Its contacts that have to do with this story:"
wine 'C:\GoldMine\gmw.exe' '/Data:C:\GoldMine' '/Out:C:\rows.txt' \
    "/Sql:select AccountNo, Company, Contact, Phone1 from Contact1 where AccountNo in ('A0001', 'A0002')"
indented <"$drive/rows.txt"
picture goldmine

chapter "An inbound call: 3CX reports that it rings, is answered and has ended"
tell "Settings: search while it rings; history with a link to the recording when the call ends."
use_settings '"chkWriteLog"="1"' '"optProcessConnect"="False"' '"optProcessEnd"="True"' \
    '"chkCreateLink"="1"' '"txtLinkedItemPath"="C:\\Recordings"' \
    '"txtDelayAddingLinkSeconds"="1"' '"chkConfirmLinkCallIdentifier"="1"' \
    '"optOpenHistoryBeforeSaving"="False"' '"optOpenHistoryAfterSaving"="True"'
corvane /N:S /C:5551234567 /T:I /I:00042
picture caller-found
corvane /N:C /C:5551234567 /T:I /I:00042
tell "3CX writes its recording: C:\\Recordings\\5551234567 (00042).wav"
echo practice >"$drive/Recordings/5551234567 (00042).wav"
corvane /N:E /C:5551234567 /T:I /I:00042
picture history-item

chapter "What GoldMine's history of this contact holds now"
wine 'C:\GoldMine\gmw.exe' '/Data:C:\GoldMine' /Dump '/Out:C:\history.txt'
grep -q '^Ref=Ended incoming call from (555)123-4567' "$drive/history.txt" ||
    fail "the call is not in GoldMine's history: $(cat "$drive/history.txt")"
# Of this contact only: a blank line stands between the rows.
awk -v RS= -v ORS='\n\n' '/\nAccountNo=A0002\n/' "$drive/history.txt" | indented

chapter "An outbound call: the user dials a number in GoldMine"
corvane '(555)' 123-4567
tell "What 3CX was asked to do:"
wait_until "3CX was asked to dial" test -s "$call_trigger_log"
indented <"$call_trigger_log"

chapter "That call ends; this time the user wants to complete it by hand"
use_settings '"optOpenHistoryBeforeSaving"="True"' '"optOpenHistoryAfterSaving"="False"' \
    '"chkCreateLink"="0"'
corvane /N:E /C:5551234567 /T:O /I:00043
picture complete-call

chapter "The settings window: the program without parameters"
logged=$(line_count "$log")
status_says_waiting() { lines_after "$log" "$logged" | grep -q 'Process Call button disabled'; }
wine 'C:\CorvaneTo3CX\CorvaneTo3CX.exe' </dev/null &
settings_process=$!
wait_until "the settings window is there" status_says_waiting
picture settings
wine taskkill.exe /IM CorvaneTo3CX.exe >/dev/null
wait "$settings_process"

wine taskkill.exe /IM gmw.exe >/dev/null
wait "$goldmine_process"
chapter "The end. The screenshots are in build/demo/."
