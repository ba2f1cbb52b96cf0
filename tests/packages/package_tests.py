#!/usr/bin/env python3
"""Installs each package, starts the editor it installed, and removes it again.

Usage: package_tests.py PACKAGE_FOLDER VERSION [TEST...]

The virtual display ($DISPLAY) must have no window manager. Exit 0 when all is well, 1 otherwise.
"""

import glob
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PACKAGES, VERSION = os.path.abspath(sys.argv[1]), sys.argv[2]
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
WINE = os.path.join(ROOT, "tools", "wine-run.sh")
WINE_KEEP = os.path.join(ROOT, "tools", "wine-keep.sh")
LONGEST_WAIT = 240  # seconds until a step counts as hanging
FIRST_TITLE = "Open or Create Scene"
SKIN_TABLE = os.path.join(ROOT, "tests", "data", "skin", "layout.tsv")


def run(*command, **options):
    """The output of a command that must succeed."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            timeout=LONGEST_WAIT, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} ended with {result.returncode}:\n{result.stdout}")
    return result.stdout


def wait_for(what, condition):
    deadline = time.monotonic() + LONGEST_WAIT
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"no {what} within {LONGEST_WAIT} s")
        time.sleep(0.05)


def middle_of_exit_button():
    with open(SKIN_TABLE, encoding="utf-8") as table:
        for line in table:
            fields = line.rstrip("\n").split("\t")
            if fields[:2] == ["OpenScene.xml", "ButtonExit"]:
                left, top, width, height = map(int, fields[2:6])
                return str(left + width // 2), str(top + height // 2)
    raise AssertionError("no Exit button in the table of the skin")


def find_first_window():
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", FIRST_TITLE],
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
    return found.stdout.split()


def exit_by_click(process):
    """Waits for the first window and presses its Exit button until it is gone."""
    window = wait_for("first window", lambda: find_first_window() or process.poll())
    if process.poll():
        raise AssertionError(f"the program ended with {process.returncode}")
    window = window[-1]
    x, y = middle_of_exit_button()

    def pressed():
        # A click before the first paint may go unheard.
        subprocess.run(["xdotool", "mousemove", "--window", window, x, y, "click", "1"],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        return not find_first_window()

    wait_for("end of the first window", pressed)


class PackageTest(unittest.TestCase):
    def setUp(self):
        self.place = tempfile.mkdtemp(prefix="quorvel-packages-")
        self.addCleanup(shutil.rmtree, self.place, ignore_errors=True)

    def package(self, pattern):
        found = glob.glob(os.path.join(PACKAGES, pattern))
        self.assertEqual(len(found), 1, f"{pattern}: {found}")
        return found[0]

    def put(self, folder, name, text=""):
        path = os.path.join(self.place, folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as stream:
            stream.write(text)
        return path

    def assert_clean_log(self, editor):
        path = os.path.join(editor, "Log.html")
        wait_for("log page", lambda: os.path.exists(path) and os.path.getsize(path))
        with open(path, encoding="utf-8") as stream:
            page = stream.read()
        self.assertIn("Logging ended", page)
        self.assertNotIn("Error: ", page)


class Linux(PackageTest):
    """The start script gives the user a product tree; the installed one is never written to."""

    def environment(self):
        own = {"HOME": os.path.join(self.place, "home"), "QT_QPA_PLATFORM": "xcb",
               "XDG_RUNTIME_DIR": self.place, "LC_ALL": "C.UTF-8"}
        return {**own, **{name: os.environ[name] for name in ("PATH", "DISPLAY", "XAUTHORITY")
                          if name in os.environ}}

    def snapshot(self, folder):
        return {os.path.join(at, name): os.stat(os.path.join(at, name)).st_mtime_ns
                for at, _, names in os.walk(folder) for name in names}

    def use_installed(self, usr):
        inspect = os.path.join(usr, "bin", "quorvel-inspect")
        self.assertEqual(run(inspect, "--version"), f"quorvel-inspect {VERSION}\n")
        before = self.snapshot(usr)
        editor = os.path.join(self.place, "home", ".local", "share", "quorvel", "Programs", "Quorvel")
        for language in ("English", "German"):
            process = subprocess.Popen([os.path.join(usr, "bin", "quorvel")], env=self.environment(),
                                       cwd="/", stderr=subprocess.PIPE)
            exit_by_click(process)
            self.assertEqual(process.communicate(timeout=LONGEST_WAIT)[1], b"")
            self.assertEqual(process.returncode, 0)
            self.assert_clean_log(editor)
            # The second start finds what the user has changed meanwhile, and keeps it.
            settings = os.path.join(editor, "..", "..", "Settings", "Settings.ini")
            with open(settings, encoding="utf-8") as stream:
                self.assertIn(language, stream.read())
            self.put(os.path.dirname(settings), "Settings.ini", "language = German\n")
            shutil.rmtree(os.path.join(editor, "Scenes", "Forklift Safety"), ignore_errors=True)
        scenes = os.path.join(editor, "Scenes")
        self.assertFalse(os.path.exists(os.path.join(scenes, "Forklift Safety")))
        for scene in os.listdir(scenes):
            self.assertIn('"branches"', run(inspect, "scene", os.path.join(scenes, scene)))
        self.assertEqual(self.snapshot(usr), before)

    def dpkg(self, *arguments):
        system = os.path.join(self.place, "system")
        run("fakeroot", "dpkg", f"--root={system}", f"--log={self.place}/dpkg.log", "--force-not-root",
            "--force-depends", "--force-script-chrootless", *arguments)
        return system

    def test_debian_package(self):
        for folder in ("info", "updates", "triggers"):
            os.makedirs(os.path.join(self.place, "system", "var", "lib", "dpkg", folder))
        self.put("system/var/lib/dpkg", "status")
        package = self.package("quorvel_*.deb")
        self.assertEqual(run("dpkg-deb", "--field", package, "Version").strip(), VERSION)
        system = self.dpkg("--install", package)
        self.use_installed(os.path.join(system, "usr"))
        for name in ("applications/quorvel.desktop", "icons/hicolor/256x256/apps/quorvel.png"):
            self.assertTrue(os.path.exists(os.path.join(system, "usr/share", name)), name)
        self.dpkg("--remove", "quorvel")
        self.assertFalse(os.path.exists(os.path.join(system, "usr")))

    def test_archive(self):
        run("tar", "-xf", self.package("quorvel-*.tar.gz"), "-C", self.place)
        self.use_installed(glob.glob(os.path.join(self.place, "quorvel-*"))[0])


class Windows(PackageTest):
    """A user's profile of its own: a fresh Wine prefix for each package."""

    def setUp(self):
        super().setUp()
        self.environment = dict(os.environ, WINEPREFIX=os.path.join(self.place, "wine"))
        run(WINE_KEEP, "start", env=self.environment)
        self.addCleanup(run, WINE_KEEP, "stop", env=self.environment)

    def wine(self, *command, cwd=None):
        return run(WINE, *command, env=self.environment, cwd=cwd)

    def start(self, *command, cwd=None):
        return subprocess.Popen([WINE, *command], env=self.environment, cwd=cwd,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def profile(self, *parts):
        users = os.path.join(self.place, "wine", "drive_c", "users")
        user = [name for name in os.listdir(users) if name != "Public"][0]
        return os.path.join(users, user, *parts)

    def assert_inspects(self, editor):
        self.assertEqual(self.wine("quorvel-inspect.exe", "--version", cwd=editor).strip(),
                         f"quorvel-inspect {VERSION}")
        scene = self.wine("quorvel-inspect.exe", "scene", "Scenes/Fire Drill Level 1", cwd=editor)
        self.assertIn('"branches"', scene)

    def test_zip(self):
        run("cmake", "-E", "tar", "xf", self.package("Quorvel-*-windows.zip"), cwd=self.place)
        editor = os.path.join(self.place, f"Quorvel-{VERSION}", "Programs", "Quorvel")
        self.assert_inspects(editor)
        process = self.start("Quorvel.exe", cwd=editor)
        exit_by_click(process)
        self.assertEqual(process.wait(timeout=LONGEST_WAIT), 0)
        self.assert_clean_log(editor)

    def set_up(self):
        self.wine(self.package("Quorvel-*-setup.exe"), "/S")

    def uninstall(self, product):
        # Silent uninstallers go on in a copy of themselves.
        self.wine(os.path.join(product, "Uninstall.exe"), "/S")
        menu = self.profile("AppData", "Roaming", "Microsoft", "Windows", "Start Menu", "Programs",
                            "Quorvel")
        wait_for("end of the uninstaller", lambda: not os.path.exists(menu))

    def test_installer(self):
        self.set_up()
        product = self.profile("AppData", "Local", "Quorvel")
        editor = os.path.join(product, "Programs", "Quorvel")
        self.assert_inspects(editor)
        # By the start menu's entry: it says in which folder the program works.
        menu = self.profile("AppData", "Roaming", "Microsoft", "Windows", "Start Menu", "Programs",
                            "Quorvel")
        starter = self.start("start", "/unix", os.path.join(menu, "Quorvel.lnk"), cwd="/")
        exit_by_click(starter)
        self.assertEqual(starter.wait(timeout=LONGEST_WAIT), 0)
        self.assert_clean_log(editor)
        key = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"
        self.assertIn(VERSION, self.wine("reg", "query", key, "/v", "DisplayVersion"))

        # An upgrade keeps scenes and settings and brings the rest anew.
        mine = self.put(os.path.join(editor, "Scenes", "Mine"), "Scene.xml", "<Scene/>")
        settings = self.put(os.path.join(product, "Settings"), "Settings.ini", "language = Dutch\n")
        old_image = self.put(os.path.join(editor, "UI"), "OfAnOldSkin.png")
        texts = self.put(editor, "Translations.ini", "old")
        shutil.rmtree(os.path.join(editor, "Scenes", "Fire Drill Level 1"))
        self.set_up()
        with open(settings, encoding="utf-8") as stream:
            self.assertEqual(stream.read(), "language = Dutch\n")
        self.assertGreater(os.path.getsize(texts), len("old"))
        self.assertFalse(os.path.exists(old_image))
        self.assertFalse(os.path.exists(os.path.join(editor, "Scenes", "Fire Drill Level 1")))

        self.uninstall(product)
        left = [os.path.join(at, name) for at, _, names in os.walk(product) for name in names]
        self.assertIn(mine, left)
        self.assertEqual([path for path in left
                          if not path.startswith(os.path.join(editor, "Scenes"))], [])

    def test_a_running_editor_refuses_the_upgrade(self):
        self.set_up()
        editor = self.profile("AppData", "Local", "Quorvel", "Programs", "Quorvel")
        texts = self.put(editor, "Translations.ini", "; mine\n[Language:English]\n")
        process = self.start("Quorvel.exe", cwd=editor)
        wait_for("first window", find_first_window)
        upgrade = self.start(self.package("Quorvel-*-setup.exe"), "/S")
        self.assertEqual(upgrade.wait(timeout=LONGEST_WAIT), 2)
        with open(texts, encoding="utf-8") as stream:
            self.assertTrue(stream.read().startswith("; mine"))
        exit_by_click(process)
        self.assertEqual(process.wait(timeout=LONGEST_WAIT), 0)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[3:])
