#!/usr/bin/env bash
# From the first start to three swaps, by the keyboard alone, in the real program on a real display.
source "$(dirname "$0")/windows.bash"

practice_at "$box/practice"
# The stand-in game has a window of its own; here it only has to be started.
printf '#!/bin/sh\npwd >>"%s/played"\n' "$box" >"$box/practice/trle/tomb4.exe"
mkdir "$box/archive" "$box/home"

open_display 1100x720
start_windows

appears 'Welcome to Kestrova'
press alt+b
appears 'Choose TR Level Editor folder'
chooses "$box/practice/trle"
appears 'Welcome to Kestrova'
press alt+i # it is original
press alt+e
appears 'Select main folder'
chooses "$box/archive"
appears 'Welcome to Kestrova'
press Return
gone 'Welcome to Kestrova'
appears 'LevelArchive.kva .1 levels'

cd "$box/practice/levels"
for level in "The Clockmaker's Attic" "The Drowned Observatory" "Winds over Kestrel Ridge"; do
    press alt+l a
    appears 'Add new level'
    types "$level"
    press alt+f
    appears 'Select source folder'
    chooses "$PWD/$level"
    if [[ -n $(find "$level" -mindepth 1 -type d) ]]; then
        appears '^Kestrova$' # sub-folders too?
        press alt+y
        gone '^Kestrova$'
    fi
    accepted
    holds "$box/home/LevelArchive.kva" "$level"
    appears 'LevelArchive.kva'
done

# plays N CODE KEYS: those keys start the game the n-th time, with that level in the folder.
played() { [[ $(cat "$box/played" 2>/dev/null | wc -l) -ge $1 ]]; }
plays() {
    appears 'LevelArchive.kva'
    "$3"
    soon played "$1"
    rests
    [[ $("$KESTROVACTL" --home "$box/home" current | cut -f1) == "$2" ]] || {
        echo "$2 is not played" >&2
        exit 1
    }
}
attic() {
    press ctrl+f ctrl+a
    types attic
    press Return # to the list, on the match
    press Return # plays it
}
next() {
    press ctrl+f Escape Up Up Up Down Down F5
}
original() {
    press ctrl+f ctrl+a
    types original
    press ctrl+p
}
plays 1 1 attic
plays 2 2 next
plays 3 0 original
[[ ! -e $box/practice/trle/Kestrva.txt ]]
press ctrl+q
wait "$window"
window=
[[ $(stat -c %s "$box/home/Kestrova.prf") -eq 1296 ]]
