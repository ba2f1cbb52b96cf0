#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "core/File.h"
#include "core/UnfinishedFile.h"
#include "core/WholeFile.h"
#include "tests/core/CoreFixture.h"
#include "tests/support/LogCapture.h"

namespace {

using namespace std::string_literals;

class FileTest : public core_tests::CoreTest {
protected:
    support::LogCapture m_log;
    core::File m_file;
};

TEST_F(FileTest, OnlyTextModeWritesCarriageReturnsAndReadingIsRaw) {
    struct Case {
        const char *writing, *reading;
        std::string bytes;
    };
    for (const Case& c : {Case{"wt", "rt", "a\r\nb\r\r\n\r\none\r\n\x84\x03\x02\x01two\0"s},
                          Case{"wb", "rb", "a\nb\r\n\none\n\x84\x03\x02\x01two\0"s}}) {
        ASSERT_TRUE(m_file.open("f", c.writing));
        EXPECT_TRUE(m_file.writeString("a\nb\r\n") && m_file.write("\none\n", 5));
        EXPECT_TRUE(m_file.writeU32(0x01020384));
        m_file.writeTerminators = true;
        EXPECT_TRUE(m_file.writeString("two") && m_file.writeString(""));
        m_file.writeTerminators = false;
        ASSERT_TRUE(m_file.open("f", c.reading)) << "closes what was open";
        EXPECT_EQ(support::readBytes("f"), c.bytes) << c.writing;
        std::string bytes(c.bytes.size(), '\0');
        EXPECT_TRUE(m_file.read(bytes.data(), 1));
        EXPECT_EQ(m_file.size(), static_cast<std::int64_t>(bytes.size()));
        EXPECT_TRUE(m_file.read(bytes.data() + 1, bytes.size() - 1)) << "the position stayed";
        EXPECT_EQ(bytes, c.bytes);
        EXPECT_FALSE(m_file.read(bytes.data(), 1)) << "at the end";
    }
}

TEST_F(FileTest, EveryOperationOnAClosedFileLogsAndFails) {
    ASSERT_TRUE(m_file.open("f", "wb"));
    EXPECT_FALSE(m_file.open("missing", "rb"));
    for (const char* mode : {"", "r", "w", "a", "r+b", "wtb"}) {
        EXPECT_FALSE(m_file.open("f", mode)) << mode;
    }
    std::unique_ptr<std::uint8_t[]> buffer;
    char byte = 0;
    EXPECT_FALSE(m_file.read(&byte, 1) || m_file.readAlloc(buffer, 1) || m_file.sync());
    EXPECT_FALSE(m_file.write("x", 1) || m_file.writeU32(1) || m_file.writeString(""));
    EXPECT_EQ(m_file.size(), 0);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>(7, "FILE handle is invalid"));
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(FileTest, AllocatesForTheReaderWithoutTrustingTheCount) {
    support::writeBytes("f", "abc");
    struct Case {
        std::size_t count;
        bool read, allocated;
    };
    for (const Case& c : {Case{3, true, true}, Case{0, true, true}, Case{4, false, true},
                          Case{std::size_t{1} << 25, false, false}}) {
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

TEST_F(FileTest, AWholeFileIsReadUpToItsLimitOnly) {
    support::writeBytes("f", "a\0\r\nb"s);
    EXPECT_EQ(core::readWholeFile("f", 5), "a\0\r\nb"s);
    EXPECT_EQ(core::readWholeFile("f", 4), std::nullopt);
    EXPECT_EQ(core::readWholeFile("missing", 4), std::nullopt);
    m_files.forgetCalls();
    m_files.shortenAt(2);
    EXPECT_EQ(core::readWholeFile("f", 5), std::nullopt) << "read in half";
    support::writeBytes("empty", "");
    m_files.heal();
    EXPECT_EQ(core::readWholeFile("empty", 5), "");
    m_files.failOn("read", EIO);
    EXPECT_EQ(core::readWholeFile("empty", 5), std::nullopt) << "not known to be empty";
}

TEST_F(FileTest, AnUnfinishedFileGoesUnlessItIsKeptOrNoMemoryIsLeft) {
    using support::Fault;
    for (const char* how : {"goes", "kept", "no memory"}) {
        const bool lacksMemory = std::string(how) == "no memory";
        {
            core::UnfinishedFile file(m_files, "f");
            int error = 0;
            EXPECT_TRUE(file.make(error)) << how;
            if (std::string(how) == "kept") {
                file.keep();
            }
            m_files.setRule(
                [lacksMemory](const support::Call&) {
                    return lacksMemory ? throw std::bad_alloc() : Fault::none;
                },
                0);
        }
        m_files.heal();
        EXPECT_EQ(support::filesBelow(".").empty(), std::string(how) == "goes") << how;
    }
}

} // namespace
