#!/usr/bin/env bash
# A drive that the settings name: discs are put in, seen, taken out, and what a killed run showed in
# its folder is given back by the next one.
source "$(dirname "$0")/common.bash"

expect 0 discs drives --json
json 'not [drive for drive in j if drive["emulated"]]'
expect 2 set drives 'no/name=|seen'
expect 2 set drives 'toy=disc.iso'
expect 0 set drives "toy=|seen here|8|writes"
expect 0 set drives 'one=both.iso|seen one'
expect 1 set drives 'two=./both.iso|seen two'
errs 'No two drives have one file or one folder'
expect 1 set drives 'two=other.iso|seen one'
expect 0 set drives 'one=both.iso|seen one|8'
expect 0 set drives one=
expect 0 discs drives --json
json 'j[-1]["name"] == "toy" and j[-1]["writer"] and j[-1]["medium"] == "none"'

mkdir source && make_level "$box/source/LEVEL_0001" keep
xorriso -as mkisofs -quiet -J -V 'TOY 1' -o "$box/a disc.iso" source 2>/dev/null
expect 1 discs insert toy source
expect 1 discs insert toy source/LEVEL_0001/keep.tr4
errs 'not the image of a disc'
expect 1 discs insert none 'a disc.iso'
errs 'The drives are'
expect 0 discs insert toy 'a disc.iso'
said "disc 'TOY 1'"
expect 0 discs insert toy 'new.iso'
said 'blank, 8.0 MB free'
[[ -f new.iso && ! -s new.iso && -s 'a disc.iso' ]]

# What a killed program left in the drive's folder goes; what is somebody's own stays.
expect 0 discs insert toy 'a disc.iso'
mkdir -p 'seen here' home/discs/seen/drive-toy
echo mine >'seen here/mine'
printf 'copy\0%s\0\0%s\0%s\0000\0001\0002\0ff\0' "$box/seen here" "$box/a disc.iso" 5 \
    >home/discs/seen/drive-toy/note
mkdir 'home/discs/seen/drive-gone'
expect 0 discs drives
errs 'is not as it was when a disc was shown there'
[[ $(cat 'seen here/mine') == mine && ! -e home/discs/seen/drive-toy ]]
[[ ! -e home/discs/seen/drive-gone ]]
expect 0 doctor
said 'where other files lie'
rm 'seen here/mine'

# The file of a disc that is moved away leaves an empty drive, and words.
mv 'a disc.iso' moved.iso
expect 0 doctor
said 'a disc.iso is not there'
expect 0 discs insert toy moved.iso
expect 0 discs eject toy
said 'no disc'
[[ -s moved.iso ]]
expect 0 set drives toy=
expect 1 discs eject toy
