#!/usr/bin/env bash
# Levels are played from images of discs: asked for in words, named, found beside one another, in
# all that reads a level's files; an archive is installed from its images, compact and full.
. "$(dirname "$0")/common.bash"

make_archive
cp my.kva before.kva

# image NUMBER CODE…: an image of that disc with the files of those levels.
image() {
    local number=$1 code map=()
    shift
    for code; do
        map+=("/levels$number/LEVEL_000$code/files=$box/levels/LEVEL_000$code/files")
    done
    [[ $number != 1 ]] || map+=("/cd_install.cfg=$box/cd_install.cfg" "/Cd_Archive.kva=$box/disc.kva")
    xorriso -as mkisofs -quiet -V "Kestrova #$number" -R -J -joliet-long -graft-points \
        -o "$box/isos/set $number.iso" "${map[@]}" 2>/dev/null
}

# numbered FILE CODE=NUMBER…: an archive's records say on which disc their files lie.
numbered() {
    python3 - "$@" <<'PYTHON'
import struct, sys
name, *pairs = sys.argv[1:]
data = bytearray(open(name, "rb").read())
count = struct.unpack_from("<i", data, 516)[0]
wanted = dict(map(int, pair.split("=")) for pair in pairs)
for at in range(count):
    record = 546 + 1634 * at
    code = struct.unpack_from("<i", data, record + 1360)[0]
    struct.pack_into("<i", data, record + 1364, wanted.get(code, 0))
struct.pack_into("<i", data, 520, max(wanted.values()))
data[4:260] = b"D:\\levels".ljust(256)
open(name, "wb").write(data)
PYTHON
}

mkdir isos
cp my.kva disc.kva
numbered disc.kva 1=1 2=1 3=2
printf '#ARCHIVE_PATH# \r\n\\Cd_Archive.kva\r\n' >cd_install.cfg
image 1 1 2
image 2 3
numbered my.kva 1=1 2=1 3=2
for code in 1 2 3; do mv "levels/LEVEL_000$code/files" "kept$code"; done
before=$(tree trle)

# Without the disc: its number and label, and what to do; nothing changes.
expect 1 play 3 --no-start
errs "Please, insert CD # 2"
errs 'label "Kestrova #2"'
errs "kestrovactl discs image FILE"
[[ $(tree trle) == "$before" ]] || die "a refused swap changed the folder"

# An image of nothing, then that of disc 1; disc 2 lies beside it.
head -c 100000 /dev/urandom >noise.iso
expect 1 discs image noise.iso
expect 0 discs image "isos/set 1.iso"
for level in 1:dawn 2:noon 3:dusk; do
    expect 0 play "${level%:*}" --no-start
    [[ $(find trle -iname "${level#*:}.tr4" -exec cat {} +) == "level ${level#*:}" ]] ||
        die "the files of ${level#*:} are not there"
    [[ -n $(find trle -iname "${level#*:}.tr4" -perm -u+w) ]] || die "a read-only file came"
    expect 0 verify
done
expect 0 info 3 --json
json 'j["cd"] == 2'
expect 0 levels --json
json '[level["cd"] for level in j if level["code"]] == [1, 1, 2]'
expect 0 plan 1
expect 0 doctor
expect 0 equal
rm -f levels/LEVEL_0003/tr4.inf
expect 0 index
[[ -s levels/LEVEL_0003/tr4.inf ]] || die "no index was made from the disc"
expect 0 export 2 "$box/noon.zip"
[[ $(unzip -l noon.zip) == *noon.tr4* ]] || die "the exported level lacks its file"
# What would change the disc is refused.
expect 1 --yes remove 2
errs "Current level is also on cd."
expect 1 language set 2
errs "Current level is also on cd."
expect 0 recompress --yes
[[ ! -e levels/LEVEL_0002/files ]] || die "recompressing made files of a level on a disc"

# Another image under that name: a file of the level has another size.
expect 0 --yes original
echo "more than that" >>kept3/dusk.tr4
cp "isos/set 2.iso" good.iso
mv kept3 levels/LEVEL_0003/files
image 2 3
mv levels/LEVEL_0003/files kept3
expect 0 play 3 --no-start # nothing was noted of its files: any will do
expect 0 --yes original

# Back to the images as they were; the archive is installed from them.
mv good.iso "isos/set 2.iso"
mkdir target
echo mine >target/mine
expect 1 discs install "isos/set 2.iso" target
errs "no archive's file"
expect 0 discs install "isos/set 1.iso" target --json
json 'j["levels"] == 4 and j["archive"].endswith("/target/levels/Cd_Archive.kva")'
[[ ! -e target/levels/LEVEL_0001/files ]] || die "compact brought the files"
expect 1 discs install "isos/set 1.iso" target --full
errs "holds something already"
expect 0 play 3 --no-start # the images are known by the new archive
[[ $(find trle -iname dusk.tr4 -exec cat {} +) == "level dusk" ]] || die "dusk is not installed"
expect 0 --yes original
mkdir full
expect 0 discs install "isos/set 1.iso" full --full
rm -r isos
for level in 1:dawn 2:noon 3:dusk; do
    expect 0 play "${level%:*}" --no-start
    file=full/levels/LEVEL_000${level%:*}/files/${level#*:}.tr4
    [[ $(cat "$file") == "level ${level#*:}" && -w $file ]] || die "$file is not as it was"
done
[[ $(cat target/mine) == mine ]] || die "what stood in the folder was touched"
expect 0 --yes original
[[ -z $(find "$box/home" -name levels1) ]] || die "an attached disc was left"
