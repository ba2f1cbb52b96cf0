// A skin from a folder or from the zip beside it.
#include "tests/toolkit/ToolkitTest.h"
#include "tests/toolkit/ZipMaker.h"
#include "toolkit/ImageCache.h"
#include "toolkit/Skin.h"

using namespace toolkit_test;
using toolkit::Skin;

namespace {

class Skins : public ToolkitTest {
protected:
    static std::optional<std::string> read(const std::string& file) {
        const auto bytes = Skin::open("UI/")->read(file);
        return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
    }
    static void writeZip(const std::map<std::string, std::string>& files) {
        ZipMaker maker;
        for (const auto& [name, bytes] : files) {
            maker.add(name, bytes, true);
        }
        const auto zip = maker.finish();
        support::writeBytes("UI.zip", std::string(zip.begin(), zip.end()));
    }
};

} // namespace

TEST_F(Skins, ComeFromTheFolderAndElseFromTheZip) {
    EXPECT_EQ(read("a.xml"), std::nullopt) << "neither";
    support::writeBytes("UI.zip", "PK but no more");
    EXPECT_EQ(read("a.xml"), std::nullopt) << "a damaged zip";
    writeZip({{"a.xml", "zipped"}});
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

TEST_F(Skins, ThatAreZippedShowTheirLayoutsAndImages) {
    writeZip({{"Test.xml", R"(<Window size="40,30"><Control bkimage="Red.bmp"/></Window>)"},
              {"Red.bmp", bmp(2, 2, 0xFFFF0000)}});
    m_window = std::make_shared<RecordingWindow>(test::gui());
    ASSERT_TRUE(m_window->Create(nullptr, u"Test", 0, 0));
    EXPECT_EQ(driver().pixel({20, 15}), 0xFFFF0000);
}

TEST_F(Skins, HaveTheirImagesDecodedOnceForAllWindows) {
    support::writeBytes("UI/Red.bmp", bmp(2, 2, 0xFFFF0000));
    const auto skin = Skin::open("UI/");
    const auto first = toolkit::ImageCache::get().load(*skin, "Red.bmp");
    ASSERT_NE(first, nullptr);
    support::writeBytes("UI/Red.bmp", bmp(2, 2, 0xFF00FF00));
    EXPECT_EQ(toolkit::ImageCache::get().load(*Skin::open("UI"), "Red.bmp"), first);
    toolkit::ImageCache::get().clear();
    EXPECT_EQ(toolkit::ImageCache::get().load(*skin, "Red.bmp")->at(0, 0), 0xFF00FF00);
}
