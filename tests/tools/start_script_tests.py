#!/usr/bin/env python3
"""packaging/quorvel, the start script of an installation, with programs that tell what they got."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "quorvel"
TOLD = ("QUORVEL_START_PROBLEM", "QUORVEL_START_FOLDER", "QUORVEL_INSTALLED")


class StartScript(unittest.TestCase):
    def setUp(self):
        self.place = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.place)
        for name in ("usr/bin", "usr/share/quorvel/Manual/German", "usr/share/quorvel/Scenes", "home"):
            (self.place / name).mkdir(parents=True)
        self.share = self.place / "usr/share/quorvel"
        for name in ("Manual/index.html", "Manual/German/index.html", "Settings.ini"):
            (self.share / name).write_text("language = English\n")
        shutil.copy(SCRIPT, self.place / "usr/bin/quorvel")
        self.program("usr/lib/quorvel/Quorvel", 'printf "%s|" ' + " ".join(f'"${name}"' for name in TOLD))
        self.program("path/xdg-open", 'printf %s "$1"')

    def program(self, name, line):
        file = self.place / name
        file.parent.mkdir(parents=True)
        file.write_text(f"#!/bin/sh\n{line}\n")
        file.chmod(0o755)

    def start(self, *arguments):
        variables = dict(os.environ, QUORVEL_HOME=str(self.place / "home"),
                         PATH=f"{self.place / 'path'}:{os.environ['PATH']}")
        return subprocess.run([self.place / "usr/bin/quorvel", *arguments], env=variables, check=True,
                              stdout=subprocess.PIPE, text=True).stdout

    def write(self, name, text):
        file = self.place / "home" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def test_the_manual_opens_in_the_language_of_the_editor_where_it_is_there(self):
        english, german = "Manual/index.html", "Manual/German/index.html"
        editor, settings = "Programs/Quorvel/Editor.ini", "Settings/Settings.ini"
        for file, text, page in ((None, "", english),
                                 (settings, "; of all\r\nLANGUAGE=german\r\n", german),
                                 (editor, "scale = 150\n[view]\nlanguage = French\n", german),
                                 (editor, "language = French ; a comment\n", english),
                                 (settings, "language = Dutch\n", english),
                                 (editor, "scale = 150\nlanguage = German\n", german),
                                 (editor, "language = German ; no comment there\n", english)):
            if file:
                self.write(file, text)
            self.assertEqual(self.start("--manual"), str(self.share / page), text)

    def test_the_program_is_told_what_could_not_be_prepared(self):
        self.assertEqual(self.start(), "|||")
        shutil.rmtree(self.place / "home")
        self.write("Programs", "no folder")
        problem, folder, installed, _ = self.start().split("|")
        self.assertIn("home/Programs", problem)
        self.assertEqual([folder, installed], [str(self.place / "home/Programs/Quorvel"), str(self.share)])


if __name__ == "__main__":
    unittest.main()
