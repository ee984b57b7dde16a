#!/usr/bin/env bash
# The whole way of an archive by the mouse: five levels go onto three discs of the practice drive and
# leave the hard disk, each is played from its disc, a damaged disc is refused in words, everything
# comes back, the archive moves, loses its list, and is recovered.
source "$(dirname "$0")/windows.bash"
source "$(dirname "$0")/mouse.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out" </dev/null; }
# json EXPRESSION: true of the last output as `j`.
json() {
    python3 -c 'import json,sys; j = json.load(open(sys.argv[1])); sys.exit(not eval(sys.argv[2]))' \
        "$box/out" "$1" || fails "JSON: not $1"
}
files_of() { (cd "$1" && find . -path './LEVEL_*/files/*' -type f -print0 | sort -z |
    xargs -0 -r cksum | cksum); }
# Each start of the game tells what level files it found.
count=0
plays() {
    clicks row "$1"
    clicks Pul_Play
    ((++count))
}
played() { [[ $(wc -l <"$box/played") == "$count" ]]; }
menu() {
    local item
    for item; do clicks "$item"; done
}

practice_at "$box/practice"
trle=$box/practice/trle
cat >"$trle/tomb4.exe" <<GAME
#!/bin/sh
find . -iname '*.tr4' -exec cksum {} + | cut -d' ' -f1,2 >"$box/seen"
echo >>"$box/played"
GAME
: >"$box/played"
ctl setup --trle "$trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/my.kva"
levels=()
for folder in "$box"/practice/levels/*/; do
    folder=${folder%/}
    ctl add --name "${folder##*/}" "$folder"
    levels+=("${folder##*/}")
done
[[ ${#levels[@]} == 5 ]] || fails "levels: ${levels[*]}"
before=$(files_of "$box/archive")

open_display 1200x840
start_windows
appears 'my.kva .6 levels'

# Three discs of the practice drive.
menu mnu_Tools mnu_MoveOnCd
appears 'Create Kestrova CD'
finds Combo_Mb '^105'
clicks Pul_Start
answers 'Have you' Yes
for disc in 1 2 3; do
    answers "Insert a blank CD .Kestrova #$disc" Yes
    answers 'Cd burning seems correct' Yes
done
answers 'CD creation complete' Ok
answers 'Remove from local disk' Yes
gone 'Create Kestrova CD'
[[ -z $(find "$box/archive" -path '*/files/*') ]] || fails "files stay on the hard disk"
ctl levels --json
json 'sorted({level["cd"] for level in j}) == [0, 1, 2, 3]'

for level in "${levels[@]}"; do
    appears 'my.kva .6 levels'
    plays "$level"
    soon played
    rests
    find "$box/practice/levels/$level" -iname '*.tr4' -exec cksum {} + | cut -d' ' -f1,2 >"$box/own"
    [[ -s $box/own ]] && ! grep -vFf "$box/seen" "$box/own" || fails "$level was not there"
done

# Bytes of the second disc are others: its level is refused in words, and what stands stays.
press ctrl+q
wait "$window"
image="$box/practice/discs/Kestrova 02 archive.iso"
cp "$image" "$box/good.iso"
printf 'scratched' | dd of="$image" bs=1 seek=20000000 conv=notrunc status=none
start_windows
appears 'my.kva .6 levels'
held=$(cksum "$trle"/[Dd][Aa][Tt][Aa]/*)
clicks row 'Observatory'
clicks Pul_Play
appears '^Insert CD$'
finds Label_Details 'not those that were put on it'
clicks Pul_Cancel
gone '^Insert CD$'
finds '*' '.' # what is told of it
clicks '*' '^Ok$'
gone '^Kestrova$'
[[ $(cksum "$trle"/[Dd][Aa][Tt][Aa]/*) == "$held" ]] || fails "a damaged disc changed the folder"
cp "$box/good.iso" "$image"

# All of it comes back.
appears 'my.kva .6 levels'
menu mnu_Tools mnu_Manutenzione mnu_MoveArc
answers 'Current archive is also on CD' Yes
rests
is_back() { [[ $(files_of "$box/archive") == "$before" ]]; }
soon is_back
appears 'my.kva .6 levels'
ctl levels --json
json '{level["cd"] for level in j} == {0}'

# It moves.
menu mnu_Tools mnu_Manutenzione mnu_MoveArc
appears 'Select target folder'
mkdir "$box/moved"
chooses "$box/moved"
answers 'Folder archive moved in' Ok
[[ $(files_of "$box/moved") == "$before" && ! -e $box/archive/LEVEL_0001 ]] || fails "the move"

# Its list is lost, and made anew.
appears 'my.kva .6 levels'
clicks row 'Attic'
rests
rm "$box/my.kva"
menu mnu_Tools mnu_Manutenzione mnu_Recover
answers 'If you have lost' Ok
appears 'Choose HD main folder'
chooses "$box/moved"
answers 'Is archive to restore also on CD' No
answers 'The archive is recovered. Levels: 5; with a number in place of a name: 0' Ok
appears 'LevelArchive.*6 levels'
plays 'Attic'
soon played
press ctrl+q
wait "$window"
window=
[[ $(files_of "$box/moved") == "$before" ]] || fails "files changed"
ctl original
ctl verify
