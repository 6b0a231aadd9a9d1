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

start_program() {
    wine "$bin/PluginManager.exe" </dev/null &
    program=$!
    probe --wait 60
}

close_program() {
    probe --close
    wait "$program"
}

# picture FILE [TITLE]: the window or a dialog of this title alone, without the desktop around it.
picture() {
    import -window root -crop "$(probe ${2:+--popup "$2"} --geometry)" +repage "$root/docs/$1"
    echo "docs/$1"
}

# toolbar_picture FILE: the layout buttons with the focus on the first and the mouse over the second, enlarged.
toolbar_picture() {
    probe --focus 1031 --hover 1037
    import -window root -crop "$(probe --toolbar)" +repage -filter point -resize 300% "$root/docs/$1"
    echo "docs/$1"
}

# The control ids of the preset buttons and dialogs, as in res/resource.h.
button_import=1014 button_export=1015 button_manage=1021 button_rename=1017 button_cancel=2

# The file dialogs start in the current folder.
mkdir -p "$WINEPREFIX/drive_c/Presets"
cp "$root"/samples/*.spp "$WINEPREFIX/drive_c/Presets/"
cd "$WINEPREFIX/drive_c/Presets"
start_program
probe --category 1
picture main-dialog.png
toolbar_picture toolbar-themed.png
probe --plugin 'Kammer Reverb' --press $button_manage
picture manage-presets.png 'Manage Presets'
probe --popup 'Manage Presets' --press $button_rename
picture rename-preset.png 'Rename Preset'
probe --popup 'Rename Preset' --press $button_cancel
probe --popup 'Manage Presets' --close
probe --press $button_export
picture export-presets.png 'Export Presets'
probe --popup 'Export Presets' --close
probe --press $button_import
probe --popup 'Import Presets' --first-file
picture import-presets.png 'Import Presets'
probe --popup 'Import Presets' --close
probe --size 1200x900
picture main-dialog-large.png
close_program

wine reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0 /f >/dev/null
wineserver -w
start_program
toolbar_picture toolbar-classic.png
close_program
