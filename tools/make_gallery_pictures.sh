#!/usr/bin/env bash
# make_gallery_pictures.sh: makes the sample pictures in gallery/pictures anew from the drawings beside them, one in each
# format that the runtime decodes. They are kept in the tree, so that tests and gallery show the same bytes everywhere;
# run this after changing a drawing, and look at the result. Needs rsvg-convert and ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/../gallery/pictures"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for size in 16 32 48 96; do
    rsvg-convert -w $size -h $size motif.svg -o "$work/motif-$size.png"
done
rsvg-convert -w 24 -h 24 frame.svg -o "$work/frame.png"
rsvg-convert -w 48 -h 48 frame.svg -o "$work/frame@200.png"
for name in frame frame@200; do
    convert "$work/$name.png" -strip -define png:exclude-chunks=all PNG32:$name.png
done

# What shows through lies on a board of two shades that suits light and dark.
for size in 8 16; do
    convert -size ${size}x$size xc:none "(" +clone -fill '#80808038' -colorize 100 -channel A -evaluate set 22% ")" \
        "(" -clone 0 -clone 1 +append ")" "(" -clone 1 -clone 0 +append ")" -delete 0,1 -append -strip \
        -define png:exclude-chunks=all "PNG32:$work/board-$size.png"
done
cp "$work/board-8.png" board.png
cp "$work/board-16.png" board@200.png
convert "$work/motif-48.png" -strip -define png:exclude-chunks=all PNG32:motif.png
convert "$work/motif-96.png" -strip -define png:exclude-chunks=all PNG32:motif@200.png

# Formats without alpha stand on the key colour or on white.
keyed=(-background '#FF00FF' -channel A -threshold 50% +channel -flatten -alpha off)
convert "$work/motif-48.png" "${keyed[@]}" -strip BMP3:motif-key.bmp
convert "$work/motif-48.png" -background white -flatten -alpha off -strip -colors 256 -type palette -compress RLE BMP3:motif-rle.bmp
convert "$work/motif-48.png" -background white -flatten -alpha off -strip -sampling-factor 1x1 -quality 90 JPEG:motif.jpg
convert "$work/motif-48.png" -channel A -threshold 50% +channel +dither -colors 255 -strip GIF:motif.gif
convert "$work/motif-16.png" "$work/motif-32.png" "$work/motif-48.png" -strip ICO:motif.ico
convert "$work/motif-48.png" -strip -flip -orient BottomLeft -compress RLE TGA:motif.tga # rows run upwards

# A dot runs around the dial: the dial stays, each dot gives back what was before it.
dial=(-size 48x48 xc:none -fill none -stroke '#8A93A0' -strokewidth 2 +antialias -draw 'circle 24,24 24,6')
frames=(-dispose None -delay 8 -page 48x48+0+0 "(" "${dial[@]}" ")")
for at in +20+2 +32+7 +38+20 +32+32 +20+38 +7+32 +2+20 +7+7; do
    frames+=(-dispose Previous -delay 8 -page "48x48$at"
        "(" -size 9x9 xc:none -stroke none -fill '#2563D9' +antialias -draw 'circle 4,4 4,0' ")")
done
convert "${frames[@]}" -loop 0 -strip GIF:dial.gif
