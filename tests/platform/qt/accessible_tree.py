"""Presses the button of the program accessible_window as a screen reader would, and listens.

Usage: accessible_tree.py PID
"""

import sys
import time

import pyatspi
from gi.repository import GLib

# What the press must tell: event type, name of the control, details.
EXPECTED = {
    ("object:property-change:accessible-name", "Saved", 0),
    ("object:text-changed:insert", "Branch name", 0),
    ("object:state-changed:focused", "Branch name", 1),
    ("object:state-changed:checked", "Move point", 0),
}


def find_dialog(pid):
    """The dialog of the program, once it is on the bus."""
    for _ in range(300):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == pid:
                for window in application:
                    if window is not None and window.name == "Exit":
                        return window
        time.sleep(0.1)
    sys.exit("the window is not on the accessibility bus")


def press_and_watch(button):
    """The expected events that follow the press of the button."""
    seen = set()

    def note(event):
        seen.add((str(event.type), event.source.name, event.detail1))
        if seen >= EXPECTED:
            pyatspi.Registry.stop()

    for kind in ("property-change", "text-changed", "state-changed"):
        pyatspi.Registry.registerEventListener(note, "object:" + kind)
    actions = button.queryAction()
    press = [actions.getName(i) for i in range(actions.nActions)].index("Press")
    GLib.timeout_add(200, lambda: actions.doAction(press) and False)
    GLib.timeout_add(20000, pyatspi.Registry.stop)
    pyatspi.Registry.start()
    return seen & EXPECTED


def main():
    dialog = find_dialog(int(sys.argv[1]))
    roles = [child.getRoleName() for child in dialog]  # changes are told of what was seen
    text = dialog[2].queryText()
    if roles[2] != "text" or (text.getText(0, -1), text.caretOffset) != ("Start\u00e9", 3):
        sys.exit(f"no edit with its text and caret among {roles}")
    missing = EXPECTED - press_and_watch(dialog[1])
    dialog.clear_cache()
    if missing or dialog[5].childCount != 0:
        sys.exit(f"not told: {missing}; rows left: {dialog[5].childCount}")


main()
