#!/usr/bin/env bash
# An author publishes a level by keyboard alone, and its zip adds itself on a player's home.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/$1" --yes "${@:2}" >"$box/out"; }
practice_at "$box/practice"
for who in home player; do
    cp -r "$box/practice/trle" "$box/trle of $who"
    ctl $who setup --trle "$box/trle of $who" --full --folder-is-original
    ctl $who new --folder "$box/levels of $who" "$box/$who/my.kva"
done
mkdir "$box/author"
echo level >"$box/author/my level.tr4"
echo script >"$box/author/script.dat"
echo text >"$box/author/readme.txt"
cp "$box/practice/trle/"[Aa]udio/100.* "$box/author/"
before=$(ls -lR --time-style=full-iso "$box/author")
open_display 1200x840
start_windows
appears 'my.kva .1 levels'

# step N: waits until the wizard shows it.
step() { appears "Upload wizard - Step $1 "; }
press alt+t u
step 1
press Return
step 2
press Return # without files there is no way on
appears '^Kestrova$'
press Return
gone '^Kestrova$'
step 2
press alt+f
appears 'Select source folder'
chooses "$box/author"
step 2
press Return
appears '^Kestrova$' # is there no documentation?
press alt+y
gone '^Kestrova$'
step 2
# Backwards past the window's buttons: the list from which the documentation is chosen.
press shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab r
press Return
step 3
types 'An Author'
press alt+a # a new address
appears 'Add email address'
enter 'author@example.org'
gone 'Add email address'
step 3
press Return
step 4
types 'The Published Level'
press Tab
types 'a note'
press Return
step 5
press Return
step 6
press Return
step 7

# A package that cannot be made ends the wizard; the next one has what was typed.
printf '#!/bin/sh\nexit 14\n' >"$box/home/zip"
chmod +x "$box/home/zip"
press Return
appears 'Save upload zip file'
chooses "$box/published"
appears '^Kestrova$' # why not
press Return
appears '^Kestrova$' other # what was typed is kept
press Return
gone 'Upload wizard'
[[ ! -e $box/published.zip && ! -e $box/home/_temp_config ]]
rm "$box/home/zip"
appears 'my.kva .1 levels'
press alt+t u
appears '^Kestrova$' # is it wanted back?
press Return
gone '^Kestrova$'
step 1
press Return
step 2
press alt+f
appears 'Select source folder'
chooses "$box/author"
for number in 2 3 4 5 6; do
    step $number
    press Return
done
step 7
press Return
appears 'Save upload zip file'
chooses "$box/published"
appears '^Kestrova$' # where the zip is
press Return
gone 'Upload wizard'
[[ -s $box/published.zip && ! -e $box/home/_temp_config ]]
[[ $(ls -lR --time-style=full-iso "$box/author") == "$before" ]]

ctl player --json add "$box/published.zip"
ctl player --json info 1
for text in 'The Published Level' 'An Author' 'author@example.org' 'a note'; do
    grep -qF "$text" "$box/out" || fails "the player's level lacks '$text'"
done
ctl player play 1 --no-start
cmp "$box/author/my level.tr4" "$(find "$box/trle of player" -iname 'my level.tr4')"
