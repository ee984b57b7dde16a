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

# Two files, one of them in a folder; one of them stored, one deflated.
mkdir -p zipped/data
echo short >zipped/a.txt
head -c 2000 /dev/zero >zipped/data/zeros.tr4
(cd zipped && zip -qr ../small.zip . && zip -qrX ../plain.zip a.txt)
seed small_zip two small.zip
seed small_zip one plain.zip

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

# Pictures of every kind that is read: pixels in 1, 4, 8, 16, 24 and 32 bits, packed and not, and
# jpegs in colours, in grey and for print.
python3 - <<'PICTURES'
import struct
def bitmap(name, bits, width, height, pixels, packing=0, palette=b"", masks=b""):
    offset = 54 + len(masks) + len(palette)
    head = struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, packing, len(pixels), 0, 0,
                       len(palette) // 4, 0)
    with open(name, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", offset + len(pixels), 0, 0, offset) + head + masks +
                   palette + pixels)
grey = bytes(v for i in range(16) for v in (i * 17, i * 17, i * 17, 0))
bitmap("1.bmp", 1, 9, 3, b"\xAA\x80\0\0" * 3, palette=grey[:8])
bitmap("4.bmp", 4, 5, 3, b"\x12\x34\x50\0" * 3, palette=grey)
bitmap("8.bmp", 8, 3, -3, b"\1\2\3\0" * 3, palette=grey)
bitmap("8packed.bmp", 8, 4, 2, b"\x04\x03\0\0\0\x04\1\2\3\4\0\1", 1, grey)
bitmap("4packed.bmp", 4, 4, 2, b"\x04\x12\0\0\0\x04\x12\x34\0\1", 2, grey)
bitmap("16.bmp", 16, 2, 2, b"\x1F\x7C\xE0\x03" * 2)
bitmap("24.bmp", 24, 3, 2, bytes(range(9)) + b"\0\0\0" + bytes(range(9)) + b"\0\0\0")
bitmap("32.bmp", 32, 2, 1, b"\1\2\3\0\4\5\6\0", 3, masks=struct.pack("<III", 255, 65280, 16711680))
bitmap("huge.bmp", 24, 100000, 100000, b"")
PICTURES
for name in *.bmp; do seed picture "$name" "$name"; done
for form in "-colorspace sRGB" "-colorspace Gray" "-colorspace CMYK" "-interlace JPEG"; do
    # shellcheck disable=SC2086
    convert -size 24x16 gradient:red-blue $form "picture${form##* }.jpg"
    seed picture "${form##* }.jpg" "picture${form##* }.jpg"
done
# Sounds: the game's form, the plain one, chunks about it, frames of mp3.
wave=$(find practice/levels -iname '*.wav' | sort | head -n 1)
seed wave_file adpcm "$wave" 3000
"$program" audio convert "$wave" --out plain --format 44100s16 >/dev/null
plain=plain/$(basename "$wave")
seed wave_file plain "$plain" 400
{
    printf 'RIFF\x80\x00\x00\x00WAVELIST\x05\x00\x00\x00INFOx\x00'
    tail -c +13 "$plain" | head -c 100
} >chunks.wav
seed wave_file chunks chunks.wav
lame --quiet -b 32 "$plain" frames.mp3
seed mpeg_frames frames frames.mp3 2000
lame --quiet --freeformat -b 80 "$plain" free.mp3
seed mpeg_frames free free.mp3 2000
{ printf 'ID3\x04\x00\x00\x00\x00\x00\x14%20s' ''; head -c 1000 frames.mp3; } >tagged.mp3
seed mpeg_frames tagged tagged.mp3

# Web addresses, the texts beside them, and the help.
python3 - <<'ONLINE'
import struct
def text(t): return struct.pack("<h", len(t)) + t
def record(url, description, kind, user=0):
    return text(url) + text(description) + struct.pack("<ih", kind, user)
records = [record(b"http://a.example/", b"Site - Levels with Reviews", 1),
           record(b"http://b.example/", b"Gr\xf6\xdfe", 4, -1), record(b"*", b"A notice", 7),
           record(b"http://c.example/", b"104: new", 6), record(b"http://d.example/", b"***", 2),
           record(b"http://e.example/c.zip", b"Level - data\\a.tr4;12;script.dat;4", 8)]
def write(name, content):
    with open(name, "wb") as file:
        file.write(content)
write("whole", struct.pack("<id", len(records), 45123.25) + b"".join(records))
write("counts", struct.pack("<id", 2**31 - 1, float("nan")) + records[0])
write("json", b'{"updated":1.5,"records":[{"kind":8,"url":"u","level":"l","files":["a"]},'
              b'{"kind":1,"url":"u","description":"d","user":true}]}')
write("entry", b"Name of level - data\\level.tr4;1234567;script.dat;4096")
write("hostile", b"A - ..\\a;1;C:\\b;2;\\\\c;3;;;d")
write("phrases", b"Site - Sorted by enter date and rating, Search whereby keywords - Reviews")
write("address", b"https://levels.example/a\\b/c.zip?" + b"x" * 80)
write("script", b"; list\r\n[Options]\r\n[Level]\r\nName=  Tomb of X\r\nLevel= DATA\\city,101\r\n"
                b"[LEVEL]\nlevel=DATA\\x\nname=\tY\n")
write("strings", b"\xEF\xBB\xBF; by\r\n[Strings]\r\n; no string\r\nTomb\r\n\r\n[PSXStrings]\r\n;kept\r\n")
write("help", b"\0\x20#1# [Play a level] {Keys} (see \"Keys\") {KEYS} #2# [open {and not")
write("topics", b"keys\n[Play a level] #20#\nsee {Keys}\n{Keys} of the game\n- F9\n[Open\n\xe9t\xe9")
ONLINE
for name in whole counts json; do seed url_list "$name" "$name"; done
for name in entry hostile; do seed config_entry "$name" "$name"; done
for name in phrases address; do seed site_text "$name" "$name"; done
seed script_text script script
seed language_text strings strings
printf 'city|mill.v2\nangkor|City\n%s' '<p>Use <b>angkor</b>.wad for city.tom&#46; MILL.V2.TOM: city.wad, angkor.wad' >readme
seed link_analysis readme readme
printf 'toy=a%%7Cdisc.iso|seen here|650|writes' >drive
printf 'copy\0/seen\0\0/a disc.iso\0005\0006\0007\0008\0ff\0' >note
for name in drive note; do seed drive_setting "$name" "$name"; done
seed help_index help help
seed help_word help help
seed help_topics topics topics

find "$corpus" -type f -printf '%6s %P\n' | sort -k2
