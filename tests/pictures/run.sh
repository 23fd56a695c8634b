#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: compares what the gallery in BIN_FOLDER (or BIN) renders with the kept pictures: every state of every
# control at three scales, in both directions, light and dark, and the pages. A picture that differs fails and leaves
# NAME.actual.png and NAME.diff.png beside the kept one; update.sh alone renews kept pictures.
#
# Texts depend on the fonts of the machine, so they may differ a little more: inside the strict areas, where only shapes are
# drawn, nearly every pixel must agree; in the whole picture a hundredth may differ.
set -uo pipefail
# shellcheck source=tests/pictures/pictures.sh
. "$(dirname "$0")/pictures.sh"
bin=$(cd "${1:-${BIN:?the folder with gallery.exe}}" && pwd) || exit 2
work=$(mktemp -d)
trap 'rm -rf "$work"; [ -z "$own_display_pid" ] || kill "$own_display_pid"' EXIT

readonly alike=3             # percent of a channel's range that a pixel may be off and still agree
readonly strict_tolerance=12 # pixels
readonly text_share=100      # one of so many pixels of the whole picture

passed=0
failed=0

# strips NAME: where shapes alone are drawn on a control's sheet, as "left right" within a block at 100 percent.
strips()
{
    case $1 in
    sheet-Button) echo "150 190 268 308 312 352 430 470" ;;
    sheet-CheckBox | sheet-RadioBox) echo "152 172 448 468" ;;
    sheet-UIForm) echo "150 308 312 470" ;;
    esac
}

# strict_areas NAME WIDTH HEIGHT: drawing commands for the strict areas of a picture.
strict_areas()
{
    local name=$1 height=$3 block=0 scale left right areas
    if [[ $name != sheet-* ]]; then
        sed -n "s/^$name //p" "$pictures/strict_areas.txt" | while read -r left top right bottom; do
            echo "rectangle $left,$top $right,$bottom"
        done
        return
    fi
    # Blocks of 478 pixels' width at 100 percent stand side by side, one for each scale.
    for scale in 100 150 200; do
        # shellcheck disable=SC2046
        set -- $(strips "$name")
        while [ $# -gt 0 ]; do
            echo "rectangle $((block + $1 * scale / 100)),0 $((block + $2 * scale / 100 - 1)),$height"
            shift 2
        done
        block=$((block + 478 * scale / 100))
    done
}

# white_pixels PICTURE
white_pixels() { convert "$1" -format '%[fx:round(mean*w*h)]' info:; }

# compare_picture NAME
compare_picture()
{
    local name=$1 width height differing strict reason=
    local actual=$work/$name.png wanted=$kept/$name.png
    read -r width height < <(identify -format '%w %h\n' "$wanted")
    if [ "$(identify -format '%w %h' "$actual")" != "$width $height" ]; then
        reason="its size is $(identify -format '%wx%h' "$actual"), not ${width}x$height"
    else
        convert "$wanted" "$actual" -alpha off -compose difference -composite -separate -evaluate-sequence max \
            -threshold $alike% "$work/differing.png"
        convert -size "${width}x$height" xc:black -fill white -draw "$(strict_areas "$name" "$width" "$height")" \
            "$work/differing.png" -compose multiply -composite "$work/strict.png"
        differing=$(white_pixels "$work/differing.png")
        strict=$(white_pixels "$work/strict.png")
        if [ "$strict" -gt $strict_tolerance ]; then
            reason="$strict pixels of its shapes differ"
        elif [ "$differing" -gt $((width * height / text_share)) ]; then
            reason="$differing pixels differ"
        fi
    fi
    if [ -z "$reason" ]; then
        passed=$((passed + 1))
        echo "ok      $name ($differing pixels differ, $strict of them in shapes)"
        return
    fi
    failed=$((failed + 1))
    cp "$actual" "$kept/$name.actual.png"
    compare -fuzz $alike% "$wanted" "$actual" "$kept/$name.diff.png" 2>/dev/null
    echo "FAILED  $name: $reason"
    echo "        see tests/pictures/kept/$name.actual.png and $name.diff.png; tests/pictures/update.sh keeps it as it is now"
}

if ! render "$bin" "$work"; then
    echo "The gallery could not render its pictures." >&2
    echo "0 passed, 1 failed"
    exit 1
fi
rm -f "$kept"/*.actual.png "$kept"/*.diff.png
for picture in "$kept"/*.png; do
    compare_picture "$(basename "$picture" .png)"
done
for picture in "$work"/*-*.png; do
    name=$(basename "$picture")
    [ -f "$kept/$name" ] && continue
    failed=$((failed + 1))
    echo "FAILED  $name is rendered but not kept"
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
