#!/usr/bin/env bash
# The Level Editor's programs through a real Wine, in a prefix of its own that goes at the end:
#   KESTROVACTL=PROGRAM tests/wine/run.sh FOLDER-OF-WINDOWS-STAND-INS
# Everything lies below names with blanks and umlauts.
. "$(dirname "$0")/../e2e/common.bash"

stand_ins=${1:?the folder with tom2pc.exe, script.exe, setup.exe and tomb4.exe}
outer=$box
trap 'WINEPREFIX=$outer/prefix wineserver -k 2>/dev/null || true; rm -rf "$outer"' EXIT
box="$outer/Größe und Übermaß"
mkdir -p "$box/home of nobody"
export HOME="$box/home of nobody" WINEPREFIX=$outer/prefix WINEDEBUG=-all
unset DISPLAY WAYLAND_DISPLAY
cd "$box"

# took WHAT: how long the step before this took, in milliseconds.
began=$EPOCHREALTIME
took() {
    local now=$EPOCHREALTIME
    printf '%-46s %6d ms\n' "$1" "$(((${now/./} - ${began/./}) / 1000))"
    began=$EPOCHREALTIME
}

wine wineboot --init >/dev/null 2>&1 || die "Wine makes no prefix"
took "a new prefix, $(wine --version 2>/dev/null)"

expect 0 practice "$box/Übung"
trle="$box/Übung/trle"
packages="$box/Übung/packages"
cp "$stand_ins/tomb4.exe" "$stand_ins/tom2pc.exe" "$trle/"
cp "$stand_ins/script.exe" "$trle/Script/"
expect 0 setup --trle "$trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/Größe.kva"
before=$(tree "$trle")
unchanged() { [[ $(tree "$trle") == "$before" ]] || die "the Level Editor's folder did not come back: $1"; }

# Compile: a level on its way in, and a file of the person's own, in a folder of Polish letters.
began=$EPOCHREALTIME
expect 0 add "$packages/The Salt Mine"
took "a level of sources comes in"
level=$(find "$box/levels" -iname 'saltmine.tr4*')
[[ -s $level ]] || die "nothing was compiled"
unchanged "add"
mkdir "$box/Zażółć gęślą"
cp "$packages/The Salt Mine"/* "$box/Zażółć gęślą/"
mv "$box/Zażółć gęślą/saltmine.tom" "$box/Zażółć gęślą/Salz & Söhne (1).tom"
for ending in wad swd sam; do
    mv "$(find "$box/Zażółć gęślą" -iname "saltmine.$ending")" "$box/Zażółć gęślą/Salz & Söhne (1).$ending"
done
began=$EPOCHREALTIME
expect 0 editor compile "$box/Zażółć gęślą/Salz & Söhne (1).tom"
took "a tom file with letters of three languages"
grep -q 'drip.wav' "$box/Zażółć gęślą/Salz & Söhne (1).tr4" || die "the compiler found no samples"
unchanged "editor compile"

# A compiler that fails, crashes, writes half and hangs.
for act in nothing crash "exit 3"; do
    printf 'KVTOM\nact=%s\n' "$act" >"$box/Zażółć gęślą/Salz & Söhne (1).tom"
    rm -f "$box/Zażółć gęślą/Salz & Söhne (1).tr4"
    expect 1 editor compile "$box/Zażółć gęślą/Salz & Söhne (1).tom"
    [[ ! -e "$box/Zażółć gęślą/Salz & Söhne (1).tr4" ]] || die "a result of $act"
    unchanged "act=$act"
done
printf 'KVTOM\nact=hang\n' >"$box/Zażółć gęślą/Salz & Söhne (1).tom"
"$ctl" --home "$box/home" editor compile "$box/Zażółć gęślą/Salz & Söhne (1).tom" >"$box/out" 2>"$box/err" </dev/null &
hangs=$!
sleep 3
began=$EPOCHREALTIME
kill -INT "$hangs"
wait "$hangs" && die "a compiler that hangs ended well"
took "a compiler that hangs is stopped"
unchanged "stopped"
if pgrep -f 'tom2pc\.exe.*Salz' >/dev/null; then die "the compiler still runs"; fi

# Scripts: a package of wads brings a level, which takes its name in all languages; and back.
began=$EPOCHREALTIME
expect 0 --yes wads import "$packages/lagoon_wads.zip"
took "a package of wads comes in, its script compiled"
said "Compiling [OK]"
for file in "$trle/Script.dat" "$trle/Script/script.dat" "$box/home/backup_trle/"[Ss]cript.dat; do
    grep -aq 'The Lagoon' "$file" || die "$file does not have the level"
done
[[ -s $(find "$trle" -iname lagoon.tr4) ]] || die "the tom file of the package was not compiled"
expect 0 --yes wads undo
unchanged "wads undo"

# An installer, which finds the Level Editor's folder in the registry; its level comes into the
# archive, and the folder is as it was.
wine reg add 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\winroomedit.exe' /f /ve \
    /d "$(wine winepath -w "$trle/winroomedit.exe" | tr -d '\r')" >/dev/null || die "no registry"
wineserver -k # which writes the registry; an installer is shut in with a server of its own
wineserver -w
expect 0 editor find
said "$trle"
mkdir -p "$box/gate/data" "$box/Säle"
echo "a level behind a gate" >"$box/gate/data/saltgate.tr4"
cp "$packages/The Salt Mine/script.dat" "$box/gate/"
"$(dirname "$ctl")/kestrova-practice-setup" --pack-with "$stand_ins/setup.exe" \
    "$box/Säle/Tor zum Salz.exe" winzip "$box/gate" title=Saltgate into=trle
began=$EPOCHREALTIME
expect 0 --yes add --installer trle "$box/Säle"
took "an installer runs, and its level comes in"
[[ -n $(find "$box/levels" -iname 'saltgate.tr4*') ]] || die "what the installer brought is not in the level"
unchanged "add --installer"

# The game: its folder, its script, and the savegame, which goes to the level's own.
began=$EPOCHREALTIME
expect 0 play 1
for _ in {1..100}; do [[ -s $trle/played.txt ]] && break; sleep 0.1; done
took "the game starts, and notes what it found"
grep -qx "The Salt Mine" "$trle/played.txt" || die "the game found another script"
grep -qF 'Übung\trle' "$trle/played.txt" || die "the game works elsewhere: $(<"$trle/played.txt")"
expect 0 original
expect 0 saves list 1
rm -f "$trle/played.txt"
unchanged "original"

# A program of 32 bits where Wine has no part for it: told before anything is lent.
if ! dpkg-query -W -f '${db:Status-Status}' wine32 2>/dev/null | grep -qx installed; then
    { printf 'MZ'; head -c 58 /dev/zero; printf '\x40\0\0\0PE\0\0\x4c\x01'; head -c 400 /dev/zero; } >"$trle/tom2pc.exe"
    before=$(tree "$trle")
    expect 1 editor compile "$packages/The Salt Mine/saltmine.tom"
    errs "32"
    unchanged "32 bits"
fi
echo "all through Wine went well"
