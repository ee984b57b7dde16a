# From nothing to three levels played and back, over the practice folder.
source "$(dirname "$0")/common.bash"

practice_at "$box/practice"
trle=$box/practice/trle
expect 1 practice "$box/practice" # which is there

expect 0 setup --trle "$trle" --full --folder-is-original
original=$(tree "$trle")
[[ $(tree "$box/home/backup_trle") == "$original" ]] || die "the backup is no copy"
expect 0 new --folder "$box/levels" "$box/my.kva"
count=0
for folder in "$box"/practice/levels/*/; do
    folder=${folder%/}
    expect 0 add --name "${folder##*/}" --note "note ${folder##*/}" "$folder"
    count=$((count + 1))
done
((count == 5)) || die "$count practice levels"

expect 0 --json levels
json "[l['code'] for l in j] == [0, 1, 2, 3, 4, 5]"
json "all({'code','name','note','author','cd','filesSize','extrasSize','current'} <= l.keys() for l in j)"
json "[l['current'] for l in j] == [True] + [False] * 5 and all(l['filesSize'] > 0 for l in j[1:])"
expect 0 sizes
expect 0 verify
said "No difference."

for code in 1 2 3; do
    expect 0 plan "$code" --json
    json "j['code'] == $code and any(f['action'] == 'add' and f['file'].lower().endswith('.tr4') for f in j['files'])"
    expect 0 play "$code" --no-start
    expect 0 current
    [[ $(cut -f1 "$box/out") == "$code" ]] || die "current"
    expect 0 verify
    expect 0 verify "$code"
done

# games: the processes of this script's game.
games() {
    local process
    for process in /proc/[0-9]*; do
        [[ $(readlink "$process/exe" 2>/dev/null) != "$trle"/* ]] || echo "${process#/proc/}"
    done
}
# shellcheck disable=SC2046
trap 'kill $(games) 2>/dev/null || true; rm -rf "$box"' EXIT
wait_for_end() {
    local try
    for try in {1..100}; do
        [[ -n $(games) ]] || return 0
        sleep 0.1
    done
    die "the game still runs after $try tries"
}

# The command returns after the start; a swap under a running game is asked about first.
echo "my progress" >"$trle/savegame.0"
QT_QPA_PLATFORM=offscreen expect 0 --json play 3
json "j['code'] == 3 and j['started']"
running=$(games)
[[ -n $running ]] || die "the game does not run"
expect 1 play 1 --no-start
errs "Programs still run"
expect 0 current
said "3"
# shellcheck disable=SC2086
kill $running
wait_for_end

# Without a display the game ends at once, which is its own matter.
env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM \
    "$ctl" --home "$box/home" play 3 >"$box/out" 2>"$box/err" || die "play without a display"
wait_for_end

expect 0 original
[[ $(tree "$trle") == "$original" ]] || die "the originals are not back"
[[ $(cat "$box/levels/LEVEL_0003/backup_savegames/savegame.0") == "my progress" ]] || die "savegame"
expect 0 play 3 --no-start
[[ $(cat "$trle/savegame.0") == "my progress" ]] || die "savegame back"

# A file of the level that vanished is a difference.
rm "$trle"/[Dd][Aa][Tt][Aa]/"$("$ctl" --home "$box/home" plan 0 | sed -n 's/^remove.*\\[Dd][Aa][Tt][Aa]\\//p' | sed -n 1p)"
expect 1 verify
said missing
expect 0 --yes original --full
expect 0 verify
expect 0 --yes remove 2
expect 0 levels --json
json "sorted(l['code'] for l in j) == [0, 1, 3, 4, 5]"
[[ ! -e $box/levels/LEVEL_0002 ]] || die "the folder stayed"
expect 0 doctor --json
json "all(f['fine'] == (f['remedy'] == '') for f in j) and len(j) > 6"
expect 0 mend
