#!/usr/bin/env bash
# Feeds made-up files, texts and command lines to what reads them, and checks what must hold of any.
#   scripts/fuzz.sh [TARGET...] [SECONDS]     all targets when none is named; they share the time
# Without a time: only the corpus, each file once. TARGET: Words is tests/fuzz/rules/WordsFuzz.cpp. Those of the rules
# run under AddressSanitizer and UBSan, those in tests/fuzz/windows in a Wine prefix.
# What comes out lies in build/fuzz-results: TARGET.log, the input of a fault as TARGET-*, and in TARGET inputs that
# reached something new.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

sources=$root/tests/fuzz
results=$build/fuzz-results
targets=() seconds=0
for argument in "$@"; do
    if [[ $argument =~ ^[0-9]+$ ]]; then seconds=$argument; else targets+=("$argument"); fi
done
[ ${#targets[@]} != 0 ] || mapfile -t targets < <(cd "$sources" && ls {rules,windows}/*Fuzz.cpp | sed 's|.*/\(.*\)Fuzz\.cpp|\1|')

is_rule() {
    [ -f "$sources/rules/$1Fuzz.cpp" ]
}

fuzz_rule() {
    local run=("$sources/corpus/$1"/*) dictionary=$sources/rules/$1Fuzz.dict
    [ "$each" = 0 ] || run=(-max_total_time="$each" "$results/$1" "$sources/corpus/$1")
    # A file may claim any size; the reader must not allocate what the file doesn't have.
    "$build/fuzz/bin/$1Fuzz" -rss_limit_mb=512 -malloc_limit_mb=64 -timeout=10 -max_len=65536 -print_final_stats=1 \
        -artifact_prefix="$results/$1-" -dict="$dictionary" "${run[@]}"
}

fuzz_windows() {
    timeout -k 10 $((each + 300)) wine "$bin/$1Fuzz.exe" "$(windows_path "$sources/corpus/$1")" "$each" \
        "$(windows_path "$results/$1-crash")" </dev/null
}

"$root/scripts/setup.sh" --fuzz
windows=()
for target in "${targets[@]}"; do
    mkdir -p "$results/$target"
    [ -d "$sources/corpus/$target" ] || die "there is no corpus of $target"
    is_rule "$target" || windows+=("${target}Fuzz")
done
build_preset fuzz || die "the build failed"
unset WINEPREFIX
trap clear_up EXIT
if [ ${#windows[@]} != 0 ]; then
    build_preset release window_probe "${windows[@]}" || die "the build failed"
    start_display
    fresh_prefix "$build/fuzz-prefix"
fi

each=$(((seconds + ${#targets[@]} - 1) / ${#targets[@]}))
for target in "${targets[@]}"; do
    kind=windows
    ! is_rule "$target" || kind=rule
    "fuzz_$kind" "$target" >"$results/$target.log" 2>&1 || {
        cat "$results/$target.log" >&2
        die "$target: a fault was found"
    }
    corpus=("$sources/corpus/$target"/*)
    did="the ${#corpus[@]} files of the corpus"
    [ "$each" = 0 ] || did="$(sed -n 's/^stat::number_of_executed_units: *\([0-9]*\).*/\1/p' "$results/$target.log") inputs in $each s"
    echo "fuzz: $target: $did, no fault"
done
