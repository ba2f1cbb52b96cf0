#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/EditorSettings.h"
#include "tests/core/CoreFixture.h"
#include "tests/support/LogCapture.h"

namespace {

class EditorSettingsTest : public core_tests::CoreTest {
protected:
    static constexpr const char* kFile = "Editor.ini";
    /// How many lines the log has got since the last call.
    std::size_t newLines() {
        const std::size_t seen = std::exchange(m_seen, m_log.count("Settings \""));
        return m_seen - seen;
    }
    support::LogCapture m_log;
    std::size_t m_seen = 0;
};

TEST_F(EditorSettingsTest, TakeTheDefaultsWithOneLogLineForWhateverIsOdd) {
    const struct {
        std::string text;
        bool drafts, backups;
        int size;
        std::size_t lines;
    } cases[] = {
        {"", true, true, 100, 0},
        {"\xEF\xBB\xBFKEEPDRAFTS=False\r\n; keepBackups = false\n# x\n\n", false, true, 100, 0},
        {"keepBackups=\tfalse \nkeepBackups = true\nsize = 150", true, false, 150, 0},
        {"[other]\nkeepDrafts = false\nwhatever", true, true, 100, 0},
        {"keepDrafts = no\nkeepBackups =\nsize = 1e9\n", true, true, 100, 1},
        {"size = 50\n", true, true, 100, 1},
        {"size = 99999999999\n", true, true, 100, 1},
        {"keepDrafts\nkeepBackups false\n= true\nsize = 200", true, true, 200, 1},
        {std::string("\0\0\xFF\n\xFE=\nkeepDrafts=false\n", 23), false, true, 100, 1},
        {"keepDrafts = false\n" + std::string(70000, 'x'), false, true, 100, 1},
        {std::string(70000, 'x'), true, true, 100, 1},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text.substr(0, 60));
        support::writeBytes(kFile, test.text);
        const core::EditorSettings settings(kFile);
        for (int turn = 0; turn < 2; ++turn) {
            EXPECT_EQ(settings.keepDrafts(), test.drafts);
            EXPECT_EQ(settings.keepBackups(), test.backups);
            EXPECT_EQ(settings.getInt("size", 100, 100, 200), test.size);
        }
        EXPECT_EQ(newLines(), test.lines);
    }
    EXPECT_TRUE(core::EditorSettings("missing.ini").keepDrafts());
    support::makeFolder("folder.ini");
    EXPECT_TRUE(core::EditorSettings("folder.ini").keepDrafts());
    EXPECT_EQ(newLines(), 1U);
}

TEST_F(EditorSettingsTest, ChangeTheirOwnLineAloneAndKeepWhatAnotherProgramWrote) {
    support::writeBytes(kFile, "; mine\nkeepdrafts = false\nfuture=1\n[Keys]\nsave = F2\n");
    core::EditorSettings first(kFile);
    core::EditorSettings second(kFile);
    EXPECT_TRUE(first.setKeepDrafts(true));
    EXPECT_TRUE(second.setKeepBackups(false));
    EXPECT_TRUE(second.keepDrafts());
    const std::string written = "; mine\r\nkeepDrafts = true\r\nfuture=1\r\nkeepBackups = false\r\n"
                                "[Keys]\r\nsave = F2\r\n";
    EXPECT_EQ(support::readBytes(kFile), written);
    for (const char* key : {"", "a=b", "[a", "#a", " a", "a\nb"}) {
        EXPECT_FALSE(first.set(key, "x")) << key;
    }
    EXPECT_FALSE(first.set("a", "x\ny"));
    EXPECT_EQ(support::readBytes(kFile), written);
    EXPECT_TRUE(first.set("path", "C:\\a = b; #c"));
    EXPECT_EQ(core::EditorSettings(kFile).getString("path", ""), "C:\\a = b; #c");
    EXPECT_EQ(newLines(), 0U);
}

TEST_F(EditorSettingsTest, ThatAreTooLargeKeepTheirBeginning) {
    const std::string first = "future = 1\r\nkeepDrafts = false\r\n";
    support::writeBytes(kFile, first + std::string(70000, ';') + "\nsize = 150\n");
    core::EditorSettings settings(kFile);
    EXPECT_EQ(settings.getInt("size", 100, 100, 200), 100);
    EXPECT_TRUE(settings.setKeepBackups(false));
    EXPECT_EQ(support::readBytes(kFile), first + "keepBackups = false\r\n");
    EXPECT_EQ(newLines(), 1U);
}

TEST_F(EditorSettingsTest, SectionsAreReadInOrderAndChangedWithoutTheRest) {
    using Values = std::vector<std::pair<std::string, std::string>>;
    support::writeBytes(kFile, "a = 0\n[KEYS]\nb = x = 1\n= 7\n;c = 2\nB = 3\n[more]\na = 4\n"
                               "[keys]\nd =\n");
    core::EditorSettings settings(kFile);
    EXPECT_EQ(settings.section("keys"), (Values{{"b", "x = 1"}, {"d", ""}}));
    EXPECT_TRUE(settings.setIn("keys", "e", "5") && settings.setIn("Keys", "b", {}));
    EXPECT_TRUE(settings.setIn("new", "a", "6") && settings.setIn("none", "a", {}));
    EXPECT_FALSE(settings.setIn("keys", "f", "\n"));
    EXPECT_EQ(support::readBytes(kFile), "a = 0\r\n[KEYS]\r\ne = 5\r\n= 7\r\n;c = 2\r\n[more]\r\n"
                                         "a = 4\r\n[keys]\r\nd =\r\n[new]\r\na = 6\r\n");
}

TEST_F(EditorSettingsTest, AFailedWriteLeavesTheFileWholeAndCountsForThisRun) {
    const std::string old = "keepDrafts = true\r\n";
    for (int number = 1; number <= 8; ++number) {
        m_files.heal();
        support::writeBytes(kFile, old);
        core::EditorSettings settings(kFile);
        m_files.forgetCalls();
        m_files.failAt(number);
        const bool good = settings.setKeepDrafts(false);
        m_files.heal();
        EXPECT_EQ(support::readBytes(kFile), good ? "keepDrafts = false\r\n" : old) << number;
        EXPECT_FALSE(settings.keepDrafts());
        EXPECT_TRUE(newLines() == 1 || good);
    }
}

} // namespace
