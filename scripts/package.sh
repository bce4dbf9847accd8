#!/usr/bin/env bash
# Makes what is given out, from the x86 build that stands there: package.sh <folder>
# Set-up, practice kit, winget manifest, release notes and checksums. The same build and the same
# sources give the same bytes. It reads
#   SOURCE_DATE_EPOCH     the time of every packed file; by default that of the last commit
#   CORVANE_SIGN          a command that signs the Windows programs whose name follows it
#   CORVANE_DOWNLOAD_URL  where the files will be found, for winget; left open without it
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -eq 1 ] || { echo "usage: ${0##*/} <folder>" >&2; exit 2; }
mkdir -p "$1"
folder=$(cd "$1" && pwd -P)
version=$(program_version)
name=CorvaneTo3CX-$version
SOURCE_DATE_EPOCH=$(release_time)
export SOURCE_DATE_EPOCH
export TZ=UTC LC_ALL=C.UTF-8
umask 022
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sign() { [ -z "${CORVANE_SIGN:-}" ] || $CORVANE_SIGN "$@"; }
# even <folder>: times and rights that say nothing of the machine.
even() {
    find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
    find "$1" -type d -exec chmod 755 {} +
    find "$1" -type f -exec chmod 644 {} +
}
# pack <folder> <zip file>
pack() {
    even "$1"
    rm -f "$2"
    (cd "$1" && find . -type f | sed 's|^\./||' | sort | zip -X -q -9 "$2" -@)
}
# filled <template>: with the values of this release.
filled() {
    sed -e "s|@VERSION@|$version|g" -e "s|@URL@|${CORVANE_DOWNLOAD_URL:-https://address-of-the-owner.invalid}|g" \
        -e "s|@SHA256@|$(sha256sum "$folder/$name-setup.exe" | cut -d' ' -f1 | tr a-f A-F)|g" \
        -e "s|@DATE@|$(date -d "@$SOURCE_DATE_EPOCH" +%F)|g" "$1"
}

say "set-up"
"$top/scripts/collect-payload.sh" x86 "$work/payload"
sign "$work/payload/CorvaneTo3CX.exe"
sign "$work/payload/CorvaneCheck.exe"
even "$work/payload"
"$top/scripts/make-installer.sh" x86 "$work/payload" "$folder/$name-setup.exe"

say "practice kit"
"$top/scripts/collect-kit.sh" "$work/kit"
for program in "$work"/kit/*.exe; do
    sign "$program"
done
pack "$work/kit" "$folder/$name-practice-kit.zip"

if [ -d "$folder/symbols" ]; then
    pack "$folder/symbols" "$folder/$name-symbols.zip"
    rm -r "$folder/symbols"
fi

say "release notes and winget manifest"
awk -v version="$version" '/^## / { inside = $2 == version; next } inside' "$top/CHANGELOG.md" |
    sed -e '/./,$!d' >"$folder/$name-release-notes.md"
[ -s "$folder/$name-release-notes.md" ] || fail "CHANGELOG.md says nothing of $version"
mkdir -p "$folder/winget"
for template in "$top"/packaging/winget/*.yaml; do
    filled "$template" >"$folder/winget/${template##*/}"
done

say "checksums"
(cd "$folder" && find . -type f ! -name SHA256SUMS | sed 's|^\./||' | sort | xargs -d '\n' sha256sum >SHA256SUMS)
