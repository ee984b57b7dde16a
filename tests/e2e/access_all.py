"""Walks every window of the program by Tab, each page of it, as a screen reader hears it.

access_all.py TEST_UI: prints each window with what is heard in it. Ends with 1 when a control says
nothing of itself, two of a window say the same, one cannot be read in its turn, or fewer windows
came than there are.
"""

import os
import subprocess
import sys

import access
from access import Atspi
from gi.repository import GLib

# Their panes are read one by one.
READ_BY_PANES = {"Principale"}
# A walk that has not come round by then never does.
LONGEST_WALK = 200
FEWEST_WINDOWS = 40


class Walk:
    def __init__(self, test_ui):
        self.heard = None
        self.answered = False
        Atspi.set_timeout(60000, 60000)  # a program under the sanitizers, beside others
        self.focus = Atspi.EventListener.new(self.hear)
        self.focus.register("object:state-changed:focused")
        self.answers = Atspi.EventListener.new(self.hear_answer)
        self.answers.register("object:property-change:accessible-description")
        environment = dict(os.environ, KESTROVA_WALK="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.child = subprocess.Popen(
            [test_ui, "--gtest_filter=EveryWindow.IsThereForAWalkFromOutside"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1, env=environment)
        self.program = None

    def hear(self, event):
        if event.detail1 == 1:
            self.heard = event.source

    def hear_answer(self, _):
        self.answered = True

    def windows(self):
        for line in self.child.stdout:
            if line.startswith("window "):
                yield line.split()[1]

    def tell(self, letter):
        self.child.stdin.write(letter)
        self.child.stdin.flush()

    def control_after(self, letter):
        """What has the keyboard once that is done, which the program says by a change of its
        window's description: what came before it on the bus has been heard by then."""
        self.answered = False
        self.tell(letter)
        while not self.answered:
            if self.child.poll() is not None:
                sys.exit("the program ended in the middle of a window")
            GLib.MainContext.default().iteration(True)
        return None if self.heard is None else access.line_of(access.owner(self.heard))

    def controls(self):
        """Those of the window that is shown now, from one round; the Tab key goes nowhere where
        there is only one, or none."""
        if self.program is None:
            self.program = access.waits_for(lambda: access.application(self.child.pid))
        self.heard = None
        round_ = []
        control = self.control_after("b") or self.control_after("t")
        while control is not None and control not in round_:
            if len(round_) == LONGEST_WALK:
                sys.exit("the walk does not come round")
            round_.append(control)
            control = self.control_after("t")
        self.tell("n")
        return round_


def is_behind(first, second):
    """Whether a person who reads from the left and from above comes to it after the second one.
    What stands in columns is read column by column."""
    x, y, width, height = first
    left, top, wide, high = second
    below = y >= top + high
    right_of = x >= left + wide
    same_row = y < top + high and top < y + height
    return (same_row and right_of) or (below and x + width > left + 1)


def order_faults(controls):
    """Where the round begins is what a person sees first."""
    if not controls:
        return []
    begin = min(range(len(controls)), key=lambda at: (controls[at][2][1], controls[at][2][0]))
    turned = controls[begin:] + controls[:begin]
    return [f"{one[1]} comes before {other[1]}" for one, other in zip(turned, turned[1:])
            if is_behind(one[2], other[2])]


def main():
    walk = Walk(sys.argv[1])
    faults = windows = 0
    for page in walk.windows():
        controls = walk.controls()
        windows += 1
        print("==", page, flush=True)
        for control in controls:
            print(*control)
        found = access.name_faults(controls)
        if page.split("-")[0] not in READ_BY_PANES:
            found += order_faults(controls)
        for fault in found:
            print(f"{page}: {fault}", file=sys.stderr)
        faults += len(found)
    print(windows, "windows")
    if walk.child.wait() != 0 or faults or windows < FEWEST_WINDOWS:
        sys.exit(1)


main()
