#!/usr/bin/env bash
# A package that needs every step is dropped; with the told questions answered it plays.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
trle=$box/practice/trle
printf '#!/bin/sh\npwd >>"%s/played"\n' "$box" >"$trle/tomb4.exe"
ctl setup --trle "$trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
open_display 1200x840
start_windows
appears 'my.kva .1 levels'
drag 'my.kva' "$box/practice/packages/Seven Doors.zip"
appears '^Kestrova$' # the wads of the lagoon: are they at hand?
press alt+y
appears 'Select wads file: lagoon_wads.zip'
chooses "$box/practice/packages/lagoon_wads.zip"
appears 'Set name for new level'
press Return # the level of the wads keeps its name
appears '^Kestrova$' # the import is finished
press Return
gone 'Import new/updated wads'
appears '^Kestrova$' other # the disc of the game?
press alt+n
accepted # its sources were compiled unasked
appears 'my.kva .2 levels'
for door in door_a door_b door_c; do
    [[ -n $(find "$box/archive/LEVEL_0001/files" -iname "$door.tr4*") ]] || fails "no $door"
done
[[ -z $(find "$box/archive" -iname '*.tom*' -o -iname '*.wad*') ]] || fails "sources stayed"
press ctrl+p
holds "$box/played" trle
for door in door_a door_b door_c; do
    [[ -n $(find "$trle" -iname "$door.tr4") ]] || fails "$door does not play"
done
