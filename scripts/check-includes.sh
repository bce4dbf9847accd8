#!/usr/bin/env bash
# Fails when a file includes what its folder may not:
#   - an include of the program that runs upwards in the house, or against the order on a floor;
#   - a header of Windows or COM outside of platform/, ui/window/, check/platform/ and the two main.cpp;
#   - the practice GoldMine and the program sharing a file; a test from outside that knows either.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"

# Each folder of src/ and those that it may include; docs/architecture.md draws this.
allowed='
seams:
util: seams
platform: seams util
ui/form: seams util
ui/window: seams util platform ui/form
settings: seams util ui/form
gmapi: seams util ui/form
dialing: seams util ui/form gmapi
calls: seams util ui/form gmapi dialing
environment: seams util ui/form settings gmapi dialing
app: seams util ui/form settings gmapi dialing calls environment
app/main.cpp: seams util ui/form settings gmapi dialing calls environment app platform ui/window
check: seams util ui/form settings gmapi dialing calls environment app
check/platform: seams util platform check
check/main.cpp: seams util ui/form settings gmapi dialing calls environment platform check check/platform
'

# room <file below src/>: the folder whose rules it follows.
room() {
    case $1 in
    app/main.cpp | check/main.cpp) echo "$1" ;;
    ui/* | check/platform/*) cut -d/ -f1,2 <<<"$1" ;;
    *) cut -d/ -f1 <<<"$1" ;;
    esac
}

wrong=0
complain() {
    printf '%s includes %s: %s\n' "$1" "$2" "$3" >&2
    wrong=1
}

# includes <folder...>: "file<TAB>header", the header as it stands between <> or "".
includes() {
    grep -rnoE --include='*.h' --include='*.cpp' '^#include [<"][^>"]+[>"]' "$@" |
        sed -E 's/^([^:]*):[0-9]*:#include /\1\t/'
}

while IFS=$'\t' read -r file header; do
    from=$(room "${file#src/}")
    may=$(sed -n "s|^$from: *||p" <<<"$allowed")
    grep -q "^$from:" <<<"$allowed" || complain "$file" "$header" "the folder has no rule"
    case $header in
    '<'*.h*'>')
        # C++ headers have no ending; everything else in angle brackets is the system's.
        [[ " app/main.cpp platform ui/window check/main.cpp check/platform " == *" $from "* ]] ||
            complain "$file" "$header" "only platform/, ui/window/ and main.cpp know Windows"
        ;;
    '"Version.h"' | '"resources/'*) ;;
    '"'*)
        header=${header//\"/}
        to=$(room "$header")
        [ "$to" = "${from%/main.cpp}" ] || [[ " $may " == *" $to "* ]] ||
            complain "$file" "$header" "$from may include no $to"
        ;;
    esac
done < <(includes src)

# The practice GoldMine knows itself alone, the set-up's library what the program has for Windows'
# handles. A test includes what stands beside it and what all tests share (of which the portable part
# knows no Windows); one that knows the program also the program and all of tests/.
while IFS=$'\t' read -r file header; do
    header=${header//\"/}
    beside=$(dirname "$file")/$header
    case $file:$header in
    *:*..*) false ;;
    standin/*) [ -f "$beside" ] || [ -f "standin/$header" ] || [ "$header" = sqlite3.h ] ;;
    tests/support/windows/*:support/*) [ -f "tests/$header" ] ;;
    tests/support/*:support/windows/*) false ;;
    tests/*:support/*) [ -f "tests/$header" ] ;;
    packaging/*) [ -f "packaging/$header" ] || [[ $header == platform/kit/* ]] ;;
    tests/installer/*) [ -f "tests/$header" ] || [ -f "packaging/$header" ] ;;
    tests/unit/* | tests/windows/* | tests/fakes/* | tests/fuzz/* | tests/memory/*)
        [ -f "$beside" ] || [ -f "tests/$header" ] || [ -f "src/$header" ]
        ;;
    *) [ -f "$beside" ] ;;
    esac || complain "$file" "$header" "nothing that its folder may know"
done < <(includes packaging standin tests | grep '"')

exit "$wrong"
