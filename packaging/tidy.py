#!/usr/bin/env python3
"""clang-tidy over src/: tidy.py BUILD-FOLDER JOBS

What was clean stays clean until the file, a header of src/ that it includes or .clang-tidy
changes: BUILD-FOLDER/tidy holds one empty file per clean state.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent


def headers_by_object(build):
    """What ninja noted while it compiled: object -> files that it was made of."""
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


def main():
    build, jobs = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
    source = root / "src"
    headers = headers_by_object(build)
    rules = (root / ".clang-tidy").read_bytes()
    clean = build / "tidy"
    clean.mkdir(exist_ok=True)

    work = []
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if not file.is_relative_to(source):
            continue
        state = hashlib.sha256(rules + entry["command"].encode())
        own = {pathlib.Path(entry["directory"], name).resolve()
               for name in headers.get(entry.get("output", ""), [])}
        for name in sorted({file} | {h for h in own if h.is_relative_to(root)}):
            state.update(hashlib.sha256(name.read_bytes()).digest())
        note = clean / state.hexdigest()
        if not note.exists():
            work.append((file, note))

    def tidy(item):
        file, note = item
        # The commands are written for g++; what another compiler warns of is not asked here.
        run = subprocess.run(["clang-tidy", "--quiet", "-p", build, "--extra-arg=-Wno-error",
                              "--extra-arg=-Wno-everything", file],
                             capture_output=True, text=True)
        if run.returncode == 0:
            note.touch()
        return file, run

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for file, run in pool.map(tidy, work):
            if run.returncode != 0:
                failed += 1
                print(f"{os.path.relpath(file, root)}:\n{run.stdout or run.stderr}", flush=True)
    print(f"tidy: {len(work)} files looked at, {failed} with faults")
    return 1 if failed else 0


sys.exit(main())
