"""check_includes on small trees: each row plants one file and says which include is refused."""

import unittest

from planted import run_on

HEADER = """#pragma once
#include <string>
namespace zone {
class Shape;
/// Not a Ghost.
class Zone {
public:
    void rename(const std::string& name);
    int m_width = 0;
};
enum class Kind { open, closed };
constexpr int kMostPoints = 7;
using Names = int;
#define ZONE_MACRO 1
}
"""


class IncludesTest(unittest.TestCase):
    def check(self, include, cases):
        for code, needed in cases:
            with self.subTest(include=include, code=code):
                result = run_on("check_includes", {
                    "zone/Zone.h": HEADER,
                    "ui/Window.cpp": f"// first line\n#include {include}\n{code}\n"})
                self.assertEqual(result.returncode, 0 if needed else 1, result.stdout)
                if not needed:
                    self.assertIn("ui/Window.cpp:2: ", result.stdout)

    def test_a_header_of_ours_is_needed_for_each_name_it_declares(self):
        self.check('"zone/Zone.h"', [
            ("zone::Zone z;", True),
            ("z.rename(text);", True),
            ("f(zone::Kind::closed);", True),
            ("int a[zone::kMostPoints];", True),
            ("zone::Names n;", True),
            ("#if ZONE_MACRO", True),
            ("zone::Shape* shape;", False),
            ("Ghost g;", False),
            ("std::string text;", False),
            ("// zone::Zone is drawn elsewhere", False),
            ('say("Zone");', False),
            ("/* Zone\n Zone */ int zones;", False),
        ])

    def test_a_standard_header_is_needed_for_its_names(self):
        self.check("<vector>", [("std::vector<int> v;", True), ("std::string v;", False)])
        self.check("<cstdint>", [("std::uint_fast8_t n;", True), ("int n = 0x12;", False)])
        self.check("<chrono>", [("wait(33ms);", True), ("wait(33);", False)])
        self.check("<algorithm>", [("std::ranges::sort(v);", True), ("int sorted;", False)])

    def test_what_cannot_be_judged_is_left_alone_but_for_unknown_standard_headers(self):
        self.check("<QWindow>", [("", True)])
        self.check("<sys/stat.h>", [("", True)])
        self.check("<strstream>", [("std::strstream s;", False)])

    def test_a_file_may_include_its_own_header_whatever_it_uses(self):
        result = run_on("check_includes", {
            "zone/Zone.h": HEADER, "zone/Zone.cpp": '#include "zone/Zone.h"\nint zones;\n'})
        self.assertEqual(result.returncode, 0, result.stdout)


if __name__ == "__main__":
    unittest.main()
