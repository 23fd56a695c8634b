#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: the gallery in BIN_FOLDER (or BIN) used with the real pointer and keys: what counts as a click, a
# key from anywhere, sizes that follow a text, a picture in a radio box, the list of pages by keyboard, the
# switches of the look, and the window's own title bar. Places are those below it.
set -uo pipefail
# shellcheck source=tests/script_test.sh
. "$(dirname "$0")/../script_test.sh"

readonly bar=32 # the height of the title bar

# part WIDTHxHEIGHT+X+Y: what a part of the window looks like, as one number
part() { import -window "$window" -crop "${1%+*}+$((bar + ${1##*+}))" -depth 8 rgb:- 2>/dev/null | cksum; }
# changes PART BEFORE: whether it comes to look otherwise
looks_otherwise() { [ "$(part "$1")" != "$2" ]; }
changes() { within 10 looks_otherwise "$@"; }
# settled PART: the same, once it no longer changes: a busy machine shows windows half drawn
settled()
{
    local last now _
    last=$(part "$1")
    for _ in $(seq 20); do
        sleep 0.2
        now=$(part "$1")
        [ "$now" = "$last" ] && break
        last=$now
    done
    echo "$last"
}
# looks PART WANTED: whether it looks so now
looks() { [ "$(part "$1")" = "$2" ]; }
# stays PART BEFORE: whether it still looks so a while later
stays() { sleep 0.7 && [ "$(part "$1")" = "$2" ]; }
at() { xdotool mousemove $((X + $1)) $((Y + bar + $2)); }
# place: where the window stands now and how large it is
place()
{
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
    echo "$X,$Y ${WIDTH}x$HEIGHT"
}
# becomes PLACE: whether the window comes to stand there
stands() { [ "$(place)" = "$1" ]; }
becomes() { within 10 stands "$1" || { echo "it is at $(place)" >&2; return 1; }; }
# drag DX DY: with the button held, from where the pointer is, as a hand does it: in steps, and not before the system has
# taken hold of the window
drag()
{
    sleep 0.2
    xdotool mousedown 1
    sleep 0.6
    xdotool mousemove_relative -- $(($1 / 2)) $(($2 / 2))
    sleep 0.3
    xdotool mousemove_relative -- $(($1 - $1 / 2)) $(($2 - $2 / 2))
    sleep 0.4
    xdotool mouseup 1
}
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

before=$(settled $pressed)
click "${press[@]}"
changes $pressed "$before"
report $? "a click counts"
before=$(settled $pressed)
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

before=$(settled $saved)
xdotool key ctrl+s
changes $saved "$before"
report $? "Ctrl+S presses its button from anywhere"

before=$(settled $fitting)
click 870 382
changes $fitting "$before"
report $? "a button grows with its text"

# Below the entry of the page that is shown lies its text: a click there builds nothing anew.
before=$(settled $pressed)
click 60 82
stays $pressed "$before"
report $? "the entry of the page that is shown does not build it anew"
xdotool key space
stays $pressed "$before"
report $? "nor does Space on it"
xdotool key Return
stays $pressed "$before"
report $? "nor Enter"

before=$(settled $title)
xdotool key Down
changes $title "$before"
report $? "Down goes to the next page"
xdotool key Down
sleep 0.7
readonly answer=200x24+460+412
before=$(settled $answer)
click 649 396
changes $answer "$before"
report $? "the picture in a radio box is clicked by itself"
click 60 146 # the list again
before=$(settled $title)
xdotool key Up
changes $title "$before"
report $? "Up goes back"

# The list's other keys; what the title looks like tells the page.
check_box=$(settled $title)
xdotool key Home
changes $title "$check_box"
report $? "Home goes to the first page"
first=$(settled $title)
xdotool key c
within 10 looks $title "$check_box"
report $? "a letter goes to the next page that begins with it"
xdotool key c
within 10 looks $title "$first"
report $? "and again to the one after, from the last to the first"
mark=196x1+0+98 # through the lower edge of the mark around the first entry
with=$(settled $mark)
xdotool key End
changes $title "$first" && changes $mark "$with"
report $? "End goes to the last page, and the mark of the focus with it"

# Each page is made anew; nothing of the former may stay. The first round fills what is kept on purpose. A page that
# stayed would be 150 KiB; the process breathes by some of them.
memory() { awk '/^VmRSS/ {print $2}' "/proc/$app/status"; }
# tours COUNT: from the last page through all of them back to it; keys never wait in line for slow pages
tours()
{
    local _
    for _ in $(seq "$1"); do
        xdotool key Down
        within 20 looks $title "$first" || return
        xdotool key --delay 30 Down Down Down Down Down Down Down
        within 20 looks $title "$last" || return
    done
}
last=$(settled $title)
tours 6
before=$(memory)
tours 12
report $? "Down goes from the last page to the first, and round"
grown=$(($(memory) - before))
[ "$grown" -lt 8000 ]
report $? "96 changes of the page keep the memory (grown by $grown KiB)"

# The switches below the list: everything is made anew while the window stands.
ground_is() { [ "$(import -window "$window" -crop 1x1+700+570 -depth 8 txt:- | grep -o '#[0-9A-F]\{6\}')" = "$1" ]; }
click 28 474
within 10 ground_is '#1E2126'
report $? "the dark look comes at a press"
click 82 444
becomes "$X,$Y 1435x888"
report $? "so does another size, with the window"
sleep 0.5
xdotool key Left
becomes "$X,$Y 957x592"
report $? "the new switch has the focus of the old one"
sleep 0.5
click 28 474
within 10 ground_is '#F3F4F7'
report $? "the light look comes back"

xdotool mousemove $((X + 400)) $((Y + 16))
drag 60 40
becomes "$((X + 60)),$((Y + 40)) 957x592"
report $? "the title bar moves the window"
place >/dev/null
was=$(place)
xdotool mousemove $((X + 955)) $((Y + 590))
drag 120 80
becomes "${was% *} 1077x672"
report $? "the corner makes it larger"
xdotool mousemove $((X + 1075)) $((Y + 670))
drag -700 -500
becomes "$was"
report $? "but not smaller than its content"
xdotool mousemove $((X + 300)) $((Y + 16)) click --repeat 2 --delay 80 1
for _ in $(seq 25); do [ "$(place)" != "$was" ] && break; sleep 0.1; done
place >/dev/null
eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
corner=$(import -window "$window" -crop 1x1+$((WIDTH - 20))+$((HEIGHT - 20)) -depth 8 txt:- | grep -o '#F3F4F7')
[ "$WIDTH" -gt 957 ] && [ -n "$corner" ]
report $? "a double click there maximises it, and its ground fills it"
xdotool mousemove $((X + WIDTH - 75)) $((Y + 19)) click 1 # the key in the middle
becomes "$was"
report $? "the key beside gives it its size back"

eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
at 60 82
xdotool click 1
sleep 0.5
at "${press[@]}"
xdotool mousedown 1 key alt+F4
timeout 10 tail --pid="$app" -f /dev/null
report $? "it closes in the midst of a press"
xdotool mouseup 1

result
