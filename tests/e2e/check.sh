#!/usr/bin/env bash
# Stored files are compared with what was noted of them, and brought back from what holds them.
source "$(dirname "$0")/common.bash"

make_archive # 1 dawn, 2 noon, 3 dusk
note=levels/LEVEL_0001/undo/stored.json
[[ -s $note ]] || die "storing noted nothing"
whole=$(tree levels/LEVEL_0001/files)
expect 0 verify 1
said "No difference."
expect 0 verify --all --json
json 'j["differences"] == [] and j["noted"] == [] and j["unchecked"] == [] and j["folder"] == []'

# Every kind of damage is named, and nothing is touched by that.
stored=$(basename "$(compgen -G 'levels/LEVEL_0001/files/dawn.tr4*')")
cp -r levels/LEVEL_0001/files kept
truncate -s 3 "levels/LEVEL_0001/files/$stored"
echo scribble >>"levels/LEVEL_0002/files/$(ls levels/LEVEL_0002/files | head -1)"
before=$(tree levels)
expect 1 verify 1 --json
json 'j["code"] == 1 and [at["file"] for at in j["differences"]] == ["dawn.tr4"]'
json 'j["differences"][0]["kind"] in ("cut", "damaged", "differs")'
expect 1 verify 1 2
[[ $(cut -f1 out | grep -c '^[12]$') == 2 ]] || die "both levels are named"
expect 0 verify 3
[[ $(tree levels) == "$before" ]] || die "a check changed something"

# Nothing here holds it; the download does, whatever its names are. What it replaces can come back.
expect 1 verify 1 --repair
said "Give the level's download"
[[ $(tree levels) == "$before" ]] || die "a repair without a source changed something"
mkdir -p hostile/deep
echo "another content" >hostile/dawn.tr4
cp from/dawn/dawn.tr4 "hostile/deep/Strange name.TR4"
(cd hostile && zip -qr "$box/download.zip" .)
expect 0 verify 1 --repair --from download.zip --json
json '[at["file"] for at in j["repaired"]] == ["dawn.tr4"] and j["differences"] == []'
[[ $(tree levels/LEVEL_0001/files) == "$whole" ]] || die "the level is not as it was stored"
expect 0 verify 1
expect 0 undo
expect 1 verify 1
expect 0 undo --redo
expect 0 verify 1

# The Level Editor's folder holds a level that stands there.
expect 0 play 1 --no-start
rm "levels/LEVEL_0001/files/$stored"
expect 0 verify 1 --repair
said "the Level Editor's folder"
[[ $(tree levels/LEVEL_0001/files) == "$whole" ]] || die "the standing level did not come back"

# An archive of an earlier version has no notes: the first check makes them.
rm "$note"
rm -rf copy && mkdir copy && mv levels/LEVEL_0001/files/* copy/
expect 1 verify 1 --repair --from download.zip
said "Nobody noted what it held"
mv copy/* levels/LEVEL_0001/files/
rm -f "$note"
expect 0 verify 1 --json
json 'j["noted"] == [1]'
expect 0 verify 1 --json
json 'j["noted"] == []'

# A file of the backup is damaged: it is told from an original that was changed, and comes back.
expect 0 original
first=$(cd home/backup_trle && find . -type f -iname 'english.dat' | head -1)
originals=$(tree home/backup_trle)
printf X | dd of="home/backup_trle/$first" conv=notrunc status=none
expect 1 verify
said "backup-damaged"
expect 1 verify --all --json
json '[(at["code"], at["kind"]) for at in j["differences"] if at["code"] == 0] == [(0, "differs")]'
json '"the Level Editor" in j["differences"][-1]["source"]'
expect 0 verify 0 --repair
[[ $(tree home/backup_trle) == "$originals" ]] || die "the backup is not as it was made"
expect 0 verify
expect 0 verify 0

# Words that say nothing.
expect 2 verify 1 --all
expect 2 verify --from download.zip
expect 1 verify 99
errs "99"
expect 1 verify 1 2 --repair --from no-such.zip
