#!/usr/bin/env bash
# Feeds mutated preset files to their reader, under AddressSanitizer and UBSan.
#   scripts/fuzz.sh [seconds]     without a time: only the corpus, each file once
# What it finds lies in build/fuzz afterwards: crash-*, and inputs that reached something new.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/setup.sh" --fuzz
fuzz=$build/fuzz
mkdir -p "$fuzz/found"
flags=(-std=c++20 -g -O1 -Wall -Wextra -Werror -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
includes=()
for folder in presets util framework res tests; do includes+=(-I "$root/$folder"); done
quietly "$fuzz/build.log" clang++ "${flags[@]}" "${includes[@]}" -o "$fuzz/preset_file_fuzz" \
    "$root"/tests/fuzz/PresetFileFuzz.cpp "$root"/presets/{PresetFile,PresetName,PresetWalk}.cpp || die "the build failed"

corpus=("$root"/tests/fuzz/corpus/*)
[ -f "${corpus[0]}" ] || die "there is no corpus"
if [ $# = 0 ]; then
    run=("${corpus[@]}")
else
    run=(-max_total_time="$1" "$fuzz/found" "$root/tests/fuzz/corpus")
fi
# A file may claim any size; the reader must not allocate what the file doesn't have.
"$fuzz/preset_file_fuzz" -rss_limit_mb=512 -malloc_limit_mb=64 -timeout=10 -max_len=65536 -print_final_stats=1 \
    -artifact_prefix="$fuzz/" "${run[@]}" >"$fuzz/run.log" 2>&1 || {
    cat "$fuzz/run.log" >&2
    die "the fuzzer has found a fault"
}
if [ $# = 0 ]; then
    echo "fuzz: ${#corpus[@]} files of the corpus passed"
else
    echo "fuzz: $(sed -n 's/^stat::number_of_executed_units: *//p' "$fuzz/run.log") executions in $1 s, no fault"
fi
