#!/usr/bin/env bash
# The first window of a start stands over the middle of the main window, also on a desktop that takes
# its time and puts that one where it likes.
source "$(dirname "$0")/windows.bash"

export HOME=$box/person
unset WINEPREFIX XDG_DATA_HOME
mkdir -p "$HOME" "$box/home"
open_display 1600x1000
"$LATE_MANAGER" >"$box/manager" &
game=$! # it ends with the script
soon grep -q manages "$box/manager"
start_windows
appears 'Welcome to Kestrova'
read -r x y < <(middle 'Welcome to Kestrova')
read -r main_x main_y < <(middle '^Kestrova$')
# Of a frame, which nobody puts around windows here, the place is guessed.
near() { (($1 - $2 <= 60 && $2 - $1 <= 60)); }
near "$x" "$main_x" && near "$y" "$main_y" ||
    fails "the page's middle is $x $y, the main window's $main_x $main_y"
