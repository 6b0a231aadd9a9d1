#!/usr/bin/env bash
# Lets the monkey walk far: one walk after the other, each with a seed of its own, until one finds something.
#   scripts/monkey.sh [STEPS [SEED]]     100000 steps in all, from seed 1, when not given
# What it did stands in build/monkey/SEED.txt. To see the last walk again, with everything checked after each step:
#   MONKEY_SEED=SEED MONKEY_STEPS=STEP MONKEY_ALL=1 scripts/test.sh monkey
# MONKEY_FIRST=STEP leaves out what went before.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
export LC_ALL=C.UTF-8

all=${1:-100000} seed=${2:-1} walked=0
export MONKEY_STEPS=4000

"$root/scripts/setup.sh"
build_preset release monkey_tests window_probe || die "the build failed"
mkdir -p "$build/monkey"
trap clear_up EXIT
start_display
fresh_prefix "$build/monkey-prefix"
wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
while [ "$walked" -lt "$all" ]; do
    MONKEY_SEED=$seed timeout -k 10 900 wine "$bin/monkey_tests.exe" >"$build/monkey/$seed.txt" 2>&1 </dev/null || {
        tail -n 60 "$build/monkey/$seed.txt"
        die "seed $seed, after $walked steps of other walks"
    }
    walked=$((walked + MONKEY_STEPS)) seed=$((seed + 1))
    echo "$walked steps"
done
