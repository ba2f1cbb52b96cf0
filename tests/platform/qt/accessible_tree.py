"""Reads the tree of the program accessible_window as a screen reader would.

Usage: accessible_tree.py PID
"""

import sys
import time

import pyatspi
from gi.repository import GLib

EXPECTED = [
    ("label", "Save first?", "Question"),
    ("push button", "Yes", "ButtonYes"),
    ("text", "Branch name", "EditBranchName"),
    ("combo box", "Zone", "ComboZone"),
    ("radio button", "Move point", "OptionMovePoint"),
    ("list", "Actions", "ListAction"),
]

# What a press of the button must tell: event type, name of the control, details.
EXPECTED_EVENTS = {
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


def expect(what, expected):
    if what != expected:
        sys.exit(f"expected {expected!r}, not {what!r}")


def check_tree(dialog):
    expect(dialog.getRoleName(), "dialog")
    expect([(child.getRoleName(), child.name, child.description) for child in dialog], EXPECTED)
    label, button, edit, _, option, rows = dialog
    place = button.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    expect((place.x, place.y, place.width, place.height), (50, 90, 50, 20))
    expect(button.getState().contains(pyatspi.STATE_FOCUSABLE), True)
    expect(label.getState().contains(pyatspi.STATE_FOCUSABLE), False)
    expect(option.getState().contains(pyatspi.STATE_CHECKED), True)
    expect([row.name for row in rows], ["Row 1", "Row 2"])
    expect(rows[1].getState().contains(pyatspi.STATE_SELECTED), True)
    text = edit.queryText()
    expect(text.getText(0, -1), "Start\u00e9")
    expect(text.caretOffset, 3)
    expect(edit.queryEditableText().setTextContents("Typed by a reader"), True)
    expect(text.getText(0, -1), "Typed by a reader")


def press_and_watch(dialog):
    """The events that follow the press of the button."""
    seen = set()

    def note(event):
        key = (str(event.type), event.source.name, event.detail1)
        if key in EXPECTED_EVENTS:
            seen.add(key)
        if seen == EXPECTED_EVENTS:
            pyatspi.Registry.stop()

    for kind in ("property-change", "text-changed", "state-changed"):
        pyatspi.Registry.registerEventListener(note, "object:" + kind)

    def press():
        actions = dialog[1].queryAction()
        names = [actions.getName(i) for i in range(actions.nActions)]
        actions.doAction(names.index("Press"))
        return False

    GLib.timeout_add(200, press)
    GLib.timeout_add(20000, pyatspi.Registry.stop)
    pyatspi.Registry.start()
    return seen


def main():
    dialog = find_dialog(int(sys.argv[1]))
    check_tree(dialog)
    expect(press_and_watch(dialog), EXPECTED_EVENTS)
    dialog.clear_cache()
    expect(dialog[5].childCount, 0)
    expect(dialog[2].getState().contains(pyatspi.STATE_FOCUSED), True)


main()
