#!/usr/bin/env bash
# What the library notes of levels, from outside: marks, times of playing, removal and its undoing, a
# number that is used again, a move, a damaged file.
source "$(dirname "$0")/common.bash"
make_archive
notes=$box/levels/library.json
level() { expect 0 --json levels; json "[l for l in j if l['code'] == $1][0]$2"; }
# The game does what this file says.
printf '#!/bin/bash\nexec bash "%s"\n' "$box/run" >"$box/trle/tomb4.exe"

level 1 "['added'].endswith('Z')"
level 1 "['lastPlayed'] is None"
level 0 "['added'] is None"
expect 0 mark 1 2 --status finished --stars 4 --tag jungle --tag 'Dark ' --note $'lever\nbehind the idol'
said '0002  noon'
said 'Status: finished (before: new)'
expect 0 --json mark 1 --untag JUNGLE --stars 0
json "j[0]['before']['stars'] == 4 and j[0]['now']['tags'] == ['Dark']"
expect 0 mark 2 --stars 4
said 'nothing changed'
expect 0 --json info 2
json "j['status'] == 'finished' and j['tags'] == ['Dark', 'jungle'] and j['stars'] == 4"
json "j['ownNote'] == 'lever\nbehind the idol' and j['secondsPlayed'] == 0"
expect 0 info 2
said 'Status: finished'
said 'Tags: Dark, jungle'
said '  behind the idol'

before=$(cksum "$notes")
for wrong in '--status done' '--stars 6' '--stars -1' '--tag=' ''; do
    # shellcheck disable=SC2086
    expect 2 mark 1 $wrong
done
expect 2 mark one --stars 1
expect 1 mark 1 77 --stars 1
errs 77
expect 1 mark 1 --cover none.jpg
errs none.jpg
[[ $(cksum "$notes") == "$before" ]] || die "a refused mark wrote something"

# A level that is removed takes its notes along, and brings them back. Another one of its number, even
# of its name, begins without.
expect 0 --yes remove 3
expect 0 --yes undo
expect 0 mark 3 --stars 5
expect 0 --yes remove 3
expect 0 --yes undo
level 3 "['stars'] == 5"
expect 0 --yes remove 3
make_level "$box/from/night" night
expect 0 add --name dusk "$box/from/night"
level 3 "['stars'] == 0"
expect 0 edit 3 --name night
level 3 "['added'].endswith('Z')"

# Played: noted at the start; how long, by who sees it run; what was said stays.
echo "while [[ ! -e '$box/stop' ]]; do sleep 0.05; done; touch '$box/ended'" >"$box/run"
expect 0 play 3
level 3 "['status'] == 'playing'"
level 3 "['lastPlayed'].endswith('Z')"
grep -qF '"code": 3' "$box/home/swap/played" || die "the running game is not noted"
touch "$box/stop"
until [[ -e $box/ended ]]; do sleep 0.05; done
echo 'exec sleep 1.2' >"$box/run"
expect 0 --yes play 1 --wait
level 1 "['secondsPlayed'] >= 1"
level 1 "['status'] == 'finished'"
[[ ! -e $box/home/swap/played ]] || die "a game that ended is still noted"
level 3 "['secondsPlayed'] < 600"

# What the game writes over while its end is waited for is kept, the first version too.
kept=$box/home/history/level_0001.jsonl
cat >"$box/run" <<END
printf first >'$box/trle/savegame.3'
until [[ \$(grep -c 'savegame.3' '$kept' 2>/dev/null) == 1 ]]; do sleep 0.05; done
printf second >'$box/trle/savegame.3'
until [[ \$(grep -c 'savegame.3' '$kept') == 2 ]]; do sleep 0.05; done
END
expect 0 --yes play 1 --wait
expect 0 --json saves history 1
json "[one['size'] for one in j] in ([5, 6], [6, 5])"

# The notes go where the archive goes.
expect 0 original
expect 0 --yes move "$box/moved"
[[ ! -e $notes ]] || die "the notes stayed behind"
notes=$box/moved/library.json
level 1 "['tags'] == ['Dark']"

# A damaged file is told, and kept.
echo '{"levels":[{"code":1' >"$notes"
expect 0 doctor
said "$notes"
level 1 "['tags'] == []"
errs "$notes"
expect 0 mark 1 --stars 2
errs "$notes.1"
grep -qF '"code":1' "$notes.1" || die "the damaged file is not kept"
level 1 "['stars'] == 2"
