#!/bin/sh
# Renders res/art/*.svg into the icons and bitmaps that are kept in res/ and packaging/, so that a build needs no renderer.
set -eu
cd "$(dirname "$0")/../res"

for tool in rsvg-convert:librsvg2-bin convert:imagemagick; do
    command -v "${tool%%:*}" >/dev/null || { echo "${tool%%:*} is missing (Debian package ${tool#*:})" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Up to 48 pixels the full picture blurs; each of these sizes is drawn for itself.
icons=
for size in 16 20 24 32 40 48 64 256; do
    source=art/icon-$size.svg
    [ -f "$source" ] || source=art/icon.svg
    rsvg-convert -w $size -h $size "$source" -o "$work/icon-$size.png"
    icons="$icons $work/icon-$size.png"
done
# shellcheck disable=SC2086  # the folder is mktemp's and has no blanks
convert $icons PluginManager.ico

rsvg-convert -w 164 -h 314 art/installer.svg -o "$work/installer.png"
convert "$work/installer.png" -alpha off -type truecolor BMP3:../packaging/installer.bmp

# le VALUE...: each as four bytes, the lowest first.
le() {
    for value in "$@"; do
        for shift in 0 8 16 24; do printf "\\$(printf %03o $((value >> shift & 255)))"; done
    done
}

# The toolbar's bitmaps are written here byte by byte: convert either drops the transparency or adds colour masks, which
# not every reader of bitmap resources knows.
for name in new open save delete; do
    for scale in 100 150 200; do
        size=$((16 * scale / 100))
        bytes=$((size * size * 4))
        file=layout-$name-$scale.bmp
        [ $scale != 100 ] || file=layout-$name.bmp
        rsvg-convert -w $size -h $size "art/layout-$name.svg" -o "$work/$name.png"
        {
            printf BM
            le $((54 + bytes)) 0 54 40 $size $size $((32 << 16 | 1)) 0 $bytes 0 0 0 0
            convert "$work/$name.png" -flip -depth 8 bgra:-
        } >"$file"
    done
done

# tree NAME SOURCE [STYLE]: an icon of the layout tree at 100, 125, 150, 200, 250 and 300 %, in the colours that STYLE
# gives. Each size is drawn on whole pixels; the larger ones are twice or three times a smaller one. An icon is wider than
# high: the empty columns at its right keep it apart from the label.
tree() {
    printf '%s\n' "${3:-}" >"$work/style.css"
    sizes=
    for size in 16 20 24 32 40 48; do
        case $size in
            20 | 40) source=art/tree-$2-20.svg ;;
            24 | 48) source=art/tree-$2-24.svg ;;
            *) source=art/tree-$2.svg ;;
        esac
        rsvg-convert -w $size -h $size --stylesheet "$work/style.css" "$source" -o "$work/tree.png"
        convert "$work/tree.png" -background none -extent $((size + (3 * size + 8) / 16))x$size "$work/tree-$size.png"
        sizes="$sizes $work/tree-$size.png"
    done
    # shellcheck disable=SC2086  # the folder is mktemp's and has no blanks
    convert $sizes "tree/$1.ico"
}

# look TILE LINE BODY KEY PIN BADGE: the colours of a plug-in's icon.
look() {
    echo ".tile{fill:$1;stroke:$2} .body{fill:$3} .key{fill:$4} .pin{fill:$5} .badge{fill:$6}"
}

square='.disc,.three{display:none}'
square3='.disc{display:none}'
disc='.square,.three{display:none}'
# A plug-in that is not installed is grey; one that is, but not in the inventory, is outlined only.
missing=$(look '#c3c8cc' '#b4babf' '#ffffff' '#b4babf' '#eceeef' '#8f979d')
vst=$(look '#1d5a76' '#123f5c' '#ffffff' '#1d5a76' '#f3b33d' '#d98a12')
vst_other=$(look '#ffffff' '#1d5a76' '#1d5a76' '#ffffff' '#d98a12' '#d98a12')
vst3=$(look '#6b3f94' '#4a2a69' '#ffffff' '#6b3f94' '#f3b33d' '#d98a12')
vst3_other=$(look '#ffffff' '#6b3f94' '#6b3f94' '#ffffff' '#d98a12' '#d98a12')
dx=$(look '#2c7a4b' '#1d5634' '#ffffff' '#2c7a4b' '#f3b33d' '#d98a12')

for name in folder folder-open separator generic midi surface; do tree $name $name; done
for kind in effect instrument; do
    tree vst-$kind $kind "$square $vst"
    tree vst-$kind-other $kind "$square $vst_other"
    tree vst-$kind-missing $kind "$square $missing"
    tree vst3-$kind $kind "$square3 $vst3"
    tree vst3-$kind-other $kind "$square3 $vst3_other"
    tree vst3-$kind-missing $kind "$square3 $missing"
    tree dx-$kind $kind "$disc $dx"
    tree dx-$kind-missing $kind "$disc $missing"
done
