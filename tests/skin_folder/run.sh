#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: somebody edits a skin while the gallery in BIN_FOLDER (or BIN) shows it: a new colour appears, a
# mistake leaves the look as it was and is told on stderr and in the window, and mending it takes the message away.
set -uo pipefail
tree=$(cd "$(dirname "$0")/../.." && pwd)
bin=$(cd "${1:-${BIN:?the folder with gallery.exe}}" && pwd) || exit 2
# shellcheck source=tools/wine_env.sh
. "$tree/tools/wine_env.sh"
[ -n "${DISPLAY:-}" ] || use_own_display || exit 1
[ -n "${WINEPREFIX:-}" ] || use_wine_prefix || exit 1
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
work=$(mktemp -d)
gallery=
end()
{
    [ -z "$gallery" ] || kill "$gallery" 2>/dev/null
    rm -rf "$work"
    [ -z "${own_display_pid:-}" ] || kill "$own_display_pid"
}
trap end EXIT

passed=0
failed=0
report() # STATUS WHAT
{
    if [ "$1" -eq 0 ]; then
        passed=$((passed + 1))
        echo "ok      $2"
    else
        failed=$((failed + 1))
        echo "FAILED  $2"
        sed 's/^/        stderr: /' "$work/stderr"
    fi
}

# within SECONDS COMMAND...: whether the command comes to succeed
within()
{
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.2
    done
}

pixels() # '#RRGGBB': how many there are in the window
{
    import -window "$window" -depth 8 rgb:- 2>/dev/null | xxd -p -c 3 | grep -cix "${1#\#}"
}
shows() { [ "$(pixels "$1")" -gt "$2" ]; }
shows_no() { [ "$(pixels "$1")" -eq 0 ]; }
says() { tr -d '\r' <"$work/stderr" | grep -qE "$1"; }

readonly red='#FE0102' danger='#C42B1C' # the skin's new text colour; the gallery's colour of warnings
package=$work/skins/2080
styles=$package/shareres.xml
mkdir -p "$package"
(cd "$package" && python3 -m zipfile -e "$bin/skins/2080.zip" .) || exit 1

(cd "$bin" && exec wine gallery.exe --page button --skin "Z:${work//\//\\}\\skins" >"$work/stdout" 2>"$work/stderr") &
gallery=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name '^Morvane gallery$' | head -n 1)
[ -n "$window" ] || { echo "FAILED  the gallery shows no window"; cat "$work/stderr"; echo "0 passed, 1 failed"; exit 1; }
within 10 shows '#1A1E24' 100
report $? "the gallery shows the folder's skin"

sed -i 's/clrText="0x[0-9A-F]*"/clrText="0x000201FE"/' "$styles"
within 10 shows $red 100
report $? "a colour changed in a file is seen"
shows_no $danger
report $? "and nothing is wrong"

cp "$styles" "$work/good.xml"
sed -i '0,/VAlign="1"/s//VAlign="9"/' "$styles"
within 10 says '2080\\shareres\.xml:[0-9]+:[0-9]+: .*VAlign.*\(error 304\)'
report $? "a mistake is told on stderr with its file, line and column"
within 5 shows $danger 100
report $? "and in the window"
shows $red 100
report $? "and the look stays as it was"

cp "$work/good.xml" "$styles"
within 10 shows_no $danger
report $? "mending it takes the message away"
shows $red 100
report $? "and the skin is in use"

rm -r "$package"
within 10 shows_no $red
report $? "without the package the library's own look is back"
mkdir "$package" && python3 -m zipfile -e "$bin/skins/2080.zip" "$package" && cp "$work/good.xml" "$styles"
within 10 shows $red 100
report $? "and a package that comes back is taken up"
kill -0 $gallery 2>/dev/null
report $? "the gallery ran all the while"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
