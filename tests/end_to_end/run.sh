#!/usr/bin/env bash
# run.sh [BIN_FOLDER]: uses end_to_end_app.exe with the real pointer and keyboard and checks what its controls, its
# application and its host window were told, in order, and what could be seen. BIN names the folder with the program and
# the libraries when no argument does. Starts a display of its own unless DISPLAY names one. WINEPREFIX is used when set.
# Needs xdotool and ImageMagick. Nothing waits for a fixed time: each step waits until the log says what it must.
set -uo pipefail
# shellcheck source=tests/script_test.sh
. "$(dirname "$0")/../script_test.sh"
cd "$bin" || exit 2

readonly longest_wait=100 # tenths of a second
log=
seen_lines=0

pass() { report 0 "$1"; }
fail() { report 1 "$@"; }

# new_lines: what the log got since the last step.
new_lines() { tail -n "+$((seen_lines + 1))" "$log" | tr -d '\r'; }

# wait_for PATTERN: until a new line matches it.
wait_for()
{
    local tries
    for ((tries = 0; tries < longest_wait * 5; tries++)); do
        new_lines | grep -q -e "$1" && return 0
        sleep 0.02
    done
    return 1
}

# step WHAT LINE...: all input so far is dealt with, and the new lines are these. Moves of the pointer and paintings, which
# come as often as they like, are left out. A line "wait PATTERN" is waited for first and compares with nothing.
step()
{
    local what=$1 wanted=() line
    shift
    for line in "$@"; do
        case $line in
        "wait "*) wait_for "${line#wait }" || { fail "$what" "never came: ${line#wait }" "came:" "$(new_lines)"; end_step; return; } ;;
        *) wanted+=("$line") ;;
        esac
    done
    xdotool key F12
    if ! wait_for '^barrier'; then
        fail "$what" "the window no longer answers" "$(new_lines)"
        end_step
        return
    fi
    local came
    came=$(new_lines | grep -v -e ' move$' -e '^painted' -e '^barrier' -e '^shown' -e '^hidden')
    if [ "$came" = "$(printf '%s\n' "${wanted[@]}")" ]; then
        pass "$what"
    else
        fail "$what" "$(diff -U 20 --label wanted --label came <(printf '%s\n' "${wanted[@]}") <(echo "$came"))"
    fi
    end_step
}
end_step() { seen_lines=$(wc -l <"$log"); }

# part RECT: a sum over the pixels of a part of the screen, given as WxH+X+Y.
part() { import -window root -crop "$1" +repage rgba:- | md5sum; }

# looks_other WHAT RECT SUM...: the part comes to look unlike all that are given. The sum is left in `look`.
looks_other()
{
    local what=$1 rect=$2 tries former same
    shift 2
    for ((tries = 0; tries < 30; tries++)); do
        look=$(part "$rect")
        same=
        for former in "$@"; do [ "$look" = "$former" ] && same=yes; done
        if [ -z "$same" ]; then
            # It may have been caught half painted.
            sleep 0.1
            [ "$look" = "$(part "$rect")" ] && { pass "$what"; return; }
        fi
        sleep 0.1
    done
    fail "$what" "it looks as before"
}

# looks_like WHAT RECT SUM
looks_like()
{
    local tries
    for ((tries = 0; tries < 30; tries++)); do
        [ "$(part "$2")" = "$3" ] && { pass "$1"; return; }
        sleep 0.1
    done
    fail "$1" "it looks different"
}

# start [DESTROY_AT]: the program with its window, and the pointer out of the window.
start()
{
    local tries
    log=$work/log-${1:-main}.txt
    : >"$log"
    seen_lines=0
    xdotool mousemove 700 550
    wine end_to_end_app.exe "Z:${log//\//\\}" "$@" 2>/dev/null &
    app=$!
    if ! wait_for '^ready'; then
        fail "the window opens" "$(cat "$log")"
        result
        exit 1
    fi
    for ((tries = 0; tries < 50; tries++)); do # the keyboard comes a little later
        xdotool key F12
        wait_quickly '^barrier' && break
    done
    end_step
}
wait_quickly() { sleep 0.1; new_lines | grep -q -e "$1"; }

# ends WHAT: the program ends by itself, orderly, and leaves nothing alive.
ends()
{
    local tries status
    for ((tries = 0; tries < longest_wait; tries++)); do
        kill -0 "$app" 2>/dev/null || break
        sleep 0.1
    done
    if kill -0 "$app" 2>/dev/null; then
        kill "$app"
        fail "$1" "the program does not end" "$(new_lines)"
    fi
    wait "$app"
    status=$?
    app=
    if [ $status -eq 0 ] && [ "$(tail -n 2 "$log" | tr -d '\r' | tr '\n' ' ')" = "closed alive 0 " ]; then
        pass "$1"
    else
        fail "$1" "status $status, the log ends with:" "$(tail -n 4 "$log")"
    fi
}

# The window's left upper corner is at 100, 100; its controls' places are in end_to_end_app.cpp.
button="180 134" check="180 174" radio2="180 244" radio3="180 274" panel="310 195" child="360 154"
disabled="360 234" closer="360 274" outside="700 550" bare="150 380"
button_part=120x28+120+120 radio1_and_mark=128x36+116+196 radio2_and_mark=128x36+116+226

# to "X Y": the pointer goes there. Back on the very pixel where Wine saw it last it would be no move, so it comes from aside.
to()
{
    local x=${1% *} y=${1#* }
    xdotool mousemove $((x - 1)) "$y" mousemove "$x" "$y"
}

the_button_and_the_pointer()
{
    to "$outside"
    wait_for 'leave$' && end_step
    local normal hot pressed_look
    normal=$(part $button_part)
    to "$button"
    step "entering redraws, then offers the tip, then tells the application, then the window" \
        "wait window enter button" \
        "notify button enter" "redraw button" 'window tip button "Tip of the button"' "called button enter" "window enter button"
    looks_other "a hot button looks different from one at rest" $button_part "$normal"
    hot=$look
    to "182 136"
    wait_for 'called button move'
    step "moving on it redraws nothing"
    xdotool mousedown 1
    step "pressing focuses, redraws, then tells" \
        "notify button focus" "redraw button" "notify button down" "redraw button" "called button down"
    looks_other "a pressed button looks different from both" $button_part "$normal" "$hot"
    pressed_look=$look
    xdotool mouseup 1
    step "releasing redraws, then tells" "notify button up" "redraw button" "called button up"
    sleep 0.6 # longer than a double click takes
    xdotool mousedown 1
    step "a press long after the first is a press again" "wait called button down" \
        "notify button down" "redraw button" "called button down"
    to "$outside"
    step "the pressed button follows the pointer out" "wait called button leave" \
        "notify button leave" "redraw button" "called button leave"
    looks_other "out there it does not look pressed" $button_part "$pressed_look"
    to "$button"
    step "and back in" "wait window enter button" \
        "notify button enter" "redraw button" 'window tip button "Tip of the button"' "called button enter" "window enter button"
    looks_like "where it looks pressed again" $button_part "$pressed_look"
    to "$outside"
    wait_for 'called button leave' && end_step
    xdotool mouseup 1
    step "a release outside is no click" "wait redraw button" "redraw button"
    to "$button"
    wait_for 'window enter button' && end_step
    xdotool click 3
    step "the right button is told to the window alone" "wait window right" "window right button"
    sleep 0.6 # longer than a double click takes
    xdotool click --repeat 2 --delay 60 1
    step "the second of two quick presses is a double click" \
        "notify button down" "redraw button" "called button down" "notify button up" "redraw button" "called button up" \
        "notify button double" "redraw button" "called button double" "notify button up" "redraw button" "called button up"
    to "$outside"
    step "leaving redraws, then tells" "wait called button leave" "notify button leave" "redraw button" "called button leave"
    to "$disabled"
    xdotool click 1
    to "$outside"
    step "a disabled control is told nothing"
}

a_resting_pointer()
{
    local delay
    to "$button"
    wait_for '^shown AmbrelToolTip'
    delay=$(new_lines | sed -n 's/^shown AmbrelToolTip after \([0-9]*\) ms/\1/p')
    if [ "${delay:-0}" -ge 450 ] && [ "$delay" -lt 3000 ]; then
        pass "the tip appears after its delay ($delay ms)"
    else
        fail "the tip appears after its delay" "delay: ${delay:-it never came}" "$(new_lines)"
    fi
    local before after
    before=$(grep -c '^painted' "$log")
    sleep 0.5
    after=$(grep -c '^painted' "$log")
    if [ "$before" = "$after" ]; then
        pass "a window at rest paints nothing"
    else
        fail "a window at rest paints nothing" "painted $((after - before)) times in half a second"
    fi
    to "$outside"
    if wait_for '^hidden AmbrelToolTip'; then pass "the tip goes with the pointer"; else fail "the tip goes with the pointer"; fi
    wait_for 'called button leave' && end_step
}

the_check_box()
{
    to "$check"
    step "entering a check box offers the tip, then redraws" "wait redraw check" \
        "notify check enter" 'window tip check ""' "redraw check"
    xdotool mousedown 1
    step "pressing moves the focus" \
        "notify button blur" "redraw button" "notify check focus" "notify check down" "redraw check" "called check down"
    xdotool mouseup 1
    step "a click checks it before the application is told" \
        "notify check up" "redraw check" "redraw check" "called check up" "value 1"
    xdotool key space
    step "Space presses and releases it" "notify check down" "redraw check" "called check down" \
        "notify check up" "redraw check" "redraw check" "called check up" "value 2"
    xdotool key space
    wait_for '^value'
    new_lines | grep -q '^value 0' && pass "the third click starts again" || fail "the third click starts again" "$(new_lines)"
    end_step
}

the_focus_by_keyboard()
{
    to "$outside"
    wait_for 'notify check leave' && end_step
    local order before
    before=$(part $radio1_and_mark)
    xdotool key Tab
    wait_for 'notify radio1 focus'
    looks_other "the focus mark shows where Tab went" $radio1_and_mark "$before"
    xdotool key Tab Tab Tab Tab Tab Tab Tab
    wait_for 'notify button focus'
    order=$(new_lines | sed -n 's/^notify \(.*\) focus/\1/p' | tr '\n' ' ')
    if [ "$order" = "radio1 child closer save cancel twin1 twin2 button " ]; then
        pass "Tab goes round in order, past what is disabled and past forms, once into a group"
    else
        fail "Tab goes round in order, past what is disabled and past forms, once into a group" "$order"
    fi
    looks_like "the mark goes with the focus" $radio1_and_mark "$before"
    end_step
    xdotool key shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab
    wait_for 'notify child focus'
    order=$(new_lines | sed -n 's/^notify \(.*\) focus/\1/p' | tr '\n' ' ')
    [ "$order" = "twin2 twin1 cancel save closer child " ] && pass "Shift and Tab go back" || fail "Shift and Tab go back" "$order"
    end_step
    xdotool key Return
    step "Enter presses the focused button" "wait called child up" \
        "notify child down" "redraw child" "called child down" "notify child up" "redraw child" "called child up"
}

the_radio_boxes()
{
    to "$radio2"
    xdotool click 1
    wait_for '^values'
    end_step
    to "$radio3"
    wait_for 'notify radio3 enter' && wait_for 'redraw radio3' && end_step
    xdotool mousedown 1
    step "pressing a radio box chooses nothing yet" \
        "notify radio2 blur" "notify radio3 focus" "notify radio3 down" "redraw radio3"
    xdotool mouseup 1
    step "the former choice goes, the new one comes, the window is told, then the application" \
        "notify radio3 up" "redraw radio2" "redraw radio3" "window chosen radio3 in group 7" "redraw radio3" \
        "called radio3 up" "values 0 0 1"
    xdotool key space
    wait_for '^values'
    if new_lines | grep -q '^values 0 0 1' && ! new_lines | grep -q chosen; then
        pass "choosing the chosen one changes nothing"
    else
        fail "choosing the chosen one changes nothing" "$(new_lines)"
    fi
    end_step
}

# presses NAME: the lines of a button that is pressed by a key, in `lines`.
presses() { lines=("notify $1 down" "redraw $1" "called $1 down" "notify $1 up" "redraw $1" "called $1 up"); }

the_keys_of_a_dialog()
{
    to "$outside"
    to "$check"
    xdotool click 1
    to "$outside"
    wait_for 'notify check leave' && end_step
    presses save
    xdotool key Return
    step "Enter presses the default button when no button has the focus" "wait called save up" "${lines[@]}"
    xdotool key ctrl+s
    step "a hot key presses its button from anywhere" "wait called save up" "${lines[@]}"
    xdotool key ctrl+shift+s
    step "with another modifier it is another key"
    presses cancel
    xdotool key Escape
    step "Escape presses the button that has it as its hot key" "wait called cancel up" "${lines[@]}"
    xdotool key alt+s
    presses save
    step "Alt and the underlined letter press a button and bring the focus" "wait called save up" \
        "notify check blur" "notify save focus" "redraw save" "${lines[@]}"
    xdotool key k
    wait_for '^value'
    if new_lines | grep -q '^notify check focus' && new_lines | grep -q '^value 2'; then
        pass "the letter alone toggles a check box"
    else
        fail "the letter alone toggles a check box" "$(new_lines)"
    fi
    end_step
    xdotool key alt+t
    wait_for 'notify twin1 focus'
    xdotool key alt+t t
    step "among two of one letter the focus goes round, and nothing is pressed" "wait notify twin1 focus" \
        "notify check blur" "notify twin1 focus" "notify twin1 blur" "notify twin2 focus" "notify twin2 blur" "notify twin1 focus"
}

the_window_menu()
{
    # Alt is let go after a key was used with it.
    presses save
    xdotool keydown alt key s keyup alt
    step "no window menu comes after an access key" "wait called save up" \
        "notify twin1 blur" "notify save focus" "redraw save" "${lines[@]}"
    xdotool keydown alt keydown F2 keyup alt keyup F2
    step "nor after a hot key" "wait called save up" "${lines[@]}"
}

arrows_in_the_group()
{
    to "$radio3"
    xdotool click 1
    to "$outside"
    wait_for 'notify radio3 leave'
    wait_for '^values'
    end_step
    xdotool key Down
    step "an arrow takes the focus and the choice round to the first" "wait ^values 1 0 0" \
        "notify radio3 blur" "notify radio1 focus" "notify radio1 down" "redraw radio1" \
        "notify radio1 up" "redraw radio3" "redraw radio1" "window chosen radio1 in group 7" "redraw radio1" \
        "called radio1 up" "values 1 0 0"
    xdotool key Right Down
    wait_for '^values 0 0 1'
    end_step
    xdotool key Up
    wait_for '^values 0 1 0' && pass "up goes back" || fail "up goes back" "$(new_lines)"
    end_step
    xdotool key Tab
    step "Tab leaves the group" "wait notify child focus" "notify radio2 blur" "notify child focus" "redraw child"
    local before
    before=$(part $radio2_and_mark)
    xdotool key shift+Tab
    step "and comes back to the chosen one" "wait notify radio2 focus" "notify child blur" "redraw child" "notify radio2 focus"
    looks_other "with the mark" $radio2_and_mark "$before"
    to "$bare"
    xdotool click 1
    looks_other "a press takes the marks of the keyboard away" $radio2_and_mark "$look"
    end_step
}

forms_and_the_ground()
{
    to "$panel"
    wait_for 'called panel move'
    if new_lines | grep -q 'called panel enter'; then fail "a form is never entered, only moved over"; else pass "a form is never entered, only moved over"; fi
    end_step
    xdotool click 1
    step "a form hears of the release alone, without a redraw" "notify panel down" "notify panel up" "called panel up"
    to "$child"
    wait_for 'window enter child'
    new_lines | grep -q 'notify panel leave' && pass "a child takes the pointer from its form" \
        || fail "a child takes the pointer from its form" "$(new_lines)"
    end_step
    to "$bare"
    xdotool mousedown 1
    local x moved tries
    for x in 155 160 170 180 190; do
        xdotool mousemove $x 380
        sleep 0.05
    done
    xdotool mouseup 1
    for ((tries = 0; tries < 20; tries++)); do # the platform moves it in a loop of its own
        xdotool key F12
        wait_quickly '^barrier'
        moved=$(new_lines | sed -n 's/^barrier at //p' | tail -n 1)
        [ -n "$moved" ] && [ "$moved" != "100 100" ] && break
    done
    end_step
    if [ -n "$moved" ] && [ "$moved" != "100 100" ]; then
        pass "the bare ground drags the window (to $moved)"
    else
        fail "the bare ground drags the window" "it is at $moved"
    fi
}

destroyed_within()
{
    local what=$1 message=$2 at=$3
    start "$message"
    to "$at"
    wait_for "^\(redraw\|window\) "
    [ "$message" = 1862 ] && xdotool click --repeat 2 --delay 60 1 || xdotool mousedown 1 mouseup 1
    [ "$message" = 1863 ] && to "$outside"
    [ "$message" = 3031 ] && xdotool click 3
    ends "$what"
}

start
the_button_and_the_pointer
a_resting_pointer
the_check_box
the_focus_by_keyboard
the_radio_boxes
the_keys_of_a_dialog
the_window_menu
arrows_in_the_group
forms_and_the_ground
xdotool key alt+F4
ends "the window closes by the keyboard and nothing stays alive"
destroyed_within "the window destroyed when a button was entered" 1891 "$closer"
destroyed_within "the window destroyed at a button's press" 1027 "$closer"
destroyed_within "the window destroyed at a button's release" 1028 "$closer"
destroyed_within "the window destroyed at a double click" 1862 "$closer"
destroyed_within "the window destroyed when the pointer leaves" 1863 "$closer"
destroyed_within "the window destroyed while it is offered a tip" 3464 "$check"
destroyed_within "the window destroyed while it is told of a choice" 3025 "$radio3"
destroyed_within "the window destroyed while it is told of the right button" 3031 "$button"

result
