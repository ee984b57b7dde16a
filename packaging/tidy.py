#!/usr/bin/env python3
"""clang-tidy over src/: tidy.py BUILD-FOLDER JOBS

Most of its time goes into the library's headers, so what the build compiles as one source is looked
at as one. A source that is compiled alone is looked at alone.

What was clean stays clean until one of its sources, a header of src/ that they include or
.clang-tidy changes: BUILD-FOLDER/tidy holds one empty file per clean state.
"""

import concurrent.futures
import hashlib
import json
import pathlib
import re
import shutil
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent
source = root / "src"


def headers_by_object(build):
    """What each object file was made of in this tree, from what ninja noted while it compiled; a
    build that has not run yet knows nothing."""
    listing = subprocess.run(["ninja", "-C", build, "-t", "deps"],
                             capture_output=True, text=True, check=True).stdout
    found, current = {}, None
    for line in listing.splitlines():
        if line.startswith("    "):
            current.append(line.strip())
        elif ": #deps" in line and "(VALID)" in line:
            current = found.setdefault(line.split(": #deps")[0], [])
        else:
            current = []
    return found


def sources_of(file):
    """The sources that a file of the build stands for: itself, or those that it joins."""
    joined = []
    if file.is_relative_to(root) and not file.is_relative_to(source):
        joined = re.findall(r'^#include "(/.+\.cpp)"$', file.read_text(), re.M)
    return [pathlib.Path(name) for name in joined] or [file]


class Piece:
    """What is compiled, and so looked at, in one go."""

    def __init__(self, entry, sources):
        # clang cannot read what g++ precompiled; this also shows an include that is missing.
        entry["command"] = re.sub(r' -Winvalid-pch -include ("[^"]+"|\S+)', "", entry["command"])
        self.entry = entry
        self.sources = sources
        self.size = sum(name.stat().st_size for name in sources)

    def state(self, headers, rules):
        """A name for how its sources, their headers and the rules are now."""
        output = re.search(r" -o (\S+)", self.entry["command"]).group(1)
        own = {pathlib.Path(self.entry["directory"], name).resolve()
               for name in headers.get(output, [])}
        state = hashlib.sha256(rules + self.entry["command"].encode())
        for name in sorted(set(self.sources) | {h for h in own if h.is_relative_to(source)}):
            state.update(hashlib.sha256(name.read_bytes()).digest())
        return state.hexdigest()

    def faults(self, scratch):
        """What clang-tidy tells of it, or "" when there is nothing."""
        folder = scratch / hashlib.sha256(self.entry["file"].encode()).hexdigest()
        folder.mkdir(parents=True)
        (folder / "compile_commands.json").write_text(json.dumps([self.entry]))
        # The commands are written for g++; what another compiler warns of is not asked here.
        run = subprocess.run(["clang-tidy", "--quiet", "-p", folder, "--extra-arg=-Wno-error",
                              "--extra-arg=-Wno-everything", self.entry["file"]],
                             capture_output=True, text=True)
        return "" if run.returncode == 0 else run.stdout or run.stderr


def pieces_of(build):
    pieces = []
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if file.exists():  # but what is made only while it builds
            sources = sources_of(file)
            if all(name.is_relative_to(source) for name in sources):
                pieces.append(Piece(entry, sources))
    return sorted(pieces, key=lambda piece: -piece.size)  # none of the long ones comes last, alone


def main():
    build, jobs = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
    rules = (root / ".clang-tidy").read_bytes()
    headers = headers_by_object(build)
    clean = build / "tidy"
    scratch = clean / "pieces"
    shutil.rmtree(scratch, ignore_errors=True)
    scratch.mkdir(parents=True)

    changed = [(piece, clean / piece.state(headers, rules)) for piece in pieces_of(build)]
    changed = [(piece, note) for piece, note in changed if not note.exists()]
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        told = pool.map(lambda pair: pair[0].faults(scratch), changed)
        for (_, note), faults in zip(changed, told):
            if faults:
                failed += 1
                print(faults, flush=True)
            else:
                note.touch()
    files = sum(len(piece.sources) for piece, _ in changed)
    print(f"tidy: {files} files looked at in {len(changed)} pieces, {failed} with faults")
    return 1 if failed else 0


sys.exit(main())
