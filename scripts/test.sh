#!/usr/bin/env bash
# Builds and runs the tests; the last line counts them.
#   scripts/test.sh [native] [unit] [system] [gui] [monkey] [program] [NAME...]     all sets when none is named
# NAME: only tests whose suite or name contains it, as in "scripts/test.sh gui LayoutTree".
# native: the rules under the sanitizers; unit: the same on Windows; system: the stores; gui: real controls on hidden
# dialogs; monkey: the main dialog, worked at random (MONKEY_SEED=1 MONKEY_STEPS=5000); program: the real program, worked
# through its window.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
export LC_ALL=C.UTF-8  # the tests read English texts

time_limit=600
passed=0 failed=0 skipped=0
results=$build/test-results

chosen() {
    [ -z "$sets" ] || [[ " $sets " == *" $1 "* ]]
}

finish() {
    local line="$passed passed, $failed failed"
    [ "$skipped" = 0 ] || line+=", $skipped skipped"
    echo "$line"
    [ "$failed" = 0 ] && [ "$passed" -gt 0 ]
    exit
}

# count NAME STATUS: adds up what the executable reported. Without a report it has crashed or was killed: what its
# output shows is counted, and one failure for its end.
count() {
    local report=$results/$1.json output=$results/$1.txt ok=0 bad=0 skip=0
    if [ -s "$report" ]; then
        local tests disabled
        tests=$(awk -F'[:,]' '/"tests":/ {print $2 + 0; exit}' "$report")
        bad=$(awk -F'[:,]' '/"failures":/ {print $2 + 0; exit}' "$report")
        disabled=$(awk -F'[:,]' '/"disabled":/ {print $2 + 0; exit}' "$report")
        skip=$(($(grep -c '"result": "SKIPPED"' "$report" || true) + disabled))
        ok=$((tests - bad - skip))
        # A failure outside of any test, or nothing run at all.
        if [ "$bad" = 0 ] && { [ "$2" != 0 ] || { [ "$tests" = 0 ] && [ -z "$names" ]; }; }; then bad=1; fi
    else
        ok=$(grep -c '^\[       OK \]' "$output" || true)
        bad=$(($(grep -c '^\[  FAILED  \] .* ms)' "$output" || true) + 1))
    fi
    passed=$((passed + ok)) failed=$((failed + bad)) skipped=$((skipped + skip))
    # The monkey tells each step.
    [ "$bad" = 0 ] || tail -n "$([ "$1" = monkey ] && echo 80 || echo +1)" "$output"
    [ "$bad" != 0 ] || grep -B 2 '^\[  SKIPPED \] .* ms)' "$output" || true  # with the reasons
    echo "$1: $ok passed, $bad failed$([ "$skip" = 0 ] || echo ", $skip skipped")"
}

# run_tests NAME EXECUTABLE REPORT COMMAND...: REPORT is the report's path as the executable understands it.
run_tests() {
    local name=$1 executable=$2 report=$3 status=0
    shift 3
    rm -f "$results/$name.json" "$results/$name.txt"
    if [ -f "$executable" ]; then
        timeout -k 10 "$time_limit" "$@" "$executable" "--gtest_output=json:$report" ${names:+"--gtest_filter=$names"} \
            >"$results/$name.txt" 2>&1 </dev/null || status=$?
        [ "$status" != 124 ] || echo "$name: ended after $time_limit seconds" >>"$results/$name.txt"
        [ "$status" = 0 ] || echo "$name: exit code $status" >>"$results/$name.txt"
    else
        echo "$name: there is no $executable" >"$results/$name.txt"
    fi
    count "$name" "$status"
    [ -s "$results/$name.json" ] || revive
}

# One process that stays alive in the prefix makes each start of the others forty times as fast.
keep_prefix_alive() {
    wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
}

# What a test program that crashed or was ended has left running must not meet the next one.
revive() {
    [ -n "${WINEPREFIX:-}" ] || return 0
    wineserver -k || true
    keep_prefix_alive
}

sets='' names=''
for argument in "$@"; do
    if [[ $argument =~ ^(native|unit|system|gui|monkey|program)$ ]]; then
        sets+=" $argument"
    else
        names+="${names:+:}*$argument*"
    fi
done
"$root/scripts/setup.sh"
mkdir -p "$results"
unset WINEPREFIX
trap clear_up EXIT

if chosen native; then
    if build_preset native; then
        run_tests native "$build/native/bin/unit_tests" "$results/native.json"
    else
        echo "native: the build failed"
        failed=$((failed + 1))
    fi
fi

windows=()
for name in unit system gui monkey program; do
    chosen "$name" && windows+=("$name")
done
[ ${#windows[@]} -gt 0 ] || finish
if ! build_preset release; then
    echo "release: the build failed"
    failed=$((failed + 1))
    finish
fi
start_display
fresh_prefix "$build/test-prefix"
keep_prefix_alive
for name in "${windows[@]}"; do
    if [ "$name" = program ]; then
        load_studio >"$results/studio.txt" 2>&1 || {
            cat "$results/studio.txt"
            failed=$((failed + 1))
        }
        export STUDIO=1
    fi
    run_tests "$name" "$bin/${name}_tests.exe" "$(windows_path "$results/$name.json")" wine
done
finish
