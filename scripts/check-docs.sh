#!/usr/bin/env bash
# Fails when a page (*.md) says what is not so, as far as that can be seen:
#   - a link leads to no file of the sources, or to no heading of its page;
#   - a picture of docs/images is shown nowhere;
#   - a path, a file, a preset, a target or a test that is named in code is not there;
#   - a setting that is named does not stand in docs/settings.md.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"

wrong=0
complain() {
    printf '%s: %s\n' "$1" "$2" >&2
    wrong=1
}

# matching <grep's arguments>: grep, for which finding nothing is no failure; any other still is.
matching() { grep "$@" || [ $? -eq 1 ]; }

# The sources, with files that are not committed yet.
sources=$(find . \( -name .git -o -path ./build -o -path ./dist \) -prune -o -type f -printf '%P\n' | sort)
mapfile -t pages < <(grep '\.md$' <<<"$sources")
[ "${#pages[@]}" -gt 10 ] || fail "hardly any pages"

# there <path>: a file or folder of the sources; a pattern counts when something fits.
there() {
    local found=("$1") each
    case $1 in *'*'*) mapfile -t found < <(compgen -G "$1") ;; esac
    for each in "${found[@]}"; do
        each=${each#./}
        each=${each%/}
        grep -qxF -- "$each" <<<"$sources" || grep -qF -- "$each/" <<<"$sources" || return 1
    done
    [ "${#found[@]}" -gt 0 ]
}

# anchors <page>: of its headings, as the hosts of sources make them.
anchors() {
    awk '/^```/ { code = !code } !code && /^#+ /' "$1" | sed -E 's/^#+ +//; s/[`*]//g' |
        tr '[:upper:]' '[:lower:]' | sed -E 's/[^[:alnum:] _-]//g; s/ /-/g'
}

# prose <page>: without code; code <page>: the rest, a piece a line.
prose() { sed -E '/^( {4}|\t)/d; s/`[^`]*`//g' "$1"; }
code() {
    sed -nE '/^ {4}/p' "$1"
    sed -E '/^( {4}|\t)/d' "$1" | matching -oE '`[^`]+`' | tr -d '`'
}

links=0
for page in "${pages[@]}"; do
    # The practice kit's page links to what lies beside it in the kit.
    [[ $page != packaging/practice-kit/* ]] || continue
    folder=$(dirname "$page")
    list=$(prose "$page" | matching -oE '\]\([^)]+\)' | sed 's/^](//; s/)$//' |
        matching -vE '^(https?|mailto):')
    while read -r link; do
        [ -n "$link" ] || continue
        links=$((links + 1))
        path=${link%%#*}
        target=$page
        [ -z "$path" ] || target=$(realpath -m --relative-to=. "$folder/$path")
        if ! there "$target"; then
            complain "$page" "no such file: $link"
        elif [[ $link == *'#'* ]] && ! anchors "$target" | grep -qxF -- "${link#*#}"; then
            complain "$page" "no such heading: $link"
        fi
    done <<<"$list"
done
[ "$links" -gt 50 ] || fail "hardly any links"

shown=$(cat "${pages[@]}" | grep -oE '!\[[^]]*\]\([^)]+\)')
list=$(grep '^docs/images/' <<<"$sources")
while read -r picture; do
    [ -n "$picture" ] || continue
    [[ $shown == *"/${picture##*/})"* ]] || complain "$picture" "shown on no page"
done <<<"$list"

builds=$(grep -hE 'add_(executable|library|custom_target|test)|corvane_add_test|foreach' -r \
    CMakeLists.txt --include=CMakeLists.txt src standin tests cmake)
for page in "${pages[@]}"; do
    # Paths from the top, and names of files wherever they stand. "<...>" stands for many.
    list=$(code "$page" | matching -oE '(^|[ (])(\./)?((scripts|docs|src|tests|standin|cmake|packaging|\.ci)/[][A-Za-z0-9_.*/-]*|\./[a-z]+\.sh)([^<A-Za-z0-9_/]|$)' |
        sed -E 's/^[ (]//; s/[^A-Za-z0-9_*/-]$//; s/\.$//' | sort -u)
    while read -r path; do
        [ -n "$path" ] || continue
        there "$path" || complain "$page" "no such path: $path"
    done <<<"$list"
    list=$(code "$page" | matching -xE '[A-Za-z0-9_/-]+\.(cpp|h|sh|pl|cmake|idl|sql)' | sort -u)
    while read -r file; do
        [ -n "$file" ] || continue
        grep -qE -- "(^|/)${file//./\\.}\$" <<<"$sources" || complain "$page" "no such file: $file"
    done <<<"$list"
    list=$(code "$page" | matching -oE -- '--preset [a-z0-9-]+' | cut -d' ' -f2 | sort -u)
    while read -r preset; do
        [ -n "$preset" ] || continue
        grep -qF "\"name\": \"$preset\"" CMakePresets.json || complain "$page" "no such preset: $preset"
    done <<<"$list"
    # A target is named whole or by its beginning, a test by any part of its name, as ctest has it.
    list=$(code "$page" | matching -oE -- '(--target|-R) [A-Za-z0-9_]+' | sort -u)
    while read -r option name; do
        [ -n "$name" ] || continue
        [ "$option" = --target ] || name="[a-z0-9_]*$name"
        grep -qwE -- "${name}[a-z0-9_]*" <<<"$builds" ||
            complain "$page" "no such target or test: ${name#*\*}"
    done <<<"$list"
    # The pages for those who change the program name its other controls, too, and make up two.
    known=docs/settings.md
    case $page in docs/architecture.md | CONTRIBUTING.md) known=src/ui/form/ControlCatalogue.h ;; esac
    list=$(code "$page" | matching -oE '\b(chk|opt|txt)[A-Z][A-Za-z0-9]*' | sort -u |
        matching -vxE 'chkRetry|txtRetrySeconds')
    while read -r setting; do
        [ -n "$setting" ] || continue
        grep -qwF -- "$setting" "$known" || complain "$page" "no such setting: $setting"
    done <<<"$list"
done

# The guide's last table says which caption each setting has that it names.
table=$(sed '1,/^## The settings named here/d' docs/user-guide.md | grep '^| `')
while IFS='|' read -r _ name _ caption _; do
    grep -F -- "|$name|" docs/settings.md | tr -s ' ' | grep -qF -- "|$caption|" ||
        complain docs/user-guide.md "another caption in docs/settings.md:$name"
done <<<"$table"
list=$(code docs/user-guide.md | grep -oE '\b(chk|opt|txt)[A-Z][A-Za-z0-9]*' | sort -u)
while read -r setting; do
    [ -n "$setting" ] || continue
    [[ $table == *"| \`$setting\` |"* ]] || complain docs/user-guide.md "without its caption: $setting"
done <<<"$list"

exit "$wrong"
