#!/usr/bin/env bash
# From the first start to the first level played, by the mouse: four clicks for who has a Level Editor
# and a level to drop, two for who has nothing at all.
source "$(dirname "$0")/windows.bash"
source "$(dirname "$0")/mouse.bash"

clicked=0
counts() {
    clicks "$@"
    ((++clicked))
}
# ends: the game is left, and the program.
ends() {
    game=
    xdotool windowfocus "$(shown 'levels.$')"
    press ctrl+q
    wait "$window"
    window=
}

export HOME=$box/person
unset WINEPREFIX XDG_DATA_HOME
practice_at "$box/practice"
prefix=$HOME/.wine
mkdir -p "$prefix/drive_c/Program Files/Core Design" "$box/home"
echo 'WINE REGISTRY Version 2' >"$prefix/system.reg"
mv "$box/practice/trle" "$prefix/drive_c/Program Files/Core Design/trle"
printf '#!/bin/sh\npwd >>"%s/played"\n' "$box" >"$prefix/drive_c/Program Files/Core Design/trle/tomb4.exe"

open_display 1200x840
start_windows
appears 'Welcome to Kestrova'
finds Label_Trle "This is a Level Editor's folder"
counts Check_Original
counts Pul_Start
gone 'Welcome to Kestrova'
appears 'LevelArchive.kva .1 levels'
drag 'LevelArchive.kva' "$box/practice/levels/The Clockmaker's Attic"
appears 'Add new level'
counts Pul_Ok
gone 'Add new level'
appears 'LevelArchive.kva .2 levels'
counts Pul_Play
soon test -s "$box/played"
[[ $clicked == 4 ]] || fails "it took $clicked clicks"
rests
ends
[[ $("$KESTROVACTL" --home "$box/home" current | cut -f1) == 1 ]] || fails "the level is not played"

clicked=0
rm -rf "$box/home" "$prefix"
mkdir "$box/home"
start_windows
appears 'Welcome to Kestrova'
counts Pul_Practice
gone 'Welcome to Kestrova'
appears 'Practice.kva .6 levels'
counts Pul_Play
soon shown 'practice game'
[[ $clicked == 2 ]] || fails "it took $clicked clicks"
screen=$(shown 'practice game')
game=$(xdotool getwindowpid "$screen")
rests
xdotool windowfocus "$screen"
soon focused "$screen"
rests "$game"
xdotool key q
gone 'practice game'
ends
[[ $("$KESTROVACTL" --home "$box/home" current | cut -f2) == "The Clockmaker's Attic" ]] ||
    fails "another level was chosen"
