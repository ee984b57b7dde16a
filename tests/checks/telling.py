#!/usr/bin/env python3
"""Low storeys tell nobody of a failure, they answer it: telling.py ROOT | telling.py --self-test

What `engine/`, `media/` and `keep/` cannot do is a `Status` or a `Result` with its own sentence;
the operation or the command above tells it once. A file of the list below is allowed to tell, and
one that tells no more goes off it.
"""

import pathlib
import re
import sys
import tempfile

STOREYS = ("engine", "media", "keep")
TELLS = re.compile(r"\b(?:TellFailure|TellFolderNotRead|DoneOrTold)\s*\(|\bTell\s*\(\s*Tone::Error")
MAY_TELL = {
    # It is how everybody else tells.
    "engine/session/telling.h",
    "engine/session/telling.cpp",
    # The window of a conversion names the file that is unfit, with or without the question whether
    # the others go on; whoever wanted the conversion says behind that what became of it.
    "engine/conversion/audio_batch.cpp",
    # Every change ends with the archive saved; each says so by one function.
    "keep/archive/archive_saving.cpp",
    # Which level stands is asked in front of many an operation, each of which says it alike.
    "keep/history/standing.cpp",
}


def faults(root, may_tell):
    telling = set()
    for storey in STOREYS:
        for file in sorted((root / "src" / storey).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            name = str(file.relative_to(root / "src"))
            for number, line in enumerate(file.read_text().splitlines(), 1):
                if TELLS.search(line.split("//")[0]):
                    telling.add(name)
                    if name not in may_tell:
                        yield f"src/{name}:{number}: a failure is answered here, not told"
    for name in sorted(may_tell - telling):
        yield f"{name}: tells nothing, and need not be allowed to"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        source = root / "src" / "keep" / "a" / "x.cpp"
        source.parent.mkdir(parents=True)
        source.write_text("// TellFailure(host)\nhost.Tell(Tone::Warning, words);\n")
        assert list(faults(root, set())) == [], list(faults(root, set()))
        assert len(list(faults(root, {"keep/a/x.cpp"}))) == 1
        for text in ("TellFailure(host, f);\n", "host.Tell( Tone::Error, words);\n",
                     "return DoneOrTold(host, status);\n"):
            source.write_text(text)
            assert len(list(faults(root, set()))) == 1, text
            assert list(faults(root, {"keep/a/x.cpp"})) == []


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(pathlib.Path(sys.argv[1]), MAY_TELL))
    print("\n".join(found))
    sys.exit(1 if found else 0)
