#!/usr/bin/env bash
# The practice packages: levels that come as sources, and compilers that misbehave.
. "$(dirname "$0")/common.bash"

practice_at "$box/practice"
trle=$box/practice/trle
packages=$box/practice/packages
expect 0 setup --trle "$trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/archive.kva"
before=$(tree "$trle")

# From sources to a level that stands in the folder, and back.
expect 0 --yes add "$packages/The Salt Mine.zip"
expect 0 --yes add "$packages/Two Wells.zip" --analyse "installation notes.txt"
[[ $(tree "$trle") == "$before" ]] || die "the lent folder did not come back"
expect 0 --yes wads import "$packages/lagoon_wads.zip"
expect 0 --no add "$packages/Seven Doors.zip"
for door in door_a door_b door_c; do
    [[ -n $(find levels/LEVEL_0003 -iname "$door.tr4*") ]] || die "$door was not compiled"
done
lagoon=$(find "$trle" -iname lagoon.wad)
door=$(find levels/LEVEL_0003 -iname "door_c.tr4")
grep -aqi "^door_c.wad $(stat -c %s "$lagoon") " "$door" || die "the third door has other wads"
expect 0 --yes wads undo
[[ $(tree "$trle") == "$before" ]] || die "the import was not undone"
sources=$(find levels -iname '*.tom*' -o -iname '*.wad*' -o -iname '*.sam*' -o -iname 'drip.*')
[[ -z $sources ]] || die "sources stayed with the levels: $sources"
expect 0 --yes add --name Saltgate "$packages/Saltgate setup, FlyDrive" --installer trle
[[ -n $(find levels/LEVEL_0004 -iname '*.tr4*') ]] ||
    die "the setup program brought no level"
expect 0 play 2 --no-start
for wells in well_one:practice.wad well_two:temple.wad; do
    level=$(find "$trle" -iname "${wells%:*}.tr4")
    wads=$(find "$trle" -iname "${wells#*:}")
    grep -aqi "^${wells%:*}.wad $(stat -c %s "$wads") " "$level" || die "$level has other wads"
done
expect 0 play 1 --no-start
level=$(find "$trle" -iname 'saltmine.tr4')
for file in saltmine.wad saltmine.sam drip.wav steps_stone.wav; do
    grep -aqi "^$file " "$level" || die "the mine was compiled without $file"
done
expect 0 verify
expect 0 original
[[ $(tree "$trle") == "$before" ]] || die "the original configuration is another one"

# One file of one's own, by compilers that do not do it, or do it in their own way.
mkdir own
for file in "$packages/The Salt Mine"/*; do
    name=$(basename "${file,,}")
    [[ $name != saltmine.* && $name != *.wav ]] || cp "$file" "own/$name"
done
for act in nothing empty crash half "exit 1"; do
    printf 'KVTOM\nact=%s\n' "$act" >own/saltmine.tom
    expect 1 editor compile own/saltmine.tom
    [[ ! -e own/saltmine.tr4 ]] || die "a result of a compiler with act=$act"
    [[ $(tree "$trle") == "$before" ]] || die "act=$act: the folder did not come back"
done
for act in "print 2000000" later; do
    printf 'KVTOM\nact=%s\n' "$act" >own/saltmine.tom
    expect 0 editor compile own/saltmine.tom
    [[ -s own/saltmine.tr4 ]] || die "no result with act=$act"
    rm own/saltmine.tr4
    [[ $(tree "$trle") == "$before" ]] || die "act=$act: the folder did not come back"
done
for gone in own/saltmine.wad own/drip.wav; do
    printf 'KVTOM\n' >own/saltmine.tom
    mv "$gone" aside
    expect 1 editor compile own/saltmine.tom
    mv aside "$gone"
    [[ ! -e own/saltmine.tr4 && $(tree "$trle") == "$before" ]] || die "compiled without $gone"
done
