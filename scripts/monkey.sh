#!/usr/bin/env bash
# Lets the monkey walk far: one walk after the other, each with a seed of its own, until one finds something.
#   scripts/monkey.sh [STEPS [SEED]]     100000 steps in all, from seed 1, when not given
# To see the last walk again, with everything checked after each step:
#   MONKEY_SEED=SEED MONKEY_STEPS=STEP MONKEY_ALL=1 scripts/test.sh monkey
# MONKEY_FIRST=STEP leaves out what went before.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

all=${1:-100000} seed=${2:-1} walked=0
export MONKEY_STEPS=5000
while [ "$walked" -lt "$all" ]; do
    MONKEY_SEED=$seed "$root/scripts/test.sh" monkey || die "seed $seed, after $walked steps of other walks"
    walked=$((walked + MONKEY_STEPS)) seed=$((seed + 1))
    echo "$walked steps"
done
