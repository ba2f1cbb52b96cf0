#include <gtest/gtest.h>

#include "tests/core/CoreFixture.h"

namespace {

using core_tests::Lines;
using core_tests::SafeSaveTest;

TEST_F(SafeSaveTest, BringsTheTemporaryToTheDiskBeforeItTakesTheFilesPlace) {
    support::writeBytes("A/Scene.xml", "old");
    EXPECT_TRUE(save("A\\Scene.xml", "new\n"));
    EXPECT_EQ(support::readBytes("A/Scene.xml"), "new\r\n");
    const Lines expected{"open A\\Scene.xml",
                         "removeFile A\\.quorvel-saving.xml",
                         "open A\\.quorvel-saving.xml",
                         "write A\\.quorvel-saving.xml",
                         "sync A\\.quorvel-saving.xml",
                         "close A\\.quorvel-saving.xml",
                         "copyAccess A\\.quorvel-saving.xml",
                         "replaceFile A\\Scene.xml",
                         "syncFolder A\\"};
    EXPECT_EQ(m_files.callTexts(), expected);
    EXPECT_EQ(support::filesBelow("A"), Lines{"Scene.xml"});
}

TEST_F(SafeSaveTest, AFaultAtAnyCallLeavesTheOldOrTheNewFileWholeAndSaysWhyInTheSystemsWords) {
    for (const auto plan :
         {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
          &support::FaultyFileSystem::stopAt}) {
        for (int number = 1; number <= 10; ++number) {
            m_files.heal();
            support::writeBytes("f.xml", "old");
            m_files.forgetCalls();
            (m_files.*plan)(number);
            const bool good = save("f.xml", "new");
            EXPECT_EQ(support::readBytes("f.xml"), good ? "new" : "old") << number;
            EXPECT_EQ(m_failure, good ? "" : "f.xml: " + m_files.errorText(m_files.error()));
            if (good && !m_printed.empty()) { // a folder that does not reach the disk: a warning
                EXPECT_EQ(m_printed,
                          "Saved, but a power failure may bring the old file back: f.xml\n");
                EXPECT_EQ(m_files.callTexts().back(), "syncFolder .");
            } else {
                EXPECT_EQ(m_printed, good ? "" : "Not saved: " + m_failure + "\n") << number;
            }
            m_files.heal();
            EXPECT_TRUE(save("f.xml", "after")) << "a left-over must not stop the next save";
            EXPECT_EQ(support::filesBelow("."), Lines{"f.xml"}) << number;
        }
    }
}

TEST_F(SafeSaveTest, APairIsPreparedTogetherAndAbandonedSilently) {
    support::writeBytes("z.xml", "old");
    testing::internal::CaptureStderr();
    {
        core::SafeSave first;
        core::SafeSave second;
        ASSERT_TRUE(first.open("z.xml", "wt") && second.open("z.bin", "wb"));
        ASSERT_TRUE(first.file().writeString("new") && second.file().writeString("n\n"));
        EXPECT_FALSE(first.commit()) << "not prepared";
        ASSERT_TRUE(first.prepare() && second.prepare());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(support::filesBelow("."), Lines{"z.xml"});
    EXPECT_EQ(support::readBytes("z.xml"), "old");
}

TEST_F(SafeSaveTest, OfTwoProgramsThatSaveAtOnceTheLaterOneWins) {
    support::writeBytes("f.xml", "old");
    core::SafeSave second;
    {
        core::SafeSave first;
        ASSERT_TRUE(first.open("f.xml", "wt") && first.file().writeString("1") && first.prepare());
        ASSERT_TRUE(second.open("f.xml", "wt") && second.file().writeString("sec"));
        EXPECT_FALSE(first.commit()) << "the temporary is another's, and half written";
        EXPECT_EQ(first.failure().text(), "f.xml: another program is saving it");
    }
    EXPECT_EQ(support::readBytes("f.xml"), "old");
    EXPECT_TRUE(second.file().writeString("ond") && second.prepare() && second.commit());
    EXPECT_EQ(support::readBytes("f.xml"), "second");
}

} // namespace
