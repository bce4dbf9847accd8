#!/usr/bin/env bash
# Fails when a file includes what its folder may not:
#   - an include of the program that runs upwards in the house, or against the order on a floor;
#   - a header of Windows or COM outside of platform/, ui/window/, check/platform/ and the two main.cpp;
#   - the practice GoldMine and the program sharing a file; a test from outside that knows either;
#   - a name of a precompiled header of the library in use, and the header not included.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"

# Each folder of src/ and those that it may include; docs/architecture.md draws this.
declare -A allowed
while IFS=: read -r folder others; do
    allowed[$folder]=$others
done <<'ALLOWED'
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
ALLOWED

# room <file below src/>: puts the folder whose rules it follows into $room.
room() {
    local below=${1#*/}
    case $1 in
    app/main.cpp | check/main.cpp) room=$1 ;;
    ui/* | check/platform/*) room=${1%%/*}/${below%%/*} ;;
    *) room=${1%%/*} ;;
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
    room "${file#src/}"
    from=$room
    [ -n "${allowed[$from]+yes}" ] || complain "$file" "$header" "the folder has no rule"
    case $header in
    '<'*.h*'>')
        # C++ headers have no ending; everything else in angle brackets is the system's.
        [[ " app/main.cpp platform ui/window check/main.cpp check/platform " == *" $from "* ]] ||
            complain "$file" "$header" "only platform/, ui/window/ and main.cpp know Windows"
        ;;
    '"Version.h"' | '"resources/'*) ;;
    '"'*)
        header=${header//\"/}
        room "$header"
        [ "$room" = "${from%/main.cpp}" ] || [[ " ${allowed[$from]-} " == *" $room "* ]] ||
            complain "$file" "$header" "$from may include no $room"
        ;;
    esac
done < <(includes src)

# The practice GoldMine knows itself alone, the set-up's library what the program has for Windows'
# handles. A test includes what stands beside it and what all tests share (of which the portable part
# knows no Windows); one that knows the program also the program and all of tests/.
while IFS=$'\t' read -r file header; do
    header=${header//\"/}
    beside=${file%/*}/$header
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

# The names, behind std:: or std::ranges::, of which a file that uses them includes the header itself,
# or a source's own header does. A row for each header of the library that is precompiled.
names='
algorithm: all_of any_of clamp copy copy_if copy_n count count_if equal equal_range fill find find_first_of
algorithm: find_if find_if_not for_each lower_bound max max_element min min_element minmax mismatch none_of
algorithm: remove_if replace replace_if reverse rotate search sort stable_sort transform unique upper_bound
array: array to_array
functional: bind_front cref function greater identity invoke not_fn plus ref reference_wrapper
map: map multimap
memory: addressof enable_shared_from_this make_shared make_unique shared_ptr unique_ptr weak_ptr
optional: make_optional nullopt optional
string: basic_string char_traits string to_string to_wstring wstring
utility: as_const cmp_equal cmp_greater cmp_less exchange forward in_range index_sequence move pair swap
vector: vector
'
for header in $(sed -n '/^target_precompile_headers/,/)/p' src/CMakeLists.txt standin/CMakeLists.txt |
    grep -o '<[a-z_]*>' | tr -d '<>' | sort -u); do
    grep -q "^$header: " <<<"$names" || complain "the build" "<$header>" "its names are not known here"
done
mapfile -t sources < <(find packaging src standin -name '*.cpp' -o -name '*.h' | sort)
NAMES=$names awk '
    BEGIN {
        rows = split(ENVIRON["NAMES"], row, "\n")
        for (i = 1; i <= rows; ++i)
            if (split(row[i], part, ": ") == 2) {
                gsub(" ", "|", part[2])
                header[i] = part[1]
                pattern[i] = "std::(ranges::)?(" part[2] ")([^a-z_]|$)"
            }
    }
    /^#include </ { has[FILENAME, substr($2, 2, length($2) - 2)] }
    { sub("//.*", "") }
    /std::/ {
        for (i in header)
            if ($0 ~ pattern[i] && !((FILENAME, header[i]) in used))
                used[FILENAME, header[i]] = FNR
    }
    END {
        for (each in used) {
            split(each, part, SUBSEP)
            own = part[1]
            sub(/cpp$/, "h", own)
            if (!(each in has) && !((own, part[2]) in has)) {
                print part[1] ":" used[each] ": uses <" part[2] ">, which is not included"
                wrong = 1
            }
        }
        exit wrong
    }' "${sources[@]}" >&2 || wrong=1

exit "$wrong"
