#!/usr/bin/env bash
# Makes the pictures in docs/ from the running program with the sample studio.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/build.sh" >/dev/null
trap clear_up EXIT
start_display
fresh_prefix "$build/screenshot-prefix"
load_studio || die "the sample studio could not be loaded"

probe() {
    wine "$bin/window_probe.exe" "$@" | tr -d '\r'
}

# picture FILE: the window alone, without the desktop around it.
picture() {
    import -window root -crop "$(probe --geometry)" +repage "$root/docs/$1"
    echo "docs/$1"
}

wine "$bin/PluginManager.exe" </dev/null &
program=$!
probe --wait 60 --category 1
picture main-dialog.png
probe --size 1200x900
picture main-dialog-large.png
probe --close
wait "$program"
