# For every script that drives kestrovactl from outside: a folder of its own, gone at the end, and
# what a step expects. Sourced, not run.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/practice.bash"
source "$(dirname "${BASH_SOURCE[0]}")/small_trle.bash"

ctl=${KESTROVACTL:?the program to drive}
box=$(mktemp -d)
trap 'rm -rf "$box"' EXIT
trap 'echo "FAILED at line $LINENO: $BASH_COMMAND" >&2' ERR
here=$(cd "$(dirname "$0")" && pwd)
cd "$box"
export LC_ALL=C.UTF-8

die() {
    printf 'FAILED: %s\n' "$*" >&2
    [[ ! -s $box/err ]] || sed 's/^/  stderr: /' "$box/err" >&2
    [[ ! -s $box/out ]] || sed 's/^/  stdout: /' "$box/out" >&2
    exit 1
}

# expect CODE WORDS…: kestrovactl with the home of this script ends with CODE; its streams are in
# $box/out and $box/err.
expect() {
    local wanted=$1 got=0
    shift
    "$ctl" --home "$box/home" "$@" >"$box/out" 2>"$box/err" </dev/null || got=$?
    [[ $got == "$wanted" ]] || die "kestrovactl $*: exit $got, not $wanted"
}

# said TEXT / errs TEXT: the last step's standard output or error holds it.
said() { grep -qF -- "$1" "$box/out" || die "standard output lacks: $1"; }
errs() { grep -qF -- "$1" "$box/err" || die "standard error lacks: $1"; }
silent() { [[ ! -s $box/out ]] || die "standard output is not empty"; }

# json EXPRESSION: true of the last step's output as `j`.
json() {
    python3 -c 'import json,sys; j = json.load(open(sys.argv[1])); sys.exit(0 if eval(sys.argv[2]) else 1)' \
        "$box/out" "$1" || die "JSON: not $1"
}

# tree FOLDER: names, sizes and contents in one word; lock files are no content.
tree() { (cd "$1" && find . -type f ! -name '.kv~*' -print0 | sort -z | xargs -0 -r cksum | cksum); }

# A home with archive and three small levels: 1 dawn, 2 noon, 3 dusk.
make_archive() {
    local level
    make_trle "$box/trle"
    expect 0 setup --trle "$box/trle" --full --folder-is-original
    expect 0 new --folder "$box/levels" "$box/my.kva"
    for level in dawn noon dusk; do
        make_level "$box/from/$level" "$level"
        expect 0 add --name "$level" "$box/from/$level"
    done
}
