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
trap 'echo "FAILED at line $LINENO: $BASH_COMMAND" >&2' ERR

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

seen= # the window that appeared last
# appears TITLE [OTHER]: waits for a window and gives it the keyboard, since no window manager does.
# With OTHER it is not the one that appeared last, which may go slowly and have the same title.
appears() {
    local i id
    for ((i = 0; i < 300; ++i)); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1) || true
        if [[ -n $id && (-z ${2:-} || $id != "$seen") ]]; then
            sleep 0.3
            ! xdotool windowfocus "$id" || {
                seen=$id
                return
            }
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
# leads_to TITLE KEY…: presses until that window is there; a program at work discards what is typed.
leads_to() {
    local title=$1 i j
    shift
    for ((i = 0; i < 5; ++i)); do
        press "$@"
        for ((j = 0; j < 50; ++j)); do
            ! xdotool search --onlyvisible --name "$title" >/dev/null 2>&1 || return 0
            sleep 0.1
        done
    done
    echo "$* does not lead to '$title'" >&2
    exit 1
}
# accepted: Ok for the level's window, as soon as it has taken in its sources.
accepted() {
    local i
    for ((i = 0; i < 20; ++i)); do
        appears 'Add new level'
        press Return
        sleep 0.8
        xdotool search --onlyvisible --name 'Add new level' >/dev/null 2>&1 || return 0
    done
    echo "the level is not accepted" >&2
    exit 1
}
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
