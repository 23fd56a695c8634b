# Sourced by run.sh and update.sh: which pictures are kept, and how they are rendered.
# shellcheck shell=bash
pictures=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
kept=$pictures/kept
# shellcheck source=tools/wine_env.sh
. "$pictures/../../tools/wine_env.sh"

sheets=(Button CheckBox RadioBox UIForm)
pages=(button checkbox radiobox form settings images text layout)

# render BIN FOLDER: every picture, by the gallery in BIN.
render()
{
    local bin=$1 folder=$2 name
    if [ -z "${DISPLAY:-}" ]; then
        use_own_display || return 1
    fi
    if [ -z "${WINEPREFIX:-}" ]; then
        use_wine_prefix || return 1
    fi
    export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
    for name in "${sheets[@]}"; do
        wine "$bin/gallery.exe" --shot "Z:${folder//\//\\}" --sheet "$name" >/dev/null 2>"$folder/errors" ||
            { cat "$folder/errors" >&2; return 1; }
    done
    for name in "${pages[@]}"; do
        wine "$bin/gallery.exe" --shot "Z:${folder//\//\\}" --page "$name" --scale 100 >/dev/null 2>"$folder/errors" ||
            { cat "$folder/errors" >&2; return 1; }
    done
}
