#!/usr/bin/env bash
# Levels that come as programs: run only when told to, and the Level Editor's folder comes back.
. "$(dirname "$0")/common.bash"

make_trle "$box/trle"
mkdir -p "$box/prefix/drive_c"
expect 0 setup --trle "$box/trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/archive.kva"
echo "the builder's own" >"$box/trle/Data/own.tr4"
before=$(tree "$box/trle")

# A Windows program, and what stands in for Wine here.
export TRLE=$box/trle WINEPREFIX=$box/prefix
cat >"$box/wine" <<'WINE'
#!/bin/sh
echo level >"$TRLE/Data/city.tr4"
echo over it >"$TRLE/Data/own.tr4"
rm "$TRLE/English.dat"
echo stray >"$WINEPREFIX/drive_c/stray.ini"
echo home >"$HOME/stray" 2>/dev/null
[ ! -e "$1.hang" ] || sleep 100
WINE
chmod +x "$box/wine"
expect 0 set wine-command "$box/wine"
mkdir city
printf 'MZ of nobody' >city/setup.exe
echo "read me" >city/readme.txt

for words in "" "--yes"; do
    # shellcheck disable=SC2086
    expect 1 $words add city
    errs "--installer trle"
    [[ ! -e $box/prefix/drive_c/stray.ini && $(tree "$box/trle") == "$before" ]] || die "it was run"
done
expect 2 add city --installer
expect 1 add city --installer "$box/nowhere"
errs "is not there"
expect 1 add city --installer "$box"
errs "it could change them"
[[ ! -e $box/prefix/drive_c/stray.ini && ! -e levels/LEVEL_0001 ]] || die "it was run all the same"

expect 0 add city --name City --installer trle
[[ $(<levels/LEVEL_0001/files/city.tr4) == level && $(<levels/LEVEL_0001/files/own.tr4) == "over it" ]] ||
    die "the level"
[[ ! -e levels/LEVEL_0001/files/setup.exe && $(tree "$box/trle") == "$before" ]] || die "the folder"
[[ -s $box/prefix/drive_c/stray.ini ]] || die "it does not work on the prefix"
cat "$box/out" "$box/err" >both
grep -q "stray.ini" both || die "what it wrote elsewhere is not told"

# Killed in the middle, it comes back at the next start, and what it had running ends.
touch city/setup.exe.hang
"$ctl" --home "$box/home" add city --installer trle >/dev/null 2>&1 </dev/null &
killed=$!
for _ in {1..400}; do
    [[ $(cat "$box/trle/Data/own.tr4") == "over it" ]] && break
    sleep 0.05
done
kill -9 $killed
wait $killed 2>/dev/null || true
[[ $(tree "$box/trle") != "$before" ]] || die "it was not killed in the middle"
sleep 0.5

expect 0 original
[[ $(tree "$box/trle") == "$before" && ! -e home/_temp_exe_lev && ! -e home/.kv~handed ]] ||
    die "the folder did not come back from a kill"
