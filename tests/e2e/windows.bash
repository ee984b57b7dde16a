# For every script that drives the windows on a real display of its own: a folder that is gone at the
# end, and what a person does with keyboard and mouse. Sourced, not run.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/practice.bash"

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

# nap SECONDS: as sleep, without a process of its own; the scripts wait often.
exec {silence}<> <(:)
nap() { read -rt "$1" -u "$silence" || true; }

# open_display WIDTHxHEIGHT
open_display() {
    # Without -noreset it begins anew whenever its last client goes, and refuses who comes just then.
    Xvfb -displayfd 3 -noreset -screen 0 "$1x24" 3>"$box/display" >/dev/null 2>&1 &
    display=$!
    for ((i = 0; i < 100; ++i)); do
        ! read -r number 2>/dev/null <"$box/display" || break
        nap 0.1
    done
    export DISPLAY=:$number QT_QPA_PLATFORM=xcb
}

# start_windows: the program with the home $box/home.
start_windows() {
    "$KESTROVA" --home "$box/home" >>"$box/log" 2>&1 &
    window=$!
}

# fails WORDS…: says so, with the windows that are there, their sizes, and which has the keyboard.
fails() {
    local id
    echo "$*; there are:" >&2
    for id in $(xdotool search --onlyvisible --name .); do
        xdotool getwindowname "$id" getwindowgeometry "$id" >&2 || true
    done
    echo "the keyboard: $(xdotool getwindowfocus)" >&2
    exit 1
}
# Seconds that one wait may take, also under the sanitizers beside other work.
patience=150
# soon COMMAND…: waits until it succeeds, as long as a machine at work may take.
soon() {
    local end=$((SECONDS + patience))
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fails "never: $*"
        nap 0.15
    done
}

# spent PID: `ticks` are those of the processor that the program has used; nothing unless all its
# threads sleep and no child works for it (a game that it has started plays).
spent() {
    local task sum=0 line child children
    ticks=
    for task in /proc/"$1"/task/*; do
        { read -r line <"$task/stat"; } 2>/dev/null || return 0
        # shellcheck disable=SC2086
        set -- "$1" ${line##*) }
        [[ $2 == S ]] || return 0
        sum=$((sum + ${13} + ${14}))
        children=
        { read -r children <"$task/children"; } 2>/dev/null || true
        for child in $children; do
            line=gone
            { read -r line <"/proc/$child/stat"; } 2>/dev/null || true
            # What has ended, and waits for nobody, works no more.
            [[ $child == "$game" || $line == gone || ${line##*) } == Z* ]] || return 0
        done
    done
    ticks=$sum
}
# rests [PID]: waits until the program (or another one) has done what it was told and sleeps: what is
# typed while it works is discarded. A program that waits for a display at work has not done it.
rests() {
    local pid=${1:-$window} before server ticks calm=0 end=$((SECONDS + patience))
    spent "$pid"
    before=$ticks
    while ((SECONDS < end)); do
        nap 0.08
        spent "$display"
        server=$ticks
        spent "$pid"
        # A blinking cursor takes a tick now and then.
        if [[ -n $before && -n $ticks && -n $server ]] && ((ticks - before <= 1)); then
            ((++calm < 3)) || return 0
        else
            calm=0
        fi
        before=$ticks
    done
    fails "the program does not come to rest"
}

# shown TITLE: the number of that window, the last one of several.
shown() {
    local ids
    ids=$(xdotool search --onlyvisible --name "$1" 2>/dev/null) && [[ -n $ids ]] &&
        echo "${ids##*$'\n'}"
}
focused() { [[ $(xdotool getwindowfocus) == "$1" ]]; }

seen= # the window that appeared last
# appears TITLE [OTHER]: waits for a window and gives it the keyboard, since no window manager does.
# With OTHER it is not the one that appeared last, which may go slowly and have the same title.
appears() {
    local id end=$((SECONDS + patience))
    while ((SECONDS < end)); do
        if id=$(shown "$1") && [[ -z ${2:-} || $id != "$seen" ]]; then
            rests
            # It may have been another one's turn meanwhile.
            if [[ $(shown "$1") == "$id" ]] && xdotool windowfocus "$id" 2>/dev/null; then
                soon focused "$id"
                seen=$id
                return
            fi
        fi
        nap 0.15
    done
    fails "no window '$1'"
}
# gone TITLE: waits until no such window is there.
gone() {
    local end=$((SECONDS + patience))
    while ((SECONDS < end)); do
        shown "$1" >/dev/null || return 0
        nap 0.15
    done
    fails "the window '$1' stays"
}
press() {
    local key
    for key in "$@"; do
        rests
        xdotool key --clearmodifiers "$key"
    done
}
# types TEXT: into what has the keyboard.
types() {
    rests
    xdotool type --delay 8 "$1"
}
enter() { types "$1" && press Return; }
is_there() { xdotool search --onlyvisible --name . 2>/dev/null | grep -qx "$1"; }
# chooses PATH: in the chooser of files that appeared last; one that is at rest and still there is
# told once more.
chooses() {
    local chooser=$seen try i
    for ((try = 0; try < 5; ++try)); do
        ((try == 0)) || press ctrl+a
        enter "$1"
        for ((i = 0; i < 50; ++i)); do
            is_there "$chooser" || return 0
            nap 0.15
        done
        rests
        is_there "$chooser" || return 0
    done
    fails "the chooser does not take '$1'"
}
# accepted: Ok for the level's window, as soon as it has taken in its sources.
accepted() {
    appears 'Add new level'
    press Return
    gone 'Add new level'
}
# holds FILE TEXT: waits until the file holds the text.
holds() { soon grep -qs -- "$2" "$1"; }

# middle TITLE: X and Y of the middle of that window on the screen.
middle() {
    local X Y WIDTH HEIGHT
    eval "$(xdotool getwindowgeometry --shell "$(shown "$1")" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
    echo $((X + WIDTH / 2)) $((Y + HEIGHT / 2))
}
# drag TITLE FILE…: takes the files from a window of another program onto that one and lets go.
drag() {
    local target=$1 source from_x from_y x y i
    shift
    rests
    read -r x y < <(middle "$target")
    "$DRAG_SOURCE" "$@" >"$box/drag" 2>/dev/null &
    source=$!
    soon shown 'Drag source'
    rests "$source"
    read -r from_x from_y < <(middle 'Drag source')
    xdotool mousemove "$from_x" "$from_y" mousedown 1
    xdotool mousemove $((from_x + 30)) $((from_y + 3))
    soon grep -q begun "$box/drag"
    # Each move asks the window below anew, until it says that it takes the files.
    for ((i = 0; i < 600; ++i)); do
        xdotool mousemove $((x + i % 2)) "$y"
        nap 0.1
        ! grep -q taken "$box/drag" || break
    done
    # Both have answered the last move.
    rests "$source"
    rests
    xdotool mouseup 1
    wait "$source" || fails "nothing was dropped on '$target'"
    rests
}
