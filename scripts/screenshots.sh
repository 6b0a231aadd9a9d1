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

manager() {
    wine "$bin/PluginManagerCmd.exe" "$@" >/dev/null 2>&1
}

# start_program LANGUAGE [ARGUMENT...]
start_program() {
    wine reg add 'HKLM\Software\Corvane Music Software' /v Language /d "$1" /f >/dev/null
    shift
    forget_window_placement
    wine "$bin/PluginManager.exe" "$@" </dev/null &
    program=$!
    probe --wait 60
}

close_program() {
    probe --close
    wait "$program"
}

# stays_the_same PLACE: two pictures of this part of the screen, a moment apart, show the same; the later is $shot.
stays_the_same() {
    import -window root -crop "$1" +repage "$earlier"
    sleep 0.3
    import -window root -crop "$1" +repage "$shot"
    [ "$(identify -format '%#' "$earlier")" = "$(identify -format '%#' "$shot")" ]
}

# at_rest [WINDOW...]: the main window, or the one that these options of the probe name, without the desktop around it,
# into $shot.
at_rest() {
    local place
    place=$(probe "$@" --geometry)
    wait_for 30 stays_the_same "$place" || die "the window does not come to rest: $*"
}

# picture FILE [WINDOW...]
picture() {
    local file=$1
    shift
    at_rest "$@"
    mv "$shot" "$root/docs/$file"
    echo "docs/$file"
}

# layout_picture FILE: the main window with its whole layout open, in a size at which the tree ends with a whole row,
# and the focus in the list of plug-ins.
layout_picture() {
    probe --size 1058x660 --press $button_expand_all
    probe --focus $plugin_list
    picture "$1"
}

# toolbar_picture FILE: the layout buttons with the focus on the first and the mouse over the second, enlarged.
toolbar_picture() {
    probe --focus 1031 --hover 1037
    import -window root -crop "$(probe --toolbar)" +repage -filter point -resize 300% "$root/docs/$1"
    echo "docs/$1"
}

# language_pictures LANGUAGE: a menu layout beside the VST effects, and the properties of one of its plug-ins.
language_pictures() {
    local file=${1,,}
    start_program "$1" "$layouts\\Mixing.pgl"
    probe --category $vst_effects
    layout_picture "main-$file.png"
    probe --open-item $item_with_presets
    picture "properties-$file.png" --dialog
    probe --dialog --press $button_cancel
    close_program
}

preset_pictures() {
    probe --plugin 'Kammer Reverb' --press $button_manage
    picture manage-presets.png --popup 'Manage Presets'
    probe --popup 'Manage Presets' --press $button_rename
    picture rename-preset.png --popup 'Rename Preset'
    probe --popup 'Rename Preset' --press $button_cancel
    probe --popup 'Manage Presets' --close
    probe --press $button_export
    picture export-presets.png --popup 'Export Presets'
    probe --popup 'Export Presets' --close
    probe --press $button_import
    probe --popup 'Import Presets' --first-file --focus $button_ok
    picture import-presets.png --popup 'Import Presets'
    probe --popup 'Import Presets' --close
}

layout_pictures() {
    start_program English "$layouts\\Instruments & Ideas.pgl"
    layout_picture layout.png
    convert "$root/docs/layout.png" -crop 522x595+534+26 +repage "$root/docs/layout-tree.png"
    probe --press $button_save
    picture save-layout.png --popup 'Save Plug-In Menu Layout'
    probe --popup 'Save Plug-In Menu Layout' --close
    close_program
    start_program English "$layouts\\Mixing.pgl"
    probe --press $button_expand_all --open-item $item_with_presets
    picture item-properties.png --dialog
    probe --dialog --press $button_cancel
    close_program
}

# safety_pictures LANGUAGE: the menu of the button Tasks, and the backups that removing, deleting and saving have left.
# These are given times that are the same with every run, in the order in which they were made.
safety_pictures() {
    local file=${1,,} record minute=0
    load_studio || die "the sample studio could not be loaded"
    rm -rf "$backups"
    start_program "$1" "$layouts\\Mixing.pgl"
    probe --plugin 'Ysterholm Gone Astray' --press $button_exclude
    probe --popup 'Plug-in Manager' --press $button_yes
    probe --category $vst_effects --plugin 'Kammer Reverb' --press $button_manage
    probe --dialog --press $button_delete_presets
    probe --popup 'Plug-in Manager' --press $button_ok
    probe --dialog --press $button_cancel
    probe --press $button_sort_all --command $command_save_layout
    probe --size 1058x700 --press $button_tasks --key $button_tasks $key_up --key $button_tasks $key_up \
        --key $button_tasks $key_up --key $button_tasks $key_up --key $button_tasks $key_up --key $button_tasks $key_right
    picture "tasks-$file.png"
    while IFS= read -r record; do
        minute=$((minute + 11))
        sed -i "s/ Time=\"[^\"]*\"/ Time=\"2026-11-21T22:$minute:13.000Z\"/" "$record"
    done < <(grep -o ' Time="[^"]*"' "$backups"/*/backup.xml | sort -t'"' -k2 | sed 's/: Time=.*//')
    probe --leave-menu --command $command_backups
    probe --dialog --key $review_list $key_space
    picture "backups-$file.png" --dialog
    probe --dialog --press $button_cancel
    close_program
}

# studio_pictures LANGUAGE: what Tidy Up finds where a VST3 has the name of a VST, a file is gone and a drive is not there,
# a new layout that is filled by vendor, and the two lists of studio sets. The set that is loaded was saved before one
# plug-in was enabled, another excluded, a layout changed and one deleted.
studio_pictures() {
    local file=${1,,} folder="$WINEPREFIX/drive_c/ProgramData/Corvane Studio/Menu Layouts"
    load_studio || die "the sample studio could not be loaded"
    wine reg add "$vst_inventory\HmF3-x64" /v FullName /d Federhall /f >/dev/null
    wine reg add "$vst_inventory\PmFz-x64" /v FullPath /d 'G:\VST2\Fuzzwright.dll' /f >/dev/null
    rm "$WINEPREFIX/drive_c/Program Files/Common Files/VST2/Pelimond DSP/Pitch Ferry.dll"
    manager exclude "$quill_reverb"
    manager set save 'C:\Presets\Live.pgset' --presets
    manager enable "$quill_reverb"
    manager exclude "$quill_delay"
    start_program "$1" "$layouts\\Mixing.pgl"
    probe --size 1058x660 --category $vst_effects --command $command_tidy_up
    picture "tidy-up-$file.png" --dialog
    probe --dialog --press $button_cancel
    probe --command $command_save_set
    picture "save-set-$file.png" --dialog
    probe --dialog --press $button_cancel
    sed -i 's/Kammer, large/Kammer/' "$folder/Mixing.pgl"
    rm "$folder/Instruments & Ideas.pgl"
    probe --drop 'C:\Presets\Live.pgset'
    picture "load-set-$file.png" --dialog
    probe --dialog --press $button_cancel
    probe --press $button_new --command $command_fill_by_vendor
    at_rest
    probe --open-item 3
    at_rest
    probe --focus $plugin_list
    picture "fill-layout-$file.png"
    probe --command $command_undo
    close_program
    manager enable "$quill_delay"
}

# list_part NUMBER PLACE: this part of the main window, with a white border, for a picture that shows several.
list_part() {
    at_rest
    convert "$shot" -crop "$2" +repage -bordercolor white -border 4 "$build/find-$1.png"
}

# find_pictures LANGUAGE: what a word leaves of a category, a category that has nothing, and the menu of the list; then
# the review of a preset file that is dropped on the window.
find_pictures() {
    local file=${1,,}
    start_program "$1"
    probe --size 1058x660 --category $midi_effects --type $find_field tarn
    list_part 2 262x276+276+24
    probe --category $vst_effects
    list_part 1 262x276+276+24
    probe --menu $plugin_list
    list_part 3 304x276+276+24
    convert "$build"/find-[123].png +append "$root/docs/find-$file.png"
    echo "docs/find-$file.png"
    probe --leave-menu --drop "$(windows_path "$root/samples/old-studio.spp")"
    picture "dropped-presets-$file.png" --dialog
    probe --dialog --press $button_cancel
    close_program
}

# The control ids of the buttons, as in res/resource.h.
button_new=1031 button_import=1014 button_export=1015 button_manage=1021 button_rename=1017
button_ok=1 button_cancel=2
button_expand_all=1047 button_sort_all=1049 button_save=1032 button_tasks=1061 plugin_list=1002 find_field=1060
button_exclude=1009 button_delete_presets=1016 button_yes=6 review_list=1070 key_space=32 key_up=38 key_right=39
command_save_layout=32812 command_backups=32813
vst_inventory='HKCU\Software\Corvane Music Software\Corvane VST\Inventory'
command_undo=32810 command_save_set=32814 command_tidy_up=32816 command_fill_by_vendor=32817
quill_delay='{5167446C-5653-5400-8A01-5A3C1E90B764}' quill_reverb='{51675662-5653-5400-8A01-5A3C1E90B764}'
backups="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Local/Corvane Plug-in Manager/Backups"
earlier=$build/screenshot-earlier.png shot=$build/screenshot-later.png
layouts='C:\ProgramData\Corvane Studio\Menu Layouts'
item_with_presets=19  # row of the layout "Mixing", all folders expanded
vst_effects=1 vst_instruments=4 midi_effects=6 legacy_effects=9  # rows of the category list

# A caret that blinks once an hour lets windows come to rest.
wine reg add 'HKCU\Control Panel\Desktop' /v CursorBlinkRate /d 3600000 /f >/dev/null
wineserver -w
# One process that stays alive in the prefix makes each start of the others forty times as fast.
wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &

# The file dialogs start in the current folder.
mkdir -p "$WINEPREFIX/drive_c/Presets"
cp "$root"/samples/*.spp "$WINEPREFIX/drive_c/Presets/"
cd "$WINEPREFIX/drive_c/Presets"

for language in $(languages); do
    language_pictures "$language"
done

start_program English "$layouts\\Mixing.pgl"
probe --category $vst_instruments --plugin 'Polar Pads'
layout_picture main-dialog.png
probe --size 1200x900
picture main-dialog-large.png
close_program
start_program English
probe --category $vst_effects
toolbar_picture toolbar-themed.png
preset_pictures
probe --category $legacy_effects
picture main-dialog-adapter.png
close_program
layout_pictures
for language in English German Japanese; do
    safety_pictures "$language"
    find_pictures "$language"
    studio_pictures "$language"
done

wine reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0 /f >/dev/null
wineserver -k
start_program English
toolbar_picture toolbar-classic.png
close_program
