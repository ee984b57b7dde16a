#!/usr/bin/env bash
# A level's screen-shots from the terminal, from the first to the last.
source "$(dirname "$0")/common.bash"

make_archive
shots=$box/levels/LEVEL_0001/screenshots
convert -size 8x6 xc:red "$box/one.jpg"
convert -size 9x6 xc:blue "bmp:$box/two.BMP"

expect 2 shots
expect 2 shots show 1
errs "The word 'show' is one too many."
expect 2 shots rename 1 one.jpg
expect 2 shots list dawn
expect 1 shots list 77
expect 0 shots list 1
silent
expect 0 shots add 1 "$box/one.jpg"
expect 0 shots add 1 "$box/two.BMP"
expect 1 shots add 1 "$box/err"
errs "only files whose names end in .jpg or .bmp are"
expect 1 shots add 1 "$box/one.jpg"
[[ $(ls "$shots") == $'one.jpg\ntwo.BMP' ]] || die "added without an answer: $(ls "$shots")"
expect 0 --no shots add 1 "$box/one.jpg"
errs "saved in screenshot list as '1) dawn.jpg'"
expect 0 --json shots list 1
json '[s["name"] for s in j] == ["two.BMP", "1) dawn.jpg", "one.jpg"]'
json 'j[0]["size"] > 54 and j[0]["file"].endswith("LEVEL_0001/screenshots/two.BMP")'
expect 2 --json shots delete 1 one.jpg

expect 1 shots rename 1 one.jpg two.bmp
errs "already a picture with name"
expect 1 shots rename 1 one.jpg ../one.jpg
expect 0 shots rename 1 ONE.jpg "first light.jpg"
expect 0 shots export 1 "first light.jpg" "$box/out.jpg"
cmp "$box/one.jpg" "$box/out.jpg"
expect 1 --no shots export 1 two.BMP "$box/out.jpg"
cmp "$box/one.jpg" "$box/out.jpg"

expect 1 --no shots delete 1 two.BMP
expect 1 shots delete 1 two.BMP
errs "Left unanswered"
[[ -e $shots/two.BMP ]] || die "deleted without a Yes"
expect 0 --yes shots delete 1 two.BMP
expect 1 --yes shots delete 1 two.BMP
errs "has no screen-shot 'two.BMP'"
[[ $(ls "$shots") == $'1) dawn.jpg\nfirst light.jpg' ]] || die "the list is $(ls "$shots")"

mkdir -p "$box/levels/LEVEL_0001/savegames/slot1"
cp "$box/one.jpg" "$box/levels/LEVEL_0001/savegames/slot1/shot4.jpg"
expect 0 shots import 1
cmp "$box/one.jpg" "$shots/2) dawn.jpg"

# The default picture is nobody's to delete.
mkdir -p "$box/home/LEVEL_0000/screenshots"
cp "$box/two.BMP" "$box/home/LEVEL_0000/screenshots/Tomb Raider Level Editor.bmp"
expect 1 --yes shots delete 0 "Tomb Raider Level Editor.bmp"
errs "you can not delete it"
