#!/usr/bin/env python3
"""The whole program on a Wayland compositor, which stands on a virtual display of its own: windows are
moved, made as large as the screen and closed with the mouse and the keyboard, and looked at in pictures
of the display.

Usage: wayland_runs.py PROGRAM DATA_FOLDER    ends with 77 where weston is not installed
"""

import glob
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, DATA = sys.argv[1:3]
LONGEST_WAIT = 60  # seconds until something counts as missing
WIDTH, HEIGHT = 1400, 1000
EDGE = 8  # of the display, where the mouse is parked
GROUND = (0x20, 0x40, 0x60)
SOCKET = "wayland-quorvel"
FIRST_WIDTH, EDITOR_WIDTH, SETTINGS_WIDTH = 880, 884, 472
# In the windows:
CAPTION = (300, 15)
COMBO = (184, 80)
MENU = (612, 17)
MENU_ROWS_TO_SETTINGS = 6
EMPTY_ROWS = (400, 500)
SKIN, SKIN_DARK = (225, 102), (225, 144)  # the list in the settings, and its second row when it is open
BELOW = 30  # from the middle of a control into what opens below it
NEEDED = ("weston", "Xvfb", "xdotool", "import")


def missing():
    tools = [name for name in NEEDED if not shutil.which(name)]
    plugins = glob.glob("/usr/lib/*/qt6/plugins/platforms/libqwayland*")
    return tools + ([] if plugins else ["Qt's plugin for Wayland"])


def wait_for(what, find):
    """The first true answer of `find`."""
    end = time.monotonic() + LONGEST_WAIT
    while time.monotonic() < end:
        found = find()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(f"{what}: waited for in vain")


class WaylandCase(unittest.TestCase):
    width, height = WIDTH, HEIGHT  # of the display
    outputs = ""  # of the compositor, in its settings; none: one that fills the display

    def setUp(self):
        self.place = pathlib.Path(tempfile.mkdtemp(prefix="quorvel-wayland-"))
        self.addCleanup(shutil.rmtree, self.place)
        self.folder = self.place / "Programs" / "Quorvel"
        for name in ("UI", "Scenes"):
            shutil.copytree(os.path.join(DATA, name), self.folder / name)
        shutil.copy(os.path.join(DATA, "Translations.ini"), self.folder)
        self.environment = {"HOME": str(self.place), "XDG_RUNTIME_DIR": str(self.place), "LC_ALL": "C.UTF-8",
                            "PATH": os.environ["PATH"]}
        for name in ("LSAN_OPTIONS", "QT_LOGGING_RULES", "__EGL_VENDOR_LIBRARY_FILENAMES"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        self.environment["DISPLAY"] = self.start_display()
        self.start_compositor()
        self.environment.update(WAYLAND_DISPLAY=SOCKET, QT_QPA_PLATFORM="wayland")

    def start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, **options)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def start_display(self):
        reading, writing = os.pipe()
        self.start("Xvfb", "-displayfd", str(writing), "-screen", "0", f"{self.width}x{self.height}x24",
                   "-nolisten", "tcp", pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as stream:
            return ":" + stream.readline().strip()

    def start_compositor(self):
        config = self.place / "weston.ini"
        config.write_text("[core]\nidle-time=0\n[shell]\npanel-position=none\nlocking=false\nanimation=none\n"
                          "close-animation=none\nstartup-animation=none\nfocus-animation=none\n"
                          f"background-color=0xff{GROUND[0]:02x}{GROUND[1]:02x}{GROUND[2]:02x}\n{self.outputs}",
                          encoding="ascii")
        (self.place / "weston.log").touch()
        screens = ["--output-count=2"] if self.outputs else [f"--width={self.width}", f"--height={self.height}"]
        self.start("weston", "--backend=x11-backend.so", "--use-pixman", *screens, f"--socket={SOCKET}",
                   f"--config={config}", f"--log={self.place}/weston.log",
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for("the compositor's ground", lambda: (self.place / SOCKET).exists() and self.is_empty())
        screen = wait_for("the compositor's window", lambda: self.tell("search", "--onlyvisible", "--class", "."))
        self.do("windowfocus", screen.split()[-1])
        for _ in range(2):  # the compositor follows the mouse by its steps, from an edge on truly
            self.do("mousemove", str(WIDTH - 1), str(HEIGHT - 1))
            self.do("mousemove", "0", "0")

    def do(self, *command):
        """Mouse and keyboard."""
        subprocess.run(["xdotool", *command], check=True, env=self.environment, stdout=subprocess.DEVNULL)

    def tell(self, *command):
        return subprocess.run(["xdotool", *command], check=False, env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True).stdout

    def picture(self):
        data = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], check=True, env=self.environment,
                              stdout=subprocess.PIPE).stdout
        self.assertEqual(len(data), self.width * self.height * 3)
        return data

    def is_empty(self):
        return self.picture().count(bytes(GROUND)) > self.width * self.height * 7 // 10

    def box(self):
        """Left, top, right and bottom of all that stands on the ground; none: nothing."""
        data, ground = self.picture(), bytes(GROUND)
        rows = [data[y * WIDTH * 3:(y + 1) * WIDTH * 3] for y in range(HEIGHT)]
        full = [y for y, row in enumerate(rows[:-EDGE]) if row != ground * WIDTH]
        if not full:
            return None
        middle = rows[(full[0] + full[-1]) // 2]
        pixels = [x for x in range(WIDTH - EDGE) if middle[3 * x:3 * x + 3] != ground]
        return pixels and (pixels[0], full[0], pixels[-1] + 1, full[-1] + 1)

    def steady_box(self, what, is_right):
        """Once it stands still; the mouse waits in the corner, which box() leaves out."""
        self.do("mousemove", str(WIDTH - 1), str(HEIGHT - 1))
        last = [None]

        def look():
            before, last[0] = last[0], self.box()
            return last[0] if last[0] and last[0] == before and is_right(last[0]) else None

        return wait_for(what, look)

    def still_picture(self):
        pictures = [None]

        def look():
            pictures.append(self.picture())
            return pictures[-1] if pictures[-1] == pictures[-2] else None

        return wait_for("a picture that stays", look)

    def changed(self, before):
        """Left, top, right and bottom of what is not as in that picture; none: nothing."""
        now = self.picture()
        rows = [(y, now[start:start + WIDTH * 3], before[start:start + WIDTH * 3])
                for y, start in enumerate(range(0, len(now), WIDTH * 3))]
        rows = [(y, [x // 3 for x, (one, other) in enumerate(zip(new, old)) if one != other])
                for y, new, old in rows if new != old]
        if not rows:
            return None
        return min(at[0] for _, at in rows), rows[0][0], max(at[-1] for _, at in rows) + 1, rows[-1][0] + 1

    def window_of(self, width, edge):
        """The box of the window so wide, by the lines of that colour above and below it."""
        data = self.picture()
        places = []
        for y in range(HEIGHT):
            row = data[y * WIDTH * 3:(y + 1) * WIDTH * 3]
            runs = [(run.start() // 3, len(run[0]) // 3) for run in re.finditer(b"(?s)(?:%s)+" % re.escape(edge), row)]
            places += [(left, y) for left, length in runs if length == width]
        if not places:
            return None
        (left, top), (_, bottom) = places[0], places[-1]
        return (left, top, left + width, bottom + 1) if bottom > top else None

    def follows(self, before):
        """Whether the mouse takes the window along: only when its program has asked for that."""
        self.do("mousemove_relative", "--sync", "--", "0", "9")
        there = self.changed(before)
        self.do("mousemove_relative", "--sync", "--", "0", "-9")
        return there and there[2] - there[0] > WIDTH // 4

    def drag(self, box, x, y):
        """Moves the window so far, by its caption; its box then."""
        self.hover(box, CAPTION)
        before = self.picture()
        self.do("mousedown", "1")
        wait_for("a window that follows the mouse", lambda: self.follows(before))
        for step in range(8):
            by = [way * (step + 1) // 8 - way * step // 8 for way in (x, y)]
            self.do("mousemove_relative", "--sync", "--", *map(str, by))
        self.do("mouseup", "1")
        return box[0] + x, box[1] + y, box[2] + x, box[3] + y

    def hover(self, box, place):
        self.do("mousemove", str(box[0] + place[0]), str(box[1] + place[1]))

    def wait_below(self, box, place, is_changed, before):
        """Until the picture right below that place is another one than `before`, or that again."""
        def look():
            at = ((box[1] + place[1] + BELOW) * WIDTH + box[0] + place[0]) * 3
            row = self.picture()[at:at + 3 * BELOW]
            return row if before is None or (row != before) == is_changed else None

        return wait_for("a list or a tip", look)

    def open_and_close(self, box, place, opening, closing):
        """Something that appears below the mouse and goes again."""
        self.hover(box, place)
        before = self.wait_below(box, place, True, None)
        self.do(*opening)
        self.wait_below(box, place, True, before)
        self.do(*closing)
        self.wait_below(box, place, False, before)


class OneScreen(WaylandCase):
    def test_windows_are_moved_enlarged_and_closed(self):
        program = self.start(PROGRAM, cwd=self.folder, stderr=subprocess.PIPE, text=True)
        box = self.steady_box("the first window", lambda box: box[2] - box[0] == FIRST_WIDTH)
        drawn = self.drag(box, -80, -160)
        self.steady_box("the place that it was drawn to", lambda now: now == drawn)

        self.do("key", "Return")
        small = self.steady_box("the branch editor", lambda box: box[2] - box[0] == EDITOR_WIDTH)
        self.open_and_close(small, COMBO, ("click", "1"), ("key", "Escape"))
        full = (0, 0, WIDTH - EDGE, HEIGHT - EDGE)
        for enlarge in (("key", "F11"), ("click", "--repeat", "2", "--delay", "50", "1")):
            for box in (full, small):
                now = small if box == full else full
                self.hover(now, CAPTION)
                self.do(*enlarge)
                self.steady_box(f"{enlarge}: {box}", lambda now, wanted=box: now == wanted)
        self.open_and_close(small, MENU, ("mousemove_relative", "1", "0"), ("mousemove", "0", "0"))

        # A window that goes at the moment at which a tip of it comes.
        for delay in range(350, 650, 50):
            self.do("key", "F1")
            keys = self.steady_box("the list of keys", lambda box: box != small)
            self.do("mousemove", str(keys[2] - 50), str(keys[3] - 20), "sleep", str(delay / 1000), "key", "Escape")
            self.steady_box("the branch editor alone", lambda box: box == small)
        program.terminate()
        errors = program.communicate(timeout=LONGEST_WAIT)[1]
        self.assertEqual((program.returncode, errors), (0, ""))
        page = (self.folder / "Log.html").read_text(encoding="utf-8")
        self.assertEqual(re.findall("COLOR=#FF0000>Error: (.*?)</FONT>", page, re.DOTALL), [])

    def test_menus_and_lists_open_at_their_places_in_windows_of_windows_too(self):
        self.start(PROGRAM, cwd=self.folder)
        self.steady_box("the first window", lambda box: box[2] - box[0] == FIRST_WIDTH)
        self.do("key", "Return")
        self.steady_box("the branch editor", lambda box: box[2] - box[0] == EDITOR_WIDTH)
        self.do("key", "Escape")  # the tour
        editor = self.steady_box("the branch editor", lambda box: box[2] - box[0] == EDITOR_WIDTH)

        self.hover(editor, EMPTY_ROWS)
        before = self.still_picture()
        self.do("click", "3")
        menu = wait_for("the menu of the rows", lambda: self.changed(before))
        self.assertEqual(menu[0], editor[0] + EMPTY_ROWS[0])
        self.assertIn(menu[1] - editor[1] - EMPTY_ROWS[1], range(4))
        self.do("key", "Escape")
        wait_for("the editor without its menu", lambda: self.changed(before) is None)

        # The button of the menu at the edge of the display, and the rest of the window outside.
        editor = self.drag(editor, WIDTH - 3 * EDGE - editor[0] - MENU[0], 0)
        self.steady_box("the window at the edge", lambda box: box[0] == editor[0] and box[2] == WIDTH - EDGE)
        self.hover(editor, MENU)
        self.do("click", "1")
        self.do("key", "--repeat", str(MENU_ROWS_TO_SETTINGS), "Down")
        self.do("key", "Return")
        at = (editor[1] * WIDTH + editor[0] + CAPTION[0]) * 3
        edge = self.picture()[at:at + 3]
        settings = wait_for("the settings", lambda: self.window_of(SETTINGS_WIDTH, edge))

        # A list of a window of the window, which was moved.
        drawn = self.drag(settings, EDGE - settings[0], EDGE - settings[1])
        wait_for("the settings in the corner", lambda: self.window_of(SETTINGS_WIDTH, edge) == drawn)
        settings = drawn
        self.open_and_close(settings, SKIN, ("click", "1"), ("key", "Escape"))
        self.assertEqual(self.window_of(SETTINGS_WIDTH, edge), settings, "Esc closes the list and not its window")
        self.do("click", "1")
        self.wait_below(settings, SKIN, True, None)
        self.hover(settings, SKIN_DARK)
        self.do("click", "1")
        at = ((settings[1] + CAPTION[1]) * WIDTH + settings[0] + CAPTION[0]) * 3
        wait_for("the dark skin", lambda: max(self.picture()[at:at + 3]) < 0x60)


class MixedScreens(WaylandCase):
    """A screen, and right of it one with twice the pixels."""

    LEFT, RIGHT = (1000, 750), (1900, 1450)
    width, height = LEFT[0] + RIGHT[0], RIGHT[1]
    outputs = f"[output]\nname=X1\nmode={LEFT[0]}x{LEFT[1]}\n" \
              f"[output]\nname=X2\nmode={RIGHT[0] // 2}x{RIGHT[1] // 2}\nscale=2\n"

    def is_empty(self):
        windows = self.tell("search", "--onlyvisible", "--class", ".").split()
        if len(windows) < 2:
            return False
        self.do("windowmove", windows[1], str(self.LEFT[0]), "0")
        return super().is_empty()

    def draw(self, start, end):
        """Moves the window at a place, as compositors offer it. Stops at the edge of the screen."""
        self.do("mousemove", *map(str, start), "keydown", "super", "mousedown", "1")
        for step in range(1, 21):
            self.do("mousemove", *(str(a + (b - a) * step // 20) for a, b in zip(start, end)), "sleep", "0.02")
        self.do("mouseup", "1", "keyup", "super")

    def is_sharp(self):
        """Whether neighbours differ as only those of a picture do that was not enlarged, and not just at its edges."""
        data = self.picture()
        for y in range(0, self.height, 4):
            row = data[(y * self.width + self.LEFT[0]) * 3:(y + 1) * self.width * 3]
            if sum(abs(one - other) > 160 for one, other in zip(row, row[3:])) > 12:
                return True
        return False

    def test_a_window_is_sharp_on_the_screen_that_it_is_moved_to(self):
        # The mouse stays on an empty place: a control under it would have the window drawn anew.
        self.do("mousemove", "300", "300")
        self.start(PROGRAM, cwd=self.folder)
        below = (500 + self.width * 550) * 3
        wait_for("the first window", lambda: self.picture()[below:below + 3] != bytes(GROUND))
        self.draw((500, 550), (self.LEFT[0] + 100, 550))
        self.draw((self.LEFT[0] + 100, 1100), (self.LEFT[0] + 1140, 1100))
        wait_for("the window in the pixels of the other screen", self.is_sharp)


if __name__ == "__main__":
    if missing():
        print("skipped: not installed: " + ", ".join(missing()))
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
