#include <cerrno>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

using Names = std::vector<std::string>;

TEST(PathPieces, SplitAtTheLastSeparatorOfEitherKindAndTheLastDotOfTheName) {
    struct Case {
        std::string path;
        std::string folder;
        std::string title;
        std::string extension;
    };
    const Case cases[] = {
        {"C:\\Scenes\\A\\clip.ogv", "C:\\Scenes\\A\\", "clip", ".ogv"},
        {"Scenes/A\\clip.ogv", "Scenes/A\\", "clip", ".ogv"},
        {"a\\b/clip", "a\\b/", "clip", ""},
        {"clip.part.ogg", "", "clip.part", ".ogg"},
        {"folder.d/clip", "folder.d/", "clip", ""},
        {"A/.ogv", "A/", "", ".ogv"},
        {"A/clip.", "A/", "clip", "."},
        {"A/", "A/", "", ""},
        {"", "", "", ""},
        {"Szene/\xC3\x9C"
         "bung.ogv",
         "Szene/",
         "\xC3\x9C"
         "bung",
         ".ogv"},
        {"long/" + std::string(300, 'n') + ".ogv", "long/", std::string(300, 'n'), ".ogv"},
        {std::string(300, 'f') + "\\n.ogv", std::string(300, 'f') + "\\", "n", ".ogv"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(core::folderOf(c.path), c.folder) << c.path;
        EXPECT_EQ(core::fileTitle(c.path), c.title) << c.path;
        EXPECT_EQ(core::fileName(c.path), c.title + c.extension) << c.path;
        EXPECT_EQ(core::withoutExtension(c.path), c.folder + c.title) << c.path;
    }
}

TEST(PathPieces, ASeparatorIsAppendedInThePathsOwnKind) {
    struct Case {
        const char* path;
        const char* result;
    };
    for (const Case& c : {Case{"Scenes/A", "Scenes/A/"}, Case{"C:\\work", "C:\\work\\"},
                          Case{"C:\\", "C:\\"}, Case{"/", "/"}, Case{"", ""},
                          Case{"Scenes/A\\", "Scenes/A\\"}, Case{"a\\b/c", "a\\b/c\\"}}) {
        EXPECT_EQ(core::withSeparator(c.path), c.result);
    }
}

class ListingTest : public support::TempFolderTest {
protected:
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    Names m_names{"left over"};
};

TEST_F(ListingTest, PatternsMatchWithoutCaseAndFoldersAreNoFiles) {
    for (const char* name : {"b.ini", "A.INI", "c.ini.txt", "no dot", ".ini", "\xC3\xA9.ini"}) {
        support::writeBytes(std::string("in/") + name, "");
    }
    support::makeFolder("in/folder.ini");
    struct Case {
        const char* pattern;
        Names names;
    };
    const Case cases[] = {
        {"in/*.ini", {".ini", "A.INI", "b.ini", "\xC3\xA9.ini"}},
        {"in\\*.INI", {".ini", "A.INI", "b.ini", "\xC3\xA9.ini"}},
        {"in/*.*", {".ini", "A.INI", "b.ini", "c.ini.txt", "no dot", "\xC3\xA9.ini"}},
        {"in/*", {".ini", "A.INI", "b.ini", "c.ini.txt", "no dot", "\xC3\xA9.ini"}},
        {"in/?.ini", {"A.INI", "b.ini", "\xC3\xA9.ini"}},
        {"in/*i*t", {"c.ini.txt"}},
        {"in/no dot", {"no dot"}},
        {"in/folder.ini", {}},
        {"in/", {}},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(core::listFiles(c.pattern, m_names)) << c.pattern;
        EXPECT_EQ(m_names, c.names) << c.pattern;
    }
}

TEST_F(ListingTest, FoldersAreListedWithoutFilesAndDots) {
    for (const char* name : {"s/b", "s/A/inner", "s/_", "s/C.old"}) {
        support::makeFolder(name);
    }
    support::writeBytes("s/file", "");
    for (const char* folder : {"s", "s/", "s\\"}) {
        EXPECT_TRUE(core::listFolders(folder, m_names));
        EXPECT_EQ(m_names, (Names{"A", "b", "C.old", "_"})) << folder;
    }
}

TEST_F(ListingTest, AnUnreadableFolderGivesAnEmptyList) {
    EXPECT_FALSE(core::listFolders("missing", m_names));
    EXPECT_EQ(m_names, Names{});
    m_names = {"left over"};
    EXPECT_FALSE(core::listFiles("missing/*.ini", m_names));
    EXPECT_EQ(m_names, Names{});
}

TEST_F(ListingTest, TheCurrentDirectoryEndsInASeparatorOrIsEmptyWhenUnknown) {
    EXPECT_EQ(core::currentDirectory(), m_folder.path());
    m_files.failOn("currentFolder", EACCES);
    EXPECT_EQ(core::currentDirectory(), "");
}

TEST_F(ListingTest, FilesAndFoldersAreToldApart) {
    support::writeBytes("file", "");
    EXPECT_TRUE(core::isFile("file"));
    EXPECT_FALSE(core::isFolder("file"));
    EXPECT_FALSE(core::isFile(m_folder.path()));
    EXPECT_TRUE(core::isFolder(m_folder.path()));
    EXPECT_FALSE(core::isFile("missing") || core::isFolder("missing"));
}

} // namespace
