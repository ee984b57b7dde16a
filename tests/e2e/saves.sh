# A level's savegames from the terminal: into archive slots and back, to folders and back.
source "$(dirname "$0")/common.bash"

make_archive
for words in "saves" "saves list" "saves eat 1" "saves list one" "saves list 1 2" "saves import 1" \
    "saves archive 1 --json" "saves list 1 --delete" "saves bring-back 1"; do
    # shellcheck disable=SC2086
    expect 2 $words
    silent
done

# savegame FILE NUMBER TITLE: the title, and at byte 75 the number.
savegame() {
    mkdir -p "$(dirname "$1")"
    { printf '%s' "$3"; head -c $((75 - ${#3})) /dev/zero; printf "\\x$(printf %02x "$2")\\0data of $3"; } >"$1"
}
expect 1 saves list 9
errs "no level with the code 9"
expect 0 saves list 1
silent
expect 0 play 1 --no-start
savegame "$box/trle/savegame.3" 7 Caves
savegame "$box/trle/savegame.8" 9 Temple
echo words >"$box/trle/note8.txt"
expect 0 saves archive 1
errs "Current savegames archvied"
[[ $(<"$box/trle/note0.txt") == words && ! -e $box/trle/savegame.3 ]] || die "saves archive"
expect 0 saves list 1 --json
json "[(s['place'], s['name'], s['number'], s['title']) for s in j] == [('live', 'savegame.0', 9, 'Temple'), ('slot1', 'savegame.3', 7, 'Caves'), ('slot1', 'savegame.8', 9, 'Temple')]"
expect 0 info 1 --json
json "j['savegames'] == 1 and j['archivedSavegames'] == 2"

savegame "$box/trle/savegame.0" 12 Later
expect 0 saves restore 1
errs "Restored last savegames"
expect 0 saves list 1
said "$(printf 'live\tsavegame.2\t  12 - Later')"
[[ $(grep -c . "$box/out") == 3 ]] || die "saves restore"

# Exported and deleted, imported into another level; the history has what went.
mkdir "$box/out-there"
expect 1 saves export 1 "$box/nowhere"
expect 0 saves export 1 "$box/out-there" --delete
[[ $(ls "$box/out-there") == $'savegame.0\nsavegame.1\nsavegame.2' ]] || die "saves export"
expect 1 saves export 1 "$box/out-there"
errs "No savegames in folder: $box/trle"
expect 0 saves import 2 out-there
[[ $(ls "$box/levels/LEVEL_0002/backup_savegames") == $'savegame.0\nsavegame.1\nsavegame.2' ]] ||
    die "saves import"
expect 0 saves history 1 --json
json "sorted(e['number'] for e in j if e['name'].startswith('savegame')) == [7, 9, 12, 12]"
id=$(python3 -c 'import json,sys; print([e["id"] for e in json.load(open(sys.argv[1])) if e["number"] == 7][0])' "$box/out")
expect 0 saves bring-back 1 "$id"
said "$box/trle/savegame."
cmp "$(<"$box/out")" "$box/out-there/savegame.0" || die "saves bring-back"
expect 1 saves bring-back 2 "$id"

# Deleted for good, after a question, one by one or all of a level.
for words in "history delete" "history delete x" "history delete 1 1-x" "history delete 1 --json"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
expect 1 --yes history delete 9
errs "Nothing was deleted"
expect 1 --no history delete "$id"
expect 0 --yes history delete "$id"
said "$id"
expect 0 saves history 1 --json
json "len(j) > 0 and '$id' not in [e['id'] for e in j]"
expect 0 --yes history delete 1
expect 0 history --json
json "j == []"
[[ -z $(find "$box/home/history/content" -type f) ]] || die "deleted files stay in the history"
