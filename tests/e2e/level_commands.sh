# What is done to levels beside playing them: their language, which are equal.
source "$(dirname "$0")/common.bash"

make_archive
for words in "language" "language swap 1" "language set" "language set one" "language set 1 --all" \
    "language set 1 2" "equal 1"; do
    # shellcheck disable=SC2086
    expect 2 $words
    silent
done

# An English Level Editor needs none of it.
expect 1 language set --all
errs "you have english version"
mv "$box/home/backup_trle/English.dat" "$box/home/backup_trle/Italiano.dat"
echo italiano >"$box/home/backup_trle/Italiano.dat"
echo english >"$box/from/dawn/english.dat"
expect 0 --yes add --name tongues "$box/from/dawn"
files=$box/levels/LEVEL_0004/files
expect 1 language set 0
expect 1 language set 9
expect 1 language set 1 # it has a script and no language file
errs "already in your language"
expect 0 language set 4
[[ $(<"$files/english.dat") == italiano && -e $files/english.dat.bak ]] || die "language set"
expect 1 language set 4
expect 0 language restore 4
[[ $(<"$files/english.dat") == english && ! -e $files/english.dat.bak ]] || die "language restore"
expect 0 language set --all
errs "Converted 1 levels in your language"
errs "in 4 levels"
expect 0 language restore --all
errs "Restored 1 levels"
[[ $(<"$files/english.dat") == english ]] || die "language restore --all"

# The level that was added twice; what each has is found anew when its note is gone.
rm "$box"/levels/LEVEL_0001/tr4.inf
expect 0 equal
silent
expect 0 index
[[ -s $box/levels/LEVEL_0001/tr4.inf ]] || die "index"
expect 0 equal --json
json "[(p['code'], p['otherCode'], p['file']) for p in j] == [(1, 4, 'dawn.tr4'), (4, 1, 'dawn.tr4')]"
expect 0 equal
said "0004  tongues  has the same dawn.tr4 as  0001  dawn"

# The author's data.
expect 0 author 1 --name "Ada L." --email "a@b.org c@d.org" --site http://x.org --note "my first"
expect 0 author 1
said "Author: Ada L."
said "Mail: c@d.org"
expect 0 author 1 --email ""
expect 0 author 1 --json
json "j == {'code': 1, 'name': 'Ada L.', 'note': 'my first', 'emails': [], 'sites': ['http://x.org']}"
expect 1 author 9
expect 1 author 1 --name "$(printf 'a%.0s' {1..80})"
errs "Game designer name too long"
expect 0 info 1 --json
json "j['author'] == 'Ada L.'"

# A level as a zip.
expect 2 export 1
expect 2 export 1 level.rar
mkdir -p "$box/levels/LEVEL_0001/backup_savegames"
echo game >"$box/levels/LEVEL_0001/backup_savegames/savegame.0"
expect 0 export 1 "$box/my level.zip" --savegames --json
json "j['code'] == 1 and j['size'] > 100"
unzip -Z1 "$box/my level.zip" | sort | tr '\n' ' ' >"$box/names"
[[ $(<"$box/names") == "099.wav dawn.tr4 english.dat kestrova.cfg savegame.0 script.dat " ]] ||
    [[ $(<"$box/names") == "099.wav dawn.tr4 kestrova.cfg savegame.0 script.dat " ]] || die "export: $(<"$box/names")"
expect 1 export 1 "$box/my level.zip"
errs "Left unanswered: There is a file"
expect 0 --yes export 1 "$box/my level.zip"
expect 1 export 9 "$box/none.zip"

# All levels in the other form, and back.
expect 0 set compress on
expect 0 recompress
errs "New size [files] folders = "
[[ -e $box/levels/LEVEL_0002/files/noon.tr4.zl && ! -e $box/levels/LEVEL_0002/files/noon.tr4 ]] || die "recompress"
expect 0 verify 2
expect 0 set compress off
expect 0 recompress
[[ -e $box/levels/LEVEL_0002/files/noon.tr4 ]] || die "recompress back"

# The configuration file of a level.
for fields in "color=red" "name" "name=a name=b" "import-wad=only" "exe-format=RAR" "author=$(printf 'a%.0s' {1..81})"; do
    # shellcheck disable=SC2086
    expect 2 config write "$box/from/noon" $fields
done
expect 2 config look x
expect 1 config write "$box/nowhere"
expect 0 config write "$box/from/noon" "name=High noon" email=a@b email=c@d "import-wad=w.was|http://x" exe-format=ZIP
expect 0 config show "$box/from/noon/kestrova.cfg" --json
json "j['name'] == 'High noon' and j['email'] == ['a@b', 'c@d'] and j['import-wad'] == ['w.was|http://x']"
json "j['exe-format'] == 'ZIP' and [f['name'] for f in j['files']] == ['noon.tr4'] and j['tom-wads'] == []"
size=$(stat -c %s "$box/from/noon/kestrova.cfg")
head -c $((size - 2)) "$box/from/noon/kestrova.cfg" >"$box/older.cfg"
expect 0 config show "$box/older.cfg"
said "$(printf 'name\tHigh noon')"
head -c $((size - 5)) "$box/from/noon/kestrova.cfg" >"$box/cut.cfg"
expect 1 config show "$box/cut.cfg"
errs "Error reading config file: $box/cut.cfg"
expect 1 config show "$box/none.cfg"
errs "Config file '$box/none.cfg' not found"
expect 0 --yes config write "$box/from/noon"
[[ $(stat -c %s "$box/from/noon/kestrova.cfg") -lt $((size + 1)) ]] || die "an old tail"

# What was done can be undone after each start, and done again.
for words in "undo x" "undo 0" "undo 1 2" "undo --list 1" "undo --json" "undo --list --redo"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
files=$(tree "$box/levels/LEVEL_0002/files")
expect 0 --yes edit 2 --name midday --add "$box/from/dusk" --remove-file noon.tr4
expect 0 --yes remove 2
[[ ! -e $box/levels/LEVEL_0002 ]] || die "the removed level's folder"
expect 0 undo --list --json
json "j[0]['what'] == 'removal of level \"midday\"' and j[0]['here'] and not j[0]['undone'] and j[0]['size'] > 0"
removal=$(python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))[0]["id"])' "$box/out")
expect 0 undo --list
said 'change of level "noon"'
expect 0 doctor
said "with removed levels: $box/levels/LEVEL_0002.set-aside-"
expect 0 undo
said 'Undone: removal of level "midday".'
expect 0 verify 2
expect 0 undo
[[ $(tree "$box/levels/LEVEL_0002/files") == "$files" ]] || die "an edit undone"
expect 0 info 2 --json
json "j['name'] == 'noon'"
expect 0 undo --redo
said 'Done again: change of level "noon".'
[[ -e $box/levels/LEVEL_0002/files/dusk.tr4 && ! -e $box/levels/LEVEL_0002/files/noon.tr4 ]] || die "an edit done again"
expect 1 undo "$removal"
errs "No change has the number $removal"

# What has changed since stays as it is.
echo "my own" >"$box/levels/LEVEL_0002/files/dusk.tr4"
expect 1 undo
errs "nothing was changed"
errs "no longer as that change left it"
[[ $(<"$box/levels/LEVEL_0002/files/dusk.tr4") == "my own" ]] || die "a refused undo"
expect 0 set undo-count 0
expect 0 undo --list
silent
expect 1 undo
errs "nothing that could be undone"
expect 0 --yes remove 2
[[ -z $(ls "$box/levels" | grep LEVEL_0002 || true) ]] || die "nothing is set aside"
