# For scripts that drive the windows by the mouse: where each thing is, asked of the program itself
# (where_plugin.cpp). Sourced behind windows.bash, not run.

[[ -n ${WHERE_PLUGINS:-} ]] || exit 0
export QT_PLUGIN_PATH=$WHERE_PLUGINS QT_QPA_GENERIC_PLUGINS=kestrova_where WHERE_FILE=$box/where

# looks: $box/where holds what can be seen now.
looks() {
    local i
    rests
    rm -f "$box/where"
    kill -USR1 "$window"
    for ((i = 0; i < 600; ++i)); do
        [[ ! -e $box/where ]] || return 0
        nap 0.05
    done
    fails "the program does not say what it shows"
}
# place NAME TEXT: X and Y of the control or item of that name (`*` is any) whose text matches; the
# last one of several.
place() {
    awk -F '\t' -v name="$1" -v text="$2" '
        (name == "*" || $1 == name) && $2 ~ text { at = $3 " " $4 }
        END { if (at == "") exit 1; print at }' "$box/where"
}
# finds NAME [TEXT]: waits until it can be seen; `x` and `y` are its middle.
finds() {
    local i at
    for ((i = 0; i < 200; ++i)); do
        looks
        if at=$(place "$1" "${2:-}"); then
            read -r x y <<<"$at"
            return
        fi
        nap 0.1
    done
    cat "$box/where" >&2
    fails "nothing of the name '$1' with '${2:-}' is seen"
}
# clicks NAME [TEXT]: brings the mouse to its middle and presses the left button.
clicks() {
    finds "$@"
    xdotool mousemove --sync "$x" "$y" click 1
}
# answers TEXT BUTTON: of the question whose words match, by the words on its button.
answers() {
    finds '*' "$1"
    read -r x y < <(place '*' "^$2\$") || fails "'$1' has no button '$2'"
    xdotool mousemove --sync "$x" "$y" click 1
}
