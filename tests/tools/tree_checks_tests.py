"""The checks of the source tree on small trees: each row plants one file and says whether it is
refused."""

import os
import subprocess
import sys
import tempfile
import unittest

TOOLS = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))),
                     "tools")
sys.path.insert(0, TOOLS)
import manual_texts  # noqa: E402
import text_signs  # noqa: E402

# Files in every tree, for includes to refer to.
PRESENT = {**dict.fromkeys(
    ("platform/Clock.h", "platform/testing/Input.h", "core/Log.h", "video/Video.h", "ui/Window.h",
     "zone/Zone.h", "tests/support/Files.h"),
    "#pragma once\n"),
           "CMakeLists.txt": "zone/Zone.cpp core/Log.cpp tools/tour/Tour.cpp platform/qt/Window.cpp\n"
                             "platform/win32/Window.cpp platform/win32/Files.cpp\n",
           ".clang-format": "BasedOnStyle: LLVM\nIndentWidth: 4\n"}


class TreeChecks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = folder.name
        for path, text in PRESENT.items():
            self.put(path, text.encode())

    def put(self, path, data):
        full = os.path.join(self.root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "wb") as stream:
            stream.write(data)

    def run_on_tree(self, script, *options):
        return subprocess.run([sys.executable, os.path.join(TOOLS, script), *options, self.root],
                              stdout=subprocess.PIPE, text=True, check=False)

    def expect(self, script, path, data, refused_line, *options):
        """refused_line: where the finding is; 0 = there is none."""
        with self.subTest(script=script, path=path, data=data):
            self.put(path, data)
            result = self.run_on_tree(script, *options)
            self.assertEqual(result.returncode, 1 if refused_line else 0, result.stdout)
            if refused_line:
                self.assertIn(f"{path}:{refused_line}: ", result.stdout)
        os.remove(os.path.join(self.root, path))

    def test_layers(self):
        for path, line, allowed in [
                ("zone/Zone.cpp", '#include "core/Log.h"', True),
                ("core/Log.cpp", '#include "zone/Zone.h"', False),
                ("video/Video.cpp", '#include "ui/Window.h"', False),
                ("app/state/Flags.h", '#include "core/Log.h"', False),
                ("zone/Zone.cpp", '#  include "ui/Window.h"', False),
                ("app/Loop.cpp", '#include "tests/support/Files.h"', False),
                ("app/Loop.cpp", '#include "platform/testing/Input.h"', False),
                ("tools/tour/Tour.cpp", '#include "platform/testing/Input.h"', True),
                ("zone/Zone.cpp", '#include "Zone.h"', False),
                ("zone/Zone.cpp", '#include "../core/Log.h"', False),
                ("platform/qt/Window.cpp", "#include <QWindow>", True),
                ("tests/jobs/JobTests.cpp", "#include <latch>", False),
                ("platform/win32/Window.cpp", "#include <windows.h>", True),
                ("platform/Window.h", "#include <QtGui/QWindow>", False),
                ("platform/qt/Window.cpp", "#include <Windows.h>", False),
                ("platform/Files.h", "#include <sys/stat.h>", False),
                ("ui/Window.cpp", "#include <tinyxml2.h>", False),
                ("core/Log.cpp", "#include <gtest/gtest.h>", False),
                ("platform/win32/Files.cpp", "#ifdef _WIN32", True),
                ("core/Log.cpp", "#if defined(NDEBUG)", True),
                ("tests/core/LogTests.cpp", "#if !defined(__linux__)", False),
                ("platform/Clock.cpp", "#  elif __APPLE__", False)]:
            self.expect("check_layers", path, f"// first line\n{line}\n".encode(),
                        0 if allowed else 2)
        self.expect("check_layers", "zone/Lost.cpp", b"int a;\n", 1)

    def test_format(self):
        for path, data, line in [
                ("docs/a.md", b"one\ntwo \n", 2),
                ("docs/a.md", b"one\r\n", 1),
                ("docs/a.md", b"one", 1),
                ("docs/a.md", b"one\n\n", 2),
                ("tools/a.sh", b"if\n\tthen\n", 2),
                ("docs/a.md", b"one\n\xff\n", 2),
                ("core/a.cpp", b"int  a;\n", 1),
                ("core/a.h", b"int f() {\n  return 1;\n}\n", 1),
                ("tests/data/scene.xml", b"\tone \r\n", 0),
                ("tests/data/broken.md", b"one ", 0),
                ("demo/clip.ogv", b"\x00\xff \n\n", 0)]:
            self.expect("check_format", path, data, line, "--root")


class Texts(unittest.TestCase):
    def test_signs_stand_as_the_language_has_them(self):
        for language, text, wrong in [
                ("French", "Non\u202f: «\u202f{0}\u202f», l’image", None), ("French", "Non :", ":"),
                ("French", "{0}:{1} à {2}\u202f%", None), ("French", "« {0}\u202f»", "«"),
                ("French", "l'image", "'"), ("German", "„{0}“: 46\u00a0%", None), ("German", "„{0}„", "„{0}„"),
                ("German", "{0} %", " %"), ("Spanish", "Uno; ¿dos?", None), ("Spanish", "Dos?", "Dos?"),
                ("Dutch", "Video’s: “{0}”, {1}%", None), ("Dutch", "Video's", "'"), ("English", "It's :", None)]:
            with self.subTest(language=language, text=text):
                self.assertEqual(text_signs.wrong_sign(language, text), wrong)

    def test_tool_tips_of_a_manual_are_those_of_the_catalogue(self):
        section = {"A": "Stop; nothing changes", "B": "Close", "C": "Undo: {0}"}
        for tip, wrong in [("Close (Esc)", 0), ("Stop; nothing changes; Close (Esc)", 0), ("Undo: STEP (Ctrl+Z)", 0),
                           ("Closed", 1), ("Close; Open", 1)]:
            with self.subTest(tip=tip):
                manual = f"## Tool tips\n\n| W | C | T |\n| - | - | - |\n| | x | {tip} |\n\n## Next\n"
                self.assertEqual(len(list(manual_texts.findings(manual, section))), wrong)


if __name__ == "__main__":
    unittest.main()
