#!/usr/bin/env bash
# The walk of packaging/practice-kit/practice.md under Wine, with the files of the kit alone.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd -P)
# shellcheck source=scripts/common.sh
. "$here/../../scripts/common.sh"
# shellcheck disable=SC2034  # wait_until reads it.
patience=60

if [ "${CORVANE_KIT_TEST:-}" != yes ]; then
    export CORVANE_KIT_TEST=yes CORVANE_WINEPREFIX=$top/build/wine/practice-kit
    rm -rf "$CORVANE_WINEPREFIX"
    exec "$top/scripts/with-desktop.sh" x86 "$here/${0##*/}"
fi
drive=$CORVANE_WINEPREFIX/drive_c
kit=$drive/CorvanePractice
title='Halvorn Corvane to 3CX'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed() { echo "FAILED: $*" >&2; exit 1; }
wine() { "$top/scripts/wine-x86.sh" "$@" </dev/null; }
# script <expected exit code> <name>: a double click, and a key at "press any key".
script() {
    local code=0
    wine cmd.exe /c "C:\\CorvanePractice\\$2" >"$work/said" 2>&1 || code=$?
    [ "$code" -eq "$1" ] || failed "$2 ended with $code: $(cat "$work/said")"
}
press() { wine 'C:\CorvanePractice\answer.exe' "$@" >"$work/box" || failed "no answer to $*: $(cat "$work/box")"; }
clients_can_connect() { [ "$(grep -csx '# clients can connect' "$kit/journal.txt")" = "$1" ]; }
key_is_there() { wine reg query "$1" /reg:32 >/dev/null 2>&1; }

"$top/scripts/collect-kit.sh" "$kit"
# What the page names is there.
grep -o '`[0-9a-z-]*\.cmd`' "$top/packaging/practice-kit/practice.md" | tr -d '`' | sort -u >"$work/named"
(cd "$kit" && ls -- *.cmd) | sort >"$work/there"
diff "$work/named" "$work/there" || failed "the page names other files than the kit has"

wine reg add 'HKLM\SOFTWARE\3CX\CRM' /v CallNotifierPath /d other /f /reg:32 >/dev/null
script 1 1-as-administrator.cmd
script 1 6-remove-as-administrator.cmd
key_is_there 'HKLM\SOFTWARE\3CX\CRM' || failed "the keys of the real 3CX were taken away"
wine reg delete 'HKLM\SOFTWARE\3CX' /f /reg:32 >/dev/null
script 0 1-as-administrator.cmd
script 0 1-as-administrator.cmd
script 0 2-start.cmd
wait_until "GoldMine takes clients" clients_can_connect 1

script 0 3-call.cmd &
call=$!
press "$title" Yes OK
# A person is slower than the program, which fills the dialog in.
wait_until "the dialog is filled in" grep -qs '^< .*SetControlText"><status code="1"' "$kit/journal.txt"
press 'Complete Call' Complete
wait "$call" || failed "the call was not handled: $(cat "$work/said")"
wine 'C:\CorvanePractice\gmw.exe' '/Sql:select Ref from ContHist where AccountNo = '\''A0002'\'' order by rowid desc limit 1' \
    '/Out:C:\rows.txt'
grep -qF '(555)123-4567' "$drive/rows.txt" || failed "the history has no such call: $(cat "$drive/rows.txt")"

wine taskkill.exe /IM gmw.exe >/dev/null
wait_until "GoldMine has ended" grep -qsx '# gmw ended' "$kit/journal.txt"
script 0 4-restart.cmd
wait_until "GoldMine takes clients" clients_can_connect 2
wine 'C:\CorvanePractice\gmw.exe' '/Dial:(555)123-4567'
wait_until "3CX was asked to dial" grep -qs 'makecall:5551234567' "$kit/CallTriggerCmd.log"

wine taskkill.exe /IM gmw.exe >/dev/null
script 0 5-remove.cmd
script 0 6-remove-as-administrator.cmd
! key_is_there 'HKLM\SOFTWARE\3CX' || failed "the practice 3CX is still there"
! key_is_there 'HKCU\SOFTWARE\Halvorn Systems\CorvaneTo3CX' || failed "the settings are still there"
[ ! -e "$drive/ProgramData/Halvorn Systems" ] || failed "the folder of the log is still there"
