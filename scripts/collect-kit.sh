#!/usr/bin/env bash
# Puts together the practice kit out of the x86 build, which must have been made:
# collect-kit.sh <folder>
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -eq 1 ] || { echo "usage: ${0##*/} <folder>" >&2; exit 2; }
build=$top/build/x86-release
folder=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
rm -rf "$folder"
mkdir -p "$folder"
cp "$build/CorvaneTo3CX.exe" "$build/CorvaneCheck.exe" "$folder/"
for program in gmw CallTriggerCmd ring answer; do
    cp "$build/standin/$program.exe" "$folder/"
done
for script in "$top"/packaging/practice-kit/*.cmd; do
    sed 's/$/\r/' "$script" >"$folder/${script##*/}"
done
cp "$top/standin/data/contacts.sql" "$folder/"
for page in LICENSE NOTICE; do
    sed 's/$/\r/' "$top/$page" >"$folder/$page.txt"
done
cp "$top/standin/README.md" "$work/practice-goldmine.md"
"$top/scripts/render-pages.sh" "$folder" "$top/packaging/practice-kit/practice.md" "$work/practice-goldmine.md"
