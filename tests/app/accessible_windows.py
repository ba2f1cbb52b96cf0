"""Works the whole program as a screen reader would: every window's tree is read and compared with
the layout table, and all that is done is done through it.

Usage: accessible_windows.py PID    with the height of the screen in SCREEN_HEIGHT
"""

import contextlib
import os
import pathlib
import sys
import time

import pyatspi
from gi.repository import GLib

TABLE = pathlib.Path(__file__).resolve().parent.parent / "data" / "skin" / "layout.tsv"
LONGEST_WAIT = 40  # seconds until something counts as missing
SMALL_SCREEN = 860  # below this height the zone editor takes its small layout

# What kinds of controls are for a reader, by what their names begin with; the first that fits.
ROLES = (
    ("OptionToggle", "check box"), ("OptionProgress", "check box"), ("Option", "radio button"),
    ("Check", "check box"), ("Button", "push button"), ("Combo", "combo box"), ("Edit", "text"),
    ("Label", "label"), ("Title", "label"), ("ConfirmationLabel", "label"), ("SceneList", "list"),
    ("BranchList", "list"),
)

# What listeners must hear of meanwhile: the event, the control, the event's detail.
EVENTS = {
    ("object:property-change:accessible-name", "LabelScene", 0),
    ("object:state-changed:focused", "EditSceneName", 1),
    ("object:text-changed:insert", "EditZone", 0),
    ("object:state-changed:checked", "OptionAddPoint", 1),
    ("object:state-changed:checked", "OptionMovePoint", 0),
    ("object:state-changed:enabled", "ButtonRemoveAction", 1),
    ("object:state-changed:enabled", "ButtonUndo", 1),
    ("object:property-change:accessible-name", "ButtonUndo", 0),
}
heard = set()


def note(event):
    with contextlib.suppress(GLib.GError):  # a control that has gone since
        heard.add((str(event.type), event.source.description, event.detail1))


def expect(what, is_, must):
    if is_ != must:
        sys.exit(f"{what}: expected {must!r}, not {is_!r}")


def wait_for(what, find):
    """The first true answer of `find`, which may meet nodes that have just gone."""
    end = time.monotonic() + LONGEST_WAIT
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            found = find()
        except Exception:  # pylint: disable=broad-except
            found = None
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"{what}: waited for in vain")


def wait_state(node, state, wanted=True):
    def look():
        node.clear_cache()
        return node.getState().contains(state) == wanted

    wait_for(f"{node.name or node.description}: {state} {wanted}", look)


def press(node):
    actions = node.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    actions.doAction(names.index("Press"))


class Window:
    """A window of the program, found by its title and checked against its layout."""

    def __init__(self, pid, title, layout):
        self.pid, self.title = pid, title
        self.node = wait_for(f"window {title!r}", self.find)
        self.check(layout)

    def find(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.pid:
                application.clear_cache()
                for window in filter(None, application):
                    if window.name == self.title and window.getState().contains(pyatspi.STATE_SHOWING):
                        return window
        return None

    def nodes(self, below=None):
        below = below or self.node
        below.clear_cache()
        for child in below:
            if child is not None:
                yield child
                yield from self.nodes(child)

    def control(self, name):
        return wait_for(f"{self.title}: {name}",
                        lambda: next((n for n in self.nodes() if n.description == name), None))

    def rows(self, name):
        return [node for node in self.nodes(self.control(name)) if node.getRoleName() == "list item"]

    def press(self, name):
        press(self.control(name))

    def text(self, name):
        return self.control(name).queryText().getText(0, -1)

    def check(self, layout):
        """Every named control of the layout table: role, name, place."""
        corner = self.node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        rows = [line.split("\t") for line in TABLE.read_text(encoding="utf-8").splitlines()]
        for _, control, *numbers, _, _ in (row for row in rows if row[0] == layout):
            place = tuple(int(value) for value in numbers)
            if not control:
                expect(layout, (corner.width, corner.height), place[2:])
                continue
            node = self.control(control)
            role = next((role for start, role in ROLES if control.startswith(start)), None)
            if role:
                expect(f"{layout}: {control}", node.getRoleName(), role)
            expect(f"{control} has a name", bool(node.name) or role in (None, "label"), True)
            rect = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            expect(f"{layout}: {control}", (rect.x - corner.x, rect.y - corner.y, rect.width, rect.height), place)
        print(f"{layout} agrees with the table")


def answer(pid, title, question, button):
    window = Window(pid, title, "Confirmation.xml")
    expect("question", window.control("ConfirmationLabel").name, question)
    wait_state(window.control("ButtonNo"), pyatspi.STATE_FOCUSED)
    window.press(button)
    wait_for(f"the end of {title!r}", lambda: window.find() is None)


def work_scene_windows(pid):
    window = Window(pid, "Open or Create Scene", "OpenScene.xml")
    rows = window.rows("SceneList")
    expect("scenes", [row.name for row in rows], ["Fire Drill Level 1", "Forklift Safety"])
    press(rows[1])
    wait_state(rows[1], pyatspi.STATE_SELECTED)
    window.press("ButtonNewScene")

    window = Window(pid, "New Scene", "NewScene.xml")
    edit = window.control("EditSceneName")
    wait_state(edit, pyatspi.STATE_FOCUSED)
    edit.queryEditableText().setTextContents("Caf\u00e9")
    expect("name", window.text("EditSceneName"), "Caf\u00e9")
    window.press("ButtonBack")
    Window(pid, "Open or Create Scene", "OpenScene.xml").press("ButtonLoadScene")


def choose_in_menu(opener, name):
    opener.press("ButtonMenu")
    wait_for("the menu", lambda: any(node.getRoleName() == "popup menu" for node in opener.nodes()))
    items = {node.name: node for node in opener.nodes() if node.getRoleName() == "menu item"}
    expect(f"{name} in the menu", name in items, True)
    press(items[name])


def work_tour(window):
    choose_in_menu(window, "Tour")
    wait_for("the tour", lambda: window.control("PanelTour").name == "A scene is made of branches")
    expect("panel", window.control("PanelTour").getRoleName(), "dialog")
    window.press("ButtonTourNext")
    wait_for("its next step", lambda: window.control("PanelTour").name == "Actions say what comes next")
    expect("text", window.control("LabelTour").name.startswith("The first one waits for a click"), True)
    window.press("ButtonTourLeave")
    wait_state(window.control("PanelTour"), pyatspi.STATE_SHOWING, False)


def work_settings(pid, opener):
    choose_in_menu(opener, "Settings\u2026")
    window = Window(pid, "Settings", "Settings.xml")
    wait_state(window.control("CheckKeepDrafts"), pyatspi.STATE_CHECKED)
    window.press("ButtonSettingsClose")
    wait_for("the end of the settings", lambda: window.find() is None)


def work_branch_editor(pid):
    window = Window(pid, "Quorvel", "BranchList.xml")
    expect("scene", window.control("LabelScene").name, "Fire Drill Level 1")
    work_tour(window)
    work_settings(pid, window)
    row = window.rows("BranchList")[0]
    kinds = [(node.getRoleName(), node.name, node.description) for node in window.nodes(row)
             if node.getRoleName() in ("combo box", "check box")]
    expect("row", kinds, [("combo box", "Action condition", "ComboConditions"),
                          ("combo box", "Action parameter", "ComboParameter"),
                          ("combo box", "Branch to activate", "ComboBranches"),
                          ("check box", "Activate immediately", "CheckImmediate")])
    wait_state(window.control("ButtonRemoveAction"), pyatspi.STATE_SENSITIVE, False)
    press(row)
    wait_state(window.control("ButtonRemoveAction"), pyatspi.STATE_SENSITIVE)
    branches = window.control("ComboBranchName")
    press(branches)
    wait_state(branches, pyatspi.STATE_EXPANDED)
    branches.clear_cache()
    press(branches[1])
    wait_for("the chosen branch", lambda: window.text("EditBranchName") == "Take extinguisher")
    press(branches)
    branches.clear_cache()
    press(branches[0])
    wait_state(window.control("CheckFirst"), pyatspi.STATE_CHECKED)
    window.press("ButtonExit")
    answer(pid, "Exit?", "Are you sure you want to exit?", "ButtonNo")
    window.press("ButtonEditZones")


def work_zone_editor(pid, layout):
    window = Window(pid, "Zone Edit", layout)
    window.press("OptionAddPoint")
    wait_state(window.control("OptionAddPoint"), pyatspi.STATE_CHECKED)
    wait_state(window.control("OptionMovePoint"), pyatspi.STATE_CHECKED, False)
    window.press("ButtonNext10")
    wait_for("the eleventh frame", lambda: window.text("EditCurrentFrame") == "10")
    window.press("ButtonAddZone")
    wait_for("the new zone", lambda: window.text("EditZone") == "Zone 1")
    wait_for("the step's name", lambda: window.control("ButtonUndo").name == "Undo: add zone")
    wait_state(window.control("EditTotalFrames"), pyatspi.STATE_EDITABLE, False)
    window.press("ButtonClose")
    answer(pid, "Close?", "Are you sure you want to close Zone Edit?", "ButtonYes")


def has_ended(pid):
    """Whether the program is gone; who started it has yet to ask for its result."""
    stat = pathlib.Path(f"/proc/{pid}/stat")
    return not stat.exists() or stat.read_text(errors="replace").rpartition(")")[2].split()[0] == "Z"


def main():
    pid = int(sys.argv[1])
    for kind in ("property-change:accessible-name", "text-changed", "state-changed"):
        pyatspi.Registry.registerEventListener(note, "object:" + kind)
    work_scene_windows(pid)
    work_branch_editor(pid)
    work_zone_editor(pid, "ZoneEdit.xml" if int(os.environ["SCREEN_HEIGHT"]) >= SMALL_SCREEN else "ZoneEditSmall.xml")
    wait_for(f"all of {EVENTS} among {heard}", lambda: EVENTS <= heard)
    Window(pid, "Quorvel", "BranchList.xml").press("ButtonExit")
    answer(pid, "Exit?", "Are you sure you want to exit?", "ButtonYes")
    wait_for("the program's end", lambda: has_ended(pid))


main()
