#!/usr/bin/env bash
# Builds the gallery and shows it under Wine. Where there is no display it renders every page into a folder of PNG files
# instead. Usage: tools/run_gallery.sh [--shots FOLDER] [GALLERY_ARGUMENT...]
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=tools/wine_env.sh
. tools/wine_env.sh

shots=
if [ "${1:-}" = --shots ]; then
    shots=${2:?usage: tools/run_gallery.sh --shots FOLDER}
    shift 2
elif [ -z "${DISPLAY:-}" ] && [ $# -eq 0 ]; then
    shots=build/gallery-shots
    echo "There is no display: the pages are rendered into $shots."
fi

bin=build/win64-release/bin
tools/setup.sh build test
if ! grep -q add_executable gallery/CMakeLists.txt 2>/dev/null; then
    echo "The gallery cannot run yet: gallery/CMakeLists.txt makes no program." >&2
    exit 1
fi
tools/build.sh win64-release
for product in gallery.exe Morvane.dll Ambrel.dll; do
    if [ ! -f "$bin/$product" ]; then
        echo "The gallery cannot run: the build made no $bin/$product." >&2
        exit 1
    fi
done

trap end_wine EXIT
if [ -n "$shots" ]; then
    rm -rf "$shots"
    mkdir -p "$shots"
    use_own_display
    use_wine_prefix
    wine "$bin/gallery.exe" --shot "$(winepath -w "$shots")" "$@"
    count=$(find "$shots" -name '*.png' | wc -l)
    if [ "$count" -eq 0 ]; then
        echo "The gallery ended without an error but rendered no page." >&2
        exit 1
    fi
    echo "$count pages in $shots"
else
    use_wine_prefix
    wine "$bin/gallery.exe" "$@"
fi
