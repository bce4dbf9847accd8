# Read by the Wine scripts: how a Windows program of one architecture is run here.
# shellcheck shell=bash
# shellcheck disable=SC2034  # The variables are for the readers.

# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# use_wine <x64|x86>: sets the environment of Wine and
#   prefix   the Wine prefix: build/wine/<architecture>, or what CORVANE_WINEPREFIX says
#   loader   the program that starts Windows programs
#   server   the matching wineserver
#   enclose  what has to stand before either of them
use_wine() {
    local architecture=$1
    prefix=${CORVANE_WINEPREFIX:-$top/build/wine/$architecture}
    # The user's folders in the prefix lead here and not into the real home folder.
    enclose=(env "HOME=$prefix/home")
    case $architecture in
    x64)
        loader=/usr/lib/wine/wine64
        server=/usr/lib/wine/wineserver64
        export WINEARCH=win64
        [ -x "$loader" ] || fail "no 64-bit Wine here: run scripts/setup.sh test"
        ;;
    x86)
        loader=/usr/lib/wine/wine
        server=/usr/lib/wine/wineserver32
        export WINEARCH=win32
        if [ ! -x "$loader" ]; then
            [ -x "$i386_root$loader" ] || fail "no 32-bit Wine here: run scripts/setup.sh test"
            enclose=("$top/scripts/in-i386-root.sh" "$prefix" "${enclose[@]}")
        elif [ ! -x "$server" ]; then
            # Beside a 64-bit Wine, Debian serves both architectures with one wineserver.
            server=/usr/lib/wine/wineserver64
        fi
        ;;
    *) fail "no such architecture: $architecture" ;;
    esac

    export WINEPREFIX=$prefix WINEDEBUG=${WINEDEBUG:--all}
    export WINELOADER=$loader WINESERVER=$server
    # No .NET and no browser engine: Wine would ask to download them. No entries in the user's menus.
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
    # Unix file names are UTF-8, and the Windows locale is the same on every machine; a test names
    # another one.
    export LC_ALL=${CORVANE_LOCALE:-C.UTF-8}
    unset LANG LANGUAGE
}

# run_program <program> [arguments...]: runs it and ends with its exit code. One that still runs after
# $CORVANE_STACKS_AFTER seconds, when that is set, is ended (124), and where it and all other Windows
# programs of the desktop stood is printed: a hang that nobody can look at any more would teach nothing.
run_program() {
    [ -n "${CORVANE_STACKS_AFTER:-}" ] || exec "${enclose[@]}" "$loader" "$@"
    print_stacks_later "${1##*/}" &
    local later=$! status=0
    "${enclose[@]}" "$loader" "$@" || status=$?
    kill "$later" 2>/dev/null || :
    ! wait "$later" 2>/dev/null || status=124
    exit "$status"
}

# print_stacks_later <name>: waits without a process of its own, which would outlive this one; can be
# ended only as long as it waits.
print_stacks_later() {
    local debugger=("${enclose[@]}" "$loader" winedbg.exe --command) process
    read -rt "$CORVANE_STACKS_AFTER" <> <(:) || :
    trap '' TERM
    echo "$1 still runs after $CORVANE_STACKS_AFTER s. The stacks:"
    process=$("${debugger[@]}" "info proc" </dev/null |
        awk -v name="'$1'" '$NF == name { found = $1 } END { print found }')
    process=$((16#${process//[!0-9a-f]/}))
    "${debugger[@]}" "bt all" "$process" </dev/null 2>&1
    "${enclose[@]}" "$loader" taskkill.exe /F /PID "$process" </dev/null
}
