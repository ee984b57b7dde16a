#!/usr/bin/env python3
"""Every text has its translations, and they fit: translations.py ROOT | translations.py --self-test

Each `po/LANGUAGE.po` holds each text of src/ground/words/ once, and no other; a file of English
(`po/en@….po`) holds only texts that it says in another way. Of a translation
- the markers `~1` are those of the text;
- line ends stand as often, and blanks stand at its beginning and end where they stand in the text;
- what files and scripts are told by is there as it is: patterns (`*.tr4`), options (`--home`),
  addresses, and the bars that part a list;
- letters to type (`…Letters`) are as many small plain ones, each once.
"""

import ast
import collections
import pathlib
import re
import sys
import tempfile

ROW = re.compile(r'^inline constexpr Message (\w+)\{("(?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*)\};',
                 re.M)
# Where a translation has to say the same as the text, character by character.
KEPT = re.compile(r"\*\.[\w*]+|(?<![\w-])--[a-z][a-z-]+|https?://[\w./-]+|\|")
Entry = collections.namedtuple("Entry", "line told said fuzzy obsolete")


def literal(text):
    """A literal of C++ or of a .po file, which may go on in further quotes."""
    return "".join(ast.literal_eval("'''" + piece.replace("'", "\\'") + "'''")
                   for piece in re.findall(r'"((?:[^"\\]|\\.)*)"', text))


def texts(root):
    """The texts, each with the names of its rows."""
    rows = collections.defaultdict(list)
    for part in sorted((root / "src" / "ground" / "words").glob("*.h")):
        for row in ROW.finditer(part.read_text(encoding="utf-8")):
            rows[literal(row.group(2))].append(row.group(1))
    return rows


def entries(file):
    """What a .po file says, its head left out."""
    marks, state, told, said, line = "", None, "", "", 0
    obsolete = False
    for number, text in enumerate(file.read_text(encoding="utf-8").split("\n") + [""], 1):
        was_obsolete = text.startswith("#~ ")
        text = text[3:] if was_obsolete else text
        if text.startswith("msgid "):
            state, told, line, obsolete = "told", literal(text), number, was_obsolete
        elif text.startswith("msgstr "):
            state, said = "said", literal(text)
        elif text.startswith('"') and state == "told":
            told += literal(text)
        elif text.startswith('"'):
            said += literal(text)
        else:
            if state == "said":
                if told:
                    yield Entry(line, told, said, "fuzzy" in marks, obsolete)
                state, marks = None, ""
            if text.startswith("#,"):
                marks += text


def markers(text):
    return sorted(re.findall(r"~\d+", text))


def misfits(told, said, names):
    """How a translation does not fit its text."""
    if markers(told) != markers(said):
        yield f"its markers are {' '.join(markers(said)) or 'none'}"
    if told.count("\n") != said.count("\n") or told.count("\r") != said.count("\r"):
        yield "it has other line ends"
    for place, name in ((0, "beginning"), (-1, "end")):
        if told[place].isspace() != said[place].isspace():
            yield f"a blank at its {name}"
    kept = [collections.Counter(KEPT.findall(text)) for text in (told, said)]
    for word in sorted((kept[0] - kept[1]) + (kept[1] - kept[0])):
        yield f"{word} stands in one of them alone"
    if any(name.endswith("Letters") for name in names) and re.fullmatch("[a-z]{2,4}", told):
        if not re.fullmatch("[a-z]+", said) or len(set(said)) != len(told) or \
                len(said) != len(told):
            yield "letters to type, each another small plain one"


def faults_of(file, rows, whole):
    seen = set()
    for entry in entries(file):
        def fault(what, entry=entry):
            return f"{file.parent.name}/{file.name}:{entry.line}: {what}: {entry.told[:60]!r}"
        if entry.obsolete or entry.told not in rows:
            yield fault("no text any more")
            continue
        if entry.told in seen:
            yield fault("it stands here twice")
        seen.add(entry.told)
        if entry.fuzzy:
            yield fault("marked as doubtful")
        if not entry.said.strip() and entry.told.strip():
            yield fault("not translated")
            continue
        if not whole and entry.said == entry.told:
            yield fault("it is as told, so it needs no row")
        for misfit in misfits(entry.told, entry.said, rows[entry.told]):
            yield fault(misfit)
    for told in rows if whole else ():
        if told not in seen:
            yield f"{file.parent.name}/{file.name}: it lacks {rows[told][0]}: {told[:60]!r}"


def faults(root):
    rows = texts(root)
    files = sorted((root / "po").glob("*.po"))
    if not rows or not files:
        yield "no texts, or no translations, found"
    for file in files:
        yield from faults_of(file, rows, not file.name.startswith("en@"))


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "src" / "ground" / "words").mkdir(parents=True)
        (root / "po").mkdir()
        (root / "src" / "ground" / "words" / "a.h").write_text(
            'inline constexpr Message One{"Take ~1\\n"};\n'
            'inline constexpr Message Two{"A \\"b\\" (*.x)|*.x --to "};\n'
            'inline constexpr Message YesNoLetters{"yn"};\n'
            'inline constexpr std::string_view lineBreak = "no text";\n')

        def row(told, said, marks=""):
            return f'{marks}msgid "{told}"\nmsgstr ""\n"{said}"\n'

        def found(*rows, name="de"):
            for old in (root / "po").glob("*.po"):
                old.unlink()
            (root / "po" / f"{name}.po").write_text(
                "\n".join(['msgid ""\nmsgstr "Language: x\\n"\n', *rows]), encoding="utf-8")
            return "\n".join(faults(root))
        told = ("Take ~1\\n", "A \\\"b\\\" (*.x)|*.x --to ", "yn")
        good = [row(told[0], "Nimm ~1\\n"), row(told[1], "Ä „b“ (*.x)|*.x --to "), row(told[2], "jn")]
        assert found(*good) == "", found(*good)
        assert found(good[0], name="en@proofread") == ""
        assert "lacks YesNoLetters" in found(*good[:2])
        for place, bad, words in ((0, row(told[0], "Nimm ~2\\n"), "its markers"),
                                  (0, row(told[0], "Nimm ~1"), "other line ends"),
                                  (0, row(told[0], "Nimm ~1\\n", "#, fuzzy\n"), "doubtful"),
                                  (0, good[0] + "\n" + good[0], "twice"),
                                  (0, row(told[0], ""), "not translated"),
                                  (1, row(told[1], "Ä „b“ (*.x)|*.x --to"), "a blank at its end"),
                                  (1, row(told[1], "Ä „b“ (*.y)|*.x --to "), "*.y stands in one"),
                                  (1, row(told[1], "Ä „b“ (*.x), *.x --to "), "| stands in one"),
                                  (2, row(told[2], "jj"), "letters to type"),
                                  (2, row(told[2], "jna"), "letters to type"),
                                  (2, good[2] + "\n" + row("gone", "weg"), "no text any more"),
                                  (2, good[2] + '\n#~ msgid "yn"\n#~ msgstr "x"\n', "no text any")):
            rows = list(good)
            rows[place] = bad
            assert words in found(*rows), (words, found(*rows))
        assert "needs no row" in found(row(told[2], told[2]), name="en@proofread")


if sys.argv[1] == "--self-test":
    self_test()
else:
    told = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(told))
    sys.exit(1 if told else 0)
