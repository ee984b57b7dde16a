#!/usr/bin/env bash
# Twelve downloads dragged onto the window at once: most become levels, some are refused.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
mkdir "$box/down"
for number in 1 2 3 4 5 6 7; do
    mkdir "$box/one"
    echo "level $number" >"$box/one/level$number.tr4"
    echo script >"$box/one/script.dat"
    (cd "$box/one" && zip -qr "$box/down/Download $number.zip" .)
    rm -r "$box/one"
done
mkdir "$box/down/Folder level"
echo folder >"$box/down/Folder level/folder.tr4"
cp "$box/down/Download 7.zip" "$box/down/Download 7 again.zip"
head -c 60 "$box/down/Download 1.zip" >"$box/down/cut.zip"
echo letter >"$box/down/letter.txt"
printf 'MZ installs' >"$box/down/installer.exe"
open_display 1200x840
start_windows
appears 'my.kva .1 levels'

# Loose files are among them, so Enter would make one level of all; Escape makes none.
drag 'my.kva' "$box/down"/*
appears '^Kestrova$'
press Escape
gone '^Kestrova$'
[[ ! -e $box/archive/LEVEL_0001 ]]
drag 'my.kva' "$box/down"/*
appears '^Kestrova$'
press alt+e # each its own level
appears 'Add many levels'
holds "$box/home/my.kva" 'Folder level'
holds "$box/home/my.kva" 'Download 6'
rests
ctl levels
[[ $(wc -l <"$box/out") == 9 ]]
[[ ! -e $box/archive/LEVEL_0009 ]]

# The first row needs the person: its own window asks about the program, and gives the level up.
appears 'Add many levels'
press alt+r # retry alone
appears '^Kestrova$'
press Escape
gone '^Kestrova$'
appears 'Add new level'
press Escape
gone 'Add new level'
appears 'Add many levels'
press Escape
gone 'Add many levels'
appears 'my.kva .9 levels'
