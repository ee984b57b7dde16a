#!/usr/bin/env bash
# A folder of downloads becomes as many levels: what is added, skipped and refused, and a stop.
source "$(dirname "$0")/common.bash"

make_archive # levels 1 to 3
mkdir -p down/nothing
for level in dawn dusk mist; do
    make_level "from/$level" "$level"
    (cd "from/$level" && zip -qr "$box/down/$level.zip" .)
done
make_level "down/Folder of rain" rain
cp down/mist.zip "down/mist again.zip"
(cd from/mist && zip -qr -P secret "$box/down/locked.zip" mist.tr4)
head -c 90 down/mist.zip >down/cut.zip
echo "no level" >down/nothing/letter.txt
ln -s "$box/down/mist.zip" link.zip
before=$(tree down)

# The archive's own levels are known by their files; link.zip is mist.zip once more.
expect 1 add --each down link.zip --json
json '[at["name"] for at in j["added"]] == ["Folder of rain", "mist again"]'
json 'sorted((at["source"].split("/")[-1], at.get("code")) for at in j["skipped"]) == [
    ("dawn.zip", 1), ("dusk.zip", 3), ("link.zip", None), ("mist.zip", 5)]'
json 'sorted(at["source"].split("/")[-1] for at in j["refused"]) == ["cut.zip", "locked.zip"]'
json 'all(at["why"] for at in j["refused"]) and j["untried"] == [] and j["needs"] == []'
errs "2 added, 4 skipped, 0 needing you, 2 refused"
errs "1 of 8: cut.zip: Refused: "
[[ $(tree down) == "$before" ]] || die "a source was changed"
[[ $(cd levels && echo LEVEL_*) == "LEVEL_0001 LEVEL_0002 LEVEL_0003 LEVEL_0004 LEVEL_0005" ]] ||
    die "the folders are $(ls levels)"
expect 0 verify 4
expect 0 verify 5

# Once more: all that could come in is there. Without the rest it is done.
rm down/cut.zip down/locked.zip
expect 0 add --each down
[[ $(cut -f1 "$box/out" | sort | uniq -c | xargs) == "5 skipped" ]] || die "not all were skipped"
expect 2 add --each down --name "All of them"
errs "--each"
expect 1 add --each "$box/down/nothing"
said $'refused\t\t\t'

# Ctrl-C takes back the one under way; what came before it stays, and the rest comes in later.
mkdir big
for number in 1 2 3; do
    mkdir "big/level$number"
    echo "tr4 of $number" >"big/level$number/big$number.tr4"
    noise 60000000 >"big/level$number/part.bin"
done
"$ctl" --home "$box/home" add --each big >"$box/out" 2>"$box/err" </dev/null &
pid=$!
for ((i = 0; i < 3000; ++i)); do
    ! compgen -G "levels/LEVEL_0007/files/*" >/dev/null || break
    sleep 0.01
done
kill -INT "$pid"
got=0
wait "$pid" || got=$?
if [[ $got == 1 ]]; then
    errs "Stopped."
    said "untried"
    expect 0 add --each big
fi
expect 0 levels
[[ $(wc -l <"$box/out") == 9 && ! -e levels/LEVEL_0009 ]] || die "not each of the three is in once"
for level in 6 7 8; do expect 0 verify "$level"; done
