# An archive moves to another folder while a level of it stands in the Level Editor's folder, and is
# recovered when its file is lost.
source "$(dirname "$0")/common.bash"

make_archive
for words in "move" "move one two" "recover" "recover one two" "recover one --discs" "discs bring-back a b"; do
    # shellcheck disable=SC2086
    expect 2 $words
    silent
done

# Played on, and with things that nobody knows beside it.
expect 0 play 1 --no-start
echo mine >"$box/trle/savegame.3"
echo notes >"$box/levels/LEVEL_0002/my notes.txt"
ln -s "my notes.txt" "$box/levels/LEVEL_0002/notes.lnk"
echo own >"$box/levels/own.txt"
before=$(tree "$box/levels")

expect 1 move "$box/levels"
errs "lies in"
expect 1 move "$box/levels/inside"
errs "lies inside the archive's own folder"
mkdir -p "$box/other/LEVEL_0001"
expect 1 move "$box/other"
errs "levels already"
: >"$box/file"
expect 1 move "$box/file"
[[ $(tree "$box/levels") == "$before" ]] || die "a refused move changed something"

mkdir "$box/new home"
expect 0 move "new home" --json
json "j['folder'].endswith('/new home') and j['archive'].endswith('/my.kva')"
[[ ! -e $box/levels/LEVEL_0001 && -e $box/levels/own.txt ]] || die "the old folder"
rm "$box/levels/own.txt"
echo own >"$box/new home/own.txt"
[[ $(tree "$box/new home") == "$before" ]] || die "not all of it moved"
[[ $(readlink "$box/new home/LEVEL_0002/notes.lnk") == "my notes.txt" ]] || die "the link"

# Another level comes, and the savegame goes to its own store, where that is now.
expect 0 play 2 --no-start
[[ $(<"$box/new home/LEVEL_0001/backup_savegames/savegame.3") == mine ]] || die "the store"
expect 0 play 1 --no-start
[[ $(<"$box/trle/savegame.3") == mine ]] || die "the way back"

# Killed in the middle, at several moments: the next start says which folder counts.
for pause in 0.005 0.01 0.02 0.03 0.05; do
    from=$(expect 0 load "$box/my.kva" --json; python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))["folder"])' "$box/out")
    to="$box/at $pause"
    "$ctl" --home "$box/home" move "$to" </dev/null >/dev/null 2>&1 &
    mover=$!
    sleep "$pause"
    kill -9 "$mover" 2>/dev/null || true
    wait "$mover" 2>/dev/null || true
    expect 0 mend
    expect 0 load "$box/my.kva" --json
    now=$(python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))["folder"])' "$box/out")
    [[ $now == "$from" || $now == "$to" ]] || die "killed after $pause: $now"
    [[ $(<"$now/LEVEL_0002/my notes.txt") == notes ]] || die "killed after $pause: not whole"
    other=$from
    [[ $now == "$to" ]] || other=$to
    ! compgen -G "$other/LEVEL_*" >/dev/null || die "killed after $pause: two archives"
done
folder=$now

# Moved by hand: who loads it says where it is now.
mv "$folder" "$box/by hand"
expect 1 play 2 --no-start
errs "load FILE.kva --folder DIR"
expect 0 load "$box/my.kva" --folder "$box/by hand"
echo later >"$box/trle/savegame.4"
expect 0 play 2 --no-start
[[ $(<"$box/by hand/LEVEL_0001/backup_savegames/savegame.4") == later ]] || die "the store, moved by hand"

# The list is lost; an older copy of it knows the names.
cp "$box/my.kva" "$box/by hand/old.kva"
echo broken >"$box/my.kva"
expect 1 levels
mkdir "$box/nothing"
expect 1 recover "$box/nothing"
errs "I've not found any 'LEVEL_###' subfolder in folder: "
expect 1 recover "$box/by hand" --discs "$box/nothing"
errs "lies no disc"
expect 0 recover "$box/by hand" --json
json "j['levels'] == 4 and j['folder'].endswith('/by hand')"
[[ $(<"$box/my.kva") == broken ]] || die "an old list was written to"
expect 0 levels --json
json "[l['name'] for l in j][1:] == ['dawn', 'noon', 'dusk']"
expect 0 play 3 --no-start
expect 0 verify
expect 0 discs bring-back
errs "No level of this archive lies on a disc"
