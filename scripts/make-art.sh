#!/bin/sh
# Renders res/art/*.svg into the icon and the toolbar bitmaps that are kept in res/, so that a build needs no renderer.
set -eu
cd "$(dirname "$0")/../res"

for tool in rsvg-convert:librsvg2-bin convert:imagemagick; do
    command -v "${tool%%:*}" >/dev/null || { echo "${tool%%:*} is missing (Debian package ${tool#*:})" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Up to 20 pixels the full picture blurs; the small one is drawn for them.
for size in 16 20; do rsvg-convert -w $size -h $size art/icon-small.svg -o "$work/icon-$size.png"; done
for size in 24 32 48 64 256; do rsvg-convert -w $size -h $size art/icon.svg -o "$work/icon-$size.png"; done
convert "$work/icon-16.png" "$work/icon-20.png" "$work/icon-24.png" "$work/icon-32.png" "$work/icon-48.png" \
    "$work/icon-64.png" "$work/icon-256.png" PluginManager.ico

# A bitmap has no transparency: the background is the face colour of the buttons they are shown on.
for name in new open save delete; do
    rsvg-convert -w 16 -h 16 "art/layout-$name.svg" -o "$work/$name.png"
    convert "$work/$name.png" -background '#F0F0F0' -flatten -strip -type TrueColor "BMP3:layout-$name.bmp"
done
