# A level whose waves are kept as mp3 is played, and its waves are the game's again.
source "$(dirname "$0")/common.bash"

practice_at "$box/practice"
trle=$box/practice/trle
expect 0 setup --trle "$trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/my.kva"
expect 0 set mp3 on
level=$(find "$box/practice/levels" -iname '*.wav' -printf '%h\n' | sort | sed -n 1p)
[[ -n $level ]] || die "no practice level has waves"
waves=$(find "$level" -maxdepth 1 -iname '*.wav' | wc -l)
for compress in off on; do
    expect 0 set compress "$compress"
    expect 0 --yes --json add --name "Sounds $compress" "$level"
    code=$(python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))["code"])' "$box/out")
    files=$box/levels/$(printf 'LEVEL_%04d' "$code")/files
    [[ -z $(find "$files" -iname '*.wav*') ]] || die "a wave was kept"
    (($(find "$files" -iname '*.mp3*' | wc -l) == waves)) || die "mp3 files for $waves waves"
    expect 0 plan "$code"
    expect 0 play "$code" --no-start
    expect 0 verify
    said "No difference."
    played=()
    while IFS= read -r -d '' wave; do
        played+=("$trle/audio/$(basename "${wave%.*}").wav")
    done < <(find "$level" -maxdepth 1 -iname '*.wav' -print0)
    expect 0 --json audio info "${played[@]}"
    json "len(j) == $waves and all(s['form'] == 'ADPCM 44100Hz stereo 4 bits' for s in j)"
    expect 0 original
    expect 0 verify
done

# What cannot be converted stays as it is, and the others are converted; there and back.
cp -r "$level" "$box/lossy"
head -c 500 /dev/zero >"$box/lossy/no sound.wav"
head -c 5000 /dev/zero >"$box/lossy/199.mp3"
expect 1 add --name "Lossy" "$box/lossy"
errs "No level was added"
expect 0 --yes --json add --name "Lossy" "$box/lossy"
errs "I cannot convert file 'no sound.wav'"
errs "I cannot convert file '199.mp3'"

code=$(python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))["code"])' "$box/out")
files=$box/levels/$(printf 'LEVEL_%04d' "$code")/files
stored() { find "$files" -iname "*.$1*" | wc -l; }
(($(stored wav) == 1 && $(stored mp3) == waves + 1)) || die "stored: $(ls "$files")"
expect 0 set mp3 off
expect 0 --yes recompress
(($(stored wav) == waves + 1 && $(stored mp3) == 1)) || die "recompressed: $(ls "$files")"
expect 0 set mp3 on
expect 0 --yes recompress
(($(stored wav) == 1 && $(stored mp3) == waves + 1)) || die "recompressed back: $(ls "$files")"

# There and back; a file that is none stops all before anything is written.
first=$(find "$level" -maxdepth 1 -iname '*.wav' | sort | sed -n 1p)
name=$(basename "${first%.*}")
expect 0 audio encode "$first" --out "$box/out.mp3s" --bitrate 64
expect 0 audio decode "$box/out.mp3s/$name.mp3" --out "$box/waves"
expect 0 audio convert "$box/waves/$name.wav" --out "$box/mono" --format 22050m16
expect 0 --json audio info "$box/mono/$name.wav"
json "j[0]['rate'] == 22050 and j[0]['channels'] == 1"
head -c 5000 /dev/zero >"$box/zeros.mp3"
expect 1 audio decode "$box/out.mp3s/$name.mp3" "$box/zeros.mp3" --out "$box/none"
errs "I cannot convert file 'zeros.mp3'"
[[ ! -e $box/none ]] || die "something was written"
expect 2 audio encode "$first"
expect 2 audio convert "$first" --out "$box/x" --format 44100s5
expect 2 audio encode "$first" --out "$box/x" --bitrate 33
# A wish that only mp3 knows is not dropped in silence, and a refusal says why and leaves nothing.
expect 2 audio convert "$first" --out "$box/x" --format 44100s16 --mono
expect 1 audio encode "$box/nothing.wav" --out "$box/refused"
errs "is not there: $box/nothing.wav"
expect 1 audio convert "$box/mono/$name.wav" --out "$box/refused" --format 44100s4
errs "Convert it to 44100 stereo 16 bits first"
[[ ! -e $box/refused ]]
expect 1 audio decode "$first" --out "$box/x"
