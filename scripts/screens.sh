#!/usr/bin/env bash
# Pictures of the program on screens of three sizes at five scales, in build/screens/, with the window's place on each.
#   scripts/screens.sh [SIZE...]     1366x768 1280x1024 1920x1080 when none is named
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/build.sh" >/dev/null
pictures=$build/screens
mkdir -p "$pictures"
trap clear_up EXIT
start_display 1920x1080
fresh_prefix "$build/screens-prefix"
load_studio || die "the sample studio could not be loaded"

# picture SIZE PERCENT
picture() {
    local file=$pictures/$1-$2.png place
    stop_prefix "$WINEPREFIX"
    set_virtual_desktop "$1"
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * $2 / 100)) /f >/dev/null
    forget_window_placement
    wineserver -w
    wine "$bin/PluginManager.exe" 'C:\ProgramData\Corvane Studio\Menu Layouts\Mixing.pgl' </dev/null &
    program=$!
    place=$(wine "$bin/window_probe.exe" --wait 60 --category 1 --press 1047 --geometry | tr -d '\r')
    import -window root -crop "$1+0+0" +repage "$file"
    echo "$1 at $2 %: the window is $place"
    wine "$bin/window_probe.exe" --close
    wait "$program"
}

[ $# -gt 0 ] || set -- 1366x768 1280x1024 1920x1080
for size in "$@"; do
    for percent in 100 125 150 175 200; do picture "$size" "$percent"; done
done
