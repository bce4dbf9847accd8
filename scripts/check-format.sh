#!/usr/bin/env bash
# Fails when a C++ file is not laid out as .clang-format says, or any text file breaks a rule of
# .editorconfig. Inputs of fuzz targets are any bytes.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"
# Lengths count characters, and a text that is not UTF-8 can be told.
export LC_ALL=C.UTF-8

mapfile -t -d '' texts < <(find . \( -name .git -o -path ./build -o -path ./dist \
    -o -path ./tests/fuzz/corpus -o -name .idea -o -name .vscode \) -prune \
    -o -type f ! -name '*.ico' ! -name '*.png' ! -name '*.tgz' -print0)
mapfile -t -d '' sources < <(find cmake packaging src standin tests \( -name '*.cpp' -o -name '*.h' \) -print0)
[ "${#sources[@]}" -gt 0 ] || fail "there is no C++ file here"

wrong=0
complain() {
    printf '%s\n%s\n' "$1" "$2" >&2
    wrong=1
}

# forbid <what is wrong> <grep's options and pattern> <file...>: no line may match.
forbid() {
    local found status=0
    found=$(grep --with-filename --line-number "${@:2}") || status=$?
    [ "$status" -le 1 ] || fail "could not look for: $1"
    [ "$status" -eq 1 ] || complain "$1" "$found"
}

forbid 'a tab:' -e $'\t' "${texts[@]}"
forbid 'a carriage return:' -e $'\r' "${texts[@]}"
forbid 'a blank at the end of a line:' -e ' $' "${texts[@]}"
forbid 'not UTF-8:' --text --invert-match --line-regexp -e '.*' "${texts[@]}"
forbid 'more than 100 characters:' -E -e '.{101}' "${sources[@]}"
for file in "${texts[@]}"; do
    [ -z "$(tail -c 1 "$file")" ] || complain 'no line break at the end:' "$file"
done
clang-format --dry-run -Werror "${sources[@]}" || wrong=1

exit "$wrong"
