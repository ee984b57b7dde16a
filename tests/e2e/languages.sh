#!/usr/bin/env bash
# Another language changes what is shown, and nothing else: files, formats and what scripts read are
# the same byte for byte. Catalogues that are damaged or missing leave told English.
source "$(dirname "$0")/common.bash"

# savegame FILE NUMBER TITLE: the title, and at byte 75 the number.
savegame() {
    { printf '%s' "$3"; head -c $((75 - ${#3})) /dev/zero; printf "\\x$(printf %02x "$2")\\0data of $3"; } >"$1"
}

# make_level FOLDER NAME: as ever, with files of one time, which tr4.inf notes.
eval "plain_$(declare -f make_level)"
make_level() {
    plain_make_level "$@"
    find "$1" -type f -exec touch -d 2020-02-20 {} +
}

# What is different in two runs of the same: times, places on the disk, and what is drawn by lot. The
# language itself is a line of the settings.
alike() {
    LC_ALL=C sed -Ei '/^ *"?language"?[=:]/d; s/[0-9]{4}-[0-9]{2}-[0-9]{2}[T _][0-9:.]{5,8}Z?/TIME/g
        s/\b[0-9a-f]{16,64}\b/DRAWN/g; s/\b[0-9]{9,20}\b/NUMBER/g; s/(process|pid)\W+[0-9]+/\1 P/g
        s/"inode": ?[0-9]+/"inode": I/; s/[0-9.]+ GB free/SOME GB free/' "$@"
}
export -f alike

# a_life LANGUAGE: everything that a player does to an archive, in a new home; what it leaves and
# what it answers to scripts comes into $box/LANGUAGE.
a_life() {
    local seen=$box/$1 step
    make_trle "$box/trle"
    expect 0 set language "$1"
    make_archive
    expect 0 set log-files on
    convert -size 8x6 xc:red "$box/from/one.jpg"
    expect 0 play 1 --no-start
    savegame "$box/trle/savegame.3" 7 Caves
    savegame "$box/trle/savegame.8" 9 Temple
    echo words >"$box/trle/note8.txt"
    expect 0 saves archive 1
    expect 0 play 2 --no-start
    expect 0 shots add 1 "$box/from/one.jpg"
    expect 0 --no shots add 1 "$box/from/one.jpg"
    expect 0 --yes shots delete 1 one.jpg
    expect 0 mark 1 --status playing --stars 4 --tag blue --note "My own"
    expect 0 author 2 --name Ann --email ann@levels.example
    expect 0 edit 2 --note "A note" --add "$box/from/one.jpg"
    expect 0 play 1 --no-start
    expect 0 saves restore 1
    expect 0 --yes remove 3
    expect 0 undo
    expect 0 index
    expect 0 config write "$box/from/dawn" name=Dawn note=Short
    expect 0 play 2 --no-start
    expect 0 --yes original --full
    mkdir "$seen"
    for step in levels "info 1" "saves list 1" "saves history 1" "shots list 1" history "undo --list" \
        doctor set "plan 1" verify "author 2" sizes current equal "config show $box/from/dawn/kestrova.cfg" \
        "discs drives" "discs plan" "editor find"; do
        # shellcheck disable=SC2086
        "$ctl" --home "$box/home" --json $step >"$seen/${step//[ \/]/_}.json" 2>"$box/err" </dev/null ||
            [[ $step == doctor ]] || die "$step"
    done
    for step in --man --markdown --completion; do "$ctl" --home "$box/home" help "$step" >"$seen/help$step"; done
    mv "$box"/{home,levels,trle,from,my.kva} "$seen"
    [[ $1 != en ]] || cp -a "$seen/home" "$box/played"
    find "$seen" \( -name '.kv~*' -o -path '*/undo/token' -o -path '*/swap/work/*' \) -delete
    find "$seen" \( -name '*.json' -o -name '*.ini' -o -name '*.jsonl' -o -path '*/swap/*' \
        -o -path '*/history/*' \) -type f -exec grep -lIZ . {} + | xargs -0r bash -c 'alike "$@"' _
}

a_life en
a_life it
diff -r "$box/en" "$box/it" >&2 || die "Italian leaves other files than English"

# a_workshop LANGUAGE: content to practise with, a level from sources, an import of wads, a list of
# levels made anew, and what the desktop is told.
a_workshop() {
    local seen=$box/$1
    mkdir "$seen"
    expect 0 set language "$1"
    expect 0 set log-files on
    practice_at "$box/practice"
    expect 0 setup --trle "$box/practice/trle" --full --folder-is-original
    expect 0 new --folder "$box/levels" "$box/my.kva"
    expect 0 add "$box/practice/packages/The Salt Mine"
    expect 0 wads import "$(find "$box/practice" -name 'lagoon_wads.zip')" --json
    mv "$box/out" "$seen/wads.json"
    expect 0 publish "$box/practice/levels/Lanterns of Salt Harbour" "$seen/lanterns.zip" name=Lanterns
    unzip -qp "$seen/lanterns.zip" '*kestrova.cfg' >"$seen/lanterns.cfg"
    unzip -Z1 "$seen/lanterns.zip" | sort >"$seen/lanterns.names"
    rm "$box/my.kva" "$seen/lanterns.zip"
    expect 0 recover "$box/levels"
    XDG_DATA_HOME=$box/desktop expect 0 file-types
    mv "$box"/{home,levels,desktop,practice/trle} "$seen"
    rm -r "$seen/home/history" "$seen/home/swap" "$seen/levels"/*/undo "$box/practice"
    find "$seen" -name '.kv~*' -delete
    find "$seen" \( -name '*.json' -o -name '*.ini' \) -exec bash -c 'alike "$@"' _ {} +
    find "$seen" -name '*.inf' -delete # it notes when the level was compiled
}
mkdir "$box/lives"
mv "$box"/{en,it} "$box/lives"
for language in en de; do a_workshop "$language"; done
diff -r "$box/en" "$box/de" >&2 || die "practice, sources, wads or what the desktop is told differ"
rm -r "$box"/{en,de}
mv "$box"/lives/* "$box"
[[ -s $(find "$box/it/home" -name 'LevelLog_000.txt') ]] || die "no activity log to compare"
[[ -s $(find "$box/it/levels" -name 'tr4.inf' | head -1) ]] || die "no tr4.inf to compare"
rm -r "$box/it"
mv "$box"/en/* "$box"
rm -r "$box/home" # the one that was compared; its numbers are gone
mv "$box/played" "$box/home"

# The terminal speaks it, whatever the locale can write; --json and the words to type are as ever.
export LC_ALL=C
expect 0 set language de
expect 1 info 77
errs "Das Archiv hat kein Level mit dem Code 77."
expect 2 levels --wrong
errs "Es gibt keine Option"
errs "Aufruf: kestrovactl [--home DIR] [--yes|--no] [--json] levels"
expect 1 --json info 77
errs "The archive has no level with the code 77."
expect 0 history
said "Bild gelöscht" # the file has told English
expect 0 help play
said "Setzt ein Level"
expect 0 set language it
expect 1 info 77
errs "livello"
expect 0 set language en@proofread
expect 1 author 77
expect 2 set language klingon
errs "de or it"
expect 0 set language en
expect 1 info 77
errs "The archive has no level with the code 77."

# An answer is a letter of the language, or the told one; another one is asked for again.
# answer LETTERS WORDS…: what a person types at the terminal, a line each.
answer() {
    local letters=$1
    shift
    printf '%s\n' $letters | script -qec "'$ctl' --home '$box/home' $*" /dev/null >"$box/out"
}
expect 0 set language de
! answer n remove 3 || die "a No removed it"
said "[j/n, Eingabe: n]"
answer "x j j" remove 3
expect 0 levels
[[ $(wc -l <"$box/out") == 3 ]] || die "j is not Ja"
answer "y n" remove 2
expect 0 levels
[[ $(wc -l <"$box/out") == 2 ]] || die "y is no answer any more"

# The programs moved with their share folder find it there; damaged or missing, all is told English.
bin=$box/moved/bin
mkdir -p "$bin" "$box/moved/share"
cp "$ctl" "$bin"
share=$(dirname "$ctl")/../share
cp -r "$share"/{kestrova,locale} "$box/moved/share"
ctl=$bin/kestrovactl
catalogue=$box/moved/share/locale/de/LC_MESSAGES/kestrova.mo
expect 0 set language de
expect 1 info 77
errs "kein Level mit dem Code 77"
for damage in "head -c 1000" "head -c 40" "tr a b" "head -c 0"; do
    $damage <"$share/locale/de/LC_MESSAGES/kestrova.mo" >"$catalogue"
    expect 1 info 77
    [[ $damage == tr* ]] || errs "The archive has no level with the code 77."
done
rm -r "$box/moved/share/locale"
expect 1 info 77
errs "The archive has no level with the code 77."
