#!/usr/bin/env bash
# fuzz/make_seeds.sh KESTROVACTL: makes the first inputs of the fuzz programs, fuzz/corpus/NAME,
# anew from practice data: an archive, a swap, and what they leave in the folders.
set -euo pipefail

program=$(readlink -f "${1:?usage: fuzz/make_seeds.sh KESTROVACTL}")
corpus=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/corpus
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

ctl() { "$program" --home home --yes "$@" >/dev/null; }

# seed TARGET NAME FILE [BYTES]: the file, or its beginning, as a first input.
seed() {
    mkdir -p "$corpus/$1"
    head -c "${4:-65536}" "$3" >"$corpus/$1/$2"
}

ctl practice practice
ctl setup --trle practice/trle --full --folder-is-original
ctl new --folder levels practice.kva
seed archive_file fresh practice.kva
ctl set compress on
for folder in practice/levels/*/; do
    ctl add --name "$(basename "$folder")" --note "Practice, $(ls "$folder" | wc -l) files" "$folder"
done
# Of a level this small the streams are whole.
mkdir small
head -c 6000 "$(find practice/levels -iname '*.tr4' | sort | head -n 1)" >small/small.tr4
head -c 3000 "$(find practice/levels -iname '*.wav' | sort | head -n 1)" >small/100.wav
: >small/empty.tr4
ctl add --name Small small

# The journal lives as long as a swap does.
ctl play 2 --no-start
ctl play 3 --no-start &
until cp home/swap/journal journal 2>/dev/null && [[ -s journal ]]; do
    kill -0 $! 2>/dev/null || { echo "the swap was over before its journal was seen" >&2; exit 1; }
done
wait $!

seed archive_file six practice.kva
seed preferences set-up home/Kestrova.prf
seed settings written home/kestrova.ini
seed marker "level" practice/trle/Kestrva.txt
printf '#LEVEL_CODE=7#\r\n#OVERWROTEN_FILES=\\..\\x|C:\\y#\r\n#COPIED_FILES=/etc/z||\\data\\..\\q#' \
    >"$work/hostile"
seed marker hostile hostile
seed swap_owner level home/swap/owner
seed swap_journal level journal

seeded=0
while IFS= read -r -d '' index; do
    seed tr4_inf "level-$((++seeded))" "$index"
done < <(find levels home -name 'tr4.inf' -print0 | sort -z)
for stream in $(find levels -path "*0006*" -name '*.zl' | sort); do
    seed zl_file "$(basename "$stream")" "$stream"
done
seed zl_file cut "$(find levels -name '*.zl' -size +8k | sort | head -n 1)" 4096

# The stand-in game's savegame, and a store's two records in their fields' widths.
printf 'The Drowned Observatory\0%51s\x2a\x00 and what the game keeps' '' >savegame.0
seed savegame_info slot savegame.0
field() { printf "%-$1s" "$2"; }
{
    field 256 savegame; field 256 'C:\archive'; field 256 'C:\trle'; field 256 tomb4.exe
    printf '\x0f\x00\x03\x00\x00\x00'
} >savegames.bva
seed savegame_records bva savegames.bva
{
    field 256 'C:\archive'; printf '\x00\x00'; field 256 'C:\shots'
    printf '\xff\xff\xff\xff\x00\x00\xff\xff\x00\x00'
} >manager.prf
seed savegame_records prf manager.prf

# A level's configuration in both shapes: older files end behind the list of files.
{
    field 256 'The Drowned Observatory'; field 256 'Practice'; field 80 'Kestrova'; field 256 ''
    printf 'a@example.org\0b@example.org%229s' ''; field 256 'http://example.org'
    printf 'TR4\x00001.wav\x00107.wav\x00alt.wav%4069s' ''
    printf 'city.was\0http://example.org/city.zip%2012s' ''; field 512 ''
    printf 'base.*\0other.was%584s' ''; field 80 readme.txt; field 10 ZIP
    printf '\x02\x00\x00\x00\x0a\x00level1.tr4\x05\x00\x00\x00\x08\x00load.bmp\x36\x00\x0c\x00'
} >older.cfg
{ cat older.cfg; printf '\x0e\x00one.tom\0city.*'; } >kestrova.cfg
seed level_config older older.cfg
seed level_config whole kestrova.cfg

find "$corpus" -type f -printf '%6s %P\n' | sort -k2
