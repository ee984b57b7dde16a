"""Walks the window that has the keyboard by Tab, as a screen reader hears it.

access.py PID: prints a line for each control that the keyboard comes to, in its order, until it
comes round: role, name, place. Ends with 1 when one says nothing of itself or two say the same.
"""

import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def application(pid):
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for i in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(i)
        if child is not None and child.get_process_id() == pid:
            return child
    return None


def focused(parent, but=""):
    """The innermost object that has the keyboard, but for that role."""
    for i in range(parent.get_child_count()):
        child = parent.get_child_at_index(i)
        if child is None:
            continue
        states = child.get_state_set()
        if not states.contains(Atspi.StateType.SHOWING):
            continue
        found = focused(child, but)
        if found is not None:
            return found
        if states.contains(Atspi.StateType.FOCUSED) and child.get_role_name() != but:
            return child
    return None


def focused_in_active(program):
    program.clear_cache()  # nobody here listens to what changes
    for i in range(program.get_child_count()):
        window = program.get_child_at_index(i)
        if window is not None and window.get_state_set().contains(Atspi.StateType.ACTIVE):
            # The chosen tab says so at all times; it has the keyboard when nothing else has.
            return focused(window, "page tab") or focused(window)
    return None


def waits_for(look):
    for _ in range(600):
        try:
            found = look()
        except Exception:  # the program is still at work on its answer
            found = None
        if found is not None:
            return found
        time.sleep(0.05)
    sys.exit("nothing has the keyboard")


def place(thing):
    # Qt adds the window's own place to sizes within it.
    box = thing.get_extents(Atspi.CoordType.SCREEN)
    return (box.x, box.y, box.width, box.height)


LISTS = ("list", "table", "tree", "tree table")


def owner(thing):
    """A row or a cell belongs to its list, and so does the inner part of an empty one."""
    while thing.get_role_name() in ("table cell", "list item", "tree item", "table row"):
        thing = thing.get_parent()
    if thing.get_role_name() == "filler" and thing.get_parent().get_role_name() in LISTS:
        thing = thing.get_parent()
    return thing


def line_of(thing):
    return (thing.get_role_name(), (thing.get_name() or "").strip(), place(thing))


def name_faults(lines):
    faults = [f"says nothing of itself: {line}" for line in lines if len(line[1]) < 2]
    names = [line[:2] for line in lines]
    return faults + [f"two of them: {name}" for name in sorted(set(names))
                     if names.count(name) > 1]


def main():
    pid = int(sys.argv[1])
    program = waits_for(lambda: application(pid))
    seen = []
    while True:
        line = line_of(owner(waits_for(lambda: focused_in_active(program))))
        if line in seen:
            break
        seen.append(line)
        print(*line, flush=True)
        subprocess.run(["xdotool", "key", "Tab"], check=True)
        for _ in range(40):  # until it has moved; where there is one control it stays
            time.sleep(0.05)
            if line_of(owner(waits_for(lambda: focused_in_active(program)))) != line:
                break
    faults = name_faults(seen)
    print(*faults, sep="\n", file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
