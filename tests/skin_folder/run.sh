#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: somebody edits a skin while the gallery in BIN_FOLDER (or BIN) shows it: a new colour appears, a
# mistake leaves the look as it was and is told on stderr and in the window, and mending it takes the message away.
set -uo pipefail
# shellcheck source=tests/script_test.sh
. "$(dirname "$0")/../script_test.sh"

check() { report "$1" "$2" "stderr:" "$(<"$work/stderr")"; } # STATUS WHAT

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
app=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name '^Morvane gallery$' | head -n 1)
[ -n "$window" ]
check $? "the gallery shows its window" || { result; exit; }
within 10 shows '#1A1E24' 100
check $? "the gallery shows the folder's skin"

sed -i 's/clrText="0x[0-9A-F]*"/clrText="0x000201FE"/' "$styles"
within 10 shows $red 100
check $? "a colour changed in a file is seen"
shows_no $danger
check $? "and nothing is wrong"

cp "$styles" "$work/good.xml"
sed -i '0,/VAlign="1"/s//VAlign="9"/' "$styles"
within 10 says '2080\\shareres\.xml:[0-9]+:[0-9]+: .*VAlign.*\(error 304\)'
check $? "a mistake is told on stderr with its file, line and column"
within 5 shows $danger 100
check $? "and in the window"
shows $red 100
check $? "and the look stays as it was"

cp "$work/good.xml" "$styles"
within 10 shows_no $danger
check $? "mending it takes the message away"
shows $red 100
check $? "and the skin is in use"

rm -r "$package"
within 10 shows_no $red
check $? "without the package the library's own look is back"
mkdir "$package" && python3 -m zipfile -e "$bin/skins/2080.zip" "$package" && cp "$work/good.xml" "$styles"
within 10 shows $red 100
check $? "and a package that comes back is taken up"
kill -0 $app 2>/dev/null
check $? "the gallery ran all the while"

result
