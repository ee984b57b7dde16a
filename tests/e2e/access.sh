#!/usr/bin/env bash
# What a screen reader hears of the windows, walked by Tab: over the desktop's own interface, on a
# bus of its own.
if [[ -z ${ACCESS_BUS:-} ]]; then
    /usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null || exit 0 # not here
    export ACCESS_BUS=1 XDG_RUNTIME_DIR
    XDG_RUNTIME_DIR=$(mktemp -d)
    code=0
    dbus-run-session -- bash "$0" || code=$?
    rm -rf "$XDG_RUNTIME_DIR"
    exit "$code"
fi
source "$(dirname "$0")/windows.bash"
source "$(dirname "$0")/practice.bash"

practice_at "$box/practice"
"$KESTROVACTL" --home "$box/home" setup --trle "$box/practice/trle" --compact \
    --folder-is-original >/dev/null 2>&1
"$KESTROVACTL" --home "$box/home" new --folder "$box/archive" "$box/home/my.kva" >/dev/null
open_display 1100x720
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
start_windows
appears 'my.kva'

# walks CONTROLS…: every control of the window with the keyboard says what it is, each something
# else, and these are among them in this order.
walks() {
    local control from=1 line
    /usr/bin/python3 "$(dirname "$0")/access.py" "$window" >"$box/heard" || fails "not well said"
    for control; do
        line=$(tail -n "+$from" "$box/heard" | grep -nF -- "$control" | head -1 | cut -d: -f1) ||
            line=
        [[ -n $line ]] || {
            cat "$box/heard" >&2
            fails "not heard in its turn: $control"
        }
        from=$((from + line))
    done
}

# opened KEYS TITLE CONTROLS…: a window of the main one, walked and left by Escape.
opened() {
    local keys=$1 title=$2
    shift 2
    # shellcheck disable=SC2086
    press $keys
    appears "$title"
    walks "$@"
    press Escape
    gone "$title"
    appears 'my.kva'
}

opened ctrl+comma 'Kestrova Settings' 'Browse: TR Level editor Path' \
    'Browse: Default download folder' 'Auto save' 'Help' 'Ok' 'Cancel'
opened 'alt+t t' 'Compare two folders' 'Compare' 'Files of both folders' 'Help' 'Close' \
    'Browse: Folder before' 'Browse: Folder after'
opened 'alt+s h' 'History of savegames' 'History of savegames' 'Close' 'Savegames'
press ctrl+q
wait "$window"
window=

# All windows there are, each page of them; one by one, since none is opened by keys.
kill "$display"
wait "$display" 2>/dev/null || true
open_display 1600x1200
/usr/bin/python3 "$(dirname "$0")/access_all.py" "$(dirname "$DRAG_SOURCE")/test_ui" \
    >"$box/heard" || {
    tail -n 30 "$box/heard" >&2
    fails 'not every window is well said'
}
