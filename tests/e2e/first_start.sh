#!/usr/bin/env bash
# The page of the first start by the keyboard: left, killed and begun again it shows what was typed;
# an archive that the program is started with stands on it.
source "$(dirname "$0")/windows.bash"

export HOME=$box/person
unset WINEPREFIX XDG_DATA_HOME
mkdir -p "$HOME" "$box/home"
practice_at "$box/practice"
ctl() { "$KESTROVACTL" --home "$box/home" "$@" </dev/null; }

open_display 1100x720
start_windows
appears 'Welcome to Kestrova'
press F1
appears '^ Help$'
press Escape
gone '^ Help$'

# Typed and left: the empty window stays, and the next start shows the page with what was typed.
appears 'Welcome to Kestrova'
press shift+Tab # from Browse to the line
types "$box/practice/trle"
press alt+o # compact
press Escape
appears '^Kestrova$' # it cannot run without one
press Return
gone 'Welcome to Kestrova'
appears '^Kestrova$' other
press ctrl+q
wait "$window"
[[ ! -e $box/home/backup_trle && ! -e $box/home/LevelFolder ]]
grep -q 'practice/trle' "$box/home/first-start.json"

# Killed in the middle of the practice library.
start_windows
appears 'Welcome to Kestrova'
press alt+p
until [[ -e $box/home/practice ]]; do sleep 0.01; done
kill -KILL "$window"
wait "$window" 2>/dev/null || true
start_windows
appears 'Welcome to Kestrova'
find "$box/home" -name '.kv~*' ! -name '.kv~lock' ! -name '.kv~windows*' >"$box/half"
[[ ! -s $box/half ]] || fails "half made: $(cat "$box/half")"
grep -q 'practice/trle' "$box/home/first-start.json"

# Enter alone: the question whether the folder is original is safe, and so is the one after it.
press Return
appears '^Kestrova$'
press Return # No
appears '^Kestrova$' other # what to do
press Return
appears '^Kestrova$' other # go on without a copy?
press Return # No
appears 'Welcome to Kestrova'
[[ ! -e $box/home/backup_trle && ! -e $box/home/LevelArchive.kva ]]

# Ticked and started: the compact copy that was chosen two starts ago, and a new archive.
press alt+i
press Return
gone 'Welcome to Kestrova'
appears 'LevelArchive.kva .1 levels'
[[ -d $box/home/backup_trle && -z $(find "$box/home/backup_trle" -iname '*.wav') ]]
[[ ! -e $box/home/first-start.json ]]
press ctrl+q
wait "$window"
start_windows
appears 'LevelArchive.kva .1 levels'
press ctrl+q
wait "$window"

# An archive that the very first start is given.
ctl add "$box/practice/levels/Schloß Grünfels" >/dev/null
mv "$box/home/LevelArchive.kva" "$box/mine.kva"
mv "$box/home/LevelFolder" "$box/levels"
rm -r "$box/home"
mkdir "$box/home"
python3 - "$box/mine.kva" "$box/levels" <<'P'
import sys
file, folder = sys.argv[1:]
data = bytearray(open(file, "rb").read())
for at in (4, 260):
    data[at:at + 256] = folder.encode().ljust(256)
open(file, "wb").write(data)
P
"$KESTROVA" --home "$box/home" "$box/mine.kva" >>"$box/log" 2>&1 &
window=$!
appears 'Welcome to Kestrova'
press shift+Tab
types "$box/practice/trle"
press alt+i
press Return
gone 'Welcome to Kestrova'
appears 'mine.kva .2 levels'
press ctrl+q
wait "$window"
window=
