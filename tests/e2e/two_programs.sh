# Two programs on one folder, and a program that is killed or interrupted.
source "$(dirname "$0")/common.bash"
make_archive

# hold FOLDER: another program holds it until $holder ends.
hold() {
    coproc HOLDER { exec flock "$1/.kv~lock" -c 'echo held; read -r _' 2>/dev/null; }
    read -r _ <&"${HOLDER[0]}"
}
release() {
    echo >&"${HOLDER[1]}"
    wait "$HOLDER_PID" || true
}
for folder in "$box/home" "$box/trle" "$box/levels"; do
    hold "$folder"
    before=$(tree "$box")
    expect 1 play 1 --no-start
    errs "$folder"
    errs "process " # the words that the last holder left
    expect 0 levels
    expect 0 current
    expect 0 verify
    release
done
expect 0 play 1 --no-start

# The installed level once more: no lock is needed, and no file is written.
hold "$box/home"
expect 0 play 1 --no-start
# A package for others is none of the archive's business.
state() { (cd "$box/home" && find . -path ./swap/work -prune -o -type f -printf '%p %s %T@\n' | sort); }
before=$(state)
expect 0 publish "$box/from/noon" "$box/noon.zip" name=Noon
[[ -s $box/noon.zip && $(state) == "$before" ]] || die "publish writes in the home"
[[ -z $(find "$box/home" -maxdepth 1 -name '.kv~*' -type d) ]] || die "publish leaves its folder"
release
# The sanitizers write into pipes of their own and cannot work beside another tracer.
if command -v strace >/dev/null && strace -o /dev/null true 2>/dev/null &&
    ! grep -qa __asan_init "$ctl"; then
    strace -f -o "$box/calls" -e trace=%file,write,pwrite64,ftruncate,fsync \
        "$ctl" --home "$box/home" play 1 --no-start >/dev/null
    if grep -E 'O_(WRONLY|RDWR|CREAT)|^[0-9]+ +(rename|unlink|mkdir|chmod|utime|truncate|ftruncate|fsync)' "$box/calls"; then
        die "the second play writes"
    fi
    ! grep -E ' write\(([03-9]|1[0-9])' "$box/calls" || die "the second play writes"
fi

# Killed in the middle of a swap, as often as it takes to hit different places.
original=$(tree "$box/home/backup_trle")
noise 60000000 >"$box/from/noon/big.tr4"
expect 0 --yes add --name big "$box/from/noon"
echo "precious" >"$box/trle/savegame.4"
for pause in 0.005 0.01 0.02 0.03 0.05 0.08; do
    "$ctl" --home "$box/home" play 4 --no-start >/dev/null 2>&1 &
    sleep "$pause"
    kill -9 $! 2>/dev/null || true
    wait $! 2>/dev/null || true
    expect 0 mend
    expect 0 verify
    grep -rqx precious "$box/trle"/savegame.4 "$box"/levels/*/backup_savegames 2>/dev/null ||
        die "the savegame is lost"
    expect 0 play 1 --no-start
    [[ $(cat "$box/trle/savegame.4") == precious ]] || die "the savegame does not come back"
done

# Ctrl-C waits for the swap's end. The sanitizer's own work at the exit does not bear a signal.
heard=
for ((try = 0; try < 50 && !${heard:-0}; ++try)); do
    expect 0 play 1 --no-start
    ASAN_OPTIONS=${ASAN_OPTIONS:-}:detect_leaks=0 \
        "$ctl" --home "$box/home" play 4 --no-start >/dev/null 2>"$box/err" &
    for ((i = 0; i < 100000; ++i)); do
        [[ ! -e $box/home/swap/journal ]] || break
    done
    kill -INT $! 2>/dev/null || true
    wait $! || die "an interrupted swap fails"
    ! grep -q "brought to an end first" "$box/err" || heard=1
done
[[ -n $heard ]] || die "no swap was ever interrupted"
expect 0 verify
expect 0 original
[[ $(tree "$box/trle") == "$original" ]] || die "the originals are not back"
