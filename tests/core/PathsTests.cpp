#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "tests/core/CoreFixture.h"

namespace {

using Names = std::vector<std::string>;

TEST(PathPieces, SplitAtTheLastSeparatorOfEitherKindAndTheLastDotOfTheName) {
    struct Case {
        std::string folder, title, extension;
    };
    const std::string far(300, 'n');
    const Case cases[] = {
        {"C:\\Scenes\\A\\", "clip", ".ogv"},
        {"Scenes/A\\", "\xC3\x9C\x62", ".ogv"},
        {"a\\b/", "clip", ""},
        {"", "clip.part", ".ogg"},
        {"folder.d/", "clip", ""},
        {"A/", "", ".ogv"},
        {"A/", "clip", "."},
        {"", "", ""},
        {far + "\\", far, ".ogv"},
    };
    for (const Case& c : cases) {
        const std::string path = c.folder + c.title + c.extension;
        EXPECT_EQ(core::folderOf(path), c.folder) << path;
        EXPECT_EQ(core::fileTitle(path), c.title) << path;
        EXPECT_EQ(core::fileName(path), c.title + c.extension) << path;
        EXPECT_EQ(core::withoutExtension(path), c.folder + c.title) << path;
    }
    const char* const appended[][2] = {{"Scenes/A", "/"}, {"C:\\work", "\\"}, {"C:\\", ""},
                                       {"/", ""},         {"", ""},           {"a\\b/c", "\\"}};
    for (const auto& [folder, separator] : appended) {
        EXPECT_EQ(core::withSeparator(folder), std::string(folder) + separator);
    }
}

TEST(PathPieces, DevicesOfWindowsAreKnownByTheirStem) {
    for (const char* name : {"CON", "nul.txt", "Com1", "lpt9.a.b"}) {
        EXPECT_TRUE(core::isDeviceName(name)) << name;
    }
    for (const char* name : {"", "cone", "com", "com10", "a.con"}) {
        EXPECT_FALSE(core::isDeviceName(name)) << name;
    }
}

class ListingTest : public core_tests::CoreTest {
protected:
    Names m_names{"left over"};
};

TEST_F(ListingTest, PatternsMatchWithoutCaseAndFoldersAreNoFiles) {
    for (const char* name : {"b.ini", "A.INI", "c.ini.txt", "no dot", ".ini", "\xC3\xA9.ini"}) {
        support::writeBytes(std::string("in/") + name, "");
    }
    support::makeFolder("in/folder.ini");
    support::makeFolder("in/Other");
    const Names all{".ini", "A.INI", "b.ini", "c.ini.txt", "no dot", "\xC3\xA9.ini"};
    struct Case {
        const char* pattern;
        Names names;
    };
    const Case cases[] = {
        {"in/*.ini", {".ini", "A.INI", "b.ini", "\xC3\xA9.ini"}},
        {"in\\*.*", all},
        {"in/*", all},
        {"in/?.INI", {"A.INI", "b.ini", "\xC3\xA9.ini"}},
        {"in/*i*t", {"c.ini.txt"}},
        {"in/no dot", {"no dot"}},
        {"in/folder.ini", {}},
        {"in/", {}},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(core::listFiles(c.pattern, m_names)) << c.pattern;
        EXPECT_EQ(m_names, c.names) << c.pattern;
    }
    for (const char* folder : {"in", "in\\"}) {
        EXPECT_TRUE(core::listFolders(folder, m_names));
        EXPECT_EQ(m_names, (Names{"folder.ini", "Other"})) << folder;
    }
    EXPECT_FALSE(core::listFolders("missing", m_names));
    EXPECT_EQ(m_names, Names{});
}

TEST_F(ListingTest, TheCurrentDirectoryEndsInASeparatorOrIsUnknown) {
    EXPECT_EQ(core::currentDirectory(), m_folder.path());
    m_files.failOn("currentFolder", EACCES);
    EXPECT_EQ(core::currentDirectory(), "");
}

} // namespace
