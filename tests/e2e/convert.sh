#!/usr/bin/env bash
# Waves dragged onto the audio converter become the game's form; what cannot leaves all as it was.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
ctl practice "$box/practice"
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

press alt+t
press c
press c
appears 'Audio Converter tool'
drag 500 350 "$box/album" "$box/footstep.wav"
appears 'Audio Converter tool'
press alt+b
appears 'Select target folder'
enter "$box/waves"
gone 'Select target folder'
appears 'Audio Converter tool'
press alt+h # 4 bits
press Return
appears '^Kestrova$' # the footstep has no way there
press Return
appears '^Kestrova$' other # all is as it was
press Return
gone '^Kestrova$'
gone '^Audio conversion'
appears 'Audio Converter tool'
[[ -z $(ls -A "$box/waves") ]]

click 'Audio Converter tool' 60 104 # the last row
press Delete
appears '^Kestrova$'
press alt+y
gone '^Kestrova$'
gone '^Audio conversion'
appears 'Audio Converter tool'
press alt+c
appears '^Kestrova$' # leave?
press alt+y
gone 'Audio Converter tool'
[[ $(ls "$box/waves") == "$sources" && ! -e $box/home/_audio_temp ]]
ctl --json audio info "$box"/waves/*
(($(grep -c 'ADPCM 44100Hz stereo 4 bits' "$box/out") == 4))
