# Places that a person names: what stands there is asked about, what is no file is left alone, and
# no word makes the program fall over.
source "$(dirname "$0")/common.bash"

make_archive

# A word that names nothing is wrong; a folder that is gone is only missing.
for words in "add" "edit 1 --add" "audio info" "config show" "config write" "load" "saves import 1" \
    "saves export 1" "shots add 1" "shots export 1 load.bmp" "practice" "new" "setup --trle" \
    "audio encode a.wav --out"; do
    # shellcheck disable=SC2086
    expect 2 $words ""
    silent
done
mkdir "$box/gone"
for words in "practice here" "add level" "--home there levels" "config show x.cfg" "audio info x.wav"; do
    got=0
    # shellcheck disable=SC2086
    (cd "$box/gone" && rm -r "$box/gone" && "$ctl" --home "$box/home" $words) >"$box/out" 2>"$box/err" \
        </dev/null || got=$?
    [[ $got == 1 || $got == 2 ]] || die "in a folder that is gone: $words: exit $got"
    mkdir "$box/gone"
done

# Results of sounds.
practice_at "$box/practice"
wave=$(find "$box/practice/levels" -iname '*.wav' | sort | sed -n 1p)
name=$(basename "${wave%.*}")
mkdir "$box/sounds"
cp "$wave" "$box/other.wav"
echo precious >"$box/sounds/$name.mp3"
expect 1 --no audio encode "$wave" "$box/other.wav" --out "$box/sounds"
errs "stays as it is"
said "other.mp3"
[[ $(<"$box/sounds/$name.mp3") == precious ]] || die "a sound was written over"
expect 1 audio encode "$wave" --out "$box/sounds"
[[ $(<"$box/sounds/$name.mp3") == precious ]] || die "a sound was written over unasked"
expect 0 --yes audio encode "$wave" --out "$box/sounds"
[[ $(<"$box/sounds/$name.mp3") != precious ]] || die "a Yes was not heard"
# Two that would become one file are refused before anything is written.
mkdir "$box/a" "$box/b"
cp "$wave" "$box/a/Ext.wav"
cp "$wave" "$box/b/ext.WAV"
for words in "audio encode" "audio convert --format 44100s16"; do
    # shellcheck disable=SC2086
    expect 1 --yes $words "$box/a/Ext.wav" "$box/b/ext.WAV" --out "$box/met"
    errs "would both become"
    [[ ! -e $box/met ]] || die "something was written"
done
expect 0 audio encode "$box/a/Ext.wav" "$box/a/../a/Ext.wav" --out "$box/met"

# A configuration file, and what its letters can be.
mkdir "$box/config"
echo precious >"$box/config/kestrova.cfg"
expect 1 --no config write "$box/config" name=x
[[ $(<"$box/config/kestrova.cfg") == precious ]] || die "a configuration file was written over"
for text in 日本語 Łódź; do
    expect 2 --yes config write "$box/config" "name=$text"
    errs "letters that this kind of file cannot hold: $text"
done
[[ $(<"$box/config/kestrova.cfg") == precious ]] || die "written in spite of its letters"
expect 0 --yes config write "$box/config" "name=$(printf 'a\nb\033[31mß')"
expect 0 --json config show "$box/config/kestrova.cfg"
json "j['name'] == 'a b [31mß'"

# Zips and pictures: a pipe is left alone, a link is the file it leads to.
convert -size 8x6 xc:red "$box/one.jpg"
expect 0 shots add 1 "$box/one.jpg"
mkfifo "$box/pipe.zip"
ln -s "$box/behind.jpg" "$box/link.jpg"
echo old >"$box/behind.jpg"
expect 1 --yes export 1 "$box/pipe.zip"
errs "no file"
expect 1 --yes shots export 1 one.jpg "$box/pipe.zip"
[[ -p $box/pipe.zip ]] || die "the pipe is gone"
expect 1 --no shots export 1 one.jpg "$box/link.jpg"
[[ $(<"$box/behind.jpg") == old ]] || die "the file behind a link was written over"
expect 0 --yes shots export 1 one.jpg "$box/link.jpg"
[[ -L $box/link.jpg ]] && cmp "$box/one.jpg" "$box/behind.jpg"
expect 1 --yes export 9 "$box/behind.jpg.zip"
errs "no level with the code 9"
mkdir -p "$box/home/LEVEL_0001" "$box/levels/LEVEL_0001/backup_savegames"
echo game >"$box/levels/LEVEL_0001/backup_savegames/savegame.0"
for verb in import export; do
    expect 1 saves $verb 1 "$box/nowhere"
    errs "is not there: $box/nowhere"
done

# Every program reads the names in an exported zip.
echo tr4 >"$box/Schloß.tr4"
expect 0 edit 1 --add "$box/Schloß.tr4"
echo mine >"$box/levels/LEVEL_0001/files/dawn.tr4"
echo other >"$box/dawn.tr4"
expect 0 --no edit 1 --add "$box/dawn.tr4"
[[ $(<"$box/levels/LEVEL_0001/files/dawn.tr4") == mine ]] || die "a level's file was replaced unasked"
expect 0 --yes edit 1 --add "$box/dawn.tr4"
[[ $(<"$box/levels/LEVEL_0001/files/dawn.tr4") == other ]] || die "a level's file was not replaced"
expect 0 export 1 "$box/names.zip"
python3 - "$box/names.zip" <<'END' || die "names in a zip"
import sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
sys.exit(not ({"Schloß.tr4", "dawn.tr4"} <= set(z.namelist()) and z.testzip() is None))
END

# A picture that goes can be brought back.
convert -size 9x6 xc:blue "jpg:$box/new/one.jpg" 2>/dev/null || { mkdir "$box/new" && convert -size 9x6 xc:blue "$box/new/one.jpg"; }
cp "$box/levels/LEVEL_0001/screenshots/one.jpg" "$box/first.jpg"
expect 0 --yes shots add 1 "$box/new/one.jpg"
expect 0 --yes shots delete 1 one.jpg
expect 0 --json history
json "[e['name'] for e in j if e['name'] == 'one.jpg'] == ['one.jpg'] * 2"
id=$(python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))[0]["id"])' "$box/out")
expect 0 history bring-back "$id"
cmp "$box/first.jpg" "$(<"$box/out")"

# What was not done is not said to be done, and what is away is not nothing.
expect 1 info 99
errs "no level with the code 99"
rm -f "$box/levels/LEVEL_0002/backup_savegames"/*
expect 0 saves archive 2
! grep -q "archvied" "$box/err" || die "nothing was archived"
expect 0 saves restore 2
! grep -q "Restored last" "$box/err" || die "nothing was restored"
mv "$box/levels" "$box/away"
for words in "saves list 1" "shots list 1" "info 1" "equal"; do
    # shellcheck disable=SC2086
    expect 1 $words
    errs "The archive's folder $box/levels is not there"
done
mv "$box/away" "$box/levels"
