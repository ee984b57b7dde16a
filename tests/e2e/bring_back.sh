# An archive on images of discs comes back to the hard disk; a damaged disc is refused; a list that was
# lost is made anew with them.
source "$(dirname "$0")/common.bash"

make_archive
for code in 1 2 3; do
    head -c 3000000 /dev/urandom >"$box/levels/LEVEL_000$code/files/big.bin"
done
expect 0 sizes
mkdir "$box/images"
expect 0 discs create --images "$box/images" --capacity 10 --remove
rm -rf "$box"/levels/LEVEL_000*/files # whether or not that was done by now
expect 0 levels --json
json "sorted(l['cd'] for l in j) == [0, 1, 2, 3]"
mapfile -t images < <(find "$box/images" -name '*.iso' | sort)
[[ ${#images[@]} == 3 ]] || die "images: ${images[*]}"
cp "${images[1]}" "$box/second.iso"

# Some bytes in the middle of the second image are others.
printf 'damaged' | dd of="${images[1]}" bs=1 seek=2000000 conv=notrunc status=none
expect 1 discs bring-back
errs "does not hold the level \"noon\" as it was put there"
errs "Levels on the hard disk now: 2; still on discs: 1"
expect 0 levels --json
json "[l['cd'] for l in j] == [0, 0, 2, 0]"
[[ ! -e $box/levels/LEVEL_0002/files/big.bin ]] || die "what the disc did not hold is there"
expect 0 play 1 --no-start
expect 0 original

# The list is lost while a level lies on a disc: the note beside the levels knows it, and so does the disc.
cp "$box/second.iso" "${images[1]}"
rm "$box/my.kva"
expect 0 recover "$box/levels"
expect 0 levels --json
json "[l['cd'] for l in j] == [0, 0, 2, 0]"
mv "$box/levels/discs.json" "$box/discs.json"
expect 0 recover "$box/levels" --discs "${images[1]}"
expect 0 levels --json
json "[l['cd'] for l in j] == [0, 0, 2, 0]"
mv "$box/discs.json" "$box/levels/discs.json"

expect 0 discs bring-back
said "Levels that came back from their discs: 1"

# It moves on, and is played.
expect 0 --yes move "$box/home again"
expect 0 levels --json
json "[l['cd'] for l in j] == [0, 0, 0, 0]"
[[ $(stat -c %s "$box/home again/LEVEL_0002/files/big.bin") == 3000000 ]] || die "the second level"
[[ -w $box/home\ again/LEVEL_0002/files/big.bin && ! -e $box/levels/LEVEL_0002 ]] || die "where it lies"
expect 0 play 2 --no-start
[[ $(<"$box/trle/Data/noon.tr4") == "level noon" ]] || die "played"
