#!/usr/bin/env bash
# The help by the keyboard alone: F1 in the window, in a menu, a dialog and a box; search, index and
# the size of letters. What it looked for is pasted into a preference, and so reaches the disk.
source "$(dirname "$0")/windows.bash"

practice_at "$box/practice"
"$KESTROVACTL" --home "$box/home" setup --trle "$box/practice/trle" --compact \
    --folder-is-original >/dev/null 2>&1
"$KESTROVACTL" --home "$box/home" new --folder "$box/archive" "$box/home/my.kva" >/dev/null

open_display 1100x720
start_windows
appears 'my.kva'

press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'my.kva'
press alt+t Down F1 # the menu closes under it
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'my.kva'

opens_settings() {
    appears 'my.kva'
    press ctrl+comma
    appears 'Kestrova Settings'
    press F1
    appears '^ Help$'
}
# keeps KEYS…: copies what the help looked for, closes it, and sets the preference that those keys
# lead to from the second page on to that.
keeps() {
    press ctrl+f ctrl+a ctrl+c Escape
    gone '^ Help$'
    appears 'Kestrova Settings'
    press ctrl+Tab "$@" ctrl+a ctrl+v Return
    gone 'Kestrova Settings'
}
opens_settings
keeps Tab # the command of Wine

# A text of the player's own goes first; the index leads to its topics.
printf '[First]\r\n\r\n[Second topic]\r\nword\r\n' >"$box/home/help_kestrova.txt"
opens_settings
press ctrl+i
appears 'Help Index'
types sec
press Return
gone 'Help Index'
appears '^ Help$'
press ctrl+plus
holds "$box/home/windows.ini" 'letters=1'
keeps Tab Tab # its extra words

# A box over the index has its help too, and everything closes in its order.
opens_settings
press ctrl+i
appears 'Help Index'
press Return
appears '^Kestrova$' # nothing is chosen
press F1
appears '^ Help$' other
press Escape
appears '^Kestrova$'
press Return
gone '^Kestrova$'
appears 'Help Index'
press Escape
gone 'Help Index'
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'Kestrova Settings'
press Escape
appears 'my.kva'
press ctrl+q
wait "$window"
window=
"$KESTROVACTL" --home "$box/home" set >"$box/set"
grep -q "^wine-command.#4#$" "$box/set"
grep -q "^wine-words.\[Second topic\]$" "$box/set"
