# Two folders compared from the terminal: for people, for scripts, and where it cannot be done.
source "$(dirname "$0")/common.bash"

for words in editor "editor compare" "editor compare a" "editor compare a b c" "editor compares a b"; do
    # shellcheck disable=SC2086
    expect 2 $words
    silent
done
mkdir -p before/DATA after/data
echo title | tee before/DATA/title.tr4 >after/data/TITLE.tr4
echo one >before/script.dat
echo two >after/script.dat
echo old >before/gone.wav
echo new >after/come.wav
expect 0 editor compare before after
[[ $(<out) == $'new\tcome.wav\nmissing\tgone.wav\nchanged\tscript.dat' ]] || die "what is different"
expect 0 editor compare before after --json
json "j == [{'file': 'come.wav', 'state': 'new'}, {'file': 'gone.wav', 'state': 'missing'}, {'file': 'script.dat', 'state': 'changed'}]"
expect 0 editor compare after after --json
json "j == []"
expect 1 editor compare before nowhere
errs "This folder is not there: $box/nowhere"
ln -s lost before/link
ln -s lost after/link
expect 1 editor compare before after
said $'unread\tlink'
errs "nobody knows whether it is equal: link"
[[ ! -e home ]] || die "a comparison writes"
