#!/usr/bin/env python3
"""clang-tidy over src/: tidy.py BUILD-FOLDER JOBS

Most of its time goes into the library's headers, so the sources of a folder that share no name
of their own are looked at together, as one source that includes them. Where they cannot be
compiled as one, each half is tried, down to the single file.

What was clean stays clean until the file, a header of src/ that it includes or .clang-tidy
changes: BUILD-FOLDER/tidy holds one empty file per clean state.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

root = pathlib.Path(__file__).resolve().parent.parent
source = root / "src"
together = 12  # sources at most in one


def headers_by_source(build):
    """What each source includes of this tree, from what ninja noted while it compiled; a build
    that has not run yet knows nothing."""
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


def own_names(text):
    """The names that a source may define for itself: words before ( = [ { or ; in lines that
    start at the margin. More than there are does no harm."""
    names = set(re.findall(r"^#define\s+(\w+)", text, re.M))
    for line in re.findall(r"^(?!namespace\b)[A-Za-z_].*$", text, re.M):
        names.update(re.findall(r"(?<![:\w])([A-Za-z_]\w*)\s*(?=[({=\[;])", line))
    return names


def grouped(files):
    """files in groups of one folder each in which no name is defined twice."""
    groups = []
    for file in files:
        names = own_names(file.read_text())
        for folder, members, taken in groups:
            if folder == file.parent and len(members) < together and not names & taken:
                members.append(file)
                taken |= names
                break
        else:
            groups.append((file.parent, [file], set(names)))
    return [members for _, members, _ in groups]


class Tidy:
    def __init__(self, build):
        self.build = build
        self.scratch = build / "tidy" / "together"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)
        self.commands = {}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            file = pathlib.Path(entry["directory"], entry["file"]).resolve()
            if file.is_relative_to(source):
                # clang cannot read what g++ precompiled; this also shows an include that is missing.
                entry["command"] = re.sub(r' -Winvalid-pch -include ("[^"]+"|\S+)', "",
                                          entry["command"])
                self.commands[file] = entry

    def run(self, files):
        """The faults that clang-tidy tells of these files, or "" when there are none."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.scratch))
        entry = dict(self.commands[files[0]])
        target = files[0]
        if len(files) > 1:
            target = folder / "together.cpp"
            target.write_text("".join(f'#include "{file}"\n' for file in files))
            entry["command"] = entry["command"].replace(str(files[0]), str(target))
            entry["file"] = str(target)
        (folder / "compile_commands.json").write_text(json.dumps([entry]))
        # The commands are written for g++; what another compiler warns of is not asked here.
        run = subprocess.run(["clang-tidy", "--quiet", "-p", folder, "--extra-arg=-Wno-error",
                              "--extra-arg=-Wno-everything", target],
                             capture_output=True, text=True)
        if run.returncode == 0:
            return ""
        if len(files) > 1 and "clang-diagnostic-error" in run.stdout:
            half = len(files) // 2
            return self.run(files[:half]) + self.run(files[half:])
        return run.stdout or run.stderr


def main():
    build, jobs = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
    headers = headers_by_source(build)
    rules = (root / ".clang-tidy").read_bytes()
    clean = build / "tidy"
    tidy = Tidy(build)

    notes = {}
    for file, entry in sorted(tidy.commands.items()):
        state = hashlib.sha256(rules + entry["command"].encode())
        own = {pathlib.Path(entry["directory"], name).resolve()
               for name in headers.get(entry.get("output", ""), [])}
        for name in sorted({file} | {h for h in own if h.is_relative_to(root)}):
            state.update(hashlib.sha256(name.read_bytes()).digest())
        note = clean / state.hexdigest()
        if not note.exists():
            notes[file] = note

    failed = 0
    groups = grouped(list(notes))
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for group, faults in zip(groups, pool.map(tidy.run, groups)):
            if faults:
                failed += 1
                print(faults, flush=True)
                continue
            for file in group:
                notes[file].touch()
    print(f"tidy: {len(notes)} files looked at in {len(groups)} groups, {failed} with faults")
    return 1 if failed else 0


sys.exit(main())
