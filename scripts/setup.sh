#!/usr/bin/env bash
# Installs what the build, the tests or the demonstration need and this machine lacks:
#   setup.sh build        compilers and tools
#   setup.sh test [x86]   the same, and what runs the tests; x86 adds a 32-bit Wine
#   setup.sh demo [x86]   the same, and what takes the screenshots and opens the report
#   setup.sh release      the first, and what makes and signs the set-up
#   setup.sh soak         the first, and what drives the fuzz targets for long
# Made for Debian 12, whose release pins the versions. Installs nothing that is there already.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

build_packages=(
    ca-certificates
    ccache
    cmake
    g++
    g++-mingw-w64-i686-posix
    g++-mingw-w64-x86-64-posix
    googletest
    libwine-dev # the type library files that the IDL compiler imports
    libxml2-dev
    mingw-w64-tools
    ninja-build
    pkg-config
)
run_packages=(
    fonts-dejavu-core
    fonts-liberation
    fonts-wine
    # The X libraries that Wine loads at run time.
    libxcomposite1
    libxcursor1
    libxfixes3
    libxi6
    libxinerama1
    libxrandr2
    libxrender1
    locales # other countries' number and date forms, and code pages
    wine
    wine64
    xvfb
)
picture_packages=(
    imagemagick
    x11-utils
)
release_packages=(
    cmark-gfm # pages for a browser out of the documentation
    nsis
    osslsigncode
    unzip
    zip
)

mode=${1:-}
wanted=("${build_packages[@]}")
case $mode in
build) ;;
test)
    wanted+=("${run_packages[@]}" "${picture_packages[@]}" "${release_packages[@]}"
        clang-format clang-tidy)
    ;;
demo) wanted+=("${run_packages[@]}" "${picture_packages[@]}" unzip) ;;
release) wanted+=("${release_packages[@]}") ;;
soak) wanted+=(clang libclang-rt-14-dev) ;;
*) echo "usage: ${0##*/} build|test|demo|release|soak [x86]" >&2; exit 2 ;;
esac
# Node.js of any origin does, as long as it brings npm.
command -v npm >/dev/null || wanted+=(npm)

export DEBIAN_FRONTEND=noninteractive
lists_are_fresh=

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

refresh_lists() {
    [ -z "$lists_are_fresh" ] || return 0
    # Lists of other parties may fail; whether the packages install is what counts.
    try_thrice as_root apt-get -qq -o APT::Update::Error-Mode=any update ||
        say "not every package list could be refreshed; going on"
    lists_are_fresh=yes
}

install() {
    # A package that could only come in another's place does not come.
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 \
        -o DPkg::Lock::Timeout=300 install -y --no-remove --no-install-recommends "$@" \
        </dev/null
}

install_missing() {
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ "${#missing[@]}" -gt 0 ] || return 0
    say "installing ${missing[*]}"
    refresh_lists
    try_thrice install "${missing[@]}" >&2 || fail "could not install ${missing[*]}"
}

# The machine's own packages where they can be had, else an i386 system of our own.
install_32bit_wine() {
    [ ! -x /usr/lib/wine/wine ] || return 0
    if [ ! -f "$i386_root/made-of" ]; then
        if ! dpkg --print-foreign-architectures | grep -qx i386; then
            as_root dpkg --add-architecture i386
            lists_are_fresh=
            local architecture_is_ours=yes
        fi
        refresh_lists
        if apt-get -qq install -s --no-remove wine32:i386 >/dev/null 2>&1; then
            say "installing wine32:i386"
            try_thrice install wine32:i386 >&2 && return 0
        fi
        if [ "${architecture_is_ours:-}" = yes ]; then
            as_root dpkg --remove-architecture i386 ||
                say "the i386 architecture stays enabled: packages of it are installed"
        fi
    fi
    install_missing debootstrap
    "$top/scripts/get-i386-root.sh"
}

. /etc/os-release
[ "${VERSION_CODENAME:-}" = bookworm ] || say "made for Debian 12; this is ${PRETTY_NAME:-unknown}"

install_missing "${wanted[@]}"
if [ "${2:-}" = x86 ]; then
    install_32bit_wine
fi
