#!/usr/bin/env bash
# An archive goes onto discs and is played from them, comes back, moves, and is recovered.
. "$(dirname "$0")/common.bash"

# What the levels of an archive's folder hold, without what waits there to be undone.
files_of() {
    (cd "$1" && find . -path './LEVEL_*/files/*' -type f -print0 | sort -z |
        xargs -0 -r cksum | cksum)
}

make_archive
for level in dawn noon dusk; do
    head -c 2200000 /dev/urandom >"from/$level/big.wav"
    echo "$level" >"from/$level/$(printf 'n%.0s' {1..100}) Ωмир 日本語 żółw.txt"
    expect 0 --yes add --name "big $level" "from/$level"
done
before=$(files_of levels)
original=$(tree trle)
echo "my run" >levels/LEVEL_0004/backup_savegames/savegame.0

for words in "discs" "discs burn" "discs create --images a --drive b" "discs plan --capacity x" \
    "discs blank" "discs list" "discs insert a" "discs verify --remove" "discs list a --full" \
    "discs plan --images a" "discs create --images a --all"; do
    # shellcheck disable=SC2086
    expect 2 $words
done

# A file system without room for discs or for the archive: told, and nothing changes.
mkdir small
if mount -t tmpfs -o size=6m none small 2>/dev/null; then
    trap 'umount "$box/small"; rm -rf "$box"' EXIT
    : >small/disc.iso
    expect 0 set drives "small=small/disc.iso|small seen|11|writes"
    expect 1 --yes discs create --drive small --keep
    errs "Burning CD failed"
    expect 1 --yes discs create --images "$box/small/isos" --capacity 11 --keep
    errs "are free in"
    expect 1 move "$box/small/archive"
    errs "free space is not sufficient"
    [[ $(files_of levels) == "$before" && ! -e small/archive ]] || die "a full disk changed something"
    expect 0 set drives small=
    umount small
    trap 'rm -rf "$box"' EXIT
    rm -f levels/discs.json
fi

# Three discs of which each takes one big level, as images.
expect 0 discs plan --capacity 11 --json
json "[len(disc['levels']) for disc in j['discs']] == [4, 2] and not j['leftOut']"
expect 1 discs create --images "$box/isos" --capacity 11
[[ $(files_of levels) == "$before" ]] || die "files left the hard disk without a Yes"
rm -r isos
expect 0 --yes discs create --images "$box/isos" --capacity 11 --keep
expect 0 levels --json
json "all(level['cd'] == 0 for level in j)"
rm -r isos
expect 0 --yes discs create --images "$box/isos" --capacity 11 --remove
expect 0 levels --json
json "[level['cd'] for level in j] == [0, 1, 1, 1, 1, 2, 2]"
[[ -z $(find levels -path '*/files/*') ]] || die "files stay on the hard disk"
expect 0 discs verify --all
expect 0 discs list "$(find isos -name '*.iso' | sort | head -1)"
said "big.wav"

# Each level plays from its disc, with what is its own on the hard disk.
for code in 1 4 6; do
    expect 0 play "$code" --no-start
    expect 0 verify
done
expect 0 play 4 --no-start
[[ $(<trle/savegame.0) == "my run" ]] || die "the savegame stayed behind"
[[ -w trle/big.wav || -n $(find trle -iname big.wav -writable) ]] || die "read-only as on the disc"
expect 0 export 4 "$box/out.zip"
expect 1 --yes remove 4
errs "cd"
expect 0 original
[[ $(tree trle) == "$original" ]] || die "the original configuration is another one"

# A disc that is damaged, and one that is gone.
expect 0 verify --all
second=$(find isos -name '*.iso' | sort | tail -1)
cp "$second" kept.iso
python3 - "$second" from/dusk/big.wav <<'DAMAGE'
import sys
with open(sys.argv[1], 'r+b') as disc:
    at = disc.read().find(open(sys.argv[2], 'rb').read(64)) + 70000
    disc.seek(at)
    disc.write(b'scratch')
DAMAGE
expect 1 discs verify --all
said "big dusk is not on Kestrova #2 as it was written there: big.wav"
expect 1 verify 6
errs "big.wav"
expect 1 verify --all
said "unchecked"
expect 1 play 6 --no-start
[[ $(tree trle) == "$original" ]] || die "a damaged disc changed the folder"
# Elsewhere too: the first disc tells what each file of the set was.
mkdir fresh
first=$(find isos -name '*.iso' | sort | head -1)
expect 1 --no discs install "$first" fresh --full
errs "Error copying file in subfolder"
[[ ! -e fresh/levels ]] || die "an install that failed left something"
expect 0 discs install "$first" fresh
expect 1 play 6 --no-start
errs "not those that were put on it"
expect 0 play 1 --no-start
expect 0 original
expect 0 load "$box/my.kva"
rm "$second"
expect 0 verify --all
said "unchecked"
expect 1 play 6 --no-start
errs "Kestrova #2"
expect 0 discs image "$box/kept.iso"
expect 0 play 6 --no-start
expect 0 original

# Everything comes back, moves, loses its list, and is recovered.
expect 0 discs bring-back
expect 0 levels --json
json "all(level['cd'] == 0 for level in j)"
[[ $(files_of levels) == "$before" ]] || die "not all came back as it was"
expect 0 move "$box/elsewhere"
[[ $(files_of elsewhere) == "$before" && ! -e levels/LEVEL_0001 ]] || die "the move"
[[ $(<elsewhere/LEVEL_0004/backup_savegames/savegame.0) == "my run" ]] || die "the savegame stayed behind"
rm my.kva
expect 0 --yes recover "$box/elsewhere" --json
json "j['levels'] == 7"
expect 0 play 6 --no-start
expect 0 original
[[ $(tree trle) == "$original" ]] || die "the original configuration is another one at the end"
