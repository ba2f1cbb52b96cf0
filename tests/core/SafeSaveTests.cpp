
#include <cerrno>

#include <gtest/gtest.h>

#include "tests/core/SafeSaveFixture.h"

namespace {

using core_tests::SafeSaveTest;

TEST_F(SafeSaveTest, BringsTheTemporaryToTheDiskBeforeItTakesTheFilesPlace) {
    support::writeBytes("A/Scene.xml", "old");
    EXPECT_TRUE(save("A\\Scene.xml", "new\n"));
    EXPECT_EQ(support::readBytes("A/Scene.xml"), "new\r\n");
    const std::vector<std::string> expected{"open A\\Scene.xml",
                                            "removeFile A\\.quorvel-saving.xml",
                                            "open A\\.quorvel-saving.xml",
                                            "write A\\.quorvel-saving.xml",
                                            "sync A\\.quorvel-saving.xml",
                                            "close A\\.quorvel-saving.xml",
                                            "copyAccess A\\.quorvel-saving.xml",
                                            "replaceFile A\\Scene.xml",
                                            "syncFolder A\\"};
    EXPECT_EQ(m_files.callTexts(), expected);
    EXPECT_EQ(support::filesBelow("A"), std::vector<std::string>{"Scene.xml"});
}

TEST_F(SafeSaveTest, AFaultAtAnyCallLeavesTheOldOrTheNewFileWhole) {
    using Plan = void (support::FaultyFileSystem::*)(int);
    for (const Plan plan :
         {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
          &support::FaultyFileSystem::stopAt}) {
        for (int number = 1; number <= 10; ++number) {
            m_files.heal();
            support::writeBytes("f.xml", "old");
            m_files.forgetCalls();
            (m_files.*plan)(number);
            testing::internal::CaptureStderr();
            const bool good = save("f.xml", "new");
            const std::string told = testing::internal::GetCapturedStderr();
            EXPECT_EQ(support::readBytes("f.xml"), good ? "new" : "old") << number;
            EXPECT_EQ(m_failure.empty(), good) << number;
            if (good && !told.empty()) { // a folder that does not reach the disk is worth a warning
                EXPECT_EQ(told, "Saved, but a power failure may bring the old file back: f.xml\n");
                EXPECT_EQ(m_files.callTexts().back(), "syncFolder .");
            } else {
                EXPECT_EQ(told, good ? "" : "Not saved: " + m_failure + "\n") << number;
            }
            m_files.heal();
            EXPECT_TRUE(save("f.xml", "after")) << "a left-over must not stop the next save";
            EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"f.xml"}) << number;
        }
    }
}

TEST_F(SafeSaveTest, AFullDiskIsToldInTheSystemsWords) {
    support::writeBytes("f.xml", "old");
    for (const char* operation : {"write", "sync", "close"}) {
        m_files.failOn(operation, ENOSPC);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(save("f.xml", "new")) << operation;
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(m_failure, "f.xml: " + m_files.errorText(ENOSPC)) << operation;
        EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"f.xml"});
        EXPECT_EQ(support::readBytes("f.xml"), "old");
    }
}

TEST_F(SafeSaveTest, WhatCannotBeWrittenIsRefusedBeforeAnythingElse) {
    support::makeFolder("folder.xml");
    support::writeBytes("own/file", "");
    for (const char* path : {"folder.xml", "missing/f.xml", "own/file/f.xml"}) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(save(path, "new")) << path;
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(m_failure.rfind(path, 0), 0U) << m_failure;
    }
    EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"own/file"});
    m_files.setRule(
        [](const support::Call& call) {
            return call.operation == "open" && call.path == "f.xml" ? support::Fault::fail
                                                                    : support::Fault::none;
        },
        EACCES);
    support::writeBytes("f.xml", "read only");
    m_files.forgetCalls();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(save("f.xml", "new"));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_files.callTexts(), std::vector<std::string>{"open f.xml"});
}

TEST_F(SafeSaveTest, APairIsPreparedTogetherAndAbandonedSilently) {
    support::writeBytes("z.xml", "old");
    support::writeBytes("z.bin", "old");
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
    EXPECT_EQ(support::filesBelow("."), (std::vector<std::string>{"z.bin", "z.xml"}));
    EXPECT_EQ(support::readBytes("z.xml") + support::readBytes("z.bin"), "oldold");
}

TEST_F(SafeSaveTest, OfTwoProgramsThatSaveAtOnceTheLaterOneWins) {
    support::writeBytes("f.xml", "old");
    core::SafeSave first;
    core::SafeSave second;
    ASSERT_TRUE(first.open("f.xml", "wt") && first.file().writeString("first") && first.prepare());
    ASSERT_TRUE(second.open("f.xml", "wt") && second.file().writeString("sec"));
    EXPECT_FALSE(first.commit()) << "the temporary is another's, and half written";
    EXPECT_EQ(first.failure(), "f.xml: another program is saving it");
    EXPECT_EQ(support::readBytes("f.xml"), "old");
    EXPECT_TRUE(second.file().writeString("ond") && second.prepare() && second.commit());
    EXPECT_EQ(support::readBytes("f.xml"), "second");
}

} // namespace
