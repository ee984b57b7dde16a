# What the terminal itself promises: exit codes, streams, wrong use, questions, settings.
source "$(dirname "$0")/common.bash"

# Wrong use says what and how, on the standard error.
for words in "" "nothing" "info" "info one" "info -1" "info 99999999999" "levels 1" "play 1 2" \
    "setup" "setup --trle x --full --compact" "backup" "add" "add --name" "edit x" "new x.zip" \
    "levels --no-start" "--yes --no levels" "--home" "--json play" "set colour red" \
    "set capture maybe" "set history-count -1" "set game ../tomb4.exe" "set capture" \
    "history back 1" "help nonsense" "levels --wrong"; do
    # shellcheck disable=SC2086
    got=0
    "$ctl" $words >"$box/out" 2>"$box/err" </dev/null || got=$?
    [[ $words != "--json play" ]] || got=2 # lacks its code only
    [[ $got == 2 ]] || die "'$words': exit $got"
    silent
    [[ -s $box/err ]] || [[ $words == "--json play" ]] || die "'$words': no word about it"
done
expect 2 set game " "
expect 2 levels --wrong
errs "'--wrong'"
expect 2 info one
errs "'one'"
errs "info CODE"

expect 0 --version
said "kestrovactl "
expect 0 help
said "play CODE [--no-start]"
expect 0 help play
[[ $(wc -l <"$box/out") -ge 2 ]] || die "help play"
expect 0 help --markdown
diff "$box/out" "$here/../../docs/terminal.md" || die "docs/terminal.md is not what the program prints"

# Reading commands make nothing, not even the folder.
expect 1 levels
errs "kestrovactl new"
expect 0 doctor
expect 0 set
[[ ! -e $box/home ]] || die "a reading command made the home"

# A question without a terminal is named, and nothing is done.
make_trle "$box/trle"
before=$(tree "$box/trle")
expect 1 setup --trle "$box/trle" --full
errs "Left unanswered: "
errs "is original?"
expect 1 --yes setup --trle "$box/trle" --full # which --yes must not answer
errs "is original?"
expect 1 setup --trle "$box/trle" --folder-is-original
errs "--compact"
[[ ! -e $box/home/backup_trle ]] || die "a backup was made"
expect 1 setup --trle "$box/nowhere" --full --folder-is-original
errs "Not right folder"
[[ $(tree "$box/trle") == "$before" ]] || die "the Level Editor's folder has changed"

make_archive
expect 1 remove 1
errs "Left unanswered: "
expect 1 --no remove 1
expect 0 levels
[[ $(wc -l <"$box/out") == 4 ]] || die "levels"
expect 1 info 9
errs "9"
expect 1 new "$box/my.kva"
errs "already"
expect 1 load "$box/none.kva"
expect 1 add --name x "$box/none"
# What could not be unpacked inside a package is a failure too, unless the person goes on.
mkdir "$box/outer" && cp -r "$box/from/dusk/." "$box/outer" && echo "PK no zip" >"$box/outer/in.zip"
(cd "$box/outer" && zip -qr "$box/outer.zip" .)
expect 1 --yes add --name half "$box/outer.zip"
errs "in.zip" && errs "--keep-going"
# Names in an old code page are guessed, the guess is told, and another can be given.
python3 - "$box/names.zip" <<'END'
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w") as z:
    for mark, name in (("x", "Карта.tr4"), ("q", "Прочти меня.txt")):
        raw = name.encode("cp866")
        info = zipfile.ZipInfo(mark * len(raw))
        info.create_system = 0
        z.writestr(info, name)
data = open(sys.argv[1], "rb").read()
for mark, name in (("x", "Карта.tr4"), ("q", "Прочти меня.txt")):
    raw = name.encode("cp866")
    data = data.replace(mark.encode() * len(raw), raw)
open(sys.argv[1], "wb").write(data)
END
expect 2 add --names nonsense "$box/names.zip"
errs "CP866"
expect 0 --yes --json add --names CP437 "$box/names.zip"
json "j['names'] == 'CP437'"
code=$(python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))["code"])' "$box/out")
expect 0 --yes remove "$code"
expect 0 --yes --json add "$box/names.zip"
json "j['names'] == 'CP866'"
errs "Russian, DOS (CP866)"
ls "$box"/levels/LEVEL_*/files/Карта.tr4* >/dev/null || die "the Russian name"
code=$(python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))["code"])' "$box/out")
expect 0 --yes remove "$code"

# An answer on a terminal counts; Enter is the answer that keeps what is there.
if command -v script >/dev/null; then
    echo | script -qec "'$ctl' --home '$box/home' remove 3" /dev/null >"$box/out" 2>&1 &&
        die "Enter removed a level"
    expect 0 levels
    [[ $(wc -l <"$box/out") == 4 ]] || die "Enter removed a level"
    echo "y" | script -qec "'$ctl' --home '$box/home' remove 3 --keep-files" /dev/null >"$box/out" 2>&1 ||
        die "an answer at the terminal"
    expect 0 levels
    [[ $(wc -l <"$box/out") == 3 && -d $box/levels/LEVEL_0003 ]] || die "remove --keep-files"
fi

# Settings come back as they were set.
for pair in "capture off" "auto-compile off" "log-files on" "auto-save off" "game tomb5.exe" \
    "compress on" "wine-command /opt/wine/bin/wine" "wine-words a" "history-count 7" "mp3 on"; do
    # shellcheck disable=SC2086
    expect 0 set $pair
    expect 0 set
    said "$(printf '%s\t%s' ${pair% *} ${pair#* })"
done
expect 0 set mp3 off # its waves are none
expect 0 set --json
json "j['game'] == 'tomb5.exe' and j['compress'] == 'on' and j['history-count'] == '7'"
expect 0 --yes add --name "after auto-save off" "$box/from/dusk"
expect 0 levels
said "after auto-save off"
ls "$box"/levels/LEVEL_0003/files/*.zl >/dev/null 2>&1 || ls "$box"/levels/LEVEL_0004/files/*.zl >/dev/null || die "compress on"

# Names that are no UTF-8 and names that would steer a terminal.
bad=$box/from/$(printf 'caf\xe9')
make_level "$bad" noon
expect 0 --yes add --name "$(printf 'caf\xe9 \x1b[31mred')" "$bad"
expect 0 levels
! grep -q "$(printf '\x1b')" "$box/out" || die "an escape reached the terminal"
expect 0 levels --json
json "any('caf\u00e9' in l['name'] for l in j)"
expect 0 info 4 --json

# An archive that is cut or none is refused, and the loaded one stays.
head -c 3000 "$box/my.kva" >"$box/cut.kva"
echo none >"$box/none.kva"
for file in cut none; do
    expect 1 load "$box/$file.kva"
    errs "$file.kva"
done
expect 0 info 1
said dawn
mv "$box/my.kva" "$box/away.kva"
cp "$box/cut.kva" "$box/my.kva"
for command in "levels --json" "play 1" "verify" "plan 1" "sizes"; do
    # shellcheck disable=SC2086
    expect 1 $command
    silent
done
expect 0 doctor --json
json "[f for f in j if f['name'] == 'archive' and not f['fine'] and f['remedy']]"
mv "$box/away.kva" "$box/my.kva"

# The archive's folder is gone: a new one is asked for, and nobody answers.
mv "$box/levels" "$box/moved"
expect 1 play 1 --no-start
errs "Left unanswered: Select folder: levels"
expect 0 levels
mv "$box/moved" "$box/levels"

# A reader that goes away, a disk that is full.
("$ctl" --home "$box/home" levels 2>"$box/err" || true) | true
[[ ! -s $box/err ]] || die "a word about a reader that went away"
if [[ -w /dev/full ]]; then
    got=0
    "$ctl" --home "$box/home" levels >/dev/full 2>"$box/err" || got=$?
    [[ $got == 1 ]] || die "a full disk: exit $got"
fi

# The wish that the program ends, and the end of its terminal, give up what comes in.
printf '#!/bin/sh\nexec sleep 30\n' >"$box/home/unzip" && chmod +x "$box/home/unzip"
before=$(ls "$box/levels")
for signal in TERM HUP; do
    "$ctl" --home "$box/home" --yes add "$box/outer.zip" >"$box/out" 2>"$box/err" </dev/null &
    adding=$!
    until [[ -e $box/home/intake_note ]]; do
        kill -0 "$adding" 2>/dev/null || die "add ended by itself"
        sleep 0.02
    done
    kill "-$signal" "$adding"
    got=0
    wait "$adding" || got=$?
    [[ $got == 1 ]] || die "$signal: exit $got"
    errs "No level was added"
    [[ $(ls "$box/levels") == "$before" ]] || die "$signal left something"
done
rm "$box/home/unzip"
