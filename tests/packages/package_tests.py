#!/usr/bin/env python3
"""Installs each package, starts the editor it installed, and removes it again.

Usage: package_tests.py PACKAGE_FOLDER VERSION [TEST...]

The virtual display ($DISPLAY) must have no window manager. Exit 0 when all is well, 1 otherwise.
"""

import glob
import hashlib
import json
import os
import pathlib
import resource
import shutil
import struct
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
# English and German
FIRST_TITLE = "^(Open or Create Scene|Szene öffnen oder anlegen)$"
DEMO = ["Fire Drill Level 1", "Forklift Safety"]
# One film of each decoder and container that a recording may need.
FILMS = {
    "a film.mp4": ["-c:v", "libx264", "-c:a", "aac"],
    "bright.mov": ["-c:v", "libx265", "-x265-params", "log-level=none", "-pix_fmt", "yuv420p10le",
                   "-color_trc", "smpte2084", "-color_primaries", "bt2020", "-colorspace",
                   "bt2020nc", "-c:a", "pcm_s16le"],
    "web.webm": ["-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-c:a", "libopus"],
    "new.mkv": ["-c:v", "libsvtav1", "-preset", "12", "-c:a", "flac"],
    "camera.mts": ["-c:v", "libx264", "-c:a", "ac3", "-f", "mpegts"],
    "studio.mxf": ["-c:v", "mpeg2video", "-c:a", "pcm_s16le", "-ar", "48000"],
    "old.wmv": ["-c:v", "wmv2", "-c:a", "wmav2"],
    "tape.dv": ["-target", "pal-dv"],
}
SKIN_TABLE = os.path.join(ROOT, "tests", "data", "skin", "layout.tsv")


def run(*command, **options):
    """The output of a command that must succeed."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            timeout=LONGEST_WAIT, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} ended with {result.returncode}:\n{result.stdout}")
    return result.stdout


def digest(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


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


def find_window(title):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title],
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
    return found.stdout.split()


def find_first_window():
    return find_window(FIRST_TITLE)


def exit_by_click(process, opened=None):
    """Waits for the first window and presses its Exit button until it is gone. Before that, opens the
    manual by its key, which writes the file `opened`, when one is given."""
    window = wait_for("first window", lambda: find_first_window() or process.poll())
    if process.poll():
        told = process.communicate()[1]
        raise AssertionError(f"the program ended with {process.returncode}: {told}")
    window = window[-1]
    x, y = middle_of_exit_button()

    def manual_opened():
        # A key before the first paint may go unheard.
        subprocess.run(["xdotool", "windowfocus", window, "key", "shift+F1"],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        return os.path.exists(opened)

    if opened:
        wait_for("manual", manual_opened)

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
        # What opens the pages of the manual, on Windows by way of Wine.
        self.opened = os.path.join(self.place, "opened")
        self.script("bin", "xdg-open", f'echo "$1" >"{self.opened}"')
        self.path = os.path.join(self.place, "bin") + ":" + os.environ["PATH"]

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

    def script(self, folder, name, body):
        path = self.put(folder, name, "#!/bin/sh\n" + body + "\n")
        os.chmod(path, 0o755)
        return path

    def assert_opened_the_manual(self):
        """Its page about the first window."""
        self.assertRegex(pathlib.Path(self.opened).read_text(encoding="utf-8"), "Manual/(German/)?OpenScene.html")
        os.remove(self.opened)

    def contents(self, folder):
        """Path -> digest of every file below. The bytes would keep a failed comparison busy for hours: it
        looks for the differences in their texts."""
        paths = [os.path.join(at, name) for at, _, names in os.walk(folder) for name in names]
        return {path: digest(path) for path in paths}

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
               "XDG_RUNTIME_DIR": self.place, "LC_ALL": "C.UTF-8", "PATH": self.path}
        return {**own, **{name: os.environ[name] for name in ("DISPLAY", "XAUTHORITY")
                          if name in os.environ}}

    def use_installed(self, usr):
        inspect = os.path.join(usr, "bin", "quorvel-inspect")
        self.assertEqual(run(inspect, "--version"), f"quorvel-inspect {VERSION}\n")
        before = self.contents(usr)
        editor = os.path.join(self.place, "home", ".local", "share", "quorvel", "Programs", "Quorvel")
        self.cut_the_first_start_short(usr)
        for language in ("English", "German"):
            process = subprocess.Popen([os.path.join(usr, "bin", "quorvel")], env=self.environment(),
                                       cwd="/", stderr=subprocess.PIPE)
            exit_by_click(process, self.opened)
            self.assert_opened_the_manual()
            self.assertEqual(process.communicate(timeout=LONGEST_WAIT)[1], b"")
            self.assertEqual(process.returncode, 0)
            self.assert_clean_log(editor)
            self.assertLessEqual(set(os.listdir(os.path.join(editor, "Scenes"))), set(DEMO))
            self.assertTrue(os.path.exists(os.path.join(editor, "Manual", "index.html")))
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
        self.assertEqual(self.contents(usr), before)

    def cut_the_first_start_short(self, usr):
        """By the end of the start script, then by a folder that cannot be made, which is shown."""
        cp = self.script("killer", "cp", 'for to; do :; done\nmkdir "$to"; kill -9 0')
        environment = dict(self.environment(), PATH=os.path.dirname(cp) + ":" + self.path)
        start = os.path.join(usr, "bin", "quorvel")
        self.assertEqual(subprocess.call([start], env=environment, start_new_session=True), -9)
        # Several at once go on from there; a message box fails them.
        environment = dict(self.environment(), QT_QPA_PLATFORM="none")
        starts = [subprocess.Popen([start, "--scenes"], env=environment) for _ in range(8)]
        self.assertEqual([process.wait(timeout=LONGEST_WAIT) for process in starts], [0] * len(starts))
        editor = os.path.join(environment["HOME"], ".local", "share", "quorvel", "Programs", "Quorvel")
        run("diff", "-r", os.path.join(usr, "share", "quorvel", "Scenes"), os.path.join(editor, "Scenes"))
        self.assertEqual(glob.glob(os.path.join(editor, "*.part")), [])

        environment = dict(self.environment(), QUORVEL_HOME=os.path.join(cp, "home"))
        process = subprocess.Popen([start], env=environment, stderr=subprocess.PIPE, text=True)
        box = wait_for("message box", lambda: find_window("^Quorvel$"))[-1]
        wait_for("its end", lambda: subprocess.call(["xdotool", "windowfocus", box, "key", "Return"],
                                                    stderr=subprocess.DEVNULL) or process.poll())
        self.assertIn(f"{cp}/home/Programs/Quorvel cannot be prepared", process.communicate()[1])
        self.assertEqual(process.returncode, 1)

    def assert_hardened(self, program):
        """Bound at the start, at any address, with guards of the stack and of copies."""
        dynamic = run("readelf", "--dynamic", "--symbols", "--wide", program)
        for sign in (r"Flags: NOW PIE\n", "__stack_chk_fail@", "_chk@"):
            self.assertRegex(dynamic, sign)

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
        for name in ("lib/quorvel/Quorvel", "bin/quorvel-inspect"):
            self.assert_hardened(os.path.join(system, "usr", name))
        share = os.path.join(system, "usr", "share")
        for size in ("scalable/apps/quorvel.svg", "256x256/apps/quorvel.png"):
            self.assertTrue(os.path.exists(os.path.join(share, "icons/hicolor", size)), size)
        run("desktop-file-validate", os.path.join(share, "applications", "quorvel.desktop"))
        run("appstreamcli", "validate", "--no-net", "--explain",
            os.path.join(share, "metainfo", "invalid.quorvel.Quorvel.metainfo.xml"))
        run("lintian", "--allow-root", "--tag-display-limit", "0", "--fail-on", "error,warning", package)
        self.dpkg("--remove", "quorvel")
        self.assertFalse(os.path.exists(os.path.join(system, "usr")))

    def test_archive(self):
        run("tar", "-xf", self.package("quorvel-*.tar.gz"), "-C", self.place)
        self.use_installed(glob.glob(os.path.join(self.place, "quorvel-*"))[0])


class Windows(PackageTest):
    """A user's profile of its own: a fresh Wine prefix for each package."""

    def setUp(self):
        super().setUp()
        # The home is where Wine has the user's documents.
        self.home = os.path.dirname(self.put("home", "of the user"))
        self.environment = dict(os.environ, WINEPREFIX=os.path.join(self.place, "wine"), PATH=self.path,
                                HOME=self.home)
        run(WINE_KEEP, "start", env=self.environment)
        self.addCleanup(run, WINE_KEEP, "stop", env=self.environment)

    def wine(self, *command, cwd=None):
        return run(WINE, *command, env=self.environment, cwd=cwd)

    def start(self, *command, cwd=None, **options):
        return subprocess.Popen([WINE, *command], env=self.environment, cwd=cwd,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)

    def exit_code(self, *command, **options):
        return self.start(*command, **options).wait(timeout=LONGEST_WAIT)

    def profile(self, *parts):
        users = os.path.join(self.place, "wine", "drive_c", "users")
        user = [name for name in os.listdir(users) if name != "Public"][0]
        return os.path.join(users, user, *parts)

    def assert_inspects(self, editor, programs=""):
        inspect = os.path.join(programs, "quorvel-inspect.exe")
        self.assertEqual(self.wine(inspect, "--version", cwd=editor).strip(), f"quorvel-inspect {VERSION}")
        scene = self.wine(inspect, "scene", "Scenes/Fire Drill Level 1", cwd=editor)
        self.assertIn('"branches"', scene)

    def assert_imports(self, editor):
        """What phones film becomes a clip of a scene, by the converter that came along."""
        films = [os.path.join(self.place, name) for name in FILMS]
        for film, coding in zip(films, FILMS.values()):
            run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc2=size=320x180:rate=25:duration=1",
                "-f", "lavfi", "-i", "sine=duration=1", *coding, film)
        into = os.path.join(self.place, "imported")
        os.mkdir(into)
        lines = self.wine("quorvel-inspect.exe", "import", *("Z:" + film for film in films), "--into",
                          "Z:" + into, "--json", cwd=editor)
        clips = [json.loads(line) for line in lines.splitlines() if line.startswith("{")]
        self.assertEqual([(clip["file"], clip["frames"], clip["sound"]) for clip in clips],
                         [(os.path.splitext(name)[0] + ".ogv", 25, True) for name in FILMS])
        self.assertEqual(sorted(os.listdir(into)), sorted(clip["file"] for clip in clips))
        self.assertTrue(os.path.exists(os.path.join(editor, "Licences", "ffmpeg-LGPL-2.1.txt")))
        self.package("Quorvel-*-converter-sources.zip")

    def test_zip(self):
        run("cmake", "-E", "tar", "xf", self.package("Quorvel-*-windows.zip"), cwd=self.place)
        editor = os.path.join(self.place, f"Quorvel-{VERSION}", "Programs", "Quorvel")
        self.assert_inspects(editor)
        self.assert_imports(editor)
        process = self.start("Quorvel.exe", cwd=editor)
        exit_by_click(process)
        self.assertEqual(process.wait(timeout=LONGEST_WAIT), 0)
        self.assert_clean_log(editor)

    def assert_properties(self, editor):
        """Safe to load anywhere, no time of the link; the names that Windows shows are its own."""
        for name in ("Quorvel.exe", "quorvel-inspect.exe"):
            with open(os.path.join(editor, name), "rb") as stream:
                program = stream.read()
            header = struct.unpack_from("<I", program, 0x3C)[0]
            self.assertEqual(struct.unpack_from("<I", program, header + 8)[0], 0, "time of the link")
            self.assertEqual(struct.unpack_from("<H", program, header + 0x5E)[0] & 0x160, 0x160)
            for sign in (b'level="asInvoker"', b">true</longPathAware>", b"<supportedOS "):
                self.assertIn(sign, program)
            names = program.split("OriginalFilename\0".encode("utf-16-le"))[1]
            self.assertTrue(names.lstrip(b"\0").startswith(name.encode("utf-16-le")), name)

    def drive(self, *parts):
        return os.path.join(self.place, "wine", "drive_c", *parts)

    def shared(self, *parts):
        return self.drive("Program Files", "Quorvel", *parts)

    def product(self, *parts):
        return self.profile("AppData", "Local", "Quorvel", *parts)

    def editor(self, *parts):
        return self.product("Programs", "Quorvel", *parts)

    def menu(self):
        return self.profile("AppData", "Roaming", "Microsoft", "Windows", "Start Menu", "Programs", "Quorvel")

    def shared_menu(self):
        return self.drive("ProgramData", "Microsoft", "Windows", "Start Menu", "Programs", "Quorvel")

    def exit_code_of_line(self, line):
        """Of a command line as it stands, without quotation marks around what has blanks."""
        script = self.put("", "line.bat", f"{line}\r\nexit %errorlevel%\r\n")
        return self.exit_code("cmd", "/c", self.windows_path(script))

    def windows_path(self, path):
        return self.wine("winepath", "-w", path).strip()

    def set_up(self, *arguments, **options):
        return self.exit_code(self.package("Quorvel-*-setup.exe"), "/S", *arguments, **options)

    def remove(self):
        """The exit code is the removal's own: it does not go on in a copy of itself."""
        return self.exit_code(self.product("Uninstall.exe"), "/S",
                              "_?=" + self.windows_path(self.product()))

    def registered(self, root="HKCU"):
        key = root + r"\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"
        found = subprocess.run([WINE, "reg", "query", key, "/v", "DisplayVersion"], env=self.environment,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
        return VERSION in found.stdout

    def hold(self, path):
        """Keeps a file open, so that nothing may replace it, until the returned function is called."""
        ready = os.path.join(self.place, "held")
        path, sign = ("Z:" + name.replace("/", "\\") for name in (path, ready))
        script = self.put("", "hold.nsi", f"""
            Unicode true
            Target amd64-unicode
            OutFile "{self.place}/hold.exe"
            SilentInstall silent
            RequestExecutionLevel user
            Section
              FileOpen $0 "{path}" r
              FileOpen $1 "{sign}" w
              FileClose $1
            held:
              Sleep 20
              IfFileExists "{sign}" held
            SectionEnd""")
        run("makensis", "-V1", script)
        process = self.start(os.path.join(self.place, "hold.exe"))
        wait_for("held file", lambda: os.path.exists(ready))

        def release():
            os.remove(ready)
            process.wait(timeout=LONGEST_WAIT)

        return release

    def give_browser(self):
        """This system has none."""
        classes = r"HKLM\Software\Classes"
        self.wine("reg", "add", classes + r"\.html", "/ve", "/d", "page", "/f")
        self.wine("reg", "add", classes + r"\page\shell\open\command", "/ve", "/d", 'winebrowser "%1"', "/f")

    def test_installer(self):
        self.assertEqual(self.set_up(), 0)
        self.assert_inspects(self.editor())
        self.give_browser()
        self.assert_properties(self.editor())
        # By the start menu's entry: it says in which folder the program works.
        starter = self.start("start", "/unix", os.path.join(self.menu(), "Quorvel.lnk"), cwd="/")
        exit_by_click(starter, self.opened)
        self.assert_opened_the_manual()
        self.assertEqual(starter.wait(timeout=LONGEST_WAIT), 0)
        self.assert_clean_log(self.editor())
        self.assertTrue(self.registered())
        self.assertTrue(os.path.exists(os.path.join(self.menu(), "Quorvel manual.lnk")))
        self.assertTrue(os.path.exists(self.editor("Manual", "index.html")))

        # An upgrade keeps scenes and settings and brings the rest anew.
        mine = self.put(self.editor("Scenes", "Mine"), "Scene.xml", "<Scene/>")
        settings = self.put(self.product("Settings"), "Settings.ini", "language = Dutch\n")
        old_image = self.put(self.editor("UI"), "OfAnOldSkin.png")
        texts = self.put(self.editor(), "Translations.ini", "old")
        shutil.rmtree(self.editor("Scenes", DEMO[0]))
        work = [mine, self.put(self.editor("Drafts", "+mine"), "Scene.xml", "draft"),
                self.put(self.editor("Backups", "+mine"), "1-Scene.xml", "version"),
                self.put(self.editor(), "Editor.ini", "keepDrafts = false\n"), settings]
        made = self.put(self.editor("Cache"), "still", "made")
        kept = {path: digest(path) for path in (*work, made)}
        # The second time as after a first installation that was cut short when all was in its place.
        # Whatever cannot be opened for writing is no running program: here, a folder.
        for traces in ((), ("Setup.new/Settings", "Setup.old/Programs/Quorvel", "Setup.new/Programs/Quorvel")):
            os.remove(self.editor("quorvel-inspect.exe"))
            for folder in (*traces, "Programs/Quorvel/quorvel-inspect.exe"):
                os.makedirs(self.product(folder))
            self.assertEqual(self.set_up(), 0)
            now = self.contents(self.product())
            self.assertEqual({path: now.get(path) for path in kept}, kept)
            self.assertGreater(os.path.getsize(texts), len("old"))
            self.assertFalse(os.path.exists(old_image))
            self.assertFalse(os.path.exists(self.editor("Scenes", DEMO[0])))
            self.assertEqual(glob.glob(self.product("Setup.*")), [])

        # Without further arguments it goes on in a copy of itself.
        self.wine(self.product("Uninstall.exe"), "/S")
        wait_for("end of the uninstaller", lambda: not os.path.exists(self.menu()))
        self.assertFalse(self.registered())
        left = list(self.contents(self.product()))
        self.assertLessEqual(set(work), set(left))
        others = set(left) - set(work)
        self.assertEqual([path for path in others if not path.startswith(self.editor("Scenes"))], [])

    def test_an_installation_that_fails_leaves_nothing(self):
        # Every process of the installer writes 1 MB to a file at most, as on a disk that is full.
        full = {"restore_signals": False,
                "preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 20, 1 << 20))}
        for arguments, options in (((r"/D=Z:\proc\Quorvel",), {}), ((), full)):
            self.assertEqual(self.set_up(*arguments, **options), 3)
            self.assertFalse(os.path.exists(self.product()))
            self.assertFalse(os.path.exists(self.menu()))
            self.assertFalse(self.registered())

    def test_an_upgrade_that_fails_leaves_the_version_before(self):
        self.assertEqual(self.set_up(), 0)
        self.put(self.editor(), "Translations.ini", "; mine")
        self.put(self.editor("UI"), "OfAnOldSkin.png")
        before = self.contents(self.product())
        for held in ("Translations.ini", "../../README.txt"):
            release = self.hold(os.path.normpath(self.editor(held)))
            self.assertEqual(self.set_up(), 3, held)
            release()
            self.assertEqual(self.contents(self.product()), before, held)
        # One that was cut short is undone by the next.
        shutil.copytree(self.product(), os.path.join(self.place, "new"))
        shutil.move(os.path.join(self.place, "new"), self.product("Setup.new"))
        os.makedirs(self.product("Setup.old", "Programs", "Quorvel"))
        shutil.rmtree(self.product("Setup.new", "Programs", "Quorvel", "UI"))
        shutil.move(self.editor("UI"), self.product("Setup.old", "Programs", "Quorvel", "UI"))
        release = self.hold(self.editor("Translations.ini"))
        self.assertEqual(self.set_up(), 3)
        self.assertEqual(self.contents(self.product()), before)
        self.assertEqual(self.remove(), 3)
        self.assertTrue(self.registered(), "the removal can be done again")
        release()
        self.assertEqual(self.remove(), 0)
        self.assertFalse(self.registered())

    def test_a_running_editor_refuses_upgrade_and_removal(self):
        self.assertEqual(self.set_up(), 0)
        before = self.contents(self.product())
        process = self.start("Quorvel.exe", cwd=self.editor())
        wait_for("first window", find_first_window)
        self.assertEqual(self.set_up(), 2)
        self.assertEqual(self.remove(), 2)
        now = self.contents(self.product())
        self.assertEqual({path: now.get(path) for path in before}, before)
        # The editor shows the scenes meanwhile.
        added = [path for path in now if path not in before]
        self.assertEqual([path for path in added if not path.startswith(self.editor("Cache"))], [])
        self.assertTrue(self.registered())
        exit_by_click(process)
        self.assertEqual(process.wait(timeout=LONGEST_WAIT), 0)

    def use_shared(self, tree):
        """The editor, from the menu of all users, in the user's own tree."""
        starter = self.start("start", "/unix", os.path.join(self.shared_menu(), "Quorvel.lnk"), cwd="/")
        exit_by_click(starter, self.opened)
        self.assert_opened_the_manual()
        self.assertEqual(starter.wait(timeout=LONGEST_WAIT), 0)
        editor = os.path.join(tree, "Programs", "Quorvel")
        self.assert_clean_log(editor)
        self.assertEqual(sorted(os.listdir(os.path.join(editor, "Scenes"))), DEMO)
        self.assertTrue(os.path.exists(os.path.join(tree, "Settings", "Settings.ini")))
        return editor

    def test_an_installation_for_all_users_beside_one_for_this_user(self):
        self.assertEqual(self.set_up("/ALLUSERS"), 0)
        self.give_browser()
        before = self.contents(self.shared())
        editor = self.use_shared(os.path.join(self.home, "Quorvel"))
        self.assertEqual(self.contents(self.shared()), before)
        self.assert_inspects(editor, os.path.join(self.shared("Programs", "Quorvel")))
        given = self.put(self.shared("Programs", "Quorvel"), "AllUsers.ini", "folder = C:\\Work\\%USERNAME%\n")
        self.use_shared(self.drive("Work", os.path.basename(self.profile())))

        self.assertEqual(self.set_up(), 0)
        self.assertTrue(self.registered("HKLM") and self.registered("HKCU"))
        mine = self.contents(self.product())
        theirs = self.contents(self.shared())
        self.assertEqual(self.set_up("/ALLUSERS", "/D=" + self.windows_path(self.product())), 7)
        installer = self.windows_path(self.package("Quorvel-*-setup.exe"))
        self.assertEqual(self.exit_code_of_line(fr'"{installer}" /S /D=C:\Program Files\Quorvel'), 7)
        self.assertEqual(self.set_up("/ALLUSERS"), 0)
        self.assertEqual(self.contents(self.shared()), theirs)
        self.assertIn(given, theirs)
        # As the list of programs has it.
        self.assertEqual(self.exit_code_of_line(
            r'"C:\Program Files\Quorvel\Uninstall.exe" /S _?=C:\Program Files\Quorvel'), 0)
        self.assertLessEqual(set(self.contents(self.shared())), {self.shared("Uninstall.exe")})
        self.assertFalse(self.registered("HKLM") or os.path.exists(self.shared_menu()))
        self.assertEqual(self.contents(self.product()), mine)
        self.assertTrue(self.registered("HKCU"))
        self.assertTrue(os.path.exists(os.path.join(editor, "Scenes", DEMO[0])))

    def test_only_an_administrator_changes_an_installation_for_all_users(self):
        """Wine's user always is one: installer and uninstaller are told otherwise."""
        tree = os.path.join(self.place, "tree")
        for name in ("Programs/Quorvel/Scenes/Mine/Scene.xml", "Settings/Settings.ini", *(
                "Programs/Quorvel/" + name for name in (
                    "Quorvel.exe", "quorvel-inspect.exe", "ffmpeg.exe", "ffprobe.exe", "Translations.ini",
                    "UI/a", "Manual/a", "Licences/a")), "README.txt", "CHANGELOG.txt"):
            self.put(tree, name)
        for name, picture in (("top", "Header/win"), ("side", "Wizard/win")):
            shutil.copy(f"/usr/share/nsis/Contrib/Graphics/{picture}.bmp", os.path.join(self.place, name + ".bmp"))
        texts = self.put("", "texts.nsh", run(os.path.join(ROOT, "tools", "texts"), "--installer"))
        source = pathlib.Path(ROOT, "packaging", "quorvel.nsi").read_text(encoding="utf-8")
        question = "UserInfo::GetAccountType\n"
        self.assertEqual(source.count(question), 1)
        for account in ("Admin", "User"):
            script = self.put("", account + ".nsi", source.replace(question, f"Push {account}\n"))
            run("makensis", "-V1", "-INPUTCHARSET", "UTF8", f"-DVERSION={VERSION}", f"-DTREE={tree}",
                f"-DPICTURES={self.place}", f"-DTEXTS={texts}", f"-DROOT={ROOT}",
                f"-DOUTPUT={self.place}/{account}.exe", script)
        user = os.path.join(self.place, "User.exe")
        self.assertEqual(self.exit_code(user, "/S", "/ALLUSERS"), 6)
        self.assertFalse(os.path.exists(self.shared()))
        # The uninstaller of one who is no administrator, of an installation that is there.
        self.assertEqual(self.exit_code(os.path.join(self.place, "Admin.exe"), "/S", "/ALLUSERS"), 0)
        self.assertEqual(self.exit_code(user, "/S"), 0)
        shutil.copy(self.product("Uninstall.exe"), self.shared("Uninstall.exe"))
        before = self.contents(self.shared())
        self.assertEqual(self.exit_code_of_line(
            r'"C:\Program Files\Quorvel\Uninstall.exe" /S _?=C:\Program Files\Quorvel'), 6)
        self.assertEqual(self.contents(self.shared()), before)
        self.assertEqual(self.remove(), 0)

    def test_a_later_version_is_replaced_only_on_request(self):
        self.assertEqual(self.set_up(), 0)
        key = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"
        for later, code in ((VERSION + ".1", 5), ("99.0.0", 5), ("0.9.12", 0)):
            self.wine("reg", "add", key, "/v", "DisplayVersion", "/d", later, "/f")
            before = self.contents(self.product())
            self.assertEqual(self.set_up(), code, later)
            self.assertEqual(self.contents(self.product()), before)
            self.assertEqual(self.registered(), code == 0 or later.startswith(VERSION))
        self.wine("reg", "add", key, "/v", "DisplayVersion", "/d", "99.0.0", "/f")
        self.assertEqual(self.set_up("/ALLOWDOWNGRADE"), 0)
        self.assertTrue(self.registered())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[3:])
