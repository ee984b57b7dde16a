#!/usr/bin/env bash
# packaging/try_deb.sh PACKAGE: installs the package in a new small Debian, runs both programs there as
# a person would, removes it again, and looks whether anything of it is left. As root, with a network.
set -Eeuo pipefail

package=$(readlink -f "${1:?usage: packaging/try_deb.sh PACKAGE}")
work=$(mktemp -d)
root=$work/root
finish() {
    local code=$?
    ! mountpoint -q "$root/proc" || umount "$root/proc"
    ((code == 0)) || tail -n 30 "$work/log" >&2 2>/dev/null || true
    rm -rf --one-file-system "$work"
    ((code == 0)) || echo "try_deb: FAILED" >&2
}
trap finish EXIT
trap 'echo "try_deb: line $LINENO: $BASH_COMMAND" >&2' ERR
say() { echo "try_deb: $*"; }
inside() { LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive HOME=/root chroot "$root" "$@"; }
# files: all that stands in the small Debian, but for what apt and its helpers note for themselves.
files() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./tmp -o -path ./root -o -path ./var \
        -o -path ./run \) -prune -o -print | sort)
}

say "a new Debian"
sources=()
for list in /etc/apt/sources.list /etc/apt/sources.list.d/debian.sources; do
    [[ ! -s $list ]] || sources+=("$list")
done
# What a desktop has anyway, and what would otherwise come with the package and stay behind it.
mmdebstrap --variant=apt --mode=root --skip=cleanup/apt/lists,cleanup/apt/cache --include=shared-mime-info,desktop-file-utils,hicolor-icon-theme,man-db,procps \
    bookworm "$root" "${sources[@]}" >"$work/log" 2>&1
mount -t proc proc "$root/proc"
cp "$package" "$root/tmp/kestrova.deb"
cp -L /etc/resolv.conf "$root/etc/resolv.conf"
files >"$work/before"

say "the package and what it depends on"
inside apt-get install -y -q --no-install-recommends /tmp/kestrova.deb >>"$work/log" 2>&1
kept=$(inside dpkg-query -W -f '${Package}\n')

say "what the desktop knows"
inside grep -q ':application/x-kestrova-archive:\*.kva' /usr/share/mime/globs2
inside grep -q 'application/x-kestrova-archive=kestrova.desktop' /usr/share/applications/mimeinfo.cache
inside desktop-file-validate /usr/share/applications/kestrova.desktop
for size in 16x16 48x48 512x512; do
    inside test -s "/usr/share/icons/hicolor/$size/apps/kestrova.png"
    inside test -s "/usr/share/icons/hicolor/$size/mimetypes/application-x-kestrova-archive.png"
done
for page in kestrova kestrovactl; do
    inside man -w "$page" >/dev/null
done

say "the terminal: a practice folder, levels, a swap and back"
ctl() { inside kestrovactl --home /tmp/home --yes "$@" >>"$work/log" 2>&1; }
inside kestrovactl --version
ctl practice /tmp/practice
ctl setup --trle /tmp/practice/trle --full --folder-is-original
ctl new --folder /tmp/levels /tmp/my.kva
for level in "$root"/tmp/practice/levels/*/; do
    level=${level%/}
    ctl add "/tmp/practice/levels/${level##*/}"
done
ctl play 1 --no-start
ctl verify
ctl original
ctl help Savegames
for language in de it en@proofread; do
    inside test -s "/usr/share/locale/$language/LC_MESSAGES/kestrova.mo"
done
ctl set language de
inside kestrovactl --home /tmp/home verify | grep -qx 'Kein Unterschied.'
ctl set language en

say "the windows"
inside kestrova --version
inside env QT_QPA_PLATFORM=offscreen timeout --signal=TERM 60 \
    kestrova --home /tmp/home /tmp/my.kva >>"$work/log" 2>&1 &
window=$!
for ((i = 0; i < 300; ++i)); do
    [[ ! -S $root/tmp/home/.kv~windows ]] || break
    sleep 0.1
done
# The one that is open answers the second one.
inside env QT_QPA_PLATFORM=offscreen timeout 30 kestrova --home /tmp/home
inside pkill -TERM -x kestrova
wait "$window" || (($? == 143))

say "removed again"
inside apt-get purge -y -q kestrova >>"$work/log" 2>&1
files >"$work/after"
# What belongs to the packages that it depends on stays until nobody needs them.
left=$(comm -13 "$work/before" "$work/after" | grep -i kestrova || true)
[[ -z $left ]] || {
    echo "try_deb: left behind: $left" >&2
    exit 1
}
known=$(grep -l kestrova "$root"/usr/share/{mime/globs2,applications/mimeinfo.cache} || true)
[[ -z $known ]] || {
    echo "try_deb: still known to $known" >&2
    exit 1
}
say "all is well; $(wc -l <<<"$kept") packages stood in it"
