# A practice folder for scripts. Run, it makes the one that ctest's scripts share; sourced, it gives
# each script its own.

# practice_at FOLDER: a copy of the shared one, which is there under ctest, otherwise made anew.
practice_at() {
    if [[ -d ${PRACTICE_MADE:-} ]]; then
        cp -a --sparse=always "$PRACTICE_MADE" "$1"
    else
        "$KESTROVACTL" practice "$1" >/dev/null
    fi
}

# noise BYTES: what hardly gets smaller by packing. Drawing lots is slow, so what was drawn comes again.
noise() {
    python3 -c 'import os, sys
left, drawn = int(sys.argv[1]), os.urandom(1 << 20)
while left > 0:
    left -= sys.stdout.buffer.write(drawn[:left])' "$1"
}

if [[ ${BASH_SOURCE[0]} == "$0" ]]; then
    set -euo pipefail
    # What is newer than the programs was made by them.
    newest=$(find "$PRACTICE_MADE" "$(dirname "$KESTROVACTL")" -maxdepth 1 \
        \( -path "$PRACTICE_MADE" -o -name 'kestrova*' \) -printf '%T@ %p\n' 2>/dev/null |
        sort -n | tail -1) || :
    [[ ${newest#* } != "$PRACTICE_MADE" ]] || exit 0
    rm -rf "$PRACTICE_MADE" "$PRACTICE_MADE.new"
    "$KESTROVACTL" practice "$PRACTICE_MADE.new" >/dev/null
    touch "$PRACTICE_MADE.new"
    mv "$PRACTICE_MADE.new" "$PRACTICE_MADE"
fi
