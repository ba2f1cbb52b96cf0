#!/usr/bin/env python3
"""Runs of the whole program, from its command line to its exit code and its log page.

Usage: program_runs.py PROGRAM DATA_FOLDER

Exit 0 when every run went as it should, 1 otherwise.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, DATA = sys.argv[1:3]
LONGEST_WAIT = 60  # seconds until a run counts as hanging

TIME = r"<FONT COLOR=#FFFFFF>\[\d\d:\d\d:\d\d [AP]M\]</FONT> "
INITIALIZE = "Unable to initialize editor interfaces."


def page(*errors):
    """The pattern of a log page with these error lines."""
    entries = [("#00FF00", "Logging started")]
    entries += [("#FF0000", "Error: " + re.escape(error)) for error in errors]
    entries += [("#00FF00", "Logging ended")]
    return ("<HTML><HEAD><TITLE>Log Output</TITLE></HEAD><BODY BGCOLOR=#00001F>" +
            "".join("%s<FONT COLOR=%s>%s</FONT><BR>" % (TIME, color, text)
                    for color, text in entries) + "</BODY></HTML>\r\n")


def catches_termination(pid):
    """Whether the process has its own handler for SIGTERM by now."""
    with open("/proc/%d/status" % pid, encoding="ascii") as status:
        caught = re.search(r"^SigCgt:\s*(\w+)", status.read(), re.MULTILINE)
    return bool(int(caught.group(1), 16) >> (signal.SIGTERM - 1) & 1)


class ProgramRuns(unittest.TestCase):
    """The working folder is Programs/Quorvel, as in the product."""

    def setUp(self):
        self.product = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.product)
        self.folder = os.path.join(self.product, "Programs", "Qu\u00f6rvel")
        shutil.copytree(os.path.join(DATA, "UI"), os.path.join(self.folder, "UI"))
        shutil.copy(os.path.join(DATA, "Translations.ini"), self.folder)
        os.mkdir(os.path.join(self.product, "Settings"))
        self.write("Log.html", "of an earlier run")

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as stream:
            stream.write(text)

    def start(self, *arguments):
        environment = dict(os.environ, XDG_RUNTIME_DIR=self.product, LC_ALL="C.UTF-8")
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, env=environment,
                                stderr=subprocess.PIPE)

    def finish(self, process):
        """The exit code and what stderr was told."""
        told = process.communicate(timeout=LONGEST_WAIT)[1].decode()
        return process.returncode, told

    def run_until_terminated(self, *arguments):
        process = self.start(*arguments)
        deadline = time.monotonic() + LONGEST_WAIT
        while process.poll() is None and not catches_termination(process.pid):
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)
        process.send_signal(signal.SIGTERM)
        return self.finish(process)

    def expect_page(self, *errors):
        with open(os.path.join(self.folder, "Log.html"), "rb") as stream:
            found = stream.read().decode()
        self.assertTrue(re.fullmatch(page(*errors), found), found)

    def make_menu(self, name):
        """A program that reports its folder and its arguments through the pipe "report"."""
        path = os.path.join(self.product, "Settings", name)
        with open(path, "w", encoding="utf-8") as stream:
            stream.write('#!/bin/sh\necho "$PWD $#" > "%s/report"\n' % self.product)
        os.chmod(path, 0o755)
        os.mkfifo(os.path.join(self.product, "report"))

    def report(self):
        return subprocess.run(["cat", os.path.join(self.product, "report")], check=True,
                              stdout=subprocess.PIPE, timeout=LONGEST_WAIT).stdout.decode()

    def test_a_termination_ends_it_normally_and_a_clean_run_leaves_a_page(self):
        self.assertEqual(self.run_until_terminated("TestMode", "unknown"), (0, ""))
        self.expect_page()

    def test_the_menu_program_is_started_at_the_end_only_when_asked_for(self):
        self.make_menu("M\u00ebnu 1.sh")
        self.write("../../Settings/Launcher.ini", "../../Settings/M\u00ebnu 1.sh\r\n")
        self.assertEqual(self.run_until_terminated("launcher")[0], 0)
        # Nobody has opened the pipe: this one report is the second run's.
        self.assertEqual(self.run_until_terminated("TestMode", "Launcher"), (0, ""))
        self.assertEqual(self.report(), os.path.join(self.product, "Settings") + " 0\n")
        self.expect_page()

    def test_without_its_texts_it_fails_and_tells_where_it_looked(self):
        os.remove(os.path.join(self.folder, "Translations.ini"))
        self.make_menu("Menu.sh")
        self.write("../../Settings/Launcher.ini", "../../Settings/Menu.sh")
        code, told = self.finish(self.start("Launcher"))
        self.assertEqual(code, 1)
        self.assertEqual(told, 'Translations cannot be read: "Translations.ini", looked for as '
                               '"%s/Translations.ini"\nError: %s\n' % (self.folder, INITIALIZE))
        self.expect_page(INITIALIZE)

    def test_without_its_first_window_it_ends_normally(self):
        os.remove(os.path.join(self.folder, "UI", "OpenScene.xml"))
        error = "Unable to read layout UI/OpenScene.xml"
        self.assertEqual(self.finish(self.start()), (0, "Error: " + error + "\n"))
        self.expect_page(error)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
