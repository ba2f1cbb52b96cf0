#include <filesystem>

#include <gtest/gtest.h>

#include "tests/core/SafeSaveFixture.h"

namespace {

namespace fs = std::filesystem;
using core_tests::SafeSaveTest;

TEST_F(SafeSaveTest, LinksAreFollowedAndAccessRightsStay) {
    support::writeBytes("real/f.xml", "old");
    fs::permissions("real/f.xml", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("real/f.xml", "link.xml");
    fs::create_symlink("real/new.xml", "dangling.xml");
    EXPECT_TRUE(save("link.xml", "new"));
    EXPECT_TRUE(save("dangling.xml", "made"));
    EXPECT_TRUE(fs::is_symlink("link.xml") && fs::is_symlink("dangling.xml"));
    EXPECT_EQ(support::readBytes("real/f.xml"), "new");
    EXPECT_EQ(support::readBytes("real/new.xml"), "made");
    EXPECT_EQ(fs::status("real/f.xml").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SafeSaveTest, ALinkInTheTemporarysPlaceIsNotWrittenThrough) {
    support::writeBytes("precious", "untouched");
    fs::create_symlink("precious", ".quorvel-saving.xml");
    EXPECT_TRUE(save("f.xml", "new"));
    EXPECT_EQ(support::readBytes("precious"), "untouched");
}

TEST_F(SafeSaveTest, ANameAsLongAsTheSystemAllowsIsSaved) {
    const std::string name = std::string(251, 'n') + ".xml";
    EXPECT_TRUE(save(name, "text"));
    EXPECT_EQ(support::readBytes(name), "text");
}

TEST_F(SafeSaveTest, ALinkThatNeverEndsIsRefused) {
    fs::create_symlink("loop.xml", "loop.xml");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(save("loop.xml", "new"));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_failure, "loop.xml: too many symbolic links");
    EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"loop.xml"});
}

} // namespace
