#!/usr/bin/env bash
# The windows: an archive moves by its menu item, and a folder that is taken is refused.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
ctl add --name First "$box/practice/levels/Winds over Kestrel Ridge"
echo notes >"$box/archive/LEVEL_0001/notes.txt"
mkdir "$box/new home" "$box/taken"
mkdir "$box/taken/LEVEL_0001"
open_display 1200x840
start_windows
appears 'my.kva .2 levels'
press alt+t a m
appears 'Select target folder'
chooses "$box/taken"
appears '^Kestrova$' # levels lie there already
press Return
appears 'Select target folder'
chooses "$box/new home"
appears '^Kestrova$' # it is there
press Return
gone '^Kestrova$'
[[ $(<"$box/new home/LEVEL_0001/notes.txt") == notes && ! -e $box/archive/LEVEL_0001 ]]
appears 'my.kva .2 levels'
press ctrl+q
wait "$window"
