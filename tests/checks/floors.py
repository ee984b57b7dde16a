#!/usr/bin/env python3
"""Holds src/ to its storeys and floors: floors.py ROOT | floors.py --self-test

The rows are the `kestrova_floor` lines of src/CMakeLists.txt, so that what is linked and what may
be included cannot differ: a floor includes what its row names, and its row names what it includes.
A row names only floors of rows above it. `ui` and `mains` stand on top of all of them and are the
only ones that may include the windows' library; only `platform` may include the system's headers.
"""

import pathlib
import re
import sys
import tempfile

STOREYS = ("ground", "media", "engine", "keep", "work", "faces")
TOP = ("ui", "mains")
SYSTEM = re.compile(r"(sys/|linux/|unistd\.h|fcntl\.h|dirent\.h|mntent\.h|spawn\.h|termios\.h|"
                    r"pwd\.h|poll\.h|signal\.h)")
ROWS = "src/CMakeLists.txt"
# Below `work` a function takes the parts of the session that it uses. These alone take the whole:
# what counts operations, what makes the tools' values of it, what saving the list and making a
# change need.
WHOLE = "session/session.h"
TAKE_THE_WHOLE = {"session/session", "session/operation", "tools/tools",
                  "conversion/sound_converter", "archive/archive_parts",
                  "history/change_parts"}
# In `work` nobody takes the whole for few parts of it that it hands to nobody, nor where the parts
# would do that work on the archive is done with. Those hold the folders of their beginning: whoever
# exchanges the archive takes the whole.
FEW_PARTS = 4
FOLDERS = ("Folders", "TrleFolder", "programFolder", "discs")
OF_ARCHIVE = {"host", "machine", "list", "running", "locks", "archive", "preferences", "settings",
              "Folders", "TrleFolder", "ArchivePath", "programFolder"}
TAKES_WHOLE = re.compile(r"^\w[^;{}]*?\bSession& (\w+)([^;{}]*\n\{\n.*?^\})", re.M | re.S)
TAKES_PARTS = re.compile(r"\b(\w+)\(const (?:Archive|Change)Parts& ")


def read_rows(text):
    """[(storey, floor, the floors that it names)] in the order of the rows."""
    for storey, name, rest in re.findall(r"^\s*kestrova_floor\(\s*(\w+)/(\w+)([^)]*)\)", text, re.M):
        uses = re.search(r"\bUSES\b([\w\s]*?)(?:\bLIBS\b|$)", rest)
        yield storey, name, uses.group(1).split() if uses else []


def row_faults(rows):
    above, storeys = set(), []
    for storey, name, uses in rows:
        if storey not in STOREYS or storeys and STOREYS.index(storey) < STOREYS.index(storeys[-1]):
            yield f"{ROWS}: {storey}/{name} stands in no storey, or out of their order"
        storeys.append(storey)
        for use in uses:
            if use not in above:
                yield f"{ROWS}: {name} uses {use}, which has no row above it"
        above.add(name)
    if not above:
        yield f"{ROWS}: no floors found"


def includes(file):
    for number, line in enumerate(file.read_text(errors="replace").splitlines(), 1):
        include = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if include:
            yield number, *include.groups()


def needs_of(name, body):
    """The parts that are used of the whole, and who gets it as his first argument; no names where
    somebody gets it otherwise."""
    body = re.sub(rf"\bOperation \w+\{{{name}\}}", f"Operation({name})", body)
    handed = re.findall(rf"\b(\w+)\({name}\b(?!\.)", body)
    known = len(handed) == len(re.findall(rf"\b{name}\b(?!\.)", body))
    return set(re.findall(rf"\b{name}\.(\w+)", body)), handed if known else None


def whole_for_parts(text, takers):
    """(line, parts) of each function that takes the whole for few parts, or for an archive's."""
    for function in TAKES_WHOLE.finditer(text):
        name, body = function.groups()
        used, handed = needs_of(name, body)
        parts = {"Folders" if part in FOLDERS else part for part in used}
        few = handed == [] and len(parts) <= FEW_PARTS
        of_archive = (handed is not None and takers.intersection(handed) and
                      takers.issuperset(set(handed) - {"Operation"}) and used <= OF_ARCHIVE and
                      not re.search(rf"\b{name}\.archive(\.header\.\w+)? = ", body))
        if few or of_archive:
            yield text.count("\n", 0, function.start()) + 1, ", ".join(sorted(parts))


def faults(root):
    source = root / "src"
    rows = list(read_rows((source / "CMakeLists.txt").read_text()))
    yield from row_faults(rows)
    allowed = {name: {name, *uses} for _, name, uses in rows}
    for floor in TOP:
        allowed[floor] = set(allowed) | set(TOP)
    place = {name: source / storey / name for storey, name, _ in rows}
    place.update({floor: source / "faces" / floor for floor in TOP})
    used = {name: {name} for name in allowed}
    storeys, taking = {name: storey for storey, name, _ in rows}, set()
    takers = {name for file in source.rglob("*.h") for name in TAKES_PARTS.findall(file.read_text())}
    for file in sorted(source.rglob("*")):
        if file.suffix not in (".h", ".cpp", ".def", ".inc"):
            continue
        floor = next((name for name, folder in place.items() if file.is_relative_to(folder)), None)
        if floor is None:
            yield f"{file.relative_to(root)}: stands in no floor that {ROWS} has a row for"
            continue
        if storeys.get(floor) == "work":
            for number, parts in whole_for_parts(file.read_text(), takers):
                yield f"{file.relative_to(root)}:{number}: takes the whole session for {parts}"
        for number, kind, name in includes(file):
            where = f"{file.relative_to(root)}:{number}"
            target = name.split("/")[0]
            if kind == '"':
                used[floor].add(target)
                if target not in place or not (place[target].parent / name).is_file():
                    yield f'{where}: "{name}" is no file of a floor'
                elif target not in allowed[floor]:
                    yield f'{where}: {floor} may not include "{name}"'
                elif name == WHOLE and storeys.get(floor) in ("ground", "media", "engine", "keep"):
                    taking.add(f"{floor}/{file.stem}")
                    if f"{floor}/{file.stem}" not in TAKE_THE_WHOLE:
                        yield f"{where}: takes the whole session; hand it the parts that it uses"
            elif re.match(r"Q[A-Z]|Qt", name) and floor not in TOP:
                yield f"{where}: {floor} may not include <{name}>; only {' and '.join(TOP)} may"
            elif SYSTEM.match(name) and floor not in ("platform",) + TOP:
                yield f"{where}: {floor} may not include <{name}>; only platform may"
    for _, name, uses in rows:
        for use in uses:
            if use not in used[name]:
                yield f"{ROWS}: {name} uses {use}, of which it includes nothing"
    if taking:
        for name in sorted(TAKE_THE_WHOLE - taking):
            yield f"floors.py: {name} does not take the whole session any more"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)

        def write(name, text):
            path = root / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

        rows = ("kestrova_floor(ground/low)\nkestrova_floor(ground/mid USES low LIBS Some::lib)\n"
                "kestrova_floor(engine/session)\n"
                "kestrova_floor(work/high USES low\n  mid)\n")
        write("CMakeLists.txt", rows)
        write("ground/low/a.h", "#include <vector>\nint Save(const ArchiveParts& parts, int);\n")
        write("ground/mid/b.h", '#include "low/a.h"\n')
        write("engine/session/session.h", "\n")
        write("work/high/c.cpp", '#include "low/a.h"\n#include "mid/b.h"\n'
              "bool Hands(Session& session, int one)\n{\n    return Do(session, session.host);\n}\n")
        write("faces/ui/main/d.cpp", '#include "high/c.cpp"\n#include <QWidget>\n')
        assert list(faults(root)) == [], list(faults(root))
        for name, text, word in (
                ("ground/low/up.cpp", '#include "mid/b.h"\n', "low may not include"),
                ("work/high/w.cpp", '#  include <QtCore/QString>\n', "only ui and mains"),
                ("work/high/s.cpp", "#include <sys/stat.h>\n", "only platform"),
                ("ground/mid/n.cpp", '#include "b.h"\n', "is no file of a floor"),
                ("work/odd/e.cpp", "\n", "in no floor"),
                ("engine/session/all.cpp", '#include "session/session.h"\n', "takes the whole"),
                ("work/high/f.cpp", "#include \"low/a.h\"\n\nint Few(const Session& all,\n"
                 "        int x)\n{\n    return x + all.host + all.discs;\n}\n", "for Folders, host"),
                ("work/high/p.cpp", '#include "low/a.h"\n\nint Saves(Session& all)\n{\n'
                 "    const Operation operation{all};\n    return Save(all, all.host);\n}\n",
                 "session for host"),
                ("CMakeLists.txt", rows + "kestrova_floor(work/top USES mid)\n", "includes nothing"),
                ("CMakeLists.txt", "kestrova_floor(keep/new USES high)\n" + rows, "no row above"),
                ("CMakeLists.txt", rows + "kestrova_floor(keep/new)\n", "out of their order")):
            write(name, text)
            found = list(faults(root))
            assert any(word in fault for fault in found), (name, found)
            write(name, rows) if name == "CMakeLists.txt" else (root / "src" / name).unlink()


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
