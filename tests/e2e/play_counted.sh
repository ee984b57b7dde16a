#!/usr/bin/env bash
# How long a level is played, in the windows: the program is killed while the game runs, and the next
# start counts on.
source "$(dirname "$0")/windows.bash"
source "$(dirname "$0")/mouse.bash"
source "$(dirname "$0")/small_trle.bash"

die() {
    echo "FAILED: $*" >&2
    exit 1
}
ctl() { "$KESTROVACTL" --home "$box/home" "$@"; }
notes=$box/levels/library.json

make_trle "$box/trle"
printf '#!/bin/bash\nwhile [[ ! -e "%s/stop" ]]; do sleep 0.1; done\n' "$box" >"$box/trle/tomb4.exe"
ctl --yes setup --trle "$box/trle" --full --folder-is-original >/dev/null 2>&1
ctl new --folder "$box/levels" "$box/my.kva" >/dev/null
make_level "$box/from/dawn" dawn
ctl add --name dawn "$box/from/dawn" >/dev/null

open_display 1300x900
start_windows
appears 'my.kva .2 levels'
press ctrl+f ctrl+a
types dawn
press Return
press F5
soon test -e "$box/home/swap/played"
soon grep -q '"status":"playing"' "$notes"
grep -q lastPlayed "$notes" || die "the play is not noted"
began=$SECONDS
until ((SECONDS - began > 2)); do sleep 0.1; done # so long it is played at least
kill -9 "$window"
wait "$window" 2>/dev/null || true
start_windows
appears 'my.kva .2 levels'
finds Label_Playing # the start has looked, and counts on
touch "$box/stop"
soon grep -q secondsPlayed "$notes"
soon test ! -e "$box/home/swap/played"
press ctrl+q
wait "$window"
window=
played=$(sed -n 's/.*"secondsPlayed":\([0-9]*\).*/\1/p' "$notes")
((played >= 2 && played <= SECONDS)) || die "$played seconds were counted"
