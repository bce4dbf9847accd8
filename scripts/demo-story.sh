#!/usr/bin/env bash
# The story that ./demo.sh tells, on the desktop that it has set up: demo-story.sh <x86|x64>
# It ends with exit code 1 as soon as something does not go as told.
set -euo pipefail

architecture=$1
# shellcheck source=scripts/practice.sh
. "$(dirname "$0")/practice.sh"

pictures=$top/build/demo
call_trigger_log=$drive/3CXPhone/CallTriggerCmd.log
title='Halvorn Corvane to 3CX'
pictures_taken=0

# No event takes longer than this; one that does waits in a message box that nobody answers.
longest_run=60

chapter() { printf '\n=== %s\n' "$*"; }
tell() { printf '\n  %s\n' "$*"; }
indented() { sed 's/\r$//; s/^/    /'; }

# picture <name> <what it shows>: takes the desktop once it has stopped changing.
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
    tell "(screenshot ${file#"$top"/}: $2)"
}

# said <text>: the program has written a log line that ends so, since the mark. A pipe that ends
# early would fail, hence the whole text.
said() { grep -q -- "$1\$" <<<"$(new_log)"; }
must_have_said() { said "$1" || fail "the program's log lacks: $1"; }
must_have_asked() {
    grep -qF -- "$1" <<<"$(new_journal)" || fail "GoldMine's journal lacks: $1"
}

tell_what_happened() {
    tell "The program's log:"
    new_log | indented
    tell "What GoldMine was asked, and the events it raised:"
    { new_journal | grep '^[>!] ' || echo "nothing"; } | indented
}

# ring <S|C|E> <caller id> <I|O> <call id>: 3CX reports this event of a call.
ring() {
    local event=$1 caller_id=$2 type=$3 call_id=$4
    printf '\n  > ring %s %s %s /T:%s /I:%s\n' "$program" "$event" "$caller_id" "$type" "$call_id"
    mark
    if ! wine 'C:\3CXPhone\ring.exe' "$program" "$event" "$caller_id" "/T:$type" "/I:$call_id" \
        "/Wait:$longest_run" >"$drive/ring.txt"; then
        picture unfinished "why the program did not finish"
        fail "the event $event was not handled"
    fi
    tell "3CX ran:"
    indented <"$drive/ring.txt"
    tell_what_happened
    must_have_said 'Call processing completed in .* seconds\.'
}

# answer <title> [<button>]: the user presses a button of a dialog, whose text is printed.
answer() { wine 'C:\3CXPhone\answer.exe' "$@" | indented; }
# The same without its text.
press() { wine 'C:\3CXPhone\answer.exe' "$@" >/dev/null; }

# sql <statement>: rows of GoldMine's database, with TAB between the fields.
sql() {
    wine 'C:\GoldMine\gmw.exe' '/Data:C:\GoldMine' '/Out:C:\rows.txt' "/Sql:$1"
    cat "$drive/rows.txt"
}
# The newest item in the history of the contact of this story.
newest_history() {
    sql "select $1 from ContHist where AccountNo = 'A0002' order by rowid desc limit 1"
}
# must_be <what> <expected> <actual>
must_be() { [ "$2" = "$3" ] || fail "$1 should be: $2"$'\n'"but is: $3"; }
# A value of the database on lines of its own, as it was before it was put on one line.
unescaped() { sed 's/\\r\\n/\n/g; s/\\\\/\\/g'; }

# shellcheck disable=SC2317  # Called by the trap.
keep_log() { if [ -f "$log" ]; then cp "$log" "$pictures/"; fi; }

mkdir -p "$pictures"
rm -f "$pictures"/*.png "$pictures/${log##*/}"

# check <exit code> <argument...>: looks without changing anything.
check() {
    local expected=$1 code=0
    shift
    printf '\n  > CorvaneCheck.exe %s\n' "$*"
    wine 'C:\CorvaneTo3CX\CorvaneCheck.exe' "$@" >"$drive/checked.txt" || code=$?
    indented <"$drive/checked.txt"
    must_be "the exit code" "$expected" "$code"
}
must_have_found() { grep -qF -- "$1" "$drive/checked.txt" || fail "the check did not say: $1"; }

chapter "The practice GoldMine starts"
set_the_stage
trap keep_log EXIT
start_goldmine /Fresh
tell "Its contacts that have to do with this story:"
sql "select AccountNo, Company, Contact, Phone1 from Contact1 where AccountNo in ('A0001', 'A0002')" |
    indented
picture goldmine "GoldMine with its first contact"

chapter "What links GoldMine with 3CX is looked at: GoldMine does not dial through the program yet"
check 2 wiring
must_have_found 'there is no dialing instruction'

chapter "The program runs for the first time, without parameters: it proposes to be dialed through"
tell "The user's INI file of GoldMine before:"
indented <"$user_ini"
use_settings '"chkWriteLog"="1"'
mark
printf '\n  > CorvaneTo3CX.exe\n'
wine "$program" </dev/null &
settings_process=$!
press "$title"
picture question "the question that the program asks"
tell "It asks, and the user answers:"
answer "$title" Yes OK
settings_are_shown() { said 'Process Call button disabled\.'; }
wait_until "the settings window is there" settings_are_shown
picture settings "the settings window, which comes after the questions"
close_program "$settings_process" CorvaneTo3CX.exe
tell_what_happened
tell "The user's INI file now:"
indented <"$user_ini"
grep -q "^DDEDial=&Dial,,C:\\\\CorvaneTo3CX\\\\CorvaneTo3CX.exe %s"$'\r\\?$' "$user_ini" ||
    fail "the program did not write its dialing instruction"
tell "GoldMine is closed and started again, as the user was told to do."
close_program "$goldmine_process" gmw.exe
start_goldmine

chapter "The links are looked at again, and two numbers before anybody calls"
check 0 wiring
must_have_found 'All is well.'
check 0 number 5551234567 --ask
must_have_found 'Found (555)123-4567 in a primary contact record.'
check 1 number '+44 20 7946 0958 x12'
must_have_found '12 looks like an extension'

chapter "An inbound call: 3CX reports that it rings, is answered and has ended"
tell "Settings: search while it rings; history with a link to the recording when the call ends."
use_settings '"optProcessConnect"="False"' '"optProcessEnd"="True"' \
    '"chkCreateLink"="1"' '"txtLinkedItemPath"="C:\\Recordings"' \
    '"txtDelayAddingLinkSeconds"="1"' '"chkConfirmLinkCallIdentifier"="1"' \
    '"optOpenHistoryBeforeSaving"="False"' '"optOpenHistoryAfterSaving"="True"'
ring S 5551234567 I 00042
must_have_said 'Found (555)123-4567 in a primary contact record\.'
picture caller-found "GoldMine shows the caller's contact while the phone rings"
ring C 5551234567 I 00042
must_have_said 'call connect (answered) event ignored\.'
recording='C:\Recordings\5551234567 (00042).wav'
tell "3CX writes its recording: $recording"
echo practice >"$drive/Recordings/5551234567 (00042).wav"
ring E 5551234567 I 00042
picture history-item "the new history item, with the path of the recording in its notes"
tell "This item in GoldMine's database:"
newest_history 'RecType, Ref, Notes' | unescaped | indented
must_be "the history item" $'CI\tEnded incoming call from (555)123-4567\t'"$recording" \
    "$(newest_history 'RecType, Ref, Notes' | unescaped)"
press 'History Item' Close

chapter "The same when GoldMine keeps notes as HTML: HTML_Cal_Notes=1 in its GM.INI"
sed -i 's/^HTML_Cal_Notes=0/HTML_Cal_Notes=1/' "$goldmine/GM.INI"
indented <"$goldmine/GM.INI"
recording='C:\Recordings\5551234567 (00044).wav'
tell "3CX writes its recording: $recording"
echo practice >"$drive/Recordings/5551234567 (00044).wav"
ring E 5551234567 I 00044
tell "The notes of this item in GoldMine's database:"
newest_history Notes | unescaped | indented
grep -qF "<A href='file://$recording'>$recording</A>" <<<"$(newest_history Notes | unescaped)" ||
    fail "the notes do not link the recording"
picture html-notes "the history item whose notes are HTML, shown as their source text"
press 'History Item' Close
sed -i 's/^HTML_Cal_Notes=1/HTML_Cal_Notes=0/' "$goldmine/GM.INI"

chapter "An outbound call: the user dials the contact's number in GoldMine"
mark
wine 'C:\GoldMine\gmw.exe' '/Data:C:\GoldMine' '/Dial:(555)123-4567'
outbound_is_done() { said 'Call processing completed in .* seconds\.'; }
wait_until "the program has dialed" outbound_is_done
tell "GoldMine ran, by the dialing instruction in the user's INI file:"
new_journal | sed -n 's/^# dial //p' | unescaped | indented
must_have_asked '# dial C:\\CorvaneTo3CX\\CorvaneTo3CX.exe (555)123-4567'
tell_what_happened
must_have_said 'Dialed 5551234567 using 3CX\.'
tell "What 3CX was asked to do:"
wait_until "3CX was asked to dial" test -s "$call_trigger_log"
unescaped <"$call_trigger_log" | indented
must_be "what 3CX was asked" '"C:\3CXPhone\CallTriggerCmd.exe" -cmd makecall:5551234567' \
    "$(unescaped <"$call_trigger_log")"

chapter "That call ends; this time the user wants to complete it by hand"
use_settings '"optOpenHistoryBeforeSaving"="True"' '"optOpenHistoryAfterSaving"="False"'
recording='C:\Recordings\5551234567 (00043).wav'
tell "3CX writes its recording: $recording"
echo practice >"$drive/Recordings/5551234567 (00043).wav"
ring E 5551234567 O 00043
picture complete-call "GoldMine's Complete Call with the reference and the notes that the program filled in"
tell "The user presses Complete. This item in GoldMine's database:"
press 'Complete Call' Complete
newest_history 'RecType, Ref, Notes' | unescaped | indented
must_be "the history item" $'CO\tEnded outgoing call to (555)123-4567\t'"$recording" \
    "$(newest_history 'RecType, Ref, Notes' | unescaped)"

close_program "$goldmine_process" gmw.exe
chapter "The log of all this, told as calls"
check 0 calls
must_have_found 'popped in a primary contact record'
must_have_found '4 calls with 6 events'
check 0 calls --html 'C:\calls.html'
cp "$drive/calls.html" "$pictures/"
tell "(build/demo/calls.html: the page)"

chapter "All of that for support, in one file, with numbers and names masked"
rm -f "$drive/report.zip" # of an earlier demonstration: no report replaces a file
check 0 report 'C:\report.zip' --number 5551234567
must_have_found 'Masked: '
cp "$drive/report.zip" "$pictures/"
in_report() { unzip -p "$drive/report.zip" "$@"; }
unzip -tqq "$drive/report.zip" || fail "the report is no archive"
! grep -qE '5551234567|123-4567' <<<"$(in_report)" || fail "a number stands in the report"
tell "What it says of itself, and the calls in it:"
in_report contents.txt calls.txt | sed 's/^\xef\xbb\xbf//' | indented
tell "(build/demo/report.zip: the report)"

chapter "Would it work now? GoldMine is closed, and somebody took the plug-in away"
rm "$drive/3CXPhone/CommandLineAPIPlugin.dll"
check 2 wiring
must_have_found '1 broken, 1 warning.'

chapter "The end. The screenshots and the program's log are in build/demo/."
