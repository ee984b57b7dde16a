#!/usr/bin/env bash
# However the windows end, no change of the list is lost, and nobody is left without the archive.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
ctl add "$box/practice/levels/The Clockmaker's Attic"
ctl set auto-save off
open_display 1200x840
start_windows
appears 'my.kva .2 levels'

# renames LETTERS: types them before the author's name of the chosen level.
renames() {
    press alt+i
    appears 'Infos about Author'
    press Home
    types "$1"
    press Return
    gone 'Infos about Author'
    appears 'my.kva .2 levels'
}
renames Ada

# The system ends the program, with nothing under way and with a window open.
ends() {
    local code=0
    kill -TERM "$window"
    wait "$window" || code=$?
    window=
    [[ $code == "$1" ]] || fails "the program ended with $code"
}
ends 0
ctl author 0 && grep -q Ada "$box/out"
start_windows
appears 'my.kva .2 levels'
renames Eve
press alt+l p
appears 'Properties of level'
ends 143
ctl author 0 && grep -q EveAda "$box/out"

# A new archive that is given up leaves the old one loaded.
start_windows
appears 'my.kva .2 levels'
press ctrl+n
appears 'Select main folder'
press Escape
appears '^Kestrova$'
press Return
appears 'my.kva .2 levels'
