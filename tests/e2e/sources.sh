#!/usr/bin/env bash
# What the Level Editor's sources say, and levels that come as sources.
. "$(dirname "$0")/common.bash"

for words in "script" "script show" "script look x" "script show a b"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
printf '[Options]\n[Level]\nName= Tomb of X\nLevel= DATA\\city,101\n' >script.txt
expect 0 script show script.txt --json
json "j == {'levels': [{'tr4': 'city.tr4', 'name': 'Tomb of X'}]}"
expect 0 script show script.txt
said "$(printf 'city.tr4\tTomb of X')"
printf '[Options]\n' >script.txt
expect 0 script show script.txt --json
json "j == {'levels': []}"
printf ';\r\n[Strings]\r\nM\xfcnster\r\n;no\r\nB\r\n[PSXStrings]\r\n' >german.txt
expect 0 script show german.txt --json
json "j == {'strings': ['[Strings]', 'Münster', 'B']}"
expect 0 script show german.txt
said "$(printf '2\tB')"
printf '[Level]\nName= A\n' >script.txt
expect 1 script show script.txt
errs "$box/script.txt"
printf '\xff\xfe[\0L\0' >script.txt
expect 1 script show script.txt
errs "UTF-16"
expect 1 script show none.txt
silent
# A text that is no name does not bury the others.
{ printf '[Strings]\n%0499dü' 0; head -c 3000000 /dev/zero | tr '\0' N; printf '\nlast\n'; } >long.txt
expect 0 script show long.txt
said "0 … (the first 500 of 3000501 bytes)"
said "$(printf '2\tlast')"
(($(wc -c <out) < 1000)) || die "a long text"
expect 0 script show long.txt --json
json "len(j['strings'][1]) == 3000500"

# A level that comes as sources, and a compiler that finds its wads whatever their case.
make_trle "$box/trle"
cp "$(type -P true)" "$box/trle/tomb4.exe"
cat >"$box/trle/tom2pc.exe" <<'COMPILER'
#!/bin/sh
name=$(basename "$1" .tom)
wad=$(find graphics/wads -iname "$name.wad")
[ -n "$wad" ] || exit 1
grep -q hang "$1" && sleep 100
cat "$1" "$wad" >"Data/$name.tr4"
COMPILER
chmod +x "$box/trle/tom2pc.exe"
echo "the builder's own" >"$box/trle/graphics/wads/MILL.WAD"
expect 0 setup --trle "$box/trle" --full --folder-is-original
echo "changed since" >"$box/trle/graphics/wads/MILL.WAD"
expect 0 new --folder "$box/levels" "$box/archive.kva"
before=$(tree "$box/trle")
mkdir mill
echo "a tom" >mill/mill.tom
echo "a wad" >mill/mill.wad
echo "a sample" >mill/wheel.wav
echo "read me" >mill/readme.txt
echo script >mill/script.dat

for words in "editor" "editor compile" "editor make x" "editor compile a b"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
expect 2 add mill --compile --no-compile
expect 0 editor compile mill/mill.tom
said "$box/mill/mill.tr4"
[[ $(<mill/mill.tr4) == "$(printf 'a tom\na wad')" && -e mill/mill.wad ]] || die "editor compile"
[[ $(tree "$box/trle") == "$before" ]] || die "the folder did not come back"
expect 1 --no editor compile mill/mill.tom
rm mill/mill.tr4

expect 1 add mill --no-compile
errs "tr4"
expect 0 add mill
files=$(cd levels/LEVEL_0001/files && find . -type f | sort | tr '\n' ' ')
[[ $files == "./mill.tr4 ./readme.txt ./script.dat " ]] || die "of the sources stayed: $files"
[[ $(tree "$box/trle") == "$before" ]] || die "the folder did not come back from the level"

# Without wads nothing is lent; without a compiler the folder comes back.
mkdir tower
cp mill/mill.tom tower/tower.tom
expect 1 add tower
errs "--link tower.tom="
cp mill/mill.wad tower/tower.wad
rm "$box/trle/tom2pc.exe"
before=$(tree "$box/trle")
expect 1 add tower
errs "Error in auto tom files compilation"
[[ $(tree "$box/trle") == "$before" && ! -e levels/LEVEL_0002 ]] || die "a failed compilation"

# A set of wads of the Level Editor's own, by the person's word and by the readme's.
cat >"$box/trle/tom2pc.exe" <<'COMPILER'
#!/bin/sh
name=$(basename "$1" .tom)
cat "$1" "$(find graphics/wads -iname "$name.wad")" >"Data/$name.tr4"
COMPILER
chmod +x "$box/trle/tom2pc.exe"
before=$(tree "$box/trle")
mkdir castle
cp mill/mill.tom castle/castle.tom
cp mill/script.dat castle
echo "Please convert CASTLE.TOM with the wads of mill.wad" >castle/readme.txt
for words in "--link castle" "--link =mill" "--link a=b --no-compile" "--analyse x --no-compile"; do
    # shellcheck disable=SC2086
    expect 2 add castle $words
done
expect 1 add castle --link other=mill
errs "other.tom"
expect 1 add castle --link castle=none
errs 'none.*'
expect 1 add castle --analyse elsewhere.txt
errs "elsewhere.txt"
expect 1 --no add castle --analyse readme.txt
expect 0 add castle --name "By word" --link castle=mill
expect 0 --yes add castle --name "By readme" --analyse README.txt
for level in LEVEL_0002 LEVEL_0003; do
    [[ $(<"levels/$level/files/castle.tr4") == "$(printf 'a tom\nchanged since')" ]] || die "$level"
    [[ ! -e levels/$level/files/castle.wad ]] || die "a copied wad stays in $level"
done
[[ $(tree "$box/trle") == "$before" && ! -e levels/LEVEL_0004 ]] || die "the links"
