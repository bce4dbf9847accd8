#!/usr/bin/env bash
# Puts together what the set-up installs: collect-payload.sh <x86|x64> <folder>
# The program and the settings come from the build, which must have been made.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -eq 2 ] || { echo "usage: ${0##*/} <x86|x64> <folder>" >&2; exit 2; }
build=$top/build/$1-release
folder=$2
rm -rf "$folder"
mkdir -p "$folder/docs/images"
cp "$build/CorvaneTo3CX.exe" "$build/CorvaneCheck.exe" "$build/CorvaneTo3CX-settings.reg" "$folder/"
sed 's/$/\r/' "$top/packaging/settings/prepare-goldmine-users.js" >"$folder/prepare-goldmine-users.js"
for page in LICENSE NOTICE; do
    sed 's/$/\r/' "$top/$page" >"$folder/$page.txt"
done

# What is written for those who change the program stays with its sources.
pages=()
for page in "$top"/docs/*.md; do
    case ${page##*/} in
    architecture.md | performance.md | reliability.md | releasing.md | gmapi.md) ;;
    *) pages+=("$page") ;;
    esac
done
"$top/scripts/render-pages.sh" "$folder/docs" "${pages[@]}"
cp "$top"/docs/images/*.png "$folder/docs/images/"
