#!/usr/bin/env bash
# The long form of what ./test.sh does for seconds only:
#   soak.sh fuzz [minutes]   the fuzz targets, 60 minutes in all unless told otherwise
#   soak.sh events [runs]    call events in a row, with another client between any two; 1000
#   soak.sh locale [name]    the end-to-end tests where another language is spoken; de_DE
#
# The fuzz targets work in build/soak/fuzz. Fails when something was found.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"
cd "$top"

usage() {
    sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "$0" >&2
    exit 2
}

# has_libfuzzer: whether Clang is here with the library that drives fuzz targets.
has_libfuzzer() {
    local work status=0
    work=$(mktemp -d)
    echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' |
        clang++ -x c++ -fsanitize=fuzzer,address,undefined -o "$work/target" - 2>"$work/log" ||
        status=1
    rm -rf "$work"
    return "$status"
}

# fuzz [minutes]: each target gets an equal share of the time. In build/soak/fuzz/<target>/ are
# then found/, the inputs that stopped it, and, where libFuzzer drives, each of them reduced and
# merged/, the kept corpus with the smallest inputs that reach further; what of them is worth
# keeping goes into tests/fuzz/corpus by hand.
fuzz() {
    local minutes=${1:-60}
    [[ $minutes =~ ^[0-9]+$ ]] || usage
    local targets=() folder
    for folder in tests/fuzz/corpus/*/; do
        targets+=("$(basename "$folder")")
    done
    local seconds=$((minutes * 60 / ${#targets[@]})) work=$PWD/build/soak/fuzz
    scripts/setup.sh soak || fail "the set-up failed"

    local engine=mutations options=()
    if has_libfuzzer; then
        engine=libFuzzer
        options=(-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCORVANE_LIBFUZZER=ON)
    else
        say "no libFuzzer here: the driver of the tests mutates the corpus by itself"
    fi
    say "$engine: ${#targets[@]} targets, $seconds s each"
    local build=$work/$engine
    cmake --preset native-asan -B "$build" "${options[@]}" >/dev/null
    nice cmake --build "$build" -j "$(nproc)" --target fuzz_targets

    local target found=()
    for target in "${targets[@]}"; do
        say "$target"
        mkdir -p "$work/$target/found"
        "fuzz_with_$engine" "$build/tests/fuzz_$target" "$PWD/tests/fuzz/corpus/$target" \
            "$work/$target" "$seconds" >"$work/$target/log" 2>&1 ||
            { found+=("$target"); tail -n 40 "$work/$target/log" >&2; }
        awk '/stat::number_of_executed_units|BINGO|MERGE-OUTER:.*files|mutations$/' \
            "$work/$target/log" | tail -n 3 >&2
    done
    [ "${#found[@]}" -eq 0 ] || fail "found something: ${found[*]} (see build/soak/fuzz)"
    say "nothing found"
}

# fuzz_with_<engine> <program> <kept corpus> <work folder> <seconds>
fuzz_with_libFuzzer() {
    local program=$1 kept=$2 work=$3 seconds=$4 status=0 find
    mkdir -p "$work/grown"
    nice "$program" -max_total_time="$seconds" -max_len=4096 -timeout=20 -print_final_stats=1 -print_funcs=0 \
        -artifact_prefix="$work/found/" "$work/grown" "$kept" || status=1
    for find in "$work"/found/crash-*; do
        if [ ! -f "$find" ] || [ -f "$work/found/reduced-${find##*/}" ]; then
            continue
        fi
        nice "$program" -minimize_crash=1 -max_total_time=30 \
            -exact_artifact_path="$work/found/reduced-${find##*/}" "$find" ||
            say "${find##*/} could not be made smaller"
    done
    rm -rf "$work/merged"
    cp -r "$kept" "$work/merged"
    # Code that was reached counts, not how often.
    nice "$program" -merge=1 -use_counters=0 "$work/merged" "$work/grown" || status=1
    return "$status"
}

fuzz_with_mutations() {
    local program=$1 kept=$2 work=$3 end=$((SECONDS + $4)) seed=$RANDOM
    cd "$work/found"
    while [ "$SECONDS" -lt "$end" ]; do
        seed=$((seed + 1))
        nice "$program" "$kept" 1000 "$seed" ||
            { mv "${program##*/}.find" "seed-$seed"; cd "$top"; return 1; }
    done
    cd "$top"
}

# end_to_end <filter>: those of the 64-bit end-to-end tests.
end_to_end() {
    scripts/setup.sh test || fail "the set-up failed"
    cmake --preset x64-release >/dev/null
    cmake --build --preset x64-release -j "$(nproc)" --target end_to_end_tests
    scripts/with-desktop.sh x64 scripts/wine-x64.sh \
        build/x64-release/tests/end_to_end_tests.exe "--gtest_filter=$1"
}

events() {
    local runs=${1:-1000}
    [[ $runs =~ ^[0-9]+$ ]] || usage
    CORVANE_RUNS=$runs end_to_end 'ManyRunsTest.*'
}

locale() {
    local name=${1:-de_DE}
    scripts/setup.sh test || fail "the set-up failed"
    mkdir -p build/locales
    [ -d "build/locales/$name.UTF-8" ] ||
        localedef --no-archive -i "$name" -f UTF-8 "build/locales/$name.UTF-8"
    LOCPATH=$PWD/build/locales CORVANE_LOCALE=$name.UTF-8 end_to_end '*'
}

case ${1:-} in
fuzz | events | locale) "$@" ;;
*) usage ;;
esac
