#include <cerrno>

#include <gtest/gtest.h>

#include "core/File.h"
#include "core/Services.h"
#include "core/WholeFile.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"

namespace {

using namespace std::string_literals;

class FileTest : public support::TempFolderTest {
protected:
    support::LogCapture m_log;
    core::File m_file;
};

TEST_F(FileTest, TextModeWritesCarriageReturnsAndBinaryModeDoesNot) {
    struct Case {
        const char* mode;
        std::string written;
    };
    for (const Case& c : {Case{"wt", "a\r\nb\r\r\n\r\n"}, Case{"wb", "a\nb\r\n\n"}}) {
        ASSERT_TRUE(m_file.open("f", c.mode));
        EXPECT_TRUE(m_file.writeString("a\nb\r\n"));
        EXPECT_TRUE(m_file.write("\n", 1));
        EXPECT_TRUE(m_file.close());
        EXPECT_EQ(support::readBytes("f"), c.written) << c.mode;
    }
}

TEST_F(FileTest, ReadingIsRawInBothModes) {
    support::writeBytes("f", "a\r\nb\x1A\n");
    for (const char* mode : {"rt", "rb"}) {
        ASSERT_TRUE(m_file.open("f", mode));
        std::string bytes(6, '\0');
        EXPECT_TRUE(m_file.read(bytes.data(), bytes.size())) << mode;
        EXPECT_EQ(bytes, "a\r\nb\x1A\n") << mode;
        EXPECT_FALSE(m_file.read(bytes.data(), 1)) << "at the end";
    }
}

TEST_F(FileTest, WritesTerminatorsOnlyWhenAskedAndNothingForAnEmptyText) {
    ASSERT_TRUE(m_file.open("f", "wb"));
    EXPECT_FALSE(m_file.writeTerminators);
    EXPECT_TRUE(m_file.writeString("one"));
    m_file.writeTerminators = true;
    EXPECT_TRUE(m_file.writeString("two"));
    EXPECT_TRUE(m_file.writeString(""));
    EXPECT_TRUE(m_file.writeU32(0x01020384));
    m_file.close();
    EXPECT_EQ(support::readBytes("f"), "onetwo\0\x84\x03\x02\x01"s);
}

TEST_F(FileTest, SizeLeavesThePositionAlone) {
    support::writeBytes("f", "0123456789");
    ASSERT_TRUE(m_file.open("f", "rb"));
    char byte = 0;
    ASSERT_TRUE(m_file.read(&byte, 1));
    EXPECT_EQ(m_file.size(), 10);
    ASSERT_TRUE(m_file.read(&byte, 1));
    EXPECT_EQ(byte, '1');
}

TEST_F(FileTest, EveryOperationOnAClosedFileLogsAndFails) {
    std::unique_ptr<std::uint8_t[]> buffer;
    char byte = 0;
    EXPECT_FALSE(m_file.read(&byte, 1));
    EXPECT_FALSE(m_file.readAlloc(buffer, 1));
    EXPECT_FALSE(m_file.write("x", 1));
    EXPECT_FALSE(m_file.writeU32(1));
    EXPECT_FALSE(m_file.writeString(""));
    EXPECT_EQ(m_file.size(), 0);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>(6, "FILE handle is invalid"));
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(FileTest, OpeningClosesWhatWasOpenEvenWhenItFails) {
    ASSERT_TRUE(m_file.open("f", "wb"));
    EXPECT_TRUE(m_file.writeString("kept"));
    EXPECT_FALSE(m_file.open("missing", "rb"));
    EXPECT_EQ(support::readBytes("f"), "kept");
    EXPECT_FALSE(m_file.writeString("x")) << "nothing is open now";
    for (const char* mode : {"", "r", "w", "a", "r+b", "wtb"}) {
        EXPECT_FALSE(m_file.open("f", mode)) << mode;
    }
    support::makeFolder("folder");
    EXPECT_FALSE(m_file.open("folder", "rb"));
    EXPECT_FALSE(m_file.open("folder", "wb"));
}

TEST_F(FileTest, AllocatesForTheReaderWithoutTrustingTheCount) {
    support::writeBytes("f", "abc");
    struct Case {
        std::size_t count;
        bool read;
        bool allocated;
    };
    for (const Case& c : {Case{3, true, true}, Case{0, true, true}, Case{4, false, true},
                          Case{std::size_t{1} << 60, false, false}}) {
        std::unique_ptr<std::uint8_t[]> buffer;
        ASSERT_TRUE(m_file.open("f", "rb"));
        EXPECT_EQ(m_file.readAlloc(buffer, c.count), c.read) << c.count;
        EXPECT_EQ(buffer != nullptr, c.allocated) << c.count;
    }
    auto own = std::make_unique<std::uint8_t[]>(3);
    const std::uint8_t* const place = own.get();
    ASSERT_TRUE(m_file.open("f", "rb"));
    EXPECT_TRUE(m_file.readAlloc(own, 3));
    EXPECT_EQ(own.get(), place);
    EXPECT_EQ(own[2], 'c');
}

TEST_F(FileTest, AFullDiskFailsTheWriteOrTheCloseAndTellsWhy) {
    support::FaultyFileSystem files(platform::nativeFileSystem());
    const core::ServicesOverride services(
        {&files, &platform::nativeClock(), &platform::nativeProcess()});
    for (const char* operation : {"write", "sync", "close"}) {
        files.failOn(operation, ENOSPC);
        ASSERT_TRUE(m_file.open("f", "wb"));
        const bool wrote = m_file.writeString("text");
        const bool synced = m_file.sync();
        EXPECT_FALSE(m_file.close() && wrote && synced) << operation;
        EXPECT_EQ(m_file.lastError(), ENOSPC) << operation;
        files.heal();
    }
    ASSERT_TRUE(m_file.open("f", "wb"));
    EXPECT_EQ(m_file.lastError(), 0);
}

TEST_F(FileTest, AWholeFileIsReadUpToItsLimitOnly) {
    support::writeBytes("f", "a\0\r\nb"s);
    EXPECT_EQ(core::readWholeFile("f", 5), "a\0\r\nb"s);
    EXPECT_EQ(core::readWholeFile("f", 4), std::nullopt);
    EXPECT_EQ(core::readWholeFile("missing", 4), std::nullopt);
    EXPECT_EQ(core::readWholeFile(m_folder.path(), 4), std::nullopt);
    support::writeBytes("empty", "");
    EXPECT_EQ(core::readWholeFile("empty", 0), "");
    support::FaultyFileSystem files(platform::nativeFileSystem());
    const core::ServicesOverride services(
        {&files, &platform::nativeClock(), &platform::nativeProcess()});
    files.shortenAt(2);
    EXPECT_EQ(core::readWholeFile("f", 5), std::nullopt) << "read in half";
}

} // namespace
