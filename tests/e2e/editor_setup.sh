# The Level Editor set up from the terminal, from zips and from a folder.
source "$(dirname "$0")/common.bash"
export HOME=$box/person
unset WINEPREFIX XDG_DATA_HOME

for words in "editor setup" "editor setup --folder a b" "editor setup --zip a --folder b" \
    "editor setup --zip a --language klingon" "editor find --zip a" "editor setup --to"; do
    # shellcheck disable=SC2086
    expect 2 $words
done

# A setup in two parts, with a list.
make_trle "$box/disc/trle"
mkdir -p "$box/disc/trle/graphics/wads" "$box/disc/trle/script"
echo script >"$box/disc/trle/script/script.dat"
for language in english german; do echo $language >"$box/disc/trle/script/$language.dat"; done
magick -size 8x8 xc:red "$box/disc/trle/load_eng.jpg" 2>/dev/null ||
    convert -size 8x8 xc:red "$box/disc/trle/load_eng.jpg"
rm "$box/disc/trle/load.bmp"
(cd "$box/disc/trle" && find . -type f | sed 's,^\./,,; s,/,\\,g' | sed 's/$/\r/' >list.txt)
(cd "$box/disc" && zip -q -r "$box/Setup 1.zip" trle -x 'trle/audio/*' &&
    zip -q -r "$box/Setup ü.zip" trle/audio)

expect 0 editor setup --zip "$box/Setup 1.zip" "$box/Setup ü.zip" --language german
target="$box/person/.local/share/Core Design/trle"
said "$target"
[[ -s $target/german.dat && -s $target/load.bmp && -x $target/tomb4.exe ]] || die "not whole"
links="$box/person/.local/share/applications/Core Design/Tomb-Raider-Level-Editor"
grep -qx "Name=Tomb Raider starten" "$links/Tomb Raider starten.desktop"
[[ -z $(find "$box/person" -name '.kv~*' ! -name '.kv~lock') ]] || die "something was left"
expect 0 editor find
said "$target	preferences	whole"
expect 0 setup --trle "$target" --full --folder-is-original

# The same once more: it is asked whether, and a folder that holds something stays.
before=$(tree "$target")
expect 1 --no editor setup --folder "$box/disc"
expect 1 --yes editor setup --folder "$box/disc" --to "$target"
errs "holds something already"
errs "Setup from folder failed"
[[ $(tree "$target") == "$before" ]] || die "the old one was touched"
expect 0 --yes editor setup --folder "$box/disc/trle" --to "$box/second trle"
[[ $(cat "$box/second trle/English.dat") == english ]] || die "no second one"

# What is none, and what lacks files.
expect 1 --yes editor setup --folder "$box/levels" --to "$box/third"
errs "is not TRLE folder"
rm "$box/disc/trle/audio/007.wav"
expect 1 --no editor setup --folder "$box/disc" --to "$box/third"
[[ ! -e $box/third ]] || die "a part was left"

# No switch leads to a place that nobody named.
truncate -s 8T "$box/disc/trle/large.wad"
expect 1 --yes editor setup --folder "$box/disc" --to "$box/third"
errs "Left unanswered: Warning. Unit [C:] has not enough free space"
[[ ! -e $box/third ]] || die "a part was left"
