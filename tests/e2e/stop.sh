# Ctrl-C is heard within a big file too; what was there before stays, and the exit says so.
source "$(dirname "$0")/common.bash"

make_archive
mkdir "$box/big"
echo tr4 >"$box/big/big.tr4"
for part in 1 2 3 4; do noise 40000000 >"$box/big/part$part.bin"; done
expect 0 add --name big "$box/big"

# stopped PATTERN WORDS…: interrupted once a file of that pattern shows that it works, the command
# ends within some seconds and failed.
stopped() {
    local got=0 begin pattern=$1
    shift
    "$ctl" --home "$box/home" --yes "$@" >"$box/out" 2>"$box/err" </dev/null &
    local pid=$!
    for ((begin = 0; begin < 500; ++begin)); do
        [[ -z $(compgen -G "$pattern") ]] || break
        sleep 0.02
    done
    kill -INT "$pid"
    begin=$(date +%s%N)
    wait "$pid" || got=$?
    (($(date +%s%N) - begin < 10000000000)) || die "stopped late: $*"
    [[ $got == 1 ]] || die "stopped: $*: exit $got, not 1"
}

echo old >"$box/big.zip"
stopped "$box/.kv~*" export 4 "$box/big.zip"
errs "The export was stopped."
[[ $(<"$box/big.zip") == old ]] || die "the old zip is gone"
[[ -z $(find "$box" -maxdepth 1 -name '.kv~*' -o -maxdepth 1 -name 'zi??????') ]] || die "something is left"

# One sound of some minutes.
python3 - "$box/long.wav" <<'END'
import os, sys, wave
with wave.open(sys.argv[1], "wb") as sound:
    sound.setnchannels(2), sound.setsampwidth(2), sound.setframerate(44100)
    sound.writeframes(os.urandom(1_000_000) * 60)
END
stopped "$box/sounds/.kv~*" audio encode "$box/long.wav" --out "$box/sounds"
errs "conversion cancelled"
[[ -z $(ls -A "$box/sounds") ]] || die "half a sound is left"
