"""check_layers on small trees: each row plants one include or #if and says whether it is refused."""

import unittest

from planted import run_on

# Files that every planted tree holds, so that includes have something to name.
PRESENT = dict.fromkeys(
    ("platform/Clock.h", "app/state/ScreenState.h", "core/Log.h", "src/Manager.h", "scene/Branch.h",
     "zone/Zone.h", "toolkit/Control.h", "video/Video.h", "ui/Window.h", "ZoneEdit/ZoneEdit.h",
     "app/Loop.h", "tests/support/Files.h"), "#pragma once\n")


class LayersTest(unittest.TestCase):
    def check(self, cases):
        for path, line, allowed in cases:
            with self.subTest(path=path, line=line):
                result = run_on("check_layers", {**PRESENT, path: f"// first line\n{line}\n"})
                self.assertEqual(result.returncode, 0 if allowed else 1, result.stdout)
                if not allowed:
                    self.assertIn(f"{path}:2: ", result.stdout)

    def test_a_module_names_lower_modules_only(self):
        self.check([
            ("zone/Zone.cpp", '#include "zone/Zone.h"', True),
            ("zone/Zone.cpp", '#include "core/Log.h"', True),
            ("ui/Window.cpp", '#include "platform/Clock.h"', True),
            ("ZoneEdit/ZoneEdit.cpp", '#include "src/Manager.h"', True),
            ("app/main.cpp", '#include "ZoneEdit/ZoneEdit.h"', True),
            ("tests/zone/ZoneTests.cpp", '#include "tests/support/Files.h"', True),
            ("core/Log.cpp", '#include "zone/Zone.h"', False),
            ("scene/Branch.cpp", '#include "zone/Zone.h"', False),
            ("src/Manager.cpp", '#include "core/Log.h"', False),
            ("video/Video.cpp", '#include "ui/Window.h"', False),
            ("ui/Window.cpp", '#include "video/Video.h"', False),
            ("ui/Window.cpp", '#include "app/Loop.h"', False),
            ("app/state/Flags.h", '#include "core/Log.h"', False),
            ("zone/Zone.cpp", '#  include "ui/Window.h"', False),
            ("app/Loop.cpp", '#include "tests/support/Files.h"', False),
        ])

    def test_our_includes_are_written_from_the_root(self):
        self.check([
            ("zone/Zone.cpp", '#include "Zone.h"', False),
            ("zone/Zone.cpp", '#include "../core/Log.h"', False),
        ])

    def test_libraries_and_systems_stay_where_they_belong(self):
        self.check([
            ("platform/qt/Window.cpp", "#include <QWindow>", True),
            ("platform/win32/Window.cpp", "#include <windows.h>", True),
            ("platform/linux/Files.cpp", "#include <sys/stat.h>", True),
            ("scene/Branch.cpp", "#include <tinyxml2.h>", True),
            ("tests/app/LoopTests.cpp", "#include <unistd.h>", True),
            ("core/Log.cpp", "#include <cstdio>", True),
            ("toolkit/Control.cpp", "#include <QWindow>", False),
            ("platform/Window.h", "#include <QtGui/QWindow>", False),
            ("platform/qt/Window.cpp", "#include <Windows.h>", False),
            ("core/File.cpp", "#include <unistd.h>", False),
            ("platform/Files.h", "#include <sys/stat.h>", False),
            ("ui/Window.cpp", "#include <tinyxml2.h>", False),
            ("video/Video.cpp", "#include <theora/theoradec.h>", False),
            ("core/Log.cpp", "#include <gtest/gtest.h>", False),
        ])

    def test_only_back_ends_ask_for_the_operating_system(self):
        self.check([
            ("platform/win32/Files.cpp", "#ifdef _WIN32", True),
            ("core/Log.cpp", "#if defined(NDEBUG)", True),
            ("core/Log.cpp", "#ifdef _WIN32", False),
            ("tests/core/LogTests.cpp", "#if !defined(__linux__)", False),
            ("platform/Clock.cpp", "#  elif __APPLE__", False),
        ])


if __name__ == "__main__":
    unittest.main()
