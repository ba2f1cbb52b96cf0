#!/usr/bin/env python3
"""Runs of the whole program, from its command line to its exit code and its log page.

Usage: program_runs.py PROGRAM DATA_FOLDER
"""

import os
import pathlib
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


def catches_termination(pid):
    """Whether the process has its own handler for SIGTERM by now."""
    status = pathlib.Path(f"/proc/{pid}/status").read_text(encoding="ascii")
    caught = re.search(r"^SigCgt:\s*(\w+)", status, re.MULTILINE)
    return bool(int(caught.group(1), 16) >> (signal.SIGTERM - 1) & 1)


class ProgramRuns(unittest.TestCase):
    """The working folder is Programs/Quorvel, as in the product."""

    def setUp(self):
        self.product = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.product)
        self.folder = self.product / "Programs" / "Qu\u00f6rvel"
        shutil.copytree(os.path.join(DATA, "UI"), self.folder / "UI")
        shutil.copy(os.path.join(DATA, "Translations.ini"), self.folder)
        (self.product / "Settings").mkdir()
        (self.folder / "Log.html").write_text("of an earlier run")

    def start(self, *arguments, cwd=None, program=PROGRAM, **variables):
        environment = dict(os.environ, XDG_RUNTIME_DIR=str(self.product), LC_ALL="C.UTF-8",
                           QT_LOGGING_RULES="default.warning=false", **variables)
        return subprocess.Popen([program, *arguments], cwd=cwd or self.folder, env=environment,
                                stderr=subprocess.PIPE)

    def expect_end(self, process, code, text, *errors):
        """The exit code, what stderr holds and the errors of the page, which is written whole."""
        self.assertEqual(process.communicate(timeout=LONGEST_WAIT)[1].decode(), text)
        self.assertEqual(process.returncode, code)
        page = (self.folder / "Log.html").read_text(encoding="utf-8")
        self.assertEqual(re.findall("COLOR=#FF0000>Error: (.*?)</FONT>", page, re.DOTALL), list(errors))
        self.assertTrue(page.startswith("<HTML>") and page.endswith("</HTML>\n"), page)

    def run_until_terminated(self, *arguments):
        self.terminate(process := self.start(*arguments))
        self.expect_end(process, 0, "")

    def terminate(self, process):
        """Once it runs its windows."""
        deadline = time.monotonic() + LONGEST_WAIT
        while process.poll() is None and not catches_termination(process.pid):
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)
        process.send_signal(signal.SIGTERM)

    def test_a_termination_ends_it_normally_and_the_menu_is_started_only_when_asked_for(self):
        menu = self.product / "Settings" / "M\u00ebnu 1.sh"
        report = self.product / "report"
        menu.write_text(f'#!/bin/sh\necho "$PWD $#" > "{report}"\n', encoding="utf-8")
        menu.chmod(0o755)
        os.mkfifo(report)
        (self.product / "Settings" / "Launcher.ini").write_text(f"../../Settings/{menu.name}\r\n", encoding="utf-8")
        self.run_until_terminated("TestMode", "launcher")
        # Nobody has opened the pipe: this one report is the second run's.
        self.run_until_terminated("TestMode", "Launcher")
        text = subprocess.run(["cat", report], check=True, stdout=subprocess.PIPE, timeout=LONGEST_WAIT).stdout
        self.assertEqual(text.decode(), f"{menu.parent} 0\n")

    def test_help_and_version_are_printed_anywhere_and_leave_nothing_behind(self):
        before = sorted(self.product.rglob("*"))
        for option, start in (("--help", b"Usage: quorvel "), ("--version", b"quorvel ")):
            text = subprocess.run([PROGRAM, option], cwd=self.folder, check=True, stdout=subprocess.PIPE,
                                  env={"QT_QPA_PLATFORM": "none"}, timeout=LONGEST_WAIT).stdout
            self.assertTrue(text.startswith(start), text)
        with open("/dev/full", "wb") as full:
            self.assertEqual(subprocess.run([PROGRAM, "--help"], stdout=full).returncode, 1)
        self.assertEqual(sorted(self.product.rglob("*")), before)
        self.assertEqual((self.folder / "Log.html").read_text(), "of an earlier run")

    def test_without_its_texts_it_fails_and_tells_where_it_looked(self):
        (self.folder / "Translations.ini").unlink()
        error = "Unable to initialize editor interfaces."
        self.expect_end(self.start(), 1, 'Translations cannot be read: "Translations.ini", looked for as '
                        f'"{self.folder}/Translations.ini"\nError: {error}\n', error)

    def test_started_elsewhere_it_goes_to_its_own_folder_or_says_what_is_missing(self):
        elsewhere = self.product / "elsewhere"
        elsewhere.mkdir()
        (elsewhere / "Log.html").write_text("of another program")
        own = self.folder / "Quorvel"
        shutil.copy(PROGRAM, own)
        self.terminate(process := self.start(cwd=elsewhere, program=own))
        self.expect_end(process, 0, "")
        shutil.rmtree(self.folder / "UI")
        missing = (f'Quorvel cannot start because its folder "UI" is missing.\n\n'
                   f'Looked for in:\n{elsewhere}\n{self.folder}')
        # The message box is open until then. In the program's own folder the page says it too.
        self.terminate(process := self.start(cwd=elsewhere, program=own))
        self.expect_end(process, 1, f"Error: {missing}\n", missing)
        # Scenes make no folder the program's own.
        (elsewhere / "Scenes").mkdir()
        (self.folder / "Log.html").write_text("of the run before")
        there = missing.replace(f"\n{self.folder}", "")
        for text, variables in ((there, {}), ("disk full", {"QUORVEL_START_PROBLEM": "disk full"})):
            self.terminate(process := self.start(cwd=elsewhere, program=own, **variables))
            self.assertEqual(process.communicate(timeout=LONGEST_WAIT)[1].decode(), f"Error: {text}\n")
            self.assertEqual(process.returncode, 1)
        self.assertEqual((self.folder / "Log.html").read_text(), "of the run before")
        self.assertEqual((elsewhere / "Log.html").read_text(), "of another program")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
