#!/usr/bin/env bash
# Two folders compared by the keyboard alone. What is opened shows which file was chosen.
source "$(dirname "$0")/windows.bash"

mkdir -p "$box/a" "$box/b" "$box/bin" "$box/archive"
for file in {1..500}.wav; do echo "$file" | tee "$box/a/$file" >"$box/b/$file"; done
echo old >"$box/a/250.wav"
echo gone >"$box/a/gone.tr4"
echo come >"$box/b/come.tr4"
printf '#!/bin/sh\necho "$1" >>"%s/opened"\n' "$box" >"$box/bin/xdg-open"
chmod +x "$box/bin/xdg-open"
export PATH=$box/bin:$PATH
opened() { holds "$box/opened" "^$1\$"; }

practice_at "$box/practice"
"$KESTROVACTL" --home "$box/home" setup --trle "$box/practice/trle" --compact \
    --folder-is-original >/dev/null 2>&1
"$KESTROVACTL" --home "$box/home" new --folder "$box/archive" "$box/home/my.kva" >/dev/null
open_display 1100x720
start_windows
appears 'my.kva'
press alt+t t
appears 'Compare two folders'
press shift+Tab shift+Tab ctrl+a # from the button to the folder after
types "$box/b"
press shift+Tab shift+Tab ctrl+a
types "$box/a"
press Return # compares; the list has the keyboard then
press Return
opened "$box/b/250.wav" # of a changed file the one after
press Down Return
opened "$box/b/come.tr4"
press ctrl+f
types GONE
press Return Return
opened "$box/a/gone.tr4" # the only one there is
press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'Compare two folders'
press Escape
gone 'Compare two folders'
appears 'my.kva'
[[ $(wc -l <"$box/opened") -eq 3 ]]
