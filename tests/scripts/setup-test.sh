#!/usr/bin/env bash
# scripts/setup.sh on a machine that has nothing, with a package manager that only notes what it is
# asked for: no package may go for another one.
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd -P)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

stub() {
    printf '#!/bin/sh\n%s\n' "$2" >"$work/$1"
    chmod +x "$work/$1"
}
stub apt-get "echo \"\$*\" >>'$work/asked'"
stub dpkg-query 'exit 1'
# The real one would look for the programs elsewhere.
stub sudo 'exec "$@"'

# A release is made, and tested, with the same packages.
for mode in release test; do
    : >"$work/asked"
    PATH=$work:$PATH "$top/scripts/setup.sh" "$mode" >"$work/said" 2>&1 || { cat "$work/said" >&2; exit 1; }
    for package in cmake nsis zip osslsigncode cmark-gfm; do
        grep -qE " install .* $package( |$)" "$work/asked" ||
            { echo "FAILED: $mode did not install $package" >&2; exit 1; }
    done
    if grep " install " "$work/asked" | grep -v -e " --no-remove "; then
        echo "FAILED: packages could be removed" >&2
        exit 1
    fi
done
