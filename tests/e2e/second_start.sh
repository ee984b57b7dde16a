#!/usr/bin/env bash
# A second start over one program's folder: the first window comes to the front and opens the files.
source "$(dirname "$0")/windows.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/other" "$box/home/other.kva"
ctl new --folder "$box/archive" "$box/home/my.kva"
mkdir -m 700 "$box/run"
export XDG_RUNTIME_DIR=$box/run
open_display 1200x840
start_windows
appears 'my.kva .1 levels'

# later WORDS…: a second start, which ends by itself.
later() { "$KESTROVA" --home "$box/home" "$@" >>"$box/log" 2>&1; }
later "$box/home/other.kva"
appears 'other.kva .1 levels'
(cd "$box/home" && later my.kva) # as it is named there
appears 'my.kva .1 levels'
later
[[ $(xdotool search --onlyvisible --name 'levels' | wc -l) == 1 ]] || fails "two windows"
# Names that look like an option, or are no text at all, are names of files.
strange=$'\xffodd.kva'
cp "$box/home/other.kva" "$box/home/-x.kva"
cp "$box/home/other.kva" "$box/home/$strange"
(cd "$box/home" && later -- -x.kva)
appears '.x.kva .1 levels'
(cd "$box/home" && later "$strange")
appears 'odd.kva .1 levels'
code=0
"$KESTROVA" --home "$box/home" -x.kva 2>>"$box/log" || code=$?
((code == 2)) || fails "-x.kva alone is an option that nobody knows"
later "$box/home/my.kva"
appears 'my.kva .1 levels'

# While a question is open the files wait, whatever comes.
press ctrl+comma
appears 'Kestrova Settings'
level=$(find "$box/practice/levels" -mindepth 1 -maxdepth 1 -name "*.zip" | sort | head -1)
[[ -n $level ]] || fails "no package"
later "$level"
later "$box/home/other.kva"
rests
[[ -n $(shown 'my.kva .1 levels') ]] || fails "an archive was opened under a question"
press Escape
appears 'Add new level' # now with the package
accepted
soon test -e "$box/archive/LEVEL_0001"
appears 'other.kva .1 levels'
[[ ! -e $box/other/LEVEL_0001 ]] || fails "the level went into the other archive"

# Another program's folder is another program.
cp -r "$box/home" "$box/second_home"
rm -f "$box/second_home"/.kv~*
"$KESTROVA" --home "$box/second_home" >>"$box/log" 2>&1 &
second=$!
soon shown '^Kestrova$' # it asks and tells for itself
rests "$second"
kill "$second" || fails "it did not stay"
wait "$second" || true
gone '^Kestrova$'

# One that hangs is told of in words, and opens nothing when it wakes up.
kill -STOP "$window"
"$KESTROVA" --home "$box/home" "$box/home/my.kva" >>"$box/log" 2>&1 &
second=$!
soon shown '^Kestrova$'
rests "$second"
xdotool windowfocus "$(shown '^Kestrova$')"
xdotool key --clearmodifiers Return
! wait "$second" || fails "it says that all is well"
kill -CONT "$window"
rests
appears 'other.kva .1 levels'

# A killed one leaves a socket that nobody listens at; the next start is the first one again. What its
# own command line names comes in too.
kill -9 "$window"
wait "$window" || true
mkdir "$box/level"
cp "$box/practice/trle"/*/*.tr4 "$box/level/" 2>/dev/null || echo level >"$box/level/one.tr4"
"$KESTROVA" --home "$box/home" "$box/home/my.kva" "$box/level" >>"$box/log" 2>&1 &
window=$!
appears 'Add new level'
press Escape
gone 'Add new level'
appears 'my.kva .2 levels'
later
