#!/usr/bin/env bash
# The list of web addresses in its window, and a configuration file that it has for a level that is
# dropped onto the main window.
source "$(dirname "$0")/windows.bash"
source "$(dirname "$0")/server.bash"

ctl() { "$KESTROVACTL" --home "$box/home" --yes "$@" >"$box/out"; }
mkdir -p "$box/served" "$box/made" "$box/valley"
open_server "$box/served"
trap 'kill $server 2>/dev/null || :; finish' EXIT
practice_at "$box/practice"
ctl setup --trle "$box/practice/trle" --full --folder-is-original
ctl new --folder "$box/archive" "$box/home/my.kva"
ctl set update-servers "$site/urllist.bin"

# What a community keeps: a list with an entry for a level whose package has no configuration file.
head -c 12345 /dev/urandom >"$box/valley/valley.tr4"
echo script >"$box/valley/script.dat"
(cd "$box" && zip -q valley.zip valley/*)
ctl config write "$box/made" "name=The lost valley" "author=Ada"
(cd "$box/made" && zip -q "$box/served/Config_valley.zip" kestrova.cfg)
cat >"$box/made/list.json" <<JSON
[{"kind": 1, "url": "$site/levels.html", "description": "All levels - Reviews"},
 {"kind": 8, "url": "$site/Config_valley.zip", "level": "The lost valley", "folder": "$box/valley",
  "files": ["valley.tr4", "script.dat"]}]
JSON
ctl urls make "$box/made/list.json" "$box/served/urllist.bin"

open_display 1200x840
start_windows
appears 'my.kva .1 levels'

# Who gives up the first level is shown where there are some.
press alt+l a
appears 'Add new level'
press Escape
appears '^Kestrova$'
press alt+y
appears 'Where download new custom levels'
press Escape
gone 'Where download new custom levels'
gone 'Add new level'
appears 'my.kva .1 levels'

# An update changes the file when the window is left by Ok.
press alt+l s
appears 'Where download new custom levels'
press F5
rests
[[ ! -e $box/home/UrlList.bin ]]
press alt+k
gone 'Where download new custom levels'
holds "$box/home/UrlList.bin" 'The lost valley'
[[ $(ctl urls list --kind 1 && cut -f3 "$box/out") == "All levels - reviews" ]]

# An address of one's own, of another kind.
appears 'my.kva .1 levels'
press alt+t s
appears 'Forums and informations'
press Insert
appears 'Insert new site'
enter 'My forum'
appears 'Insert new site' other
enter 'https://forum.example/'
gone 'Insert new site'
appears 'Forums and informations'
press alt+k
gone 'Forums and informations'
holds "$box/home/UrlList.bin" 'https://forum.example/'

# The question comes with the level, and its Yes fetches and applies the file.
appears 'my.kva .1 levels'
drag 'my.kva' "$box/valley.zip"
appears '^Kestrova$'
press alt+y
gone '^Kestrova$'
accepted
holds "$box/home/my.kva" 'The lost valley'
ctl author 1
grep -q Ada "$box/out"
[[ -f $box/archive/LEVEL_0001/files/script.dat && ! -e $box/archive/LEVEL_0001/files/kestrova.cfg ]]

# A month later an update is offered before the next level; Cancel of the list loses it.
python3 - "$box/home/UrlList.bin" <<'END'
import struct, sys
with open(sys.argv[1], "r+b") as out:
    days = struct.unpack("<id", out.read(12))[1]
    out.seek(4)
    out.write(struct.pack("<d", days - 31))
END
before=$(cksum <"$box/home/UrlList.bin")
for answer in Escape alt+k; do
    appears 'my.kva .2 levels'
    press alt+l a
    appears '^Kestrova$'
    press alt+y
    gone '^Kestrova$'
    appears 'Where download new custom levels'
    rests
    press "$answer"
    if [[ $answer == Escape ]]; then
        appears '^Kestrova$' # lose the changes?
        press alt+y
    fi
    gone 'Where download new custom levels'
    appears 'Add new level'
    [[ $(cksum <"$box/home/UrlList.bin") == "$before" || $answer == alt+k ]]
    press Escape
    gone 'Add new level'
done
[[ $(cksum <"$box/home/UrlList.bin") != "$before" ]]
appears 'my.kva .2 levels'
press alt+l a
appears 'Add new level'
press Escape
gone 'Add new level'
