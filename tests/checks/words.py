#!/usr/bin/env python3
"""The tree speaks of the program only: words.py ROOT | words.py --self-test

What belongs to the workshop (its papers and their chapters, its places on a disk) and marks of a
merge left behind stay out of every file and file name.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

# In pieces, so that this file passes its own check.
WORDS = ["Part" + r" \d+\.\d+", "the spec" + "ification", r"\bspec" + r"\.md\b",
         r"\b(?:design|craft)" + r"\.md\b", "tool" + "-notes", "tool" + " library",
         "shared/" + "(?:spec|design|craft)", "/work" + "/(?:main|wt|shared|briefs)",
         r"\b[Ii]ssue" + r" #?\d+", "<<<<" + "<<< ", ">>>>" + ">>> "]
PATTERN = re.compile("|".join(WORDS))


def tracked(root):
    """The files that are committed or about to be; of a tree without git, all but what is built."""
    try:
        # The tree may belong to another user than the one who looks at it.
        listing = subprocess.run(["git", "-c", "safe.directory=*", "-C", root, "ls-files", "-z"],
                                 capture_output=True, check=True).stdout
        return [pathlib.Path(os.fsdecode(name)) for name in listing.split(b"\0") if name]
    except (OSError, subprocess.CalledProcessError):
        return [path.relative_to(root) for path in pathlib.Path(root).rglob("*")
                if path.is_file() and path.relative_to(root).parts[0] not in ("build", ".git")]


def faults(root):
    files = tracked(root)
    if not files:
        yield "no files found"
    for name in files:
        if PATTERN.search(str(name)):
            yield f"{name}: the name itself"
        path = pathlib.Path(root, name)
        if not path.is_file():
            continue  # removed, and not yet committed so
        content = path.read_bytes()
        if b"\0" in content[:8192]:
            continue
        for number, line in enumerate(content.decode(errors="replace").splitlines(), 1):
            if word := PATTERN.search(line):
                yield f"{name}:{number}: {word.group()}"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "a.txt")
        for text in ("as " + "Part" + " 3.2 says", "see the spec" + "ification", "issue" + " #12",
                     "in /work" + "/main/src", "<<<<" + "<<< HEAD", "tool" + "-notes"):
            file.write_text("one\n" + text + "\n")
            assert any(fault.startswith("a.txt:2:") for fault in faults(folder)), text
        file.write_text("a part of 3 levels, a special case, no issue at all\n")
        assert list(faults(folder)) == []
        pathlib.Path(folder, "spec" + ".md").write_text("")
        assert len(list(faults(folder))) == 1


if sys.argv[1] == "--self-test":
    self_test()
else:
    found = list(faults(sys.argv[1]))
    print("\n".join(found))
    sys.exit(1 if found else 0)
