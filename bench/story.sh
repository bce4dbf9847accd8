#!/usr/bin/env bash
# What bench/run.sh times, on the desktop that it has set up: story.sh <rounds>
set -euo pipefail

architecture=x86
# shellcheck source=scripts/practice.sh
. "$(dirname "$0")/../scripts/practice.sh"
# shellcheck source=scripts/wine-common.sh
. "$top/scripts/wine-common.sh"
use_wine "$architecture"
cd "$top"

rounds=$1
warm_up=5
results=bench/results.md
missed=0

# Programs of the build, as Wine is told of them.
bare=$built/tests/bare_client.exe
empty=$built/bench/empty.exe
bound=$built/bench/bound.exe
inside=$built/bench/inside.exe

# contestant <name> <program> [argument...]: a line for side_by_side.
contestant() {
    local name=$1
    shift
    printf '%s\t%s' "$name" "$loader"
    printf '\t%s' "$@"
    printf '\n'
}

# race [rounds] [warm-up rounds]: the contestants of standard input, timed side by side.
race() {
    "${enclose[@]}" build/bench/side_by_side "${1:-$rounds}" "${2:-$warm_up}" >build/bench/race.tsv
}
# field <contestant> <number>: 2 is the median of the milliseconds, 5 that of the KiB.
field() { awk -F'\t' -v name="$1" -v number="$2" '$1 == name { print $number }' build/bench/race.tsv; }

quotient() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
more_than() { awk -v a="$1" -v b="$2" 'BEGIN { exit !(a > b) }'; }

# judge <work> <compared with> <unit> <ours> <theirs> <goal>: a row of the table; the goal is the
# greatest ratio allowed.
judge() {
    local ratio verdict=met
    ratio=$(quotient "$4" "$5")
    if more_than "$ratio" "$6"; then
        verdict=missed
        missed=$((missed + 1))
    fi
    printf '| %s | %s | %s %s | %s %s | %s | %s | %s |\n' \
        "$1" "$2" "$4" "$3" "$5" "$3" "$ratio" "$6" "$verdict" | tee -a "$results"
}
# judge_times <work> <our contestant> <compared with> <their contestant> <goal>
judge_times() { judge "$1" "$3" ms "$(field "$2" 2)" "$(field "$4" 2)" "$5"; }
judge_memory() {
    judge "$1, peak memory" "$3" MB "$(quotient "$(field "$2" 5)" 1024)" \
        "$(quotient "$(field "$4" 5)" 1024)" "$5"
}

# commands_of <program argument...>: what the program sends GoldMine in this run, one to a line.
commands_of() {
    mark
    wine "$program" "$@" </dev/null
    new_journal | sed -n 's/^> //p'
}
# bare_contestant <name> <file of commands> [argument...]
bare_contestant() {
    local name=$1 commands=()
    mapfile -t commands <"$2"
    shift 2
    contestant "$name" "$bare" "${commands[@]}" "$@"
}
# must_be_logged <text>: the program did what is being timed.
must_be_logged() { grep -qF -- "$1" "$log" || fail "the program's log lacks: $1"; }

call() { printf '/N:%s\t/C:%s\t/T:I\t/I:00042' "$1" "$2"; }
ours() { contestant "$1" "$program" "${@:2}"; }

begin_table() {
    cat >"$results" <<EOF
# Results

Written by \`bench/run.sh\`: medians of $rounds rounds in which all took turns, x86 under Wine.
Absolute times are this machine's; the ratio is what counts. What the rows are:
[performance.md](../docs/performance.md).

| Work | Compared with | Program | Other | Ratio | At most | |
|---|---|---|---|---|---|---|
EOF
    cat "$results"
}

events() {
    local first=5551234567 second=2065550104
    # GoldMine's own look-up has something to do each time: the other caller is shown before.
    commands_of /N:S /C:$second /T:I /I:1 >/dev/null
    commands_of /N:S /C:$first /T:I /I:1 >/dev/null
    commands_of /N:S /C:$second /T:I /I:1 >build/bench/ring.commands
    grep -q 'call="CallerID"' build/bench/ring.commands || fail "no look-up is timed"
    {
        ours program /N:S /C:$first /T:I /I:00042
        bare_contestant bare build/bench/ring.commands
    } | race
    must_be_logged 'Found (555)123-4567 in a primary contact record.'
    judge_times "a call rings, GoldMine's look-up finds the caller" program "a bare client" bare 1.10
    judge_memory "a call rings" program "a bare client" bare 1.20

    {
        ours program /N:S /C:$first /T:I /I:00042
        contestant script 'C:\windows\system32\cscript.exe' //nologo bench/ring.vbs $second \
            '(206)555-0104' 'C:\script.log'
    } | race
    # The script host says nothing of what it cannot run.
    grep -q ' found for MASTER' "$drive/script.log" || fail "the script did not find the caller"
    judge_times "a call rings" program "a script for it" script 0.50
}

history() {
    # Without the windows of the calls before.
    close_program "$goldmine_process" gmw.exe
    start_goldmine
    use_settings '"optProcessConnect"="True"' '"chkCreateLink"="1"' '"chkDelayAddingLink"="0"' \
        '"txtLinkedItemPath"="C:\\Recordings"' '"chkConfirmRecentRecordingFile"="0"' \
        '"chkAutoOpenHistory"="0"'
    echo practice >"$drive/Recordings/5551234567 (00042).wav"
    # The first of them shows the caller.
    commands_of /N:C /C:5551234567 /T:I /I:00042 >/dev/null
    commands_of /N:C /C:5551234567 /T:I /I:00042 |
        sed 's/\(<data name="Area">\)[0-9]*</\1{area}</' >build/bench/answer.commands
    must_be_logged 'Updated history Notes with link.'
    {
        ours program /N:C /C:5551234567 /T:I /I:00042
        bare_contestant bare build/bench/answer.commands
    } | race
    judge_times "a call is answered: history, link and notes" program "a bare client" bare 1.10
}

dial() {
    commands_of '(555)123-4567' >build/bench/dial.commands
    {
        ours program '(555)123-4567'
        bare_contestant bare build/bench/dial.commands \
            '/Start:C:\3CXPhone\CallTriggerCmd.exe -cmd makecall:5551234567'
    } | race
    must_be_logged 'Dialed 5551234567 using 3CX.'
    judge_times "a number is dialed" program "a bare client" bare 1.15
}

ignored() {
    local what=$1
    shift
    {
        ours program "$@"
        contestant empty "$empty"
        contestant bound "$bound"
    } | race
    judge_times "ignored: $what" program "an empty program" empty 2.40
    judge_times "the same" program "one that binds the same DLLs" bound 1.25
}

# time_inside <argument...>: sets program_ms and other_ms.
time_inside() {
    IFS=$'\t' read -r program_ms other_ms < <(wine "$inside" "$@" </dev/null | tr -d '\r')
}

recordings() {
    local count folder
    for count in 1000 10000 100000; do
        folder=$(wine winepath.exe -w "$top/build/bench/$count" </dev/null | tr -d '\r')
        time_inside newest "$folder"
        judge "newest of $count recordings" "one pass over the folder" ms \
            "$program_ms" "$other_ms" 1.05
        # Whole processes: with 100,000 files the others take their time.
        {
            contestant program "$inside" once "$folder"
            contestant dir 'C:\windows\system32\cmd.exe' /c dir /b /o-d "$folder"
            contestant script 'C:\windows\system32\cscript.exe' //nologo bench/newest.vbs "$folder"
        } | race "$((count > 10000 ? 3 : rounds))" 1
        judge_times "newest of $count, as a process" program "\`dir /o-d\`" dir 1.00
        judge_times "newest of $count, as a process" program \
            "a script's collection of files" script 1.00
    done
}

begin_table
rm -f "$drive/script.log"
set_the_stage
use_settings '"chkWriteLog"="1"' '"optProcessConnect"="False"' '"chkCreateHistory"="1"'
start_goldmine /Fresh
# The questions of a first run are answered beforehand.
wine "$program" </dev/null &
asked=$!
wine 'C:\3CXPhone\answer.exe' 'Halvorn Corvane to 3CX' Yes OK >/dev/null
settings_are_shown() { grep -qF 'Process Call button disabled.' "$log"; }
wait_until "the settings window is there" settings_are_shown
close_program "$asked" CorvaneTo3CX.exe
close_program "$goldmine_process" gmw.exe
start_goldmine

events
history
dial
ignored "short caller ID" /N:S /C:123 /T:I /I:00042
ignored "wrong number" /N:S /C:anonymous /T:I /I:00042
use_settings '"chkGlobalEnable"="0"'
ignored "master switch off" /N:S /C:5551234567 /T:I /I:00042
use_settings '"chkGlobalEnable"="1"'
close_program "$goldmine_process" gmw.exe
ignored "GoldMine is not running" /N:S /C:5551234567 /T:I /I:00042
recordings
time_inside log 10000
judge "10000 status lines, log on" "open, append, close" ms "$program_ms" "$other_ms" 1.50
time_inside status 1000
thousand=$program_ms
time_inside status 10000
judge "10000 status lines, log off" "ten times 1000" ms "$program_ms" \
    "$(awk -v ms="$thousand" 'BEGIN { print 10 * ms }')" 1.25
time_inside window
judge "the window" "a bare one" ms "$program_ms" "$other_ms" 1.25
judge "size of the program's file" "600 KB" KB \
    "$(($(stat -c %s "$built/CorvaneTo3CX.exe") / 1024))" 600 1.00

[ "$missed" -eq 0 ] || fail "goals missed: $missed"
