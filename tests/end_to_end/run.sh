#!/bin/bash
# run.sh FOLDER: drives FOLDER/window_host.exe (beside Ambrel.dll and Morvane.dll) with the real pointer and keyboard and
# checks what its buttons were told. Needs wine, xvfb-run and xdotool; WINEPREFIX names the prefix to use.
set -u
folder=$1
here=$(cd "$(dirname "$0")" && pwd)
if [ -z "${END_TO_END_DISPLAY:-}" ]; then
    END_TO_END_DISPLAY=1 exec xvfb-run -a -s "-screen 0 800x600x24" "$here/run.sh" "$folder"
fi

export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
log=$(mktemp)
trap 'rm -f "$log"' EXIT
cd "$folder" || exit 2
wine window_host.exe >"$log" 2>/dev/null &
host=$!

wait_for() { # text: until the log has it
    for _ in $(seq 100); do
        grep -q "$1" "$log" && return 0
        sleep 0.1
    done
    echo "never saw: $1"
    return 1
}

failures=0
expect() { # what, then the lines that must have come since the last call
    local what=$1
    shift
    sleep 0.4
    local seen
    seen=$(tail -n +"$((lines + 1))" "$log" | tr -d '\r' | tr '\n' ';')
    lines=$(wc -l <"$log")
    local wanted=""
    for line in "$@"; do wanted+="$line;"; done
    if [ "$seen" = "$wanted" ]; then
        echo "ok      $what"
    else
        echo "FAILED  $what"
        echo "  wanted $wanted"
        echo "  saw    $seen"
        failures=$((failures + 1))
    fi
}

wait_for ready || { kill $host; exit 1; }
lines=$(wc -l <"$log")
xdotool mousemove 600 500; sleep 0.2

xdotool mousemove 150 130
expect "the pointer enters the button under it" "first enter"
xdotool mousedown 1 mouseup 1
expect "a click focuses and presses" "first focus" "first down" "first up"
xdotool mousemove 300 130
expect "the pointer goes on to the next button" "first leave" "second enter"
xdotool mousedown 1 mousemove 300 250 mouseup 1
expect "a release elsewhere is no click" "first blur" "second focus" "second down" "second leave"
xdotool mousemove 300 130; xdotool click --repeat 2 --delay 60 1
expect "two quick clicks are a double click" "second enter" "second down" "second up" "second double" "second up"
xdotool key Tab
expect "Tab moves the focus on" "second blur" "first focus"
xdotool key shift+Tab
expect "Shift and Tab move it back" "first blur" "second focus"
xdotool key space
expect "Space presses the focused button" "second down" "second up"
xdotool mousemove 600 500
expect "the pointer leaves the window" "second leave"
xdotool key F12
expect "the window stands where it was put" "at 100 100 size 300 200"
xdotool mousemove 200 250 mousedown 1; for x in 205 210 220 230 240; do xdotool mousemove $x 250; sleep 0.05; done
xdotool mouseup 1; sleep 0.2; xdotool key F12
sleep 0.3
moved=$(grep '^at' "$log" | tail -1 | tr -d '\r')
if [ "$moved" != "at 100 100 size 300 200" ]; then echo "ok      its ground drags the window ($moved)"; else echo "FAILED  its ground drags the window"; failures=$((failures + 1)); fi

import -window root "${END_TO_END_SHOT:-/dev/null}" 2>/dev/null
xdotool search --name "Pointer test" windowclose 2>/dev/null || true
sleep 0.5
kill $host 2>/dev/null
wait $host 2>/dev/null
exit $((failures > 0))
