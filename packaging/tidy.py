#!/usr/bin/env python3
"""clang-tidy over src/: tidy.py BUILD-FOLDER JOBS

Most of its time goes into the library's headers, so of a build that compiles a floor as one source
several floors are looked at as one; of the faces the windows alone, and the programs with the
practice content.

What was clean stays clean until one of its sources, a header of src/ that they include or
.clang-tidy changes: BUILD-FOLDER/tidy holds one empty file per clean state.
"""

import collections
import concurrent.futures
import hashlib
import json
import pathlib
import re
import shlex
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


class Compiled:
    """What the build compiles in one go."""

    def __init__(self, entry, sources):
        words = shlex.split(entry["command"])
        self.folder = entry["directory"]
        self.file = entry["file"]
        self.sources = sources
        self.output = words[words.index("-o") + 1]
        # What was read once for all by another compiler is left out; this also shows an include
        # that is missing.
        self.options = []
        for word, behind in zip(words, words[1:]):
            if re.match(r"-([ID]|std=)", word):
                self.options.append((word,))
            elif word == "-isystem":
                self.options.append((word, behind))
        self.size = sum(name.stat().st_size for name in sources)
        storey, floor = sources[0].relative_to(source).parts[:2]
        # The floors of a storey bear each other (tests/checks/joined.py), and so do the storeys that
        # the build joins; the windows and the practice content do not bear the other faces.
        self.group = {"keep": "engine", "work": "engine"}.get(storey, storey)
        if storey == "faces" and floor not in ("app", "cli"):
            self.group = self.file if floor == "ui" else "practice"


class Piece:
    """What is looked at in one go: the more together, the less often the library's headers."""

    largest = 1_200_000  # bytes; such a piece takes about a minute

    def __init__(self, parts):
        self.parts = parts
        self.sources = [name for part in parts for name in part.sources]
        self.size = sum(part.size for part in parts)
        self.options = list(dict.fromkeys(option for part in parts for option in part.options))

    def state(self, headers, rules):
        """A name for how its sources, their headers and the rules are now."""
        own = {pathlib.Path(part.folder, name).resolve()
               for part in self.parts for name in headers.get(part.output, [])}
        state = hashlib.sha256(rules + repr(self.options).encode())
        for name in sorted(set(self.sources) | {h for h in own if h.is_relative_to(source)}):
            state.update(hashlib.sha256(name.read_bytes()).digest())
        return state.hexdigest()

    def faults(self, scratch):
        """What clang-tidy tells of it, or "" when there is nothing."""
        folder = scratch / hashlib.sha256(str(self.sources[0]).encode()).hexdigest()
        folder.mkdir(parents=True)
        file = folder / "piece.cpp"
        # Of several programs each has its `main`.
        file.write_text("".join(
            f'#undef main\n#define main main_of_{name.stem}\n#include "{name}"\n'
            if name.parent.name == "mains" else f'#include "{name}"\n' for name in self.sources))
        command = ["clang++", *(word for option in self.options for word in option), "-c", str(file)]
        (folder / "compile_commands.json").write_text(json.dumps(
            [{"directory": self.parts[0].folder, "file": str(file), "arguments": command}]))
        # What another compiler warns of is not asked here.
        run = subprocess.run(["clang-tidy", "--quiet", "-p", folder, "--extra-arg=-Wno-everything",
                              f"--config-file={root / '.clang-tidy'}", file],
                             capture_output=True, text=True)
        return "" if run.returncode == 0 else run.stdout or run.stderr


def portions(sources):
    """The sources in lists that are not too large for one piece."""
    taken, size = [], 0
    for name in sources:
        if taken and size + name.stat().st_size > Piece.largest:
            yield taken
            taken, size = [], 0
        taken.append(name)
        size += name.stat().st_size
    yield taken


def pieces_of(build):
    groups = collections.defaultdict(list)
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if file.exists():  # but what is made only while it builds
            sources = sources_of(file)
            if all(name.is_relative_to(source) for name in sources):
                for portion in portions(sources):
                    part = Compiled(entry, portion)
                    groups[part.group].append(part)
    pieces = []
    for parts in groups.values():
        piece = []
        for part in parts:
            if piece and sum(other.size for other in piece) + part.size > Piece.largest:
                pieces.append(Piece(piece))
                piece = []
            piece.append(part)
        pieces.append(Piece(piece))
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
