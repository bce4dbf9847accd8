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
