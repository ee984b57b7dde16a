#!/usr/bin/env bash
# A wad package in the practice folder: imported, undone, and killed in the middle.
. "$(dirname "$0")/common.bash"

for words in "wads" "wads import" "wads look" "wads undo x" "wads undo --json" "wads import x --name y" \
    "wads import x --name =y" "wads import x --name a=[strings]" "wads import x --name a=;b" \
    "wads import x --name a=b --name A=c"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
expect 2 add x --name a --name b
errs "--name"

practice_at practice
expect 0 setup --trle practice/trle --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/archive.kva"
trle=$box/practice/trle backup=$box/home/backup_trle
wads=$(find "$box/practice" -name 'lagoon_wads.zip')
both() { echo "$(tree "$trle") $(tree "$backup")"; }
before=$(both)

expect 1 wads undo
errs "There is no import of wads"
expect 1 wads import none.zip
expect 1 wads import "$box/archive.kva.none" --json
[[ $(both) == "$before" ]] || die "nothing came, and something changed"

expect 0 wads import "$wads" --name "The Lagoon=Die Lagune" --json
json "j['done'] and 'lagoon.wad -> trle\\\\graphics\\\\wads\\\\ [OK]' in j['report']"
json "'lagoon.tom -> [OK COMPILE]' in j['report'] and 'lagoon.map -> [IGNORED]' in j['report']"
json "not [line for line in j['report'] if '[ERROR' in line]"
cmp "$(find "$trle" -iname lagoon.tr4)" "$(find "$backup" -iname lagoon.tr4)"
expect 0 script show "$(find "$trle" -iname script.txt)" --json
json "j['levels'][-1] == {'tr4': 'lagoon.tr4', 'name': 'The Lagoon'}"
grep -rqx $'Die Lagune\r' --include='*.[tT][xX][tT]' "$trle" || die "the name is not among the strings"
cmp "$(find "$trle" -maxdepth 1 -iname script.dat)" "$(find "$backup" -maxdepth 1 -iname script.dat)"
expect 0 history originals
expect 0 wads undo
said "lagoon_wads.zip"
[[ $(both) == "$before" ]] || die "the undone import left something"

expect 0 script show "$(find "$trle" -iname english.txt)"
first=$(sed -n '2s/^1\t//p' out)
expect 0 wads import "$wads" --name "Nobody=X" --name "The Lagoon=$first"
errs "Nobody"
errs "twice now, since another string is the same already: $first"
expect 0 wads undo

# Wads alone, without anything for the script, are imported as well as any.
mkdir alone
printf wad >alone/alone.wad
expect 0 wads import alone
said "*** Wads update finished ***"
expect 0 wads undo
[[ $(both) == "$before" ]] || die "the undone import of wads alone left something"

# The compiler hangs, and the program is killed.
mv "$trle/tom2pc.exe" "$box/tom2pc.kept"
printf '#!/bin/sh\necho $$ >hangs\nexec sleep 100\n' >"$trle/tom2pc.exe" # in its own folder alone
chmod +x "$trle/tom2pc.exe"
hanging=$(both)
"$ctl" --home "$box/home" wads import "$wads" >/dev/null 2>&1 </dev/null &
for ((i = 0; i < 300; ++i)); do
    [[ ! -s $trle/hangs ]] || break
    sleep 0.1
done
kill -9 "$!"
wait "$!" 2>/dev/null || true
rm -f "$trle/hangs"
[[ $(both) != "$hanging" ]] || die "nothing was under way"
expect 0 doctor
expect 0 --yes mend
[[ $(both) == "$hanging" ]] || die "the killed import left something"
mv "$box/tom2pc.kept" "$trle/tom2pc.exe"
[[ $(both) == "$before" ]] || die "not as it was"

# It is one of the changes that undo lists, and is done again without its package.
cp "$wads" once.zip
expect 0 wads import once.zip
rm once.zip
after=$(both)
expect 0 undo --list --json
json "j[0]['what'] == 'import of wads (once.zip)' and j[0]['here'] and not j[0]['undone']"
expect 0 undo
said "once.zip"
[[ $(both) == "$before" ]] || die "undo left something of the import"
expect 0 undo --redo
[[ $(both) == "$after" ]] || die "the import was not done again"
expect 0 wads undo
[[ $(both) == "$before" ]] || die "not as it was at the end"
