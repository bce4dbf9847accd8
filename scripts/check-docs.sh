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
    sed -E '/^( {4}|\t)/d' "$1" | grep -oE '`[^`]+`' | tr -d '`' || true
}

links=0
for page in "${pages[@]}"; do
    # The practice kit's page links to what lies beside it in the kit.
    [[ $page != packaging/practice-kit/* ]] || continue
    folder=$(dirname "$page")
    while read -r link; do
        links=$((links + 1))
        path=${link%%#*}
        target=$page
        [ -z "$path" ] || target=$(realpath -m --relative-to=. "$folder/$path")
        if ! there "$target"; then
            complain "$page" "no such file: $link"
        elif [[ $link == *'#'* ]] && ! anchors "$target" | grep -qxF -- "${link#*#}"; then
            complain "$page" "no such heading: $link"
        fi
    done < <(prose "$page" | grep -oE '\]\([^)]+\)' | sed 's/^](//; s/)$//' |
        grep -vE '^(https?|mailto):' || true)
done
[ "$links" -gt 50 ] || fail "hardly any links"

shown=$(cat "${pages[@]}" | grep -oE '!\[[^]]*\]\([^)]+\)' || true)
while read -r picture; do
    [[ $shown == *"/${picture##*/})"* ]] || complain "$picture" "shown on no page"
done < <(grep '^docs/images/' <<<"$sources")

builds=$(grep -hE 'add_(executable|library|custom_target|test)|corvane_add_test|foreach' -r \
    CMakeLists.txt --include=CMakeLists.txt src standin tests cmake)
for page in "${pages[@]}"; do
    # Paths from the top, and names of files wherever they stand. "<...>" stands for many.
    while read -r path; do
        there "$path" || complain "$page" "no such path: $path"
    done < <(code "$page" | grep -oE '(^|[ (])(\./)?((scripts|docs|src|tests|standin|cmake|packaging|\.ci)/[][A-Za-z0-9_.*/-]*|\./[a-z]+\.sh)([^<A-Za-z0-9_/]|$)' |
        sed -E 's/^[ (]//; s/[^A-Za-z0-9_*/-]$//; s/\.$//' | sort -u)
    while read -r file; do
        grep -qE -- "(^|/)${file//./\\.}\$" <<<"$sources" || complain "$page" "no such file: $file"
    done < <(code "$page" | grep -xE '[A-Za-z0-9_/-]+\.(cpp|h|sh|pl|cmake|idl|sql)' | sort -u)
    while read -r preset; do
        grep -qF "\"name\": \"$preset\"" CMakePresets.json || complain "$page" "no such preset: $preset"
    done < <(code "$page" | grep -oE -- '--preset [a-z0-9-]+' | cut -d' ' -f2 | sort -u)
    while read -r name; do
        grep -qwE -- "[a-z0-9_]*${name}[a-z0-9_]*" <<<"$builds" || complain "$page" "no such target or test: $name"
    done < <(code "$page" | grep -oE -- '(--target|-R) [A-Za-z0-9_]+' | cut -d' ' -f2 | sort -u)
    # The pages for those who change the program name its other controls, too, and make up two.
    known=docs/settings.md
    case $page in docs/architecture.md | CONTRIBUTING.md) known=src/ui/form/ControlCatalogue.h ;; esac
    while read -r setting; do
        grep -qwF -- "$setting" "$known" || complain "$page" "no such setting: $setting"
    done < <(code "$page" | grep -oE '\b(chk|opt|txt)[A-Z][A-Za-z0-9]*' | sort -u |
        grep -vxE 'chkRetry|txtRetrySeconds' || true)
done

# The guide's last table says which caption each setting has that it names.
table=$(sed '1,/^## The settings named here/d' docs/user-guide.md | grep '^| `')
while IFS='|' read -r _ name _ caption _; do
    grep -F -- "|$name|" docs/settings.md | tr -s ' ' | grep -qF -- "|$caption|" ||
        complain docs/user-guide.md "another caption in docs/settings.md:$name"
done <<<"$table"
while read -r setting; do
    [[ $table == *"| \`$setting\` |"* ]] || complain docs/user-guide.md "without its caption: $setting"
done < <(code docs/user-guide.md | grep -oE '\b(chk|opt|txt)[A-Z][A-Za-z0-9]*' | sort -u)

exit "$wrong"
