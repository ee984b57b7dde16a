# For every script that drives the windows on a real display of its own: a folder that is gone at the
# end, and what a person does with keyboard and mouse. Sourced, not run.
set -euo pipefail

[[ -n ${KESTROVA:-} ]] || exit 0 # built without the windows
box=$(mktemp -d)
display=
window=
game= # the game's process, for a script that starts one
finish() {
    local code=$?
    ((code == 0)) || cat "$box/log" >&2 2>/dev/null || true
    [[ -z $window ]] || kill "$window" 2>/dev/null || true
    [[ -z $game ]] || kill "$game" 2>/dev/null || true
    [[ -z $display ]] || kill "$display" 2>/dev/null || true
    wait
    rm -rf "$box"
}
trap finish EXIT

# open_display WIDTHxHEIGHT
open_display() {
    Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$box/display" >/dev/null 2>&1 &
    display=$!
    for ((i = 0; i < 100; ++i)); do
        ! read -r number 2>/dev/null <"$box/display" || break
        sleep 0.1
    done
    export DISPLAY=:$number QT_QPA_PLATFORM=xcb
}

# start_windows: the program with the home $box/home.
start_windows() {
    "$KESTROVA" --home "$box/home" >>"$box/log" 2>&1 &
    window=$!
}

# appears TITLE: waits for a window and gives it the keyboard, since no window manager does.
appears() {
    local i id
    for ((i = 0; i < 300; ++i)); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1) || true
        if [[ -n $id ]]; then
            sleep 0.3
            xdotool windowfocus "$id"
            return
        fi
        sleep 0.1
    done
    echo "no window '$1'; there are:" >&2
    xdotool search --onlyvisible --name . getwindowname %@ >&2 || true
    exit 1
}
# gone TITLE: waits until no such window is there.
gone() {
    local i
    for ((i = 0; i < 100; ++i)); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    echo "the window '$1' stays" >&2
    exit 1
}
press() { sleep 0.2; xdotool key --clearmodifiers "$@"; }
enter() { sleep 0.2; xdotool type --delay 4 "$1"; press Return; }
# holds FILE TEXT: waits until the file holds the text.
holds() {
    local i
    for ((i = 0; i < 200; ++i)); do
        ! grep -qs -- "$2" "$1" || return 0
        sleep 0.1
    done
    echo "'$2' is not in $1" >&2
    exit 1
}
# drag X Y FILE…: takes the files from a window of another program to that place and lets go.
drag() {
    local x=$1 y=$2 source i
    shift 2
    "$DRAG_SOURCE" "$@" >/dev/null 2>&1 &
    source=$!
    appears 'Drag source'
    xdotool mousemove 60 760 mousedown 1
    sleep 0.2
    for ((i = 1; i <= 10; ++i)); do
        xdotool mousemove $((60 + (x - 60) * i / 10)) $((760 + (y - 760) * i / 10))
        sleep 0.05
    done
    sleep 0.3
    xdotool mouseup 1
    # It ends with its drag; one that was refused must not be waited for.
    for ((i = 0; i < 100; ++i)); do
        kill -0 "$source" 2>/dev/null || return 0
        sleep 0.1
    done
    kill "$source"
    echo "nothing was dropped at $x $y" >&2
    exit 1
}
# click WINDOW X Y: a place of that window.
click() {
    xdotool mousemove --window "$(xdotool search --onlyvisible --name "$1" | tail -1)" "$2" "$3" click 1
}
