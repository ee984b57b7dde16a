#!/usr/bin/env python3
"""Times two commands in turn (A B A B …) and says how they compare.

One pair warms up and is not counted; every other one is. What prepares a command, and the flush
of what others left unwritten, lie outside its time. Prints one line of JSON: the median of each
side in seconds, and minimum, median and maximum of the pairs' ratios A / B and differences A - B.

    paired.py [--pairs N] [--disk FOLDER] [--before-a CMD] [--before-b CMD] --a CMD --b CMD

CMD is split like a shell's line; for more than one program give "sh -c '…'".
"""
import argparse
import json
import os
import shlex
import statistics
import subprocess
import sys
import time


def run(words, what):
    """Runs one command without a shell; its output is nobody's unless it fails."""
    with subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE) as child:
        said = child.stderr.read()
    if child.returncode != 0:
        sys.stderr.buffer.write(said)
        sys.exit(f"paired.py: {what} ended with {child.returncode}: {shlex.join(words)}")


def timed(words, before, disk, what):
    if before:
        run(before, f"what prepares {what}")
    if disk:
        run(["sync", "-f", disk], "sync")
    begin = time.monotonic_ns()
    run(words, what)
    return (time.monotonic_ns() - begin) / 1e9


def spread(values):
    return {"min": min(values), "median": statistics.median(values), "max": max(values)}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--pairs", type=int, default=5)
    parser.add_argument("--disk", help="a folder whose file system is flushed before each timing")
    for name in ("before-a", "before-b"):
        parser.add_argument("--" + name, type=shlex.split, default=[])
    for name in ("a", "b"):
        parser.add_argument("--" + name, type=shlex.split, required=True)
    wanted = parser.parse_args()

    pairs = []
    for _ in range(wanted.pairs + 1):
        pairs.append((timed(wanted.a, wanted.before_a, wanted.disk, "A"),
                      timed(wanted.b, wanted.before_b, wanted.disk, "B")))
        print(f"  A {pairs[-1][0]:.4f} s   B {pairs[-1][1]:.4f} s"
              + ("   (warm-up)" if len(pairs) == 1 else ""), file=sys.stderr)
    counted = pairs[1:]
    json.dump({"pairs": len(counted),
               "a": statistics.median(a for a, _ in counted),
               "b": statistics.median(b for _, b in counted),
               "ratio": spread([a / b for a, b in counted]),
               "difference": spread([a - b for a, b in counted])}, sys.stdout)
    print()


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C.UTF-8"
    main()
