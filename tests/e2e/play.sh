#!/usr/bin/env bash
# What the keys do while the stand-in game has the keyboard, on a real display: F9, F11, and a
# picture that the game puts onto the clipboard.
source "$(dirname "$0")/windows.bash"

die() {
    echo "FAILED: $*" >&2
    exit 1
}
ctl() { "$KESTROVACTL" --home "$box/home" "$@"; }
# count N FOLDER PATTERN: so many files of that name lie there.
count() { [[ $(find "$2" -maxdepth 1 -name "$3" 2>/dev/null | wc -l) == "$1" ]]; }

practice_at "$box/practice"
ctl --yes setup --trle "$box/practice/trle" --full --folder-is-original >/dev/null 2>&1
ctl new --folder "$box/levels" "$box/my.kva" >/dev/null
ctl add --name Attic "$box/practice/levels/The Clockmaker's Attic" >/dev/null
counted() { ctl --json shots list 1 | grep -c '"file"'; }
before=$(counted)

open_display 1300x900
# plays WORD: starts the program and plays the level of that word; `main` and `screen` are the
# windows of program and game.
plays() {
    start_windows
    appears 'my.kva .2 levels'
    main=$seen
    press ctrl+f ctrl+a
    types "$1"
    press Return
    press F5
    soon shown 'practice game'
    screen=$(shown 'practice game')
    game=$(xdotool getwindowpid "$screen")
    turns_to "$screen"
}
# turns_to WINDOW: that window has the keyboard, and program and game wait for a key.
turns_to() {
    xdotool windowfocus "$1"
    soon focused "$1"
    rests
    rests "$game"
}
# closes: the program ends by its own key, and the game before it.
closes() {
    turns_to "$screen"
    xdotool key q
    gone 'practice game'
    game=
    xdotool windowfocus "$main"
    soon focused "$main"
    press ctrl+q
    wait "$window"
    window=
}
plays attic
[[ $(ctl current | cut -f1) == 1 ]] || die "the level does not stand in the folder"
trle=$box/practice/trle
level=$box/levels/LEVEL_0001
live() { find "$trle" -maxdepth 1 -iname 'savegame.*' | wc -l; }

# Three savegames; F9 frees the slots but for the newest. A tap much shorter than the timer.
for slot in 0 1 2; do
    xdotool key s
    soon count $((slot + 1)) "$trle" 'savegame.*'
done
rests "$game"
newest=$(cksum <"$trle/savegame.2")
xdotool key --delay 5 F9
soon count 1 "$trle" 'savegame.*'
soon count 3 "$level/savegames/slot1" 'savegame.*'
is_newest() { [[ $(cksum <"$trle/savegame.0") == "$newest" ]]; }
soon is_newest
rests
[[ ! -e $level/savegames/slot2 ]] || die "one tap acted twice"

# One more, then F11 brings the others back, oldest first.
turns_to "$screen"
xdotool key s
soon count 2 "$trle" 'savegame.*'
rests "$game"
xdotool key --delay 5 F11
soon count 4 "$trle" 'savegame.*'
number() { od -An -tu2 -j75 -N2 "$trle/savegame.$1" | tr -d ' '; }
in_order() { [[ "$(number 0) $(number 1) $(number 2) $(number 3)" == "1 2 3 4" ]]; }
soon in_order
rests

# Print Screen: the game's process puts its window onto the clipboard. Each press is one picture.
for n in 1 2; do
    xdotool key Print
    soon test -s "$level/screenshots/$n) Attic.jpg"
    rests
    rests "$game"
done
count 2 "$level/screenshots" '*) Attic.jpg' || die "$(ls "$level/screenshots")"
identify "$level/screenshots/1) Attic.jpg" | grep "JPEG 820x760" >/dev/null ||
    die "$(identify "$level/screenshots/1) Attic.jpg")"

# While the game runs, no other level comes into its folder without a question.
turns_to "$main"
press ctrl+f ctrl+a
types original
press F5
appears '^Kestrova$'
press Escape
gone '^Kestrova$'
[[ $(ctl current | cut -f1) == 1 ]] || die "swapped behind a running game"

# Nor does a second game start on the same slots.
turns_to "$main"
press ctrl+f ctrl+a
types attic
press Return F5
appears '^Kestrova$'
press Escape
gone '^Kestrova$'
[[ $(xdotool search --onlyvisible --name 'practice game' | wc -l) == 1 ]] || die "two games"
closes
[[ $(counted) == $((before + 2)) ]] || die "the archive counts $(counted) pictures"

# With the prompt a picture waits for its name; closing it gives the game the keyboard back and
# presses Enter there, which saves in the stand-in.
ctl set capture-prompt on >/dev/null
plays attic
xdotool set_window --name 'Tomb Raider - The Last Revelation' "$screen"
saved=$(live)
xdotool key Print
appears 'screen-shot captured'
press Escape
soon count $((saved + 1)) "$trle" 'savegame.*'
focused "$screen" || die "the game has not got the keyboard"
[[ $(counted) == $((before + 2)) ]] || die "a picture that was dropped is there"
closes
