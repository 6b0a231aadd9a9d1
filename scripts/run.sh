#!/usr/bin/env bash
# Builds and starts the program in a Wine prefix of its own that holds the sample studio.
#   scripts/run.sh [program argument...]
# Without a display it takes a picture of the filled window (build/screenshot.png) and ends.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/build.sh" >/dev/null

export WINEPREFIX=$build/prefix
virtual_desktop=$WINEPREFIX/virtual-desktop
if [ ! -d "$WINEPREFIX" ]; then
    fresh_prefix "$WINEPREFIX"
    touch "$virtual_desktop"
fi

headless=
if [ -z "${DISPLAY:-}" ]; then
    headless=1
    trap clear_up EXIT
    start_display
fi

studio=$WINEPREFIX/studio-loaded
is_outdated() {
    local part
    for part in studio.reg studio_registrar.exe stand_in_tool.exe; do
        [ ! "$bin/$part" -nt "$studio" ] || return 0
    done
    return 1
}
if is_outdated; then
    load_studio || die "the sample studio could not be loaded"
    touch "$studio"
fi

# A desktop with a window manager draws the captions itself.
if [ -z "$headless" ]; then
    if [ -e "$virtual_desktop" ]; then
        wineserver -w
        clear_virtual_desktop
        rm "$virtual_desktop"
    fi
    exec wine "$bin/PluginManager.exe" "$@"
fi
if [ ! -e "$virtual_desktop" ]; then
    wineserver -w
    set_virtual_desktop
    touch "$virtual_desktop"
fi

wine "$bin/PluginManager.exe" "$@" </dev/null &
program=$!
wine "$bin/window_probe.exe" --wait 60 &
probe=$!
status=0
wait -n -p ended "$program" "$probe" || status=$?
if [ "$ended" = "$program" ]; then
    echo "The program has ended with exit code $status and left no window to take a picture of."
    exit "$status"
fi
[ "$status" = 0 ] || exit "$status"
import -window root "$build/screenshot.png"
wine "$bin/window_probe.exe" --close
wait "$program"
echo "There is no display, so a picture of the window was taken: build/screenshot.png"
