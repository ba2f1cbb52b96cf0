// A skin from a folder or from the zip beside it.
#include "tests/toolkit/ToolkitTest.h"
#include "tests/toolkit/ZipMaker.h"
#include "toolkit/ImageCache.h"
#include "toolkit/Skin.h"

using namespace toolkit_test;
using toolkit::Skin;

namespace {

class Skins : public support::TempFolderTest {
protected:
    static std::optional<std::string> read(const std::string& file) {
        const auto bytes = Skin::open("UI/")->read(file);
        return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
    }
    static void writeZip(const std::string& text) {
        ZipMaker maker;
        maker.add("a.xml", text, true);
        const auto bytes = maker.finish();
        support::writeBytes("UI.zip", std::string(bytes.begin(), bytes.end()));
    }
};

class ZippedWindow : public ToolkitTest {};

} // namespace

TEST_F(Skins, ComeFromTheFolderAndElseFromTheZip) {
    EXPECT_EQ(read("a.xml"), std::nullopt) << "neither";
    writeZip("zipped");
    EXPECT_EQ(read("a.xml"), "zipped");
    support::writeBytes("UI/a.xml", "plain");
    EXPECT_EQ(read("a.xml"), "plain");
    support::writeBytes("UI/deep/b.xml", "deep");
    EXPECT_EQ(read("deep/b.xml"), "deep");
    EXPECT_EQ(read("c.xml"), std::nullopt);
    EXPECT_EQ(read("deep"), std::nullopt);
}

TEST_F(Skins, NeverReadOutsideThemselves) {
    support::writeBytes("secret.txt", "secret");
    support::writeBytes("UI/a.xml", "plain");
    for (const std::string& name :
         {std::string("../secret.txt"), std::string("deep/../../secret.txt"),
          std::string("..\\secret.txt"), m_folder.path() + "secret.txt", std::string(".."),
          std::string("C:secret.txt"), std::string("a.xml\0x", 7), std::string()}) {
        EXPECT_EQ(read(name), std::nullopt) << name;
    }
}

TEST_F(Skins, ADamagedZipHoldsNothing) {
    support::writeBytes("UI.zip", "PK but no more");
    EXPECT_EQ(read("a.xml"), std::nullopt);
}

TEST_F(Skins, TheEntriesOfAZipAreNeverWritten) {
    const std::string names[] = {"../evil.xml", "..\\evil.xml", "/evil.xml", "C:evil.xml",
                                 "a/b.xml"};
    ZipMaker maker;
    for (const std::string& name : names) {
        maker.add(name, "evil", true);
    }
    const auto bytes = maker.finish();
    support::writeBytes("program/UI.zip", std::string(bytes.begin(), bytes.end()));
    const auto skin = Skin::open("program/UI/");
    for (const std::string& name : names) {
        (void)skin->read(name);
    }
    EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"program/UI.zip"});
}

TEST_F(ZippedWindow, ShowsItsLayoutAndImages) {
    ZipMaker maker;
    maker.add("Test.xml", R"(<Window size="40,30"><Control bkimage="Red.bmp"/></Window>)", true);
    maker.add("Red.bmp", bmp(2, 2, 0xFFFF0000), true);
    const auto bytes = maker.finish();
    support::writeBytes("UI.zip", std::string(bytes.begin(), bytes.end()));
    m_window = std::make_shared<RecordingWindow>(test::gui());
    ASSERT_TRUE(m_window->Create(nullptr, u"Test", 0, 0));
    EXPECT_EQ(driver().pixel({20, 15}), 0xFFFF0000);
}

TEST_F(Skins, ImagesAreDecodedOnceForAllWindows) {
    support::writeBytes("UI/Red.bmp", bmp(2, 2, 0xFFFF0000));
    const auto skin = Skin::open("UI/");
    const auto first = toolkit::ImageCache::get().load(*skin, "Red.bmp");
    ASSERT_NE(first, nullptr);
    support::writeBytes("UI/Red.bmp", bmp(2, 2, 0xFF00FF00));
    EXPECT_EQ(toolkit::ImageCache::get().load(*Skin::open("UI"), "Red.bmp"), first);
    toolkit::ImageCache::get().clear();
    EXPECT_EQ(toolkit::ImageCache::get().load(*skin, "Red.bmp")->at(0, 0), 0xFF00FF00);
}
