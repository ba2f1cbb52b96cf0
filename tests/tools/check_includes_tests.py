"""The check of includes on a small tree that is built here: what it finds, and that --fix ends it."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parent.parent.parent / "tools"
HEADERS = {
    "core/Log.h": "#pragma once\nstruct Log {};\n",
    "zone/Zone.h": '#pragma once\n#include <string>\n#include "core/Log.h"\n'
                   "struct Zone {\n    std::string name;\n    Log log;\n};\n",
    "ui/Alone.h": "#pragma once\nstruct Alone {\n    std::string name;\n};\n"}
SOURCES = {  # path: (text, findings)
    "ui/Standard.cpp": ('#include "zone/Zone.h"\nZone zone;\nstd::string text;\n', ["ui/Standard.cpp: add <string>"]),
    "ui/Ours.cpp": ('#include "zone/Zone.h"\nZone zone;\nLog log_;\n', ['ui/Ours.cpp: add "core/Log.h"']),
    "tests/Ours.cpp": ('#include "zone/Zone.h"\nZone zone;\nLog log_;\n', []),
    "zone/Zone.cpp": ('#include "zone/Zone.h"\nstd::string text;\n', []),
    "ui/NotNeeded.cpp": ("#include <vector>\nint one;\n", ["ui/NotNeeded.cpp: remove <vector>"]),
    "ui/Kept.cpp": ("#include <vector> // IWYU pragma: keep\nint two;\n", []),
    "ui/Alone.cc": ('#include <cstddef>\n#include <string>\n\n#include "ui/Alone.h"\nAlone alone;\nstd::size_t size;\n',
                    ["ui/Alone.h: add <string>", "ui/Alone.cc: remove <string>"])}


class IncludeCheck(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        for path, text in {**HEADERS, **{path: row[0] for path, row in SOURCES.items()}}.items():
            self.put(path, text)
        for name in ("check_includes", "includes.imp", "source_files.py"):
            self.put(f"tools/{name}", (TOOLS / name).read_text(encoding="utf-8"))
        self.put(".clang-format", (TOOLS.parent / ".clang-format").read_text(encoding="utf-8"))
        self.put("build/dev/build.ninja",
                 f"rule cxx\n  command = g++ -std=c++20 -I{self.root} -MD -MF $out.d -o $out -c $in\n"
                 "  deps = gcc\n  depfile = $out.d\n"
                 + "".join(f"build {path}.o: cxx {self.root / path}\n" for path in SOURCES))
        self.put("build/dev/compile_commands.json", json.dumps([
            {"directory": str(self.root / "build/dev"), "file": str(self.root / path),
             "command": f"ccache g++ -std=c++20 -I{self.root} -o {path}.o -c {self.root / path}"}
            for path in SOURCES]))

    def put(self, path, text):
        place = self.root / path
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_text(text, encoding="utf-8")

    def build(self):
        subprocess.run(["ninja", "-C", self.root / "build/dev"], check=True, stdout=subprocess.DEVNULL)

    def check(self, *arguments):
        """The exit code, and the lines printed, without the last one: how many findings."""
        done = subprocess.run([sys.executable, self.root / "tools/check_includes", *arguments], check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, cwd=self.root,
                              env={**os.environ, "XDG_CACHE_HOME": str(self.root / "cache")})
        return done.returncode, [line.partition(" for ")[0] for line in done.stdout.splitlines()[:-1]]

    def test_findings(self):
        code, lines = self.check()
        self.assertEqual((code, len(lines)), (2, len(SOURCES)), lines)  # nothing is built
        self.build()
        everything = sorted(finding for row in SOURCES.values() for finding in row[1])
        self.assertEqual(self.check(), (1, everything))
        self.assertEqual(self.check("tests", "ui/NotNeeded.cpp"), (1, ["ui/NotNeeded.cpp: remove <vector>"]))
        # What is kept goes by what a source reads: here a header of a header.
        self.put("core/Log.h", "#pragma once\n#include <vector>\nstruct Log {};\n")
        self.assertIn("core/Log.h: remove <vector>", self.check()[1])
        self.assertEqual(self.check("--fix")[0], 1)
        self.build()
        self.assertEqual(self.check(), (0, []))


if __name__ == "__main__":
    unittest.main()
