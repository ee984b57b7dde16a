#!/usr/bin/env bash
# Sources that need wads: the assistant links them by their readme. A level is compiled by hand.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
trle=$box/practice/trle
# Started without a file the compiler takes all of them; this one is none of the level's.
find "$trle" -iname practice.tom -delete
ctl setup --trle "$trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
standing() { (cd "$trle" && find . -type f ! -name '.kv~*' -exec cksum {} + | sort); }
before=$(standing)
# A compiler that a person started may still be at work.
is_back() { soon eval '[[ $(standing) == "$before" ]]'; }
open_display 1200x840
start_windows
appears 'my.kva .1 levels'
press alt+l a
appears 'Add new level'
drag 'Add new level' "$box/practice/packages/Two Wells.zip"
appears 'Add new level'
press Return
appears '^Kestrova$' # shall they be converted?
press alt+o
for ((i = 0; i < 100; ++i)); do # what tells that the wads are missing goes before the assistant
    ! shown 'conversion Assistant' >/dev/null || break
    ! shown '^Kestrova$' >/dev/null || press Return
    nap 0.1
done
appears 'conversion Assistant'
press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'conversion Assistant'
press alt+a
appears '^Kestrova$' # may the readme be looked through?
press alt+o
appears '^Kestrova$' other # are those the links?
press alt+y
gone 'conversion Assistant'
for ((i = 0; i < 100; ++i)); do # what tells of a further look at the sources
    shown 'Add new level' >/dev/null || break
    ! shown '^Kestrova$' >/dev/null || press Return
    nap 0.1
done
gone 'Add new level'
appears 'my.kva .2 levels'
for file in well_one.tr4 Well_Two.tr4; do [[ -s $box/archive/LEVEL_0001/files/$file ]]; done
[[ ! -e $box/archive/LEVEL_0001/files/well_one.tom && $(standing) == "$before" ]]
press ctrl+q
wait "$window"

# By hand; the window is left by its buttons alone.
ctl set auto-compile off
start_windows
appears 'my.kva .2 levels'
press alt+l a
appears 'Add new level'
drag 'Add new level' "$box/practice/packages/The Salt Mine.zip"
appears 'Add new level'
press alt+c # the button for it asks nothing
appears 'by hand'
press Escape
appears 'by hand'
[[ -e $trle/graphics/wads/saltmine.tom || -e $trle/Graphics/Wads/saltmine.tom ]]
press alt+d
appears '^Kestrova$' # nothing was compiled yet
press Return
appears 'by hand'
press alt+s
soon eval '[[ -n $(find "$trle" -iname saltmine.tr4 -size +0) ]]'
appears 'by hand'
press alt+d
gone 'by hand'
accepted
appears 'my.kva .3 levels'
[[ -s $box/archive/LEVEL_0002/files/saltmine.tr4 && ! -e $box/archive/LEVEL_0002/files/saltmine.tom ]]
is_back

# Killed while the folder is lent to a person: it comes back at the next start.
press alt+l a
appears 'Add new level'
drag 'Add new level' "$box/practice/packages/The Salt Mine.zip"
appears 'Add new level'
press alt+c
appears 'by hand'
press alt+s
soon eval '[[ -n $(find "$trle" -iname saltmine.tr4 -size +0) ]]'
kill -9 "$window"
wait "$window" 2>/dev/null || true
[[ $(standing) != "$before" ]]
ctl mend
is_back
