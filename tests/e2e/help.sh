# What the terminal tells of itself: topics of the manual, the page for man, completion for bash.
source "$(dirname "$0")/common.bash"

expect 0 help play
said "play CODE [--no-start]" # a command goes before a topic that holds its word
expect 0 help topics
said "Getting started"
said "  Slots of the game"
expect 0 help bring savegames BACK
said "F11 in the game"
! grep -qE '[][{}]|#[0-9]+#' "$box/out" || die "marks of the text"
[[ $(awk '{ if (length > m) m = length } END { print m }' "$box/out") -le 78 ]] || die "too wide"
expect 2 help savgames
errs "'savgames'"
errs "kestrovactl help Savegames"
expect 2 help "no such thing at all"
errs "kestrovactl help topics"
[[ ! -e $box/home ]] || die "help made the home"

# A copy in the program's folder goes first; one that cannot be read is told.
mkdir "$box/home"
printf '[Mine]\r\ncaf\xe9 \x1b[31m\r\n' >"$box/home/help_kestrova.txt"
expect 0 help mine
said "café"
! grep -q "$(printf '\x1b')" "$box/out" || die "an escape reached the terminal"
head -c 50000000 /dev/zero | tr '\0' '[' >"$box/home/help_kestrova.txt"
expect 2 help mine

expect 0 help --man
said ".TH KESTROVACTL 1"
if command -v groff >/dev/null; then
    warnings=$(groff -K utf8 -man -Tutf8 -ww -z "$box/out" 2>&1)
    [[ -z $warnings ]] || die "man page: $warnings"
    groff -K utf8 -man -Tutf8 "$box/out" 2>/dev/null | sed 's/.\x08//g; s/\x1b\[[0-9;]*m//g' >"$box/page"
    grep -q "^       \.fi\|\\\\f" "$box/page" && die "marks of roff"
    grep -qF "mend [--trle DIR]" "$box/page" || die "man page lacks a command"
fi

# completes ANSWER WORDS…: among what bash offers for the last word is the answer.
expect 0 help --completion
completes() {
    local wanted=$1
    shift
    bash -c 'source "$1"; source "$2"; shift 2; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _kestrovactl
        printf "%s\n" "${COMPREPLY[@]}"' - "$box/out" "$here/../../packaging/completion.bash" \
        kestrovactl "$@" >"$box/words"
    grep -qx -- "$wanted" "$box/words" || die "no '$wanted' for: $* ($(tr '\n' ' ' <"$box/words"))"
}
completes saves sa
completes help he
completes saves --home /x sav
completes bring-back saves b
completes --delete saves export 1 --d
completes --json levels --
completes topics help to
completes "" setup --trle "" # files
completes "" add ""
