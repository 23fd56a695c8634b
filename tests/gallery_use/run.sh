#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: the gallery in BIN_FOLDER (or BIN) used with the real pointer and keys: what counts as a click, a
# key from anywhere, sizes that follow a text, a picture in a radio box, and the list of pages by keyboard.
set -uo pipefail
# shellcheck source=tests/script_test.sh
. "$(dirname "$0")/../script_test.sh"

# part WIDTHxHEIGHT+X+Y: what a part of the window looks like, as one number
part() { import -window "$window" -crop "$1" -depth 8 rgb:- 2>/dev/null | cksum; }
# changes PART BEFORE: whether it comes to look otherwise
changes()
{
    local _
    for _ in $(seq 25); do
        [ "$(part "$1")" != "$2" ] && return 0
        sleep 0.1
    done
    return 1
}
# stays PART BEFORE: whether it still looks so a while later
stays() { sleep 0.7 && [ "$(part "$1")" = "$2" ]; }
at() { xdotool mousemove $((X + $1)) $((Y + $2)); }
click()
{
    at "$1" "$2"
    xdotool click 1
}

(cd "$bin" && exec wine gallery.exe --page button >/dev/null 2>&1) &
app=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name '^Morvane gallery$' | head -n 1)
[ -n "$window" ]
report $? "the gallery shows its window" || { result; exit; }
sleep 1
X=0 Y=0
eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^[XY]=')"

# Places on the page of buttons, and what tells of a press beside them.
readonly press=(288 462) pressed=180x24+370+450 saved=180x24+730+450 fitting=100x28+280+368 title=300x30+220+16

before=$(part $pressed)
click "${press[@]}"
changes $pressed "$before"
report $? "a click counts"
before=$(part $pressed)
at "${press[@]}"
xdotool mousedown 1
at 600 530
xdotool mouseup 1
stays $pressed "$before"
report $? "a press that ends elsewhere does not, though the button has the focus"
at "${press[@]}"
xdotool mousedown 1 key Escape mouseup 1
stays $pressed "$before"
report $? "nor one that Escape ends"
at 600 530
xdotool key space
changes $pressed "$before"
report $? "a press by the keyboard does"

before=$(part $saved)
xdotool key ctrl+s
changes $saved "$before"
report $? "Ctrl+S presses its button from anywhere"

before=$(part $fitting)
click 870 382
changes $fitting "$before"
report $? "a button grows with its text"

# Below the entry of the page that is shown lies its text: a click there builds nothing anew.
before=$(part $pressed)
click 60 82
stays $pressed "$before"
report $? "the entry of the page that is shown does not build it anew"
xdotool key space
stays $pressed "$before"
report $? "nor does Space on it"
xdotool key Return
stays $pressed "$before"
report $? "nor Enter"

before=$(part $title)
xdotool key Down
changes $title "$before"
report $? "Down goes to the next page"
xdotool key Down
sleep 0.7
readonly answer=200x24+460+412
before=$(part $answer)
click 649 396
changes $answer "$before"
report $? "the picture in a radio box is clicked by itself"
click 60 146 # the list again
before=$(part $title)
xdotool key Up
changes $title "$before"
report $? "Up goes back"

result
