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
    box = thing.get_extents(Atspi.CoordType.WINDOW)
    return (box.x, box.y, box.width, box.height)


def owner(thing):
    """A row or a cell belongs to its list, and so does the inner part of an empty one."""
    while thing.get_role_name() in ("table cell", "list item", "tree item", "table row", "filler"):
        thing = thing.get_parent()
    return thing


def main():
    pid = int(sys.argv[1])
    program = waits_for(lambda: application(pid))
    seen = []
    faults = 0
    while True:
        now = owner(waits_for(lambda: focused_in_active(program)))
        line = (now.get_role_name(), (now.get_name() or "").strip(), place(now))
        if line in seen:
            break
        seen.append(line)
        print(*line, flush=True)
        if len(line[1]) < 2:
            print("says nothing of itself: ", *line, file=sys.stderr)
            faults += 1
        subprocess.run(["xdotool", "key", "Tab"], check=True)
        before = line
        for _ in range(40):  # until it has moved; where there is one control it stays
            time.sleep(0.05)
            next_one = owner(waits_for(lambda: focused_in_active(program)))
            if (next_one.get_role_name(), (next_one.get_name() or "").strip(),
                    place(next_one)) != before:
                break
    names = [line[:2] for line in seen]
    for name in sorted(set(names)):
        if names.count(name) > 1:
            print("two of them: ", *name, file=sys.stderr)
            faults += 1
    sys.exit(1 if faults else 0)


main()
