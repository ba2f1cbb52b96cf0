#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/core/CoreFixture.h"

namespace {

namespace fs = std::filesystem;
using core_tests::Lines;
using core_tests::SafeSaveTest;

TEST_F(SafeSaveTest, LinksAreFollowedAndAccessRightsStay) {
    support::writeBytes("real/f.xml", "old");
    // The superuser may give the file to anybody; others have it already.
    const bool isSuperuser = ::geteuid() == 0;
    const uid_t owner = isSuperuser ? 65534 : ::geteuid();
    const gid_t group = isSuperuser ? 65533 : ::getegid();
    ASSERT_EQ(::chown("real/f.xml", owner, group), 0);
    fs::permissions("real/f.xml", fs::perms::owner_all | fs::perms::set_uid);
    fs::create_symlink("real/f.xml", "link.xml");
    fs::create_symlink("real/new.xml", "dangling.xml");
    EXPECT_TRUE(save("link.xml", "new") && save("dangling.xml", "made"));
    EXPECT_TRUE(fs::is_symlink("link.xml") && fs::is_symlink("dangling.xml"));
    EXPECT_EQ(support::readBytes("real/f.xml") + support::readBytes("real/new.xml"), "newmade");
    struct stat status {};
    ASSERT_EQ(::stat("real/f.xml", &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777, 04700U);
}

TEST_F(SafeSaveTest, ALinkInTheTemporarysPlaceIsNotWrittenThrough) {
    support::writeBytes("precious", "untouched");
    fs::create_symlink("precious", ".quorvel-saving.xml");
    const std::string longest = std::string(251, 'n') + ".xml"; // as the system allows
    EXPECT_TRUE(save(longest, "new"));
    EXPECT_EQ(support::readBytes(longest), "new");
    EXPECT_EQ(support::readBytes("precious"), "untouched");
}

TEST_F(SafeSaveTest, ALinkThatNeverEndsIsRefused) {
    fs::create_symlink("loop.xml", "loop.xml");
    EXPECT_FALSE(save("loop.xml", "new"));
    EXPECT_EQ(m_failure, "loop.xml: too many symbolic links");
    EXPECT_EQ(support::filesBelow("."), Lines{"loop.xml"});
}

} // namespace
