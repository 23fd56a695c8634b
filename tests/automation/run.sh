#!/usr/bin/env bash
# run.sh BIN_FOLDER: registers the built libraries in a Wine prefix of its own, runs every automation script of this
# folder with Wine's script host, and unregisters. Fails when a script or a step fails. WINEPREFIX is used when set.
set -eu
scripts=$(cd "$(dirname "$0")" && pwd)
bin=$(cd "$1" && pwd)
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
# Scripts make windows, though none is shown.
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a "$scripts/run.sh" "$bin"
fi
if [ -z "${WINEPREFIX:-}" ]; then
    WINEPREFIX=$(mktemp -d)
    export WINEPREFIX
    trap 'wineserver -k; rm -rf "$WINEPREFIX"' EXIT
    wineboot -i >/dev/null 2>&1
fi

libraries=(Morvane.dll)
[ -f "$bin/Ambrel.dll" ] && libraries+=(Ambrel.dll)
cd "$bin"
for library in "${libraries[@]}"; do
    wine regsvr32 /s "$library"
done

failed=0
for script in "$scripts"/*.js; do
    # The script host exits with 0 when a script ends in an exception: the last line decides.
    output=$(wine cscript //nologo "$(winepath -w "$script")" 2>&1 | tr -d '\r') || true
    echo "$output"
    [[ "$(tail -n 1 <<<"$output")" == *": passed" ]] || failed=1
done

for library in "${libraries[@]}"; do
    wine regsvr32 /s /u "$library"
done
exit $failed
