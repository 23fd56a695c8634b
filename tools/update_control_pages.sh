#!/usr/bin/env bash
# Makes the pages of docs/controls again from the built library: tools/update_control_pages.sh [BIN_FOLDER]
# With --pictures before it, also the pictures of the states (needs ImageMagick).
set -euo pipefail
tree=$(cd "$(dirname "$0")/.." && pwd)
pictures=
if [ "${1:-}" = --pictures ]; then
    pictures=yes
    shift
fi
bin=$(cd "${1:-$tree/build/win64-release/bin}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

run() # PROGRAM ARGUMENT...: in the prefix and on the display that are there, or in the tests' own
{
    if [ -n "${WINEPREFIX:-}" ] && [ -n "${DISPLAY:-}" ]; then wine "$@"; else "$tree/tools/under_wine.sh" "$@"; fi
}

cd "$bin"
run describe.exe "$work/description.json"
python3 "$tree/tools/make_control_pages.py" "$work/description.json" "$tree/docs/controls"
[ -n "$pictures" ] || exit 0

# Of each sheet only the blocks at 100 percent are kept: light and dark, side by side.
for type in Button CheckBox RadioBox UIForm; do
    run gallery.exe --shot "$work" --sheet $type
    sheet=$work/sheet-$type.png
    width=$(identify -format '%[fx:round(w*2/9)]' "$sheet")
    # A row of blocks is as high as the one at 200 percent.
    height=$(identify -format '%[fx:round(h/4)]' "$sheet")
    half=$(identify -format '%[fx:round(h/2)]' "$sheet")
    convert \( "$sheet" -crop "${width}x$height+0+0" +repage \) \( "$sheet" -crop "${width}x$height+0+$half" +repage \) \
        +append -strip -define png:compression-level=9 PNG24:"$tree/docs/controls/pictures/sheet-$type.png"
done
