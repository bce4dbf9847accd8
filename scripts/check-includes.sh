#!/usr/bin/env bash
# Fails when a file includes what its folder may not:
#   - an include of the program that runs upwards in the house, or against the order on a floor;
#   - a header of Windows or COM outside of platform/, ui/window/ and app/main.cpp;
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
'

# room <file below src/>: the folder whose rules it follows.
room() {
    case $1 in
    app/main.cpp) echo app/main.cpp ;;
    ui/*) cut -d/ -f1,2 <<<"$1" ;;
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
        [[ " app/main.cpp platform ui/window " == *" $from "* ]] ||
            complain "$file" "$header" "only platform/, ui/window/ and app/main.cpp know Windows"
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

# known <root> <file> <header>: whether the header is one beside the file or below that root.
known() { [ -f "$(dirname "$2")/$3" ] || [ -f "$1/$3" ]; }

while IFS=$'\t' read -r file header; do
    known standin "$file" "${header//\"/}" ||
        complain "$file" "$header" "the practice GoldMine knows its own files only"
done < <(includes standin | grep '"' | grep -v '"sqlite3.h"')

# Tests from outside know neither the program nor the practice GoldMine.
while IFS=$'\t' read -r file header; do
    known tests "$file" "${header//\"/}" ||
        complain "$file" "$header" "no file of the tests has this name"
done < <(includes tests/end_to_end tests/standin tests/support tests/tools | grep '"')

while IFS=$'\t' read -r file header; do
    header=${header//\"/}
    known tests "$file" "$header" || [ -f "src/$header" ] || [ "$header" = Version.h ] ||
        complain "$file" "$header" "it is neither of the tests nor of the program"
done < <(includes tests/unit tests/windows tests/fakes | grep '"')

exit "$wrong"
