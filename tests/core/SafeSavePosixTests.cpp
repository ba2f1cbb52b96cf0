#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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

TEST_F(SafeSaveTest, OwnerAndGroupStayAsFarAsTheUserMayKeepThem) {
    // The superuser may give the file to anybody; others have it already.
    const bool isSuperuser = ::geteuid() == 0;
    const uid_t owner = isSuperuser ? 65534 : ::geteuid();
    const gid_t group = isSuperuser ? 65533 : ::getegid();
    support::writeBytes("f.xml", "old");
    ASSERT_EQ(::chown("f.xml", owner, group), 0);
    fs::permissions("f.xml", fs::perms::owner_all | fs::perms::set_uid);
    EXPECT_TRUE(save("f.xml", "new"));
    struct stat status {};
    ASSERT_EQ(::stat("f.xml", &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777, 04700U);
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
