# For scripts that need no more than a small Level Editor's folder and small levels. Sourced, not run.

# A small Level Editor's folder that passes for one, its game being `true`.
make_trle() {
    mkdir -p "$1"/{Data,audio,script,manual,graphics/wads,sound/samples}
    local track
    for track in {0..53}; do echo "wave $track" >"$1/audio/$(printf %03d "$track").wav"; done
    echo title >"$1/Data/title.tr4"
    echo script >"$1/SCRIPT.DAT"
    echo english >"$1/English.dat"
    echo source >"$1/script/script.txt"
    echo picture >"$1/load.bmp"
    cp "$(type -P true)" "$1/tomb4.exe"
}

# make_level FOLDER NAME
make_level() {
    mkdir -p "$1/sub"
    echo "level $2" >"$1/$2.tr4"
    echo "script of $2" >"$1/sub/script.dat"
    echo "sound of $2" >"$1/sub/099.wav"
}
