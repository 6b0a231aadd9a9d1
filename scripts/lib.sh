# Shared by the scripts beside it: where things are, Wine prefixes, displays, and clearing up.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build
# shellcheck disable=SC2034  # read by the scripts that source this file
bin=$build/release/bin

export WINEARCH=win64 WINEDEBUG=-all
# Where no locale is set, Wine takes file names for ASCII and can't make those that have other letters.
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
# A crash ends its process instead of opening a box that waits for ever; menus and file types of the user's own
# desktop are left alone.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d;winemenubuilder.exe=d"

die() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# quietly LOG COMMAND...: the output is shown only when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null || {
        cat "$log" >&2
        return 1
    }
}

# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    (cd "$root" && quietly "$build/$preset-configure.log" cmake --preset "$preset") || return 1
    (cd "$root" && quietly "$build/$preset-build.log" \
        cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"})
}

# languages [installer]: the names of the program's languages, a line each; those that the installer has for them
languages() {
    local column=1
    [ "${1:-}" != installer ] || column=3
    sed -n 's/^INTERFACE_LANGUAGE(\(.*\))$/\1/p' "$root/res/Languages.inc" | cut -d, -f"$column" | tr -d ' '
}

windows_path() {
    printf 'Z:%s' "${1//\//\\}"
}

# add_fonts: into the prefix in use.
add_fonts() {
    # With these, "MS Shell Dlg" has the same dialog units as on Windows at 96 dpi.
    cp /usr/share/wine/fonts/{tahoma,tahomabd,ms_sans_serif,marlett,symbol}.ttf \
        /usr/share/fonts/opentype/ipafont-gothic/ipag{,p}.ttf /usr/share/fonts/truetype/wqy/wqy-microhei.ttc \
        "$WINEPREFIX/drive_c/windows/Fonts/"
    # The fonts of a Japanese and of a Chinese system: characters that a dialog's font lacks are looked up in these.
    local name font
    while IFS='=' read -r name font; do
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" /d "$font" /f >/dev/null
    done <<'END'
MS UI Gothic=IPAPGothic
MS PGothic=IPAPGothic
MS Gothic=IPAGothic
SimSun=WenQuanYi Micro Hei
Microsoft YaHei=WenQuanYi Micro Hei
END
    # The captions' font (a LOGFONTW) in normal weight: bold letters are not looked up there.
    font=$(printf 'MS Shell Dlg' | iconv -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')
    font=$(printf '%-184s' "f5ffffff000000000000000000000000900100000000000000000022$font" | tr ' ' 0)
    wine reg add 'HKCU\Control Panel\Desktop\WindowMetrics' /v CaptionFont /t REG_BINARY /d "$font" /f >/dev/null
    wineserver -w
}

# The user's folders of a new prefix are links into the real home folder.
unlink_home() {
    local link
    find "$1/drive_c/users" -type l | while IFS= read -r link; do
        rm "$link"
        mkdir "$link"
    done
}

# set_virtual_desktop [SIZE]: without a window manager Wine draws captions only on a desktop of its own.
set_virtual_desktop() {
    wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null
    wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "${1:-1280x1024}" /f >/dev/null
    wineserver -w
}

clear_virtual_desktop() {
    wine reg delete 'HKCU\Software\Wine\Explorer' /v Desktop /f >/dev/null
    wineserver -w
}

# A finished prefix is kept as a template: copying it takes a second, making one ten.
prefix_template() {
    local template=$build/prefix-template unfinished=$build/prefix-template.unfinished
    [ "$(prefix_recipe)" != "$(cat "$template/recipe" 2>/dev/null)" ] || return 0
    stop_prefix "$unfinished"
    rm -rf "$unfinished"
    mkdir -p "$unfinished"
    (
        export WINEPREFIX=$unfinished
        quietly "$build/prefix.log" env DISPLAY= wineboot --init
        # Without a sound card the sound driver fills the terminal with complaints.
        wine reg add 'HKCU\Software\Wine\Drivers' /v Audio /d '' /f >/dev/null
        add_fonts
        set_virtual_desktop
    )
    unlink_home "$unfinished"
    prefix_recipe >"$unfinished/recipe"
    rm -rf "$template"
    mv "$unfinished" "$template"
}

# What a prefix is made by: a template that was made by something else is out of date.
prefix_recipe() {
    declare -f prefix_template add_fonts unlink_home set_virtual_desktop | sha256sum
}

stop_prefix() {
    [ -d "$1" ] || return 0
    WINEPREFIX=$1 wineserver -k || true
    WINEPREFIX=$1 wineserver -w  # what it ends may still write into the folder
}

# fresh_prefix DIR: a new prefix with a virtual desktop, taken into use; one left from an earlier run is ended.
fresh_prefix() {
    prefix_template
    stop_prefix "$1"
    rm -rf "$1" "$1.unfinished"
    cp -a "$build/prefix-template" "$1.unfinished"
    mv "$1.unfinished" "$1"
    export WINEPREFIX=$1
}

# load_studio: the sample studio with its menu layouts, into the prefix in use.
load_studio() {
    local layouts="$WINEPREFIX/drive_c/ProgramData/Corvane Studio/Menu Layouts"
    mkdir -p "$layouts" && cp "$root"/samples/*.pgl "$layouts" &&
        wine regedit /S "$(windows_path "$bin/studio.reg")" && wine "$bin/studio_registrar.exe"
}

# The next start is as the first: the window opens in the middle, at its smallest.
forget_window_placement() {
    wine reg delete 'HKCU\Software\Corvane Music Software\Corvane Plugin Manager' /v WindowPlacement /f \
        >/dev/null 2>&1 || true
}

# start_display [SIZE]: an Xvfb on a number of its own choosing, taken into use.
start_display() {
    local number=$build/display.$$
    mkdir -p "$build"
    : >"$number"
    Xvfb -displayfd 3 -screen 0 "${1:-1280x1024}x24" -nolisten tcp 3>"$number" >/dev/null 2>&1 </dev/null &
    display_pid=$!
    wait_for 30 test -s "$number" || die "Xvfb did not start"
    DISPLAY=:$(cat "$number")
    export DISPLAY
    rm -f "$number"
}

# wait_for SECONDS COMMAND...: until the command succeeds; false when the time is over.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

# For a trap on EXIT: ends the prefix and the display that this script started.
clear_up() {
    local status=$?
    [ -z "${WINEPREFIX:-}" ] || stop_prefix "$WINEPREFIX"
    [ -z "${display_pid:-}" ] || kill "$display_pid" 2>/dev/null || true
    rm -f "$build/display.$$"
    return "$status"
}
