#!/usr/bin/env bash
# Downloads dragged onto the windows become levels and are played.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
printf '#!/bin/sh\npwd >>"%s/played"\n' "$box" >"$box/practice/trle/tomb4.exe"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
open_display 1200x840
start_windows
appears 'my.kva .1 levels'

cd "$box/practice/levels"
declare -i count=0
for package in *.zip "The Clockmaker's Attic" "The Drowned Observatory" "Schloß Grünfels"; do
    drag 'my.kva' "$PWD/$package"
    if [[ -d $package && -n $(find "$package" -mindepth 1 -type d) ]]; then
        appears '^Kestrova$' # sub-folders too?
        press Return
        gone '^Kestrova$'
    fi
    appears 'Add new level'
    count+=1
    accepted
    holds "$box/home/my.kva" "$(iconv -t WINDOWS-1252 <<<"${package%.zip}")"
done
ctl levels
[[ $(wc -l <"$box/out") == $((count + 1)) ]]

# Onto the dialog itself: two sources make one level.
appears 'my.kva .6 levels'
press alt+l a
appears 'Add new level'
mkdir "$box/more"
echo walk >"$box/more/walkthrough.txt"
echo level >"$box/more/second.tr4"
drag 'Add new level' "$box/more/second.tr4" "$box/more/walkthrough.txt"
accepted
ctl info $((count + 1)) --json
grep -q walkthrough "$box/out"
[[ -f $box/archive/LEVEL_000$((count + 1))/files/walkthrough.txt ]]

# What is no level stays out, and the archive is as it was.
before=$(cksum <"$box/home/my.kva")
drag 'my.kva' "$box/more/walkthrough.txt"
appears 'Add new level'
press Return
appears '^Kestrova$' # no tr4 files
press Return
appears 'Add new level'
press Escape
gone 'Add new level'
rests
[[ $(cksum <"$box/home/my.kva") == "$before" && ! -e $box/archive/LEVEL_000$((count + 2)) ]]

appears 'my.kva .7 levels'
press ctrl+p
holds "$box/played" trle
[[ -e $box/practice/trle/Kestrva.txt ]]
