"""What check_imports lets through and what it names."""

import os
import subprocess
import sys
import tempfile
import unittest

CHECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools",
                     "check_imports")
COMPILER = "x86_64-w64-mingw32-g++-posix"
CALL = '#include <windows.h>\nint main() { return DeleteFile%s"x"); }\n'
STREAM = "#include <iostream>\nint main() { std::cout << 1; }\n"


class CheckImports(unittest.TestCase):
    def test_narrow_calls_and_libraries_beside_a_program_are_named(self):
        for name, source, options, code, finding in [
                ("Quorvel.exe", CALL % "W(L", ["-static"], 0, ""),
                ("quorvel-x.exe", CALL % "A(", ["-static"], 1, "calls DeleteFileA"),
                ("tests.exe", CALL % "A(", ["-static"], 0, ""),
                ("x.exe", STREAM, [], 1, "needs libstdc++-6.dll"),
                ("x.o", STREAM, [], 2, "")]:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                subprocess.run([COMPILER, "-x", "c++", "-", "-o", os.path.join(folder, name),
                                *options], input=source, check=True, text=True)
                result = subprocess.run([sys.executable, CHECK, folder], stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
                self.assertEqual(result.returncode, code)
                self.assertIn(finding, result.stdout)


if __name__ == "__main__":
    unittest.main()
