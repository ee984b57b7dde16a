# The ways out: a broken Level Editor's folder, an archive that is away, another folder, a level
# that lost its main file.
source "$(dirname "$0")/common.bash"
make_archive
original=$(tree "$box/trle")

# One wave and the game are gone and the archive's drive is away: everything names the full
# restore, which needs none of them.
expect 0 play 1 --no-start
rm "$box/trle/audio/007.wav" "$box/trle/tomb4.exe"
mv "$box/levels" "$box/unplugged"
expect 1 play 2 --no-start
errs "kestrovactl original --full"
expect 0 doctor
said "kestrovactl original --full"
expect 0 --yes original --full
[[ $(tree "$box/trle") == "$original" ]] || die "the full restore"
mv "$box/unplugged" "$box/levels"
expect 0 play 2 --no-start
expect 0 original

# An empty folder under the old name is filled by the backup.
mv "$box/trle" "$box/broken"
expect 1 --yes original --full
errs "make an empty folder of that name"
mkdir "$box/trle"
expect 0 --yes original --full
[[ -f $box/trle/tomb4.exe && -f $box/trle/audio/053.wav ]] || die "an empty folder was not filled"
rm -r "$box/trle"
mv "$box/broken" "$box/trle"

# The backup knows its folder.
cp -r "$box/trle" "$box/other"
echo "another edition" >"$box/other/Data/title.tr4"
expect 1 --no setup --trle "$box/other"
errs "another Level Editor's folder"
expect 0 --yes setup --trle "$box/other" --full --folder-is-original
expect 0 --yes setup --trle "$box/trle"
errs "in use again"
[[ $(cat "$box/home/backup_trle/Data/title.tr4") == title ]] || die "not the backup of its folder"

# A level that lost its main file is named, and not put in without a word.
mv "$box/levels/LEVEL_0003/files/dusk.tr4" "$box/dusk.tr4"
expect 1 verify 3
said "dusk.tr4"
expect 0 doctor
said "0003"
expect 1 play 3 --no-start
errs "dusk.tr4"
expect 0 --yes play 3 --no-start

# Cut short is not missing.
mv "$box/dusk.tr4" "$box/levels/LEVEL_0003/files/dusk.tr4"
: >"$box/levels/LEVEL_0003/files/dusk.tr4"
expect 1 verify 3
said "$(printf 'cut\tdusk.tr4')"

# Killed in the middle with the backup away: nothing is called original, nothing of it is lost.
expect 0 original
mv "$box/home/backup_trle" "$box/bk"
expect 1 verify
errs "There is no backup"
expect 0 play 1 --no-start
expect 1 play 2 --no-start
errs "There is no backup"
errs "script.dat"
expect 1 original
expect 1 mend
mv "$box/bk" "$box/home/backup_trle"
expect 0 mend
[[ $(tree "$box/trle") == "$original" ]] || die "originals that were owed"

# A level's folder that leads nowhere is not removed by name alone.
mv "$box/levels/LEVEL_0002" "$box/disk"
ln -s "$box/disk" "$box/levels/LEVEL_0002"
mv "$box/disk" "$box/disk-away"
expect 1 --yes remove 2
errs "--keep-files"
expect 0 levels
said noon
rm "$box/levels/LEVEL_0002"
mv "$box/disk-away" "$box/levels/LEVEL_0002"

# The kept savegames of a removed level come out into any folder; a moved archive is named.
mkdir -p "$box/levels/LEVEL_0002/backup_savegames"
{ head -c 75 /dev/zero; printf '\5\0rest'; } >"$box/levels/LEVEL_0002/backup_savegames/savegame.1"
expect 0 --yes remove 2
expect 1 history bring-back 0002-1
errs "--to FOLDER"
expect 0 history bring-back 0002-1 --to "$box/mine"
[[ -s $box/mine/savegame.1 ]] || die "history bring-back --to"
mv "$box/levels" "$box/elsewhere"
expect 0 load "$box/my.kva" --folder "$box/elsewhere"
expect 0 play 1 --no-start
expect 0 original

# Music that a compact backup does not hold is named, with what to do, by all who refuse.
mv "$box/home" "$box/home-full"
expect 0 setup --trle "$box/trle" --compact --folder-is-original
expect 0 new --folder "$box/few" "$box/few.kva"
rm "$box/trle/audio/031.wav"
for words in "setup --trle $box/trle" "original --full" "original" "play 0" "new $box/second.kva"; do
    # shellcheck disable=SC2086
    expect 1 --yes $words
    [[ $(grep -c "031.wav" "$box/err") == 1 ]] || die "not told once: $words"
done
expect 1 verify
said "031.wav"
expect 0 doctor
said "031.wav"
