#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "recovery/Places.h"
#include "tests/support/TempFolder.h"

namespace {

TEST(EncodedName, IsLegible) {
    const char* const cases[][2] = {
        {"Fire Drill Level 1", "+fire_+drill_+level_1"},
        {"way-out_v1.2", "way-out%5fv1%2e2"},
        {"\xC3\xA9tage", "%c3%a9tage"},
        {"100 % +", "100_%25_%2b"},
        {"con", "%63on"},
        {"..", "%2e%2e"},
        {"", "%"},
    };
    for (const auto& [name, encoded] : cases) {
        EXPECT_EQ(recovery::encodedName(name), encoded);
    }
}

class EncodedFolders : public support::TempFolderTest {};

TEST_F(EncodedFolders, AnyTwoNamesHaveFoldersOfTheirOwnOnTheDisk) {
    const char* const plain[] = {
        "",     ".",         "..",          "...",       "a",    "A",        "a.",          "a ",
        " a",   "A ",        "+a",          "_",         " ",    "%41",      "%",           "%%",
        "CON",  "con",       "Con",         "con.txt",   "NUL",  "nul ",     "com1",        "COM1",
        "com0", "lpt9",      "aux",         "prn",       "a/b",  "a\\b",     "a:b",         "/",
        "\\",   "..\\..\\a", "C:\\Windows", "a*",        "a?",   "a|b",      "<a>",         "a\nb",
        "\x7F", "\xC3\xA9",  "\xC3\x89",    "e\xCC\x81", "\xE9", "\xFF\xFE", "\xED\xA0\x80"};
    std::set<std::string> names(std::begin(plain), std::end(plain));
    names.insert({std::string("a\0b", 3), std::string(1, '\0')});
    for (const std::size_t length : {60U, 96U, 97U, 300U, 301U}) {
        names.insert(std::string(length, 'n'));
    }
    const std::string far(300, 'n');
    std::string wide;
    for (int letter = 0; letter < 150; ++letter) {
        wide += "\xC3\xA9";
    }
    names.insert({far + "N", far + ".", wide, wide + " ", recovery::encodedName(far),
                  recovery::encodedName(wide)});
    for (const std::string& name : names) {
        const std::string encoded = recovery::encodedName(name);
        EXPECT_LE(encoded.size(), recovery::kMaxEncodedBytes) << name;
        EXPECT_EQ(encoded.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-_%"),
                  std::string::npos)
            << encoded;
        support::writeBytes("in/" + encoded + "/name", name);
    }
    std::vector<std::string> folders;
    ASSERT_TRUE(core::listFolders("in", folders));
    EXPECT_EQ(folders.size(), names.size());
    for (const std::string& name : names) {
        EXPECT_EQ(support::readBytes("in/" + recovery::encodedName(name) + "/name"), name);
    }
}

} // namespace
