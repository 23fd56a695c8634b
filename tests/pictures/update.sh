#!/usr/bin/env bash
# update.sh [BIN_FOLDER]: renders the kept pictures anew with the gallery in BIN_FOLDER (or BIN). Look at every one that
# changed before you commit it: nothing else decides whether it is right.
set -euo pipefail
# shellcheck source=tests/pictures/pictures.sh
. "$(dirname "$0")/pictures.sh"
bin=$(cd "${1:-${BIN:?the folder with gallery.exe}}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"; [ -z "$own_display_pid" ] || kill "$own_display_pid"' EXIT

render "$bin" "$work"
mkdir -p "$kept"
rm -f "$kept"/*.actual.png "$kept"/*.diff.png
for picture in "$work"/*.png; do
    name=$(basename "$picture")
    if [ ! -f "$kept/$name" ] || [ "$(compare -metric AE "$kept/$name" "$picture" null: 2>&1)" != 0 ]; then
        convert "$picture" -alpha off -strip -define png:compression-level=9 PNG24:"$kept/$name"
        echo "renewed: $kept/$name"
    fi
done
