#!/usr/bin/env bash
# Makes a small Debian 12 i386 system that holds a 32-bit Wine, for machines whose own packages
# cannot be joined by 32-bit ones. It stays in the user's cache (about 1 GB).
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

# Fonts: Wine's own, and metric equals of Arial and Times; the X libraries are those that Wine loads
# at run time. Versions are pinned by the Debian release.
release=bookworm
packages=wine32,wine,fonts-wine,fonts-liberation,fonts-dejavu-core
packages+=,libxcomposite1,libxcursor1,libxfixes3,libxi6,libxinerama1,libxrandr2,libxrender1

mkdir -p "$cache"
if [ "${CORVANE_I386_ROOT_LOCKED:-}" != yes ]; then
    CORVANE_I386_ROOT_LOCKED=yes exec flock --close "$i386_root.lock" "$0"
fi

if [ "$(cat "$i386_root/made-of" 2>/dev/null)" != "$release $packages" ]; then
    say "making a 32-bit Wine in $i386_root (some minutes, once)"
    fresh=$i386_root.fresh
    make_root() {
        as_root rm -rf "$fresh"
        as_root debootstrap --arch=i386 --variant=minbase --include="$packages" "$release" "$fresh" \
            >"$cache/debootstrap.log" 2>&1
    }
    if ! try_thrice make_root; then
        tail -n 30 "$cache/debootstrap.log" >&2
        fail "debootstrap failed"
    fi
    as_root chroot "$fresh" apt-get clean
    echo "$release $packages" | as_root tee "$fresh/made-of" >/dev/null
    # Whole or not at all: the root appears under its name when everything is in it.
    as_root rm -rf "$i386_root"
    as_root mv "$fresh" "$i386_root"
fi

# The place where the repository is seen inside, for users who may not make folders there.
as_root mkdir -p "$i386_root$top"
