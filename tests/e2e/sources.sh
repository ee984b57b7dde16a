#!/usr/bin/env bash
# What the Level Editor's sources say, and levels that come as sources.
. "$(dirname "$0")/common.bash"

for words in "script" "script show" "script look x" "script show a b"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
printf '[Options]\n[Level]\nName= Tomb of X\nLevel= DATA\\city,101\n' >script.txt
expect 0 script show script.txt --json
json "j == {'levels': [{'tr4': 'city.tr4', 'name': 'Tomb of X'}]}"
expect 0 script show script.txt
said "$(printf 'city.tr4\tTomb of X')"
printf '[Options]\n' >script.txt
expect 0 script show script.txt --json
json "j == {'levels': []}"
printf ';\r\n[Strings]\r\nM\xfcnster\r\n;no\r\nB\r\n[PSXStrings]\r\n' >german.txt
expect 0 script show german.txt --json
json "j == {'strings': ['[Strings]', 'Münster', 'B']}"
expect 0 script show german.txt
said "$(printf '2\tB')"
printf '[Level]\nName= A\n' >script.txt
expect 1 script show script.txt
errs "$box/script.txt"
printf '\xff\xfe[\0L\0' >script.txt
expect 1 script show script.txt
errs "UTF-16"
expect 1 script show none.txt
silent
