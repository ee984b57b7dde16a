#!/usr/bin/env bash
# A wad package is imported and undone in the windows, by keyboard alone.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
trle=$box/practice/trle
ctl setup --trle "$trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
both() { (cd "$box" && find practice/trle home/backup_trle -type f ! -name '.kv~*' -exec cksum {} + | sort); }
before=$(both)
strings() { grep -rqx "$1"$'\r' --include='*.[tT][xX][tT]' "$trle"; }
same() { [[ $(both) == "$before" ]]; }
came() { [[ -n $(find "$trle" -iname lagoon.tr4 -size +0) ]]; }

open_display 1100x720
start_windows
appears 'my.kva .1 levels'
press alt+t n
appears 'Import new/updated wads'
press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'Import new/updated wads'
press alt+a
appears 'Select'
chooses "$box/practice/packages/lagoon_wads.zip"
appears 'Import new/updated wads'
press alt+i
appears 'Set name for new level'
types 'Die Lagune' # the name that is proposed is selected
press Return
appears '^Kestrova$' # it is finished
press Return
appears 'Import new/updated wads'
soon strings 'Die Lagune'
came
press Escape # nothing is asked of what is done
gone 'Import new/updated wads'
appears 'my.kva .1 levels'
press ctrl+z
soon same
press ctrl+shift+z
soon came
soon strings 'Die Lagune'
press ctrl+z
soon same

# A package that is given up is asked about, and leaves nothing.
press alt+t n
appears 'Import new/updated wads'
press alt+a
appears 'Select'
chooses "$box/practice/packages/lagoon_wads.zip"
appears 'Import new/updated wads'
press Escape
appears '^Kestrova$'
press alt+y
gone 'Import new/updated wads'
appears 'my.kva .1 levels'
same
[[ ! -e $box/home/temp ]]
