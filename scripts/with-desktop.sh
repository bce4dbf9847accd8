#!/usr/bin/env bash
# Runs a command on a desktop of its own: with-desktop.sh [x64|x86] <command...>
#
# The desktop is an Xvfb on a free display with a Wine server that stays while the command runs, so
# that Windows programs (started by scripts/wine-x64.sh or wine-x86.sh) start fast. The Wine prefix
# is made at its first use; only one session at a time uses it. At the end everything started here
# is ended. The architecture is x64 when none is named. Exit code: that of the command.
set -euo pipefail
# shellcheck source=scripts/wine-common.sh
. "$(dirname "$0")/wine-common.sh"

architecture=x64
case ${1:-} in
x64 | x86)
    architecture=$1
    shift
    ;;
esac
[ $# -ge 1 ] || { echo "usage: ${0##*/} [x64|x86] <command...>" >&2; exit 2; }

use_wine "$architecture"

# A prefix with other settings than those below is made anew, but nothing is deleted elsewhere than
# below build/wine: a folder that CORVANE_WINEPREFIX names may be anybody's.
made=$prefix/made-for-corvane-1920x1200
case $(realpath -m "$prefix") in
"$(realpath -m "$top/build/wine")"/?*) may_be_deleted=yes ;;
*)
    may_be_deleted=
    [ -f "$made" ] || [ ! -e "$prefix" ] || [ -z "$(ls -A "$prefix")" ] ||
        fail "$prefix is no Wine prefix that these scripts made; it stays as it is"
    ;;
esac

# The lock is held by flock itself, so that no process that outlives the session can keep it.
if [ "${CORVANE_DESKTOP_LOCK:-}" != "$prefix" ]; then
    mkdir -p "$(dirname "$prefix")"
    flock --nonblock "$prefix.lock" true || say "waiting for another session on $prefix"
    CORVANE_DESKTOP_LOCK=$prefix exec flock --close "$prefix.lock" "$0" "$architecture" "$@"
fi

# All of a session shares one core: program and Wine server wait for each other by turns, and to wake
# another core takes far longer than what it then does. The two architectures take different ones.
cores=$(sed -n 's/^Cpus_allowed_list:[[:space:]]*//p' /proc/self/status)
case $architecture in
x64) core=${cores%%[-,]*} ;;
x86) core=${cores##*[-,]} ;;
esac
taskset --cpu-list --pid "$core" $$ >/dev/null || fail "cannot stay on core $core"

xvfb=
server_started=
# shellcheck disable=SC2317  # Called by the trap.
end_session() {
    if [ -n "$server_started" ]; then
        "${enclose[@]}" "$server" -k || say "the Wine server had ended before its session"
    fi
    if [ -n "$xvfb" ]; then
        kill "$xvfb" 2>/dev/null || say "the display had ended before its session"
        wait "$xvfb" 2>/dev/null || :
    fi
    rm -rf "$work"
}
work=$(mktemp -d)
trap end_session EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Xvfb writes the number of the display that it found free once it takes connections.
mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp -noreset \
    3>"$work/display" >"$work/xvfb.log" 2>&1 </dev/null &
xvfb=$!
read -r -t 30 display <"$work/display" || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
export DISPLAY=:$display
unset XAUTHORITY

# Nobody else uses the prefix now: a Wine server on it is one that a killed session has left.
if [ -d "$prefix" ] && "${enclose[@]}" "$server" -k; then
    say "ended the Wine server of a session before this one"
    "${enclose[@]}" "$server" -w
fi
[ -f "$made" ] || [ -z "$may_be_deleted" ] || rm -rf "$prefix"
mkdir -p "$prefix/home"
"${enclose[@]}" "$server" -p || fail "the Wine server of $prefix does not start"
server_started=yes
if [ ! -f "$made" ]; then
    say "making the Wine prefix $prefix"
    "${enclose[@]}" "$loader" wineboot.exe --init >"$work/wineboot.log" 2>&1 ||
        fail "Wine could not make its prefix: $(cat "$work/wineboot.log")"
    # Wine draws the desktop and the title bars itself (there is no window manager), text is
    # smoothed, the caret does not blink, and a crash ends a program without asking anybody.
    cat >"$prefix/drive_c/settings.reg" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\Explorer]
"Desktop"="Default"

[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]
"Default"="1920x1200"

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\Control Panel\Desktop]
"CursorBlinkRate"="-1"
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000002
REG
    "${enclose[@]}" "$loader" regedit.exe /S 'C:\settings.reg' </dev/null ||
        fail "Wine did not take its settings"
    # The signs on the title bars' buttons, which Debian's Wine does not find by itself.
    cp /usr/share/wine/fonts/marlett.ttf "$prefix/drive_c/windows/Fonts/"
    # The desktop comes anew with these settings.
    "${enclose[@]}" "$server" -k
    "${enclose[@]}" "$server" -w
    "${enclose[@]}" "$server" -p
    touch "$made"
fi

# Wine's own processes start with the first program that needs them and keep its output open, and the
# desktop closes a second after its last program: neither must happen to the command's programs. So
# all of them start here, and a command interpreter that waits for input for ever stays.
"${enclose[@]}" "$loader" wineboot.exe </dev/null >"$work/start.log" 2>&1 ||
    fail "Wine does not start: $(cat "$work/start.log")"
mkfifo "$work/never"
"${enclose[@]}" "$loader" cmd.exe <>"$work/never" >"$work/keeper.log" 2>&1 &
# To look for the windows of a process that does not exist opens the desktop, and answers 128.
opened=0
"${enclose[@]}" "$loader" taskkill.exe /PID 999999 </dev/null >"$work/open.log" 2>&1 || opened=$?
[ "$opened" -eq 128 ] || fail "Wine's desktop does not open: $(cat "$work/open.log")"

export CORVANE_DESKTOP=$architecture
status=0
"$@" || status=$?
exit "$status"
