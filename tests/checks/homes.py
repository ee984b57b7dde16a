#!/usr/bin/env python3
"""What a header declares is defined in the source of its name: homes.py ROOT | homes.py --self-test

A function that a source defines for others (outside its unnamed namespace) stands in the header of
the source's name, in its folder; a source without such a header defines nothing for others. So
whoever knows where a function is declared knows where it is defined.
"""

import pathlib
import re
import sys
import tempfile

# Programs' entries, and what a library calls by name.
ENTRIES = {"main", "operator"}
DEFINITION = re.compile(r"^(?!static\b|namespace\b|using\b|typedef\b|extern\b|struct\b|class\b|enum\b|"
                        r"template\b|return\b|inline\b|constexpr\b|const\b[^(]*=|#|//|\}|\{)"
                        r"(?=[A-Za-z_])(?:[^;={(]*?[\s&*>])?([\w:~]+)\s*\(", re.M)


def definitions(text):
    """Names of the functions that a source in our style defines at the margin, for others."""
    hidden = re.sub(r"^namespace\s*\n\{.*?^\} // namespace$", "", text, flags=re.S | re.M)
    hidden = re.sub(r"//[^\n]*", "", hidden)
    for match in DEFINITION.finditer(hidden):
        rest = hidden[match.end() - 1:]
        depth = 0
        for place, letter in enumerate(rest):
            depth += {"(": 1, ")": -1}.get(letter, 0)
            if depth == 0:
                break
        behind = re.match(r"\s*(?:const|noexcept|override|\s)*(:[^;{]*)?\{|.*?\n\{", rest[place + 1:],
                          re.S)
        if behind and ";" not in rest[place + 1:place + 1 + behind.end()]:
            yield match.group(1)


def faults(root):
    for file in sorted((root / "src").rglob("*.cpp")):
        header = file.with_suffix(".h")
        declared = header.read_text() if header.exists() else ""
        for name in definitions(file.read_text()):
            owner, _, last = name.rpartition("::")
            if last in ENTRIES or name in ENTRIES:
                continue
            if not re.search(rf"\b{re.escape(owner.split('::')[0] or last)}\b", declared):
                yield f"{file.relative_to(root)}: {name} is not declared in {header.name}"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "src" / "a").mkdir(parents=True)
        source = root / "src" / "a" / "x.cpp"
        (root / "src" / "a" / "x.h").write_text("int One(int);\nclass Two { void Go() const; };\n")
        source.write_text("namespace k\n{\n\nnamespace\n{\n\nint Own()\n{\n}\n\n} // namespace\n\n"
                          "int One(int)\n{\n}\n\nvoid Two::Go() const\n{\n}\n\n"
                          "Two::Two(int a)\n    : a_(a)\n{\n}\n} // namespace k\n")
        assert list(faults(root)) == [], list(faults(root))
        for text in ("int Away(int)\n{\n}\n", "void Other::Go()\n{\n}\n",
                     "Result<A>\nWide(int a,\n     int b)\n{\n}\n"):
            source.write_text(text)
            assert len(list(faults(root))) == 1, (text, list(faults(root)))
        source.rename(root / "src" / "a" / "y.cpp")
        assert len(list(faults(root))) == 1


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
