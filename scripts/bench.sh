#!/usr/bin/env bash
# Builds and runs the bench in a Wine prefix of its own, which the bench fills with large collections, and puts what it
# has found into docs/. Fails when a row passes its bound.
#   scripts/bench.sh [--only presets|backups|layouts|rounds|plugins|studio|sets|starts|wrapped|window] [--json FILE] [--awake]
# --only: this part, and nothing into docs/; --json: where the results go, build/bench.json otherwise; --awake: loops of
# idle priority keep the processors from falling asleep between two questions to the system, which varies much from run to
# run (not where a quota of processor time holds)
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

json=$build/bench.json
only=()
kept_awake=0
awake=()
while [ $# -gt 0 ]; do
    case $1 in
        --only) only=(--only "$2") && shift ;;
        --json) json=$(realpath -m "$2") && shift ;;
        --awake) kept_awake=$(nproc) ;;
        *) die "unknown option: $1" ;;
    esac
    shift
done

"$root/scripts/setup.sh"
build_preset release bench window_probe || die "the build failed"
trap clear_up EXIT
start_display
fresh_prefix "$build/bench-prefix"
# Where there is room, its files lie in memory: the times of a disk that others use, too, vary threefold.
memory=$(mktemp -d /dev/shm/bench-XXXXXX) && trap 'kill "${awake[@]}" 2>/dev/null || true; rm -rf "$memory"; clear_up' EXIT
if [ "$(df --output=avail "$memory" | tail -n 1)" -gt 2000000 ]; then
    temp=$(find "$WINEPREFIX/drive_c/users" -maxdepth 2 -name Temp)
    rmdir "$temp"
    ln -s "$memory" "$temp"
fi
for _ in $(seq "$kept_awake"); do
    chrt --idle 0 bash -c 'while :; do :; done' &
    awake+=($!)
done
wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
# The bench runs only where this mark allows it to write.
wine reg add 'HKCU\Software\Corvane Music Software' /v BenchPrefix /t REG_DWORD /d 1 /f >/dev/null
status=0
wine "$bin/bench.exe" "${only[@]}" --json "$(windows_path "$json")" || status=$?
[ ${#only[@]} -gt 0 ] || "$root/scripts/bench-plot.sh" "$json"
exit "$status"
