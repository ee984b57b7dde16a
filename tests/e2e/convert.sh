#!/usr/bin/env bash
# Waves dragged onto the audio converter become the game's form; what cannot leaves all as it was.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
mkdir "$box/album" "$box/waves"
ctl audio convert "$box"/practice/trle/[Aa]udio/10[0-3].* --out "$box/album" --format 44100s16
sources=$(ls "$box/album")
(($(wc -l <<<"$sources") == 4))
ctl audio convert "$box/album/"*0.* --out "$box" --format 22050m16
mv "$box/"*0.wav "$box/footstep.wav"
open_display 1200x840
start_windows
appears 'my.kva .1 levels'

# opens: the tool with the album and the footstep in its list, which has the keyboard.
opens() {
    appears 'my.kva .1 levels'
    press alt+t c c
    appears 'Audio Converter tool'
    drag 'Audio Converter tool' "$box/album" "$box/footstep.wav"
}
# converts: to the game's form, into the folder of the waves.
converts() {
    appears 'Audio Converter tool'
    press alt+b
    appears 'Select target folder'
    chooses "$box/waves"
    appears 'Audio Converter tool'
    press alt+h # 4 bits
    press Return
}
opens
converts
appears '^Kestrova$' # the footstep has no way there
press Return
appears '^Kestrova$' other # all is as it was
press Return
gone '^Kestrova$'
gone '^Audio conversion'
[[ -z $(ls -A "$box/waves") ]]
appears 'Audio Converter tool'
press Escape
gone 'Audio Converter tool'

opens
appears 'Audio Converter tool'
press End Delete # the last row
appears '^Kestrova$'
press alt+y
gone '^Kestrova$'
converts
appears '^Kestrova$' # all is done: leave?
press alt+y
gone 'Audio Converter tool'
[[ $(ls "$box/waves") == "$sources" && ! -e $box/home/_audio_temp ]]
ctl --json audio info "$box"/waves/*
(($(grep -c 'ADPCM 44100Hz stereo 4 bits' "$box/out") == 4))
