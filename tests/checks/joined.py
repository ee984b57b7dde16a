#!/usr/bin/env python3
"""The sources of a folder can be compiled as one: joined.py ROOT | joined.py --self-test

The build under the sanitizers does so, with all floors of the middle storeys, tests too. What a
source keeps in its unnamed namespace is then seen by the sources behind it, so no two of a folder call
a thing the same: functions may differ in what they take, and the same alias may stand in several. A
type that others can see bears a name of its own in the whole of the sources: of two the linker would
take one for both.
"""

import collections
import pathlib
import re
import sys
import tempfile

# Joined across their sub-folders: by the build under the sanitizers, or by clang-tidy alone. Those of a
# row are one.
WHOLE = (("src/ground",), ("src/media",), ("src/engine", "src/keep", "src/work"),
         ("src/faces/app", "src/faces/cli"), ("src/faces/ui",),
         ("tests/engine", "tests/keep", "tests/work"), ("tests/faces/ui",))
UNNAMED = re.compile(r"^namespace\s*\n\{\n(.*?)^\} // namespace$", re.S | re.M)
TYPE = re.compile(r"^(?:struct|class|enum(?: class)?) (\w+)\b(?!;)")
VALUE = re.compile(r"^(?:inline |static |constexpr |const )+[^=({]*?[ >*&](\w+)(?:\[\w*\])* ?[={]")
VARIABLE = re.compile(r"^(?!return\b|using\b|namespace\b|struct\b|class\b|enum\b)[A-Za-z_][\w:<>, *&]*[ *&]"
                      r"(\w+)(?:\[\w*\])*(?: = .*|\{.*\})?;$")
FUNCTION = re.compile(r"^(?:template <.*> )?(?!return\b|using\b|namespace\b)[A-Za-z_][^=({]*?[ >*&]"
                      r"(\w+)(\(.*)$")
ENUMERATORS = re.compile(r"^enum (?!class\b)[^{;]*\{([^}]*)\}", re.M)
ALIAS = re.compile(r"^(?:using|namespace) (\w+) = (.*);")


def taken(parameters):
    """What a function takes, without what it is called. Texts and paths become each other: of two
    functions the one would take what is meant for the other."""
    types = re.sub(r"(?<=[ &*])\w+(?=[,)])", "", re.sub(r" = [^,)]+", "", parameters))
    return re.sub(r"(?:const )?(?:std::string(?:_view)?|Path|char(?=\*))\b[&*]*", "text", types)


def own_names(text):
    """Pairs of a name and what sets it apart from others of that name: a function's parameters
    without what they are called, an alias's meaning."""
    for part in UNNAMED.findall(text):
        part = re.sub(r",\n\s+", ", ", part)
        for listed in ENUMERATORS.findall(part):
            for name in re.findall(r"(\w+)(?: = [^,}]*)?(?:,|\s*$)", listed):
                yield name, "", False
        for line in part.splitlines():
            if alias := ALIAS.match(line):
                yield alias[1], "= " + alias[2], True
            elif value := TYPE.match(line) or VALUE.match(line) or VARIABLE.match(line):
                yield value[1], "", False
            elif function := FUNCTION.match(line):
                yield function[1], taken(function[2]), False


def declared_names(text):
    """The same of the functions that a header declares."""
    for line in re.sub(r",\n\s+", ", ", text).splitlines():
        if line.endswith(";") and (function := FUNCTION.match(line)):
            yield function[1], taken(function[2].rstrip(";")), False


def shared_types(text):
    """Types outside of unnamed namespaces, where they are told whole."""
    for line in UNNAMED.sub("", text).splitlines():
        if (found := TYPE.match(line)) and not line.endswith(";") and "::" not in line[:found.end() + 2]:
            yield found[1]


def told_names(text):
    """What a header tells of."""
    yield from declared_names(text)
    for name in shared_types(text):
        yield name, "", False


def doubled_types(root):
    known = {}
    for file in sorted((root / "src").rglob("*.h")) + sorted((root / "src").rglob("*.cpp")):
        for name in shared_types(file.read_text()):
            first = known.setdefault(name, file)
            # Each program is linked for itself.
            if first != file and "mains" not in file.parts:
                yield f"{file.relative_to(root)}: {name} is a type of {first.relative_to(root)} too"


def faults(root):
    yield from doubled_types(root)
    folders = collections.defaultdict(list)
    for top in ("src", "tests"):
        both = [*(root / top).rglob("*.h"), *(root / top).rglob("*.cpp")]
        for file in sorted(both, key=lambda file: (file.suffix != ".h", file)):
            place = file.parent.relative_to(root).as_posix()
            whole = [row for row in WHOLE if any((place + "/").startswith(name + "/") for name in row)]
            folders[whole[0] if whole else (place,)].append(file)
    headers = sorted((root / "src").rglob("*.h"))
    for place, files in folders.items():
        # What lies below a storey is told by the headers that its floors include.
        if place in WHOLE and not place[0].startswith("tests"):
            files = [*(name for name in headers if "ui" not in name.parts and name not in files), *files]
        known = {}
        for file in files:
            names = told_names if file.suffix == ".h" else own_names
            for name, apart, alias in names(file.read_text()):
                for other, (first, is_alias) in list(known.get(name, {}).items()):
                    # Functions of one name may differ in what they take; nothing else may.
                    same = (other == apart or "" in (other, apart)) and not (alias and is_alias)
                    declared = first.suffix == file.suffix == ".h"
                    if first != file and not declared and (same or alias != is_alias or (alias and other != apart)):
                        yield f"{file.relative_to(root)}: {name} is a name of {first.name} too"
                known.setdefault(name, {}).setdefault(apart, (file, alias))


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "src" / "a").mkdir(parents=True)
        frame = "namespace\n{{\n\n{}\n\n}} // namespace\n"
        (root / "src" / "a" / "x.cpp").write_text(frame.format(
            "using Json = A;\nconstexpr int most = 1;\nstruct Row {\n    int at = 0;\n};\n"
            "enum Column { first, second = 4 };\n"
            "bool Is(int a, const B& b)\n{\n    return a;\n}\nvoid Tell(const std::string& all)\n{\n}"))
        other = root / "src" / "a" / "y.cpp"
        for text in ("using Json = A;", "bool Is(int a)\n{\n}", "constexpr int least = 1;",
                     "void Go()\n{\n    const int most = 2;\n}"):
            other.write_text(frame.format(text))
            assert list(faults(root)) == [], (text, list(faults(root)))
        for text in ("using Json = B;", "bool Is(int other, const B& c)\n{\n}",
                     "void Tell(std::string_view one)\n{\n}",
                     "constexpr std::size_t most = 2;", "constexpr int second = 0;",
                     "enum class Row { one };", "const Row most[] = {", "Row* most = nullptr;"):
            other.write_text(frame.format(text))
            assert len(list(faults(root))) == 1, (text, list(faults(root)))
        (root / "src" / "a" / "z.h").write_text("bool Has(const B& b,\n         int a = 1);\n")
        for text, found in (("bool Has(const B& other, int c)\n{\n}", 1),
                            ("bool Has(const B& b)\n{\n}", 0)):
            other.write_text(frame.format(text))
            assert len(list(faults(root))) == found, (text, list(faults(root)))
        (root / "src" / "b").mkdir()
        (root / "src" / "a" / "z.h").write_text("struct Way;\nstruct Row {\n};\n")
        for text, found in (("struct Row;\n", 0), (frame.format("struct Row {\n};\n"), 0),
                            ("class Row {\n};\n", 1)):
            (root / "src" / "b" / "z.cpp").write_text(text)
            assert len(list(doubled_types(root))) == found, (text, list(doubled_types(root)))


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
