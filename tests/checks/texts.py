#!/usr/bin/env python3
"""Every text that a person can see stands in the words: texts.py ROOT | texts.py --self-test

Outside src/ground/words/ no literal may read like a text or like a piece of a path:
- two words with a blank between them, or a backslash before a name;
- in the windows, any word handed to a call that shows it.
A piece of a path is a `constexpr std::string_view` beside its format. A literal that nobody is
shown (the format of a system's file, say) carries `// not shown` on its line. Texts and names on
the disk have one name each, and each is used somewhere in src/; of a text's markers none stands
twice, since only the first is filled. A text of several words is written once.
"""

import pathlib
import re
import sys
import tempfile

ALLOWED = "// not shown"
EVERY = "// every one is filled"
# Programs of their own that link no floor; their texts stand in one table at the top of each.
WITHOUT_CATALOGUE = {f"faces/mains/{name}" for name in (
    "practice_game.cpp", "practice_tom2pc.cpp", "practice_script.cpp", "practice_setup.cpp",
    "stand_in.h")}
# Comments come first, so that quotes in them are passed over; a raw literal before a plain one.
TOKEN = re.compile(
    r'(?P<comment>//[^\n]*|/\*.*?\*/)'
    r'|(?P<raw>(?:u8|u|U|L)?R"(?P<tag>[^()\\ ]{0,16})\((?P<rawtext>.*?)\)(?P=tag)")'
    r'|(?P<plain>(?:\b(?:u8|u|U|L))?"(?P<text>(?:\\.|[^"\\\n])*)")'
    r"|(?P<digits>\b\d[\w.']*)"
    r"|(?P<char>'(?:\\.|[^'\\\n])+')", re.S)
WORDS = re.compile(r"[^\W\d_][,.;!?]? [^\W\d_]")
PATH = re.compile(r"\\[\w.]")
SHOWS = re.compile(r"\b(?:set(?:Text|WindowTitle|ToolTip|StatusTip|WhatsThis|PlaceholderText|Title|"
                   r"LabelText|AccessibleName|AccessibleDescription|Prefix|Suffix|InformativeText)|"
                   r"addAction|addMenu|addTab|addButton|tr|QPushButton|QLabel|QAction|QCheckBox|"
                   r"QGroupBox|QRadioButton)\s*[({]\s*"
                   r"(?:(?:QStringLiteral|QLatin1String|QString)\s*[({]\s*)?$")
ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}
CONSTANT = re.compile(r"^\s*(?:inline )?constexpr std::string_view \w+\s*=")
CAPTION = re.compile(r"^\s*KV_CAPTION\([^\n]*?(\w+)\s*\)", re.M)
ROW = re.compile(r"^inline constexpr (?:Message|std::string_view) (\w+)\b([^\n]*)", re.M)
# A part that more sources reach, also through headers, is parted: a new text compiles all of them
# anew.
MOST_SOURCES = 20
INCLUDE = re.compile(r'^#include "([^"]+)"', re.M)
PART = re.compile(r"words/(?!message|captions)\w+\.h$")
SPACE = re.compile(r"^namespace kestrova::(Msg|OnDisk)\b", re.M)


def decoded(text):
    text = re.sub(r"\\x[0-9a-fA-F]+|\\[0-7]{2,3}", "\1", text)
    return re.sub(r"\\(.)", lambda m: ESCAPES.get(m.group(1), m.group(1)), text, flags=re.S)


def literals(source):
    """(position, text as it is at run time) of each literal; neighbours are one."""
    joined = None
    for token in TOKEN.finditer(source):
        if token.group("raw"):
            text = token.group("rawtext")
        elif token.group("plain"):
            text = decoded(token.group("text"))
        else:
            continue
        if joined and not source[joined[2]:token.start()].strip():
            joined = (joined[0], joined[1] + text, token.end())
            continue
        if joined:
            yield joined[:2]
        joined = (token.start(), text, token.end())
    if joined:
        yield joined[:2]


def text_faults(source):
    lines = source.split("\n")
    for place, text in literals(source):
        number = source.count("\n", 0, place)
        before = lines[number][:place - source.rfind("\n", 0, place) - 1]
        if re.match(r"\s*#\s*(include|pragma|error|warning)\b", before) or \
                re.search(r"\bstatic_assert\s*\(|\[\[\w+\($", before) or \
                lines[number].rstrip().endswith(ALLOWED):
            continue
        shown = re.search(r"[^\W\d_]{2}", text) and \
            SHOWS.search(source[max(0, place - 200):place])
        name = CONSTANT.match(lines[number]) and (text.startswith("\\") or not WORDS.search(text))
        if not name and (WORDS.search(text) or PATH.search(text) or shown):
            yield number + 1, text


def reached_parts(texts):
    """{a part of the words: how many sources include it, by themselves or through headers}"""
    includes = {name: set(INCLUDE.findall(text)) for name, text in texts.items()}
    counts = {}
    for name in texts:
        if not name.endswith(".cpp"):
            continue
        seen, open_ones = set(), [name]
        while open_ones:
            new = includes.get(open_ones.pop(), set()) - seen
            seen |= new
            open_ones += new
        for part in filter(PART.match, seen):
            counts[part] = counts.get(part, 0) + 1
    return counts


def faults(root):
    source = root / "src"
    rows, said, spoken, texts = {}, {}, set(), {}
    for file in sorted(source.rglob("*.h")):
        text = file.read_text(errors="replace")
        space = SPACE.search(text)
        for row in ROW.finditer(text) if space else ():
            name = f"{space.group(1)}::{row.group(1)}"
            where = f"{file.relative_to(root)}:{text.count(chr(10), 0, row.start(1)) + 1}"
            if name in rows:
                yield f"{where}: {name} stands in {rows[name]} already"
            markers = re.findall(r"~\d", row.group(2))
            if len(set(markers)) < len(markers) and not row.group(2).endswith(EVERY):
                yield f"{where}: {name} has a marker twice, of which one stays empty"
            if len(WORDS.findall(row.group(2))) > 1 and said.setdefault(row.group(2), name) != name:
                yield f"{where}: {name} is written already, as {said[row.group(2)]}"
            rows[name] = where
    for file in sorted(source.rglob("*")):
        if file.suffix not in (".h", ".cpp", ".inc", ".def"):
            continue
        text = file.read_text(errors="replace")
        spoken.update(f"Msg::{name}" for name in CAPTION.findall(text))
        # Includes are written from below the storey.
        texts["/".join(file.relative_to(source).parts[1:]) or file.name] = text
        spoken.update(re.findall(r"\b(?:Msg|OnDisk)::\w+", text))
        if file.suffix == ".def" or file.relative_to(source).parts[:2] == ("ground", "words") or \
                file.relative_to(source).as_posix() in WITHOUT_CATALOGUE:
            continue
        for number, literal in text_faults(text):
            yield f"{file.relative_to(root)}:{number}: belongs into the words: {literal!r}"
    for name, where in rows.items():
        if name not in spoken:
            yield f"{where}: nobody uses {name}"
    for part, count in sorted(reached_parts(texts).items()):
        if count > MOST_SOURCES:
            yield f"{part}: {count} sources reach it; part it"


def self_test():
    bad = ('Tell("not saved");', 'x = u8"Cd not here";', 'f("\\\\data\\\\level.tr4");',
           'f(R"(one two)");', 'f("one "\n  "two");', 'b->setText(QStringLiteral("Cancel"));',
           'auto b = new QPushButton("Play");', 'm.addAction(tr("Open"));', "f('\"', \"a b\");",
           'f("Kopie übrig");', 'f("\\tone two"); // shown', 'g(1\'000); f("one two");')
    good = ('f("one");', 'f("%d %d");', 'f(" [OK]");', '// says "one two"', '/* "one\n two" */',
            'f("/proc/self/mounts");', 'f("one two"); // not shown', '#include "a b.h"',
            "f('\"'); g('\"');", 'f("\\n");', 'static_assert(x, "one two");',
            'setObjectName("Dialog_Zip");', 'f("\\x41 \\x42");', 'f(R"x(")x");', "1'000'000;")
    for text in bad:
        assert list(text_faults(text + "\n")), text
    for text in good:
        assert not list(text_faults(text + "\n")), text
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "src" / "ground" / "words").mkdir(parents=True)
        rows = root / "src" / "ground" / "words" / "a.h"
        head = 'namespace kestrova::Msg\n{\ninline constexpr Message One{"a ~1 b ~2"};\n'
        rows.write_text(head + 'inline constexpr Message Two{"c"};\n')
        user = root / "src" / "user.cpp"
        user.write_text("GetMsg(Msg::One); GetMsg(Msg::Two);\n")
        assert list(faults(root)) == [], list(faults(root))
        user.write_text("GetMsg(Msg::One);\n")
        assert "nobody uses Msg::Two" in "".join(faults(root))
        (root / "src" / "ground" / "words" / "b.def").write_text('KV_CAPTION("w", "c", Two)\n')
        assert list(faults(root)) == []
        rows.write_text(head + 'inline constexpr Message Two{"c ~1 ~1"};\n')
        assert "a marker twice" in "".join(faults(root))
        rows.write_text(head + 'inline constexpr Message Two{"c"};\n' * 2)
        assert "already" in "".join(faults(root))
        rows.write_text(head + 'inline constexpr Message Two{"a ~1 b ~2"};\n')
        assert list(faults(root)) == [], "short ones may stand for different things"
        for twice, words in ("as Msg::Two", "a box of c"), ("no", "a box"):
            rows.write_text(head + f'inline constexpr Message Two{{"{words}"}};\n'
                            f'inline constexpr Message Three{{"{words}"}};\n')
            user.write_text("GetMsg(Msg::One); GetMsg(Msg::Two); GetMsg(Msg::Three);\n")
            assert (twice in "".join(faults(root))) == (twice != "no"), words
        user.write_text("GetMsg(Msg::One);\n")
        rows.write_text(head + 'inline constexpr Message Two{"c"};\n')
        names = root / "src" / "names.h"
        names.write_text('namespace kestrova::OnDisk\n{\n'
                         'inline constexpr std::string_view Dir = "\\\\data";\n')
        assert "nobody uses OnDisk::Dir" in "".join(faults(root))
        (root / "src" / "faces" / "app").mkdir(parents=True)
        between = root / "src" / "faces" / "app" / "b.h"
        between.write_text('#include "words/a.h"\n')
        users = [between.with_name(f"u{number}.cpp") for number in range(MOST_SOURCES + 1)]
        for file in users:
            file.write_text('#include "app/b.h"\n')
        assert "words/a.h: 21 sources" in "".join(faults(root))
        for file in users:
            file.unlink()
        user.write_text("GetMsg(Msg::One); InFolder(a, OnDisk::Dir);\n")
        assert list(faults(root)) == [], list(faults(root))


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
