"""What check_imports lets through and what it names."""

import os
import subprocess
import sys
import tempfile
import unittest

CHECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools",
                     "check_imports")
COMPILER = "x86_64-w64-mingw32-g++-posix"
NARROW = '#include <windows.h>\nint main() { return DeleteFileA("x"); }\n'
WIDE = '#include <windows.h>\nint main() { return DeleteFileW(L"x"); }\n'


class CheckImports(unittest.TestCase):
    def check(self, name, source, *options):
        with tempfile.TemporaryDirectory() as folder:
            program = os.path.join(folder, name)
            subprocess.run([COMPILER, "-x", "c++", "-", "-o", program, *options], input=source,
                           check=True, text=True)
            result = subprocess.run([sys.executable, CHECK, folder], stdout=subprocess.PIPE,
                                    text=True)
            return result.returncode, result.stdout

    def test_a_program_of_wide_calls_passes(self):
        self.assertEqual(self.check("Quorvel.exe", WIDE, "-static")[0], 0)

    def test_a_narrow_call_is_named(self):
        code, output = self.check("quorvel-x.exe", NARROW, "-static")
        self.assertEqual(code, 1)
        self.assertIn("calls DeleteFileA", output)

    def test_a_library_beside_the_program_is_named(self):
        code, output = self.check("x.exe", "#include <string>\n#include <iostream>\n"
                                  "int main() { std::cout << std::string(3, 'x'); }\n")
        self.assertEqual(code, 1)
        self.assertIn("needs libstdc++-6.dll", output)

    def test_an_empty_folder_is_no_success(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(subprocess.run([sys.executable, CHECK, folder],
                                            stderr=subprocess.DEVNULL).returncode, 2)


if __name__ == "__main__":
    unittest.main()
