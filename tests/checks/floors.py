#!/usr/bin/env python3
"""Holds the includes of src/ to the floors: floors.py ROOT | floors.py --self-test

The rows are the `kestrova_floor` lines of src/CMakeLists.txt, so that what is linked and what may
be included cannot differ. `ui` and `mains` stand on top of all of them and are the only ones that
may include the windows' library; only `platform` may include the system's headers.
"""

import pathlib
import re
import sys
import tempfile

TOP = ("ui", "mains")
SYSTEM = re.compile(r"(sys/|linux/|unistd\.h|fcntl\.h|dirent\.h|mntent\.h|spawn\.h|termios\.h|"
                    r"pwd\.h|poll\.h|signal\.h)")


def read_rows(text):
    """floor -> the floors that it names, in the order of the rows."""
    rows = {}
    for name, rest in re.findall(r"^\s*kestrova_floor\(\s*(\w+)([^)]*)\)", text, re.M):
        uses = re.search(r"\bUSES\b([\w\s]*?)(?:\bLIBS\b|$)", rest)
        rows[name] = uses.group(1).split() if uses else []
    return rows


def close(rows):
    """floor -> all that it may include, itself too. A floor is built on rows above it only."""
    reach = {}
    for name, uses in rows.items():
        reach[name] = {name}
        for use in uses:
            if use not in reach:
                raise SystemExit(f"src/CMakeLists.txt: {name} uses {use}, which has no row above it")
            reach[name] |= reach[use]
    return reach


def faults(root):
    source = root / "src"
    reach = close(read_rows((source / "CMakeLists.txt").read_text()))
    if not reach:
        yield "src/CMakeLists.txt: no floors found"
    for floor in TOP:
        reach[floor] = set(reach) | set(TOP)
    for file in sorted(source.rglob("*")):
        if file.suffix not in (".h", ".cpp", ".def", ".inc"):
            continue
        floor = file.relative_to(source).parts[0]
        if floor not in reach:
            yield f"src/{floor}: a folder without a row in src/CMakeLists.txt"
            continue
        for number, line in enumerate(file.read_text(errors="replace").splitlines(), 1):
            include = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
            if not include:
                continue
            where = f"{file.relative_to(root)}:{number}"
            kind, name = include.groups()
            if kind == '"':
                target = name.split("/")[0]
                if "/" not in name or not (source / name).is_file():
                    yield f'{where}: "{name}" is no file of src/ named from there'
                elif target not in reach[floor]:
                    yield f'{where}: {floor} may not include "{name}"'
            elif re.match(r"Q[A-Z]|Qt", name) and floor not in TOP:
                yield f"{where}: {floor} may not include <{name}>; only {' and '.join(TOP)} may"
            elif SYSTEM.match(name) and floor not in ("platform",) + TOP:
                yield f"{where}: {floor} may not include <{name}>; only platform may"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)

        def write(name, text):
            path = root / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

        write("CMakeLists.txt", "kestrova_floor(low)\n"
              "kestrova_floor(mid USES low LIBS Some::lib)\nkestrova_floor(high USES mid)\n")
        write("low/a.h", "#include <vector>\n")
        write("mid/b.h", '#include "low/a.h"\n')
        write("high/c.cpp", '#include "low/a.h"\n#include "mid/b.h"\n')
        write("ui/d.cpp", '#include "high/c.cpp"\n#include <QWidget>\n')
        assert list(faults(root)) == [], list(faults(root))
        for name, text, word in (
                ("low/up.cpp", '#include "mid/b.h"\n', "low may not include"),
                ("high/w.cpp", '#  include <QtCore/QString>\n', "only ui and mains"),
                ("high/s.cpp", "#include <sys/stat.h>\n", "only platform"),
                ("mid/n.cpp", '#include "b.h"\n', "is no file of src/"),
                ("odd/e.cpp", "\n", "without a row")):
            write(name, text)
            found = list(faults(root))
            assert len(found) == 1 and word in found[0], (name, found)
            (root / "src" / name).unlink()
        try:
            close({"low": ["high"], "high": []})
        except SystemExit:
            return
        raise AssertionError("a floor on one above it was let through")


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
