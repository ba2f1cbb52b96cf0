"""check_format on single files: what it reports, and that --fix leaves nothing to report."""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SCRIPT = os.path.join(ROOT, "tools", "check_format")
STYLE = "BasedOnStyle: LLVM\nIndentWidth: 4\n"


class FormatTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = folder.name
        self.put(".clang-format", STYLE.encode())

    def put(self, path, data):
        full = os.path.join(self.root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "wb") as stream:
            stream.write(data)

    def run_check(self, *options):
        return subprocess.run([sys.executable, SCRIPT, "--root", self.root, *options],
                              stdout=subprocess.PIPE, text=True, check=False)

    def test_each_fault_is_reported_with_its_place(self):
        for path, data, line in [
                ("docs/a.md", b"one\ntwo \n", 2),
                ("docs/a.md", b"one\r\n", 1),
                ("docs/a.md", b"one", 1),
                ("docs/a.md", b"one\n\n", 2),
                ("tools/a.sh", b"if\n\tthen\n", 2),
                ("docs/a.md", b"one\n\xff\n", 2),
                ("core/a.cpp", b"int  a;\n", 1),
                ("core/a.h", b"int f() {\n  return 1;\n}\n", 1)]:
            with self.subTest(path=path, data=data):
                self.put(path, data)
                result = self.run_check()
                self.assertEqual(result.returncode, 1, result.stdout)
                self.assertIn(f"{path}:{line}: ", result.stdout)
                os.remove(os.path.join(self.root, path))

    def test_test_data_and_unknown_kinds_are_left_alone(self):
        self.put("tests/data/scene.xml", b"\tone \r\n")
        self.put("tests/data/broken.md", b"one ")
        self.put("demo/clip.ogv", b"\x00\xff \n\n")
        result = self.run_check()
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_fix_mends_what_it_reports(self):
        self.put("docs/a.md", b"one \r\ntwo\n\n\n")
        self.put("core/a.cpp", b"int  a;")
        self.assertEqual(self.run_check("--fix").returncode, 0)
        self.assertEqual(self.run_check().returncode, 0)
        with open(os.path.join(self.root, "docs/a.md"), "rb") as stream:
            self.assertEqual(stream.read(), b"one\ntwo\n")


if __name__ == "__main__":
    unittest.main()
