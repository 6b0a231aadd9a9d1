#!/usr/bin/env bash
# Builds and runs the bench in a Wine prefix of its own, which the bench fills with large collections.
#   scripts/bench.sh [presets|backups|layouts|enumeration|panes]
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/setup.sh"
build_preset release bench window_probe || die "the build failed"
trap clear_up EXIT
start_display
fresh_prefix "$build/bench-prefix"
wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
# The bench runs only where this mark allows it to write.
wine reg add 'HKCU\Software\Corvane Music Software' /v BenchPrefix /t REG_DWORD /d 1 /f >/dev/null
wine "$bin/bench.exe" "$@"
