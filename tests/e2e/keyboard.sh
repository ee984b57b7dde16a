#!/usr/bin/env bash
# From the first start to three swaps, by the keyboard alone, in the real program on a real display.
set -euo pipefail

[[ -n ${KESTROVA:-} ]] || exit 0 # built without the windows
box=$(mktemp -d)
display=
window=
finish() {
    local code=$?
    ((code == 0)) || cat "$box/log" >&2 2>/dev/null || true
    [[ -z $window ]] || kill "$window" 2>/dev/null || true
    [[ -z $display ]] || kill "$display" 2>/dev/null || true
    wait
    rm -rf "$box"
}
trap finish EXIT

"$KESTROVACTL" --home "$box/other" practice "$box/practice" >/dev/null
# The stand-in game has a window of its own; here it only has to be started.
printf '#!/bin/sh\npwd >>"%s/played"\n' "$box" >"$box/practice/trle/tomb4.exe"
mkdir "$box/archive" "$box/home"

Xvfb -displayfd 3 -screen 0 1100x720x24 3>"$box/display" >/dev/null 2>&1 &
display=$!
for ((i = 0; i < 100; ++i)); do
    ! read -r number 2>/dev/null <"$box/display" || break
    sleep 0.1
done
export DISPLAY=:$number QT_QPA_PLATFORM=xcb
"$KESTROVA" --home "$box/home" >"$box/log" 2>&1 &
window=$!

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

appears 'Where is Tomb Raider'
press alt+p
appears 'Select a folder for the practice'
enter "$box/practice"
gone 'Select a folder'
appears 'Where is Tomb Raider'
press Return
gone 'Where is'
appears '^Kestrova$' # is it original?
press alt+y
sleep 1
appears '^Kestrova$' # a full backup?
press alt+y
appears 'Level archive'
press alt+m
gone 'Level archive'
appears 'Select main folder'
enter "$box/archive"
appears 'LevelArchive.kva .1 levels'

cd "$box/practice/levels"
for level in "The Clockmaker's Attic" "The Drowned Observatory" "Winds over Kestrel Ridge"; do
    press alt+l
    press a
    appears 'Add new level'
    enter "$PWD/$level"
    holds "$box/home/LevelArchive.kva" "$level"
    gone 'Add new level'
    appears 'LevelArchive.kva'
done

# plays N CODE: the game was started the n-th time, with that level in the folder. Before that the
# program is at work and discards what is typed.
plays() {
    local i
    for ((i = 0; i < 300; ++i)); do
        [[ $(cat "$box/played" 2>/dev/null | wc -l) -lt $1 ]] || break
        sleep 0.1
    done
    [[ $("$KESTROVACTL" --home "$box/home" current | cut -f1) == "$2" ]] || {
        echo "$2 is not played" >&2
        exit 1
    }
    sleep 0.5
}
press ctrl+f
xdotool type --delay 4 attic
press Return # to the list, on the match
press Return # plays it
plays 1 1
press ctrl+f
press Escape
press Down
press F5
plays 2 2
press ctrl+f
xdotool type --delay 4 original
press alt+p
plays 3 0
[[ ! -e $box/practice/trle/Kestrva.txt ]]
press ctrl+q
wait "$window"
window=
[[ $(stat -c %s "$box/home/Kestrova.prf") -eq 1296 ]]
