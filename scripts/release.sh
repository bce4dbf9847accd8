#!/usr/bin/env bash
# Makes a release into dist/<version> (or the folder that is named): release.sh [folder]
# Installs what the machine lacks, builds the x86 programs and their symbols, packs, and says what was
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
programs=(CorvaneTo3CX CorvaneCheck)
build x86-symbols "${programs[@]}"

# The programs are shipped without their symbols, which fit them only when both hold the same code.
rm -rf "$folder"
mkdir -p "$folder/symbols"
for program in "${programs[@]}"; do
    for section in .text .rdata .data; do
        for preset in x86-release x86-symbols; do
            i686-w64-mingw32-objcopy -O binary --only-section="$section" \
                "build/$preset/$program.exe" "build/release/$preset$section"
        done
        cmp "build/release/x86-release$section" "build/release/x86-symbols$section" ||
            fail "the symbols are those of another $program"
    done
    i686-w64-mingw32-objcopy --only-keep-debug "build/x86-symbols/$program.exe" \
        "$folder/symbols/$program.debug"
done

scripts/package.sh "$folder"
cat "$folder/SHA256SUMS"
