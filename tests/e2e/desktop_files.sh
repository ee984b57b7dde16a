# What a package installs for the desktop, the shells and man: each piece is what its reader wants.
source "$(dirname "$0")/common.bash"
packaging=$here/../../packaging
export HOME=$box/person XDG_DATA_HOME=$box/data XDG_CONFIG_HOME=$box/config

# The menu entry, as packaged and as a person registers it.
make_trle "$box/trle"
expect 0 setup --trle "$box/trle" --full --folder-is-original
expect 0 file-types
entries=("$packaging/kestrova.desktop" "$box/data/applications/kestrova.desktop")
if type -P desktop-file-validate >/dev/null; then
    for entry in "${entries[@]}"; do
        faults=$(desktop-file-validate "$entry" 2>&1) || true
        [[ -z $faults ]] || die "$entry: $faults"
    done
fi
metainfo=$packaging/org.kestrova.kestrova.metainfo.xml
if type -P appstreamcli >/dev/null; then
    appstreamcli validate --no-net --pedantic "$metainfo" >"$box/out" 2>&1 || die "metainfo"
fi

# What they say of each other, and of the program.
expect 0 --version
python3 - "$packaging" "$metainfo" "$box/out" "${entries[@]}" <<'PY'
import pathlib, sys, xml.etree.ElementTree as tree
packaging, metainfo, version = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), open(sys.argv[3]).read().split()[1]
component = tree.parse(metainfo).getroot()
assert metainfo.name == component.find('id').text + '.metainfo.xml'
assert component.find('releases/release').get('version') == version, 'release'
assert (packaging / 'changelog').read_text().startswith(f'kestrova ({version}) '), 'changelog'
kind = tree.parse(packaging / 'kestrova-mime.xml').getroot()[0].get('type')
assert component.find('provides/mediatype').text == kind
for entry in sys.argv[4:]:
    keys = dict(line.split('=', 1) for line in open(entry).read().splitlines() if '=' in line)
    assert keys['MimeType'] == kind + ';' and keys['Exec'].endswith(' %f'), entry
    for key, words in (('Icon', 'kestrova'), ('StartupWMClass', 'kestrova'), ('StartupNotify', 'true')):
        assert keys[key] == words, (entry, key)
    assert keys['Keywords'] and keys['Comment'] == component.find('summary').text, entry
    assert set(keys['Categories'].strip(';').split(';')) == {c.text for c in component.find('categories')}, entry
assert component.find('launchable').text == pathlib.Path(sys.argv[4]).name
PY

# The pages for man; of each program, and of no other.
expect 2 help --man nothing
for program in kestrova kestrovactl; do
    expect 0 help --man "$program"
    said ".TH ${program^^} 1"
    if type -P mandoc >/dev/null; then
        faults=$(mandoc -T lint -W warning "$box/out" | grep -v 'missing date' || true)
        [[ -z $faults ]] || die "page of $program: $faults"
    fi
    if type -P groff >/dev/null; then
        faults=$(groff -K utf8 -man -Tutf8 -ww -z "$box/out" 2>&1)
        [[ -z $faults ]] || die "page of $program: $faults"
    fi
done
expect 0 help --man kestrova
said "Add new level"
said '; \fBkestrovactl add\fR'

# script SHELL FILE: the whole of what is installed for that shell.
script() {
    expect 0 help --completion "$1"
    cat "$box/out" "$packaging/completion.$1" >"$2"
}
# offered WORD…: each is a line of $box/words.
offered() {
    local word
    for word in "$@"; do
        grep -qx -- "$word" "$box/words" || die "no '$word' among $(tr '\n' ' ' <"$box/words")"
    done
}
expect 2 help --completion csh
if type -P fish >/dev/null; then
    script fish "$box/kestrovactl.fish"
    completes() { fish --no-config -c "source '$box/kestrovactl.fish'; complete -C '$1'" | cut -f1 >"$box/words"; }
    completes "kestrovactl --home /tmp sav"
    offered saves
    completes "kestrovactl saves "
    offered list archive restore
    completes "kestrovactl add --na"
    offered --name
    completes "kestrovactl help to"
    offered topics
    completes "kestrovactl play "
    ! grep -qx saves "$box/words" || die "a command behind a command"
    completes "kestrova --ho"
    offered --home
fi
if type -P zsh >/dev/null; then
    script zsh "$box/_kestrovactl"
    [[ $(head -1 "$box/_kestrovactl") == "#compdef kestrovactl kestrova" ]] || die "zsh does not know it"
    # As zsh calls it: a function of that name, with the words so far.
    completes() {
        zsh -fc 'compadd() { shift; print -rl -- "$@"; }; _files() { print files; }
            _arguments() { print -rl -- "${@%%\[*}"; }
            fpath=("$1"); shift; autoload -Uz _kestrovactl
            service=$1; words=("$@"); CURRENT=$#; _kestrovactl; print -r -- twice; _kestrovactl' \
            - "$box" "$@" >"$box/words"
    }
    completes kestrovactl --home /tmp sav
    offered saves help twice
    completes kestrovactl saves ""
    offered list archive restore
    completes kestrovactl add --
    offered --name --home
    completes kestrovactl --home ""
    offered files
    completes kestrova ""
    offered --home
fi
script bash "$box/kestrovactl.bash"
bash -c 'source "$1"; COMP_WORDS=(kestrova --h) COMP_CWORD=1; _kestrova; printf "%s\n" "${COMPREPLY[@]}"' \
    - "$box/kestrovactl.bash" >"$box/words"
offered --home --help
