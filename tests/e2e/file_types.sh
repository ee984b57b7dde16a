# The desktop is told of archives of levels, in a data folder of one's own.
source "$(dirname "$0")/common.bash"
export HOME=$box/person XDG_DATA_HOME=$box/data XDG_CONFIG_HOME=$box/config

make_trle "$box/trle"
expect 0 setup --trle "$box/trle" --full --folder-is-original
expect 0 new --folder "$box/levels" "$box/my archive.kva"
expect 0 file-types
said "$box/data/mime/packages/kestrova.xml"
python3 - "$box/data" "$box/my archive.kva" <<'PY'
import pathlib, sys, xml.etree.ElementTree as tree
data, archive = pathlib.Path(sys.argv[1]), open(sys.argv[2], 'rb').read()
space = '{http://www.freedesktop.org/standards/shared-mime-info}'
kind = tree.parse(data / 'mime/packages/kestrova.xml').getroot().find(space + 'mime-type')
assert kind.get('type') == 'application/x-kestrova-archive'
assert kind.find(space + 'glob').get('pattern') == '*.kva'
match = kind.find(space + 'magic')
while (match := match.find(space + 'match')) is not None: # each of them holds for a real archive
    at, value = int(match.get('offset')), match.get('value')
    wanted = int(value).to_bytes(4, 'little') if match.get('type') == 'little32' else value.encode()
    assert archive[at:at + len(wanted)] == wanted, match.attrib
icon = data / ('icons/hicolor/scalable/mimetypes/%s.svg' % kind.find(space + 'icon').get('name'))
assert tree.parse(icon).getroot().tag.endswith('svg')
entry = (data / 'applications/kestrova.desktop').read_text()
assert 'MimeType=application/x-kestrova-archive;\n' in entry
assert '/kestrova" %f\n' in entry, entry
PY
[[ ! -e $box/data/mime/packages/brivanta.xml ]] || die "there is no Brivanta"
if type -P update-mime-database >/dev/null; then
    grep -q 'application/x-kestrova-archive:\*.kva' "$box/data/mime/globs2" || die "not in the lists"
    expect 0 file-types
    [[ ! -s $box/err ]] || die "the desktop knows it already"
fi
echo tool >"$box/home/Brivanta.exe"
expect 0 file-types
[[ -s $box/data/mime/packages/brivanta.xml && -s $box/data/applications/brivanta.desktop ]] ||
    die "Brivanta's files are not known"
