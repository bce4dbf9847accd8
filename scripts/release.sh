#!/usr/bin/env bash
# Makes a release into dist/<version> (or the folder that is named): release.sh [folder]
# Installs what the machine lacks, builds the x86 program and its symbols, packs, and says what was
# made. docs/releasing.md tells how to sign it and what to do before and after.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"
folder=$(realpath -m "${1:-dist/$(program_version)}")

say "setting up"
scripts/setup.sh release || fail "the set-up failed"
[ -z "$(git status --porcelain)" ] || say "what is not committed goes into this release, too"

mkdir -p build/release
SOURCE_DATE_EPOCH=$(release_time)
export SOURCE_DATE_EPOCH
# A cache of the compiler may put other paths into symbols than the compiler itself.
export CCACHE_DISABLE=1
# build <preset> <target...>, from the beginning
build() {
    say "building $1"
    { cmake --preset "$1" && cmake --build --preset "$1" --clean-first -j "$(nproc)" --target "${@:2}"; } \
        >"build/release/$1.log" 2>&1 || { cat "build/release/$1.log" >&2; fail "$1 does not build"; }
}
build x86-release src/all packaging/installer/all standin/all
build x86-symbols CorvaneTo3CX

# The program is shipped without its symbols, which fit it only when both hold the same code.
for section in .text .rdata .data; do
    for preset in x86-release x86-symbols; do
        i686-w64-mingw32-objcopy -O binary --only-section="$section" \
            "build/$preset/CorvaneTo3CX.exe" "build/release/$preset$section"
    done
    cmp "build/release/x86-release$section" "build/release/x86-symbols$section" ||
        fail "the symbols are another program's"
done
rm -rf "$folder"
mkdir -p "$folder/symbols"
i686-w64-mingw32-objcopy --only-keep-debug build/x86-symbols/CorvaneTo3CX.exe \
    "$folder/symbols/CorvaneTo3CX.debug"

scripts/package.sh "$folder"
cat "$folder/SHA256SUMS"
