#!/usr/bin/env bash
# What the keys do while the stand-in game has the keyboard, on a real display: F9, F11, and a
# picture that the game puts onto the clipboard.
source "$(dirname "$0")/windows.bash"

die() {
    echo "FAILED: $*" >&2
    exit 1
}
ctl() { "$KESTROVACTL" --home "$box/home" "$@"; }
# soon COMMAND…: waits until it succeeds.
soon() {
    local i
    for ((i = 0; i < 150; ++i)); do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    die "never: $*"
}
# count N FOLDER PATTERN: so many files of that name lie there.
count() { [[ $(find "$2" -maxdepth 1 -name "$3" 2>/dev/null | wc -l) == "$1" ]]; }

ctl practice "$box/practice" >/dev/null
ctl --yes setup --trle "$box/practice/trle" --full --folder-is-original >/dev/null 2>&1
ctl new --folder "$box/levels" "$box/my.kva" >/dev/null
ctl add --name Attic "$box/practice/levels/The Clockmaker's Attic" >/dev/null
counted() { ctl --json shots list 1 | grep -c '"file"'; }
before=$(counted)

open_display 1300x900
# shown TITLE: the number of that window, once it is there.
shown() {
    soon xdotool search --onlyvisible --name "$1"
    xdotool search --onlyvisible --name "$1" | tail -1
}
# plays WORD: starts the program and plays the level of that word; `main` and `screen` are the
# windows of program and game.
plays() {
    start_windows
    main=$(shown 'my.kva .2 levels')
    sleep 0.5
    xdotool windowfocus "$main" key ctrl+f type --delay 5 "$1"
    xdotool key Return F5
    screen=$(shown 'practice game')
    game=$(xdotool getwindowpid "$screen" 2>/dev/null) || game=
    xdotool windowfocus "$screen"
    sleep 0.5
}
# closes: the program ends by its own key, and the game before it.
closes() {
    xdotool windowfocus "$screen" key q
    game=
    sleep 0.3
    xdotool windowfocus "$main" key ctrl+q
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
newest=$(sha256sum <"$trle/savegame.2")
sleep 0.5
xdotool key --delay 5 F9
soon count 1 "$trle" 'savegame.*'
soon count 3 "$level/savegames/slot1" 'savegame.*'
soon test "$(sha256sum <"$trle/savegame.0")" = "$newest"
sleep 0.5
[[ ! -e $level/savegames/slot2 ]] || die "one tap acted twice"

# One more, then F11 brings the others back, oldest first.
xdotool windowfocus "$screen"
xdotool key s
soon count 2 "$trle" 'savegame.*'
xdotool key --delay 5 F11
soon count 4 "$trle" 'savegame.*'
number() { od -An -tu2 -j75 -N2 "$trle/savegame.$1" | tr -d ' '; }
soon test "$(number 0) $(number 1) $(number 2) $(number 3)" = "1 2 3 4"

# Print Screen: the game's process puts its window onto the clipboard. Each press is one picture.
for n in 1 2; do
    xdotool key Print
    soon test -s "$level/screenshots/$n) Attic.jpg"
    sleep 0.6
done
count 2 "$level/screenshots" '*) Attic.jpg' || die "$(ls "$level/screenshots")"
identify "$level/screenshots/1) Attic.jpg" | grep "JPEG 820x760" >/dev/null ||
    die "$(identify "$level/screenshots/1) Attic.jpg")"

# While the game runs, no other level comes into its folder without a question.
xdotool windowfocus "$main" key ctrl+f key ctrl+a type --delay 5 original
xdotool key F5
box_=$(shown '^Kestrova$')
xdotool windowfocus "$box_" key Escape
sleep 0.5
[[ $(ctl current | cut -f1) == 1 ]] || die "swapped behind a running game"
xdotool windowfocus "$main" key Escape
closes
[[ $(counted) == $((before + 2)) ]] || die "the archive counts $(counted) pictures"

# With the prompt a picture waits for its name; closing it gives the game the keyboard back and
# presses Enter there, which saves in the stand-in.
ctl set capture-prompt on >/dev/null
plays attic
xdotool set_window --name 'Tomb Raider - The Last Revelation' "$screen"
saved=$(live)
xdotool key Print
prompt=$(shown 'screen-shot captured')
sleep 0.5
xdotool windowfocus "$prompt" key Escape
soon count $((saved + 1)) "$trle" 'savegame.*'
[[ $(xdotool getwindowfocus) == "$screen" ]] || die "the game has not got the keyboard"
[[ $(counted) == $((before + 2)) ]] || die "a picture that was dropped is there"
closes
