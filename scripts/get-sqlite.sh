#!/usr/bin/env bash
# Puts SQLite's amalgamation (sqlite3.c, sqlite3.h) into a folder: get-sqlite.sh <folder>
# It comes out of the npm package better-sqlite3, whose tarball is kept in the user's cache.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

version=13.2.0
sha512=67c43ff71fee3722b1035bf814da1dc88b51551c354de281ae68f7d89871851d1c78d70163ec0ca1bb7f06fecced3cf03c05e39d946d35a12c0139d465229665
tarball=better-sqlite3-$version.tgz

[ $# -eq 1 ] || { echo "usage: ${0##*/} <folder>" >&2; exit 2; }
destination=$1
mkdir -p "$cache" "$destination"

is_right() { [ -f "$1" ] && echo "$sha512  $1" | sha512sum --check --status; }

work=$(mktemp -d "$cache/sqlite.XXXXXX")
trap 'rm -rf "$work"' EXIT

fetch() {
    (cd "$work" && npm pack "better-sqlite3@$version" --ignore-scripts --fetch-retries=0 \
        --loglevel=error >/dev/null)
}

if ! is_right "$cache/$tarball"; then
    try_thrice fetch || fail "npm could not fetch $tarball"
    is_right "$work/$tarball" || fail "$tarball is not the pinned one"
    mv -f "$work/$tarball" "$cache/$tarball"
fi

tar -xzmf "$cache/$tarball" -C "$work" --no-same-owner --strip-components=3 \
    package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h
# The header goes last: where both files are, both are whole.
mv -f "$work/sqlite3.c" "$destination/"
mv -f "$work/sqlite3.h" "$destination/"
