#!/usr/bin/env bash
# In the windows, by keys: a level on a disc asks for it, a drive without it and an image of another
# disc are told, the right image plays it; an archive on a disc that the program is started with is
# installed, with its files.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" "$@" </dev/null; }
practice_at "$box/practice"
ctl --yes setup --trle "$box/practice/trle" --full --folder-is-original >/dev/null 2>&1
ctl new --folder "$box/levels" "$box/my.kva" >/dev/null
ctl add --name Attic "$box/practice/levels/The Clockmaker's Attic" >/dev/null
mkdir "$box/isos" "$box/target" "$box/disc"
ctl --yes discs create --images "$box/isos" --capacity 700 --remove >/dev/null 2>&1
ctl --yes load "$box/my.kva" >/dev/null
[[ ! -e $box/levels/LEVEL_0001/files ]] || fails "the files did not leave"
image=$(echo "$box"/isos/*.iso)
xorriso -osirrox on -indev "$image" -extract / "$box/disc" >/dev/null 2>&1
chmod -R u+w "$box/disc"
mv "$image" "$box/moved.iso"
mkdir -p "$box/other/others1/LEVEL_0001/files"
echo x >"$box/other/others1/LEVEL_0001/files/x.tr4"
xorriso -as mkisofs -quiet -V OTHER -R -J -o "$box/other.iso" "$box/other" 2>/dev/null
ctl set drives "cd=|$box/seen" >/dev/null

open_display 1300x900
start_windows
appears 'my.kva .2 levels'
main=$seen
press ctrl+f ctrl+a
types attic
press Return
press F5
appears '^Insert CD$'
press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears '^Insert CD$'
press Return # the only drive is empty
appears '^Kestrova$'
press Return
gone '^Kestrova$'
appears '^Insert CD$'
press alt+c
appears 'Choose an image of disc'
chooses "$box/other.iso"
appears '^Kestrova$' # a disc of another archive
press Return
gone '^Kestrova$'
appears '^Insert CD$'
press alt+c
appears 'Choose an image of disc'
chooses "$box/moved.iso"
gone '^Insert CD$'
soon shown 'practice game'
screen=$(shown 'practice game')
game=$(xdotool getwindowpid "$screen")
xdotool windowfocus "$screen"
soon focused "$screen"
rests "$game"
xdotool key q
gone 'practice game'
game=
xdotool windowfocus "$main"
soon focused "$main"
press ctrl+q
wait "$window"
window=
grep -q moved.iso "$box/levels/discs.json" || fails "the image is not remembered"
[[ $(ctl current) == 1* ]] || fails "the level is not installed"

# The program is started with the archive on the disc.
"$KESTROVA" --home "$box/home" "$box/disc/Cd_Archive.kva" >>"$box/log" 2>&1 &
window=$!
appears 'Install archive from disc'
press alt+f
press Return
appears 'Select an hard disk folder'
chooses "$box/target"
appears '^Kestrova$' # where it was saved
press Return
appears 'Cd_Archive.kva .2 levels'
press ctrl+q
wait "$window"
window=
[[ -n $(find "$box/target/levels/LEVEL_0001/files" -iname '*.tr4*') ]] || fails "the files did not come"
[[ $(ctl --json info 1) == *'"cd": 0'* ]] || fails "the level is on a disc still"
