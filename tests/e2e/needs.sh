#!/usr/bin/env bash
# Levels whose configuration file asks for what did not come with them.
source "$(dirname "$0")/common.bash"
source "$here/server.bash"

mkdir served wads
open_server "$box/served"
trap 'kill $server; wait $server || :; rm -rf "$box"' EXIT
echo "the package's wad" >wads/angkor.wad
(cd wads && zip -q ../served/angkor.zip angkor.wad)

make_trle "$box/trle"
cp "$(type -P true)" "$box/trle/tomb4.exe"
cat >"$box/trle/tom2pc.exe" <<'COMPILER'
#!/bin/sh
name=$(basename "$1" .tom)
cat "$1" "graphics/wads/$name.wad" >"Data/$name.tr4"
COMPILER
chmod +x "$box/trle/tom2pc.exe"
expect 0 setup --trle "$box/trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/archive.kva"
expect 0 set check-equal off

mkdir level
echo "a tom" >level/mill.tom
echo title >level/title.tr4
echo script >level/script.dat
head -c 34 /dev/zero >level/105.wav
printf '\4\0track' >>level/105.wav
expect 0 config write "$box/level" "name=The needy" "import-wad=angkor.wad|$site/angkor.zip" \
    'duplicate=title.*|C:\copy.tr4' "extern-wave=TR4|9.wav|105.wav|105.WAV" \
    'duplicate=..\..\..\archive.kva|stolen.kva' 'tom-wads=mill.tom|angkor.*'
before=$(tree "$box/trle")

# Nothing is fetched by a switch that answers everything.
for switch in --yes --no ""; do
    # shellcheck disable=SC2086
    expect 1 $switch add "$box/level"
    errs "Without importing wads it's not possible convert this level"
    [[ $(tree "$box/trle") == "$before" && ! -e levels/LEVEL_0001 ]] || die "a level that was given up"
done
errs "--fetch"
[[ ! -e home/angkor.zip ]] || die "fetched unasked"

# With it the level installs itself.
expect 0 --no add "$box/level" --fetch
said "The needy"
files=$(cd levels/LEVEL_0001/files && find . -type f | sort | tr '\n' ' ')
[[ $files == "./105.wav ./copy.tr4 ./mill.tr4 ./script.dat ./title.tr4 " ]] || die "files: $files"
[[ $(<levels/LEVEL_0001/files/mill.tr4) == "$(printf "a tom\nthe package's wad")" ]] || die "mill.tr4"
[[ -e $box/trle/graphics/wads/angkor.wad && -e home/backup_trle/graphics/wads/angkor.wad ]] ||
    die "the wads were not imported"
rm "$box/trle/graphics/wads/angkor.wad"
[[ $(tree "$box/trle") == "$before" ]] || die "the folder is not as it was"

# What is there is not asked for again; a sound that nobody has keeps no level out.
cp wads/angkor.wad "$box/trle/graphics/wads"
rm level/105.wav
expect 0 --yes config write "$box/level" "name=Without a sound" "import-wad=ANGKOR.WAD|$site/angkor.zip" \
    "extern-wave=TR4|9.wav|105.wav|none.wav" 'tom-wads=mill.tom|angkor.*'
expect 0 --yes add "$box/level"
errs "request extern wave file is missing (9.wav105.wav)"
[[ -e levels/LEVEL_0002/files/mill.tr4 ]] || die "not compiled"
