// A skin from a folder or from the zip beside it, good and hostile.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <zlib.h>

#include "platform/Window.h"
#include "tests/support/Random.h"
#include "tests/support/gui/TestGui.h"
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/skin/Skin.h"
#include "toolkit/skin/ZipArchive.h"

using namespace toolkit_test;
using toolkit::Skin;
using toolkit::ZipArchive;

namespace {

struct ZipEntry {
    std::string name;
    std::string data;
    bool deflated = true;
};

void putNumber(std::string& to, std::size_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        to.push_back(static_cast<char>(value >> (8 * i)));
    }
}

/// Without the two bytes before and the four behind that zlib's own format adds.
std::string deflated(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()));
    return packed.substr(2, size - 6);
}

std::string zipOf(const std::vector<ZipEntry>& entries, const std::string& comment = {}) {
    std::string files;
    std::string directory;
    for (const auto& [name, data, isDeflated] : entries) {
        const std::string packed = isDeflated ? deflated(data) : data;
        std::string common;
        putNumber(common, 20, 4); // version, flags
        putNumber(common, isDeflated ? 8 : 0, 2);
        putNumber(common, 0, 4); // time and date
        putNumber(common, crc32_z(0, reinterpret_cast<const Bytef*>(data.data()), data.size()), 4);
        putNumber(common, packed.size(), 4);
        putNumber(common, data.size(), 4);
        putNumber(common, name.size(), 4); // and no extra field
        directory += std::string("PK\x01\x02\x14\0", 6) + common + std::string(10, '\0');
        putNumber(directory, files.size(), 4);
        directory += name;
        files += "PK\x03\x04" + common + name + packed;
    }
    std::string all = files + directory + "PK\x05\x06" + std::string(4, '\0');
    putNumber(all, entries.size(), 2);
    putNumber(all, entries.size(), 2);
    putNumber(all, directory.size(), 4);
    putNumber(all, files.size(), 4);
    putNumber(all, comment.size(), 2);
    return all + comment;
}

std::optional<ZipArchive> openZip(const std::string& bytes) {
    return ZipArchive::open({bytes.begin(), bytes.end()});
}

std::optional<std::string> textOf(const std::optional<std::vector<std::uint8_t>>& bytes) {
    return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
}

class Skins : public ToolkitTest {
protected:
    static std::optional<std::string> read(const std::string& file) {
        return textOf(Skin::open("UI/")->read(file));
    }
};

} // namespace

TEST_F(Skins, ComeFromTheFolderAndElseFromTheZip) {
    EXPECT_EQ(read("a.xml"), std::nullopt) << "neither";
    support::writeBytes("UI.zip", "PK but no more");
    EXPECT_EQ(read("a.xml"), std::nullopt) << "a damaged zip";
    support::writeBytes("UI.zip", zipOf({{"a.xml", "zipped"}}));
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
    support::writeBytes(
        "UI.zip",
        zipOf({{"Test.xml", R"(<Window size="40,30"><Control bkimage="Red.bmp"/></Window>)"},
               {"Red.bmp", bmp(2, 2, 0xFFFF0000)}}));
    m_window = std::make_shared<RecordingWindow>(test::gui());
    ASSERT_TRUE(m_window->Create(nullptr, u"Test", 0, 0));
    EXPECT_EQ(driver().pixel({20, 15}), 0xFFFF0000);
}

TEST_F(Skins, WithADarkFolderGetDarkAtOnceAndOthersStayAsTheyAre) {
    constexpr const char* kLayout =
        R"(<Window size="60,30"><Control pos="0,0,20,30" bkcolor="band"/>
        <Control pos="20,0,20,30" bkimage="A.bmp"/>
        <Control pos="40,0,20,30" bkimage="B.bmp"/></Window>)";
    const std::vector<ZipEntry> light{{"Test.xml", kLayout},
                                      {"A.bmp", bmp(2, 2, 0xFFFF0000)},
                                      {"B.bmp", bmp(2, 2, 0xFF0000FF)},
                                      {"Dark/A.bmp", bmp(2, 2, 0xFF00FF00)},
                                      {"Dark/B.bmp", "no image"}};
    using Colors = std::pair<std::uint32_t, std::uint32_t>;
    const Colors own{0xFFE6EBF1, 0xFFFF0000};
    for (const bool canBeDark : {true, false}) {
        for (const bool isZip : {true, false}) {
            std::vector<ZipEntry> files = light;
            if (canBeDark) {
                files.push_back({"Dark/Icons.txt", "color band #112233\n"});
            }
            support::writeBytes("UI.zip", zipOf(files));
            for (const ZipEntry& file : isZip ? std::vector<ZipEntry>() : files) {
                support::writeBytes("UI/" + file.name, file.data);
            }
            m_window = std::make_shared<RecordingWindow>(test::gui());
            ASSERT_TRUE(m_window->Create(nullptr, u"Test", 0, 0));
            const auto shown = [&](platform::Appearance wanted) {
                test::gui().windows().setAppearance(wanted);
                return Colors{driver().pixel({10, 15}), driver().pixel({30, 15})};
            };
            EXPECT_EQ(shown(isZip ? platform::Appearance::light : platform::Appearance::dark),
                      !isZip && canBeDark ? Colors(0xFF112233, 0xFF00FF00) : own)
                << "as it is opened";
            EXPECT_EQ(driver().pixel({50, 15}), 0xFF0000FF);
            EXPECT_EQ(shown(platform::Appearance::dark),
                      canBeDark ? Colors(0xFF112233, 0xFF00FF00) : own);
            EXPECT_EQ(shown(platform::Appearance::light), own);
            m_window.reset();
            toolkit::ImageCache::get().clear();
        }
        std::filesystem::remove_all("UI");
    }
}

TEST(ZipArchive, ReadsStoredAndDeflatedFiles) {
    const std::string longText(100'000, 'x');
    for (const std::size_t comment : {0U, 12U, 65535U}) {
        const auto zip = openZip(zipOf({{"a.xml", "stored", false},
                                        {"deep/b.png", longText},
                                        {"empty", ""},
                                        {"empty stored", "", false}},
                                       std::string(comment, 'c')));
        ASSERT_TRUE(zip);
        EXPECT_EQ(textOf(zip->read("a.xml")), "stored");
        EXPECT_EQ(textOf(zip->read("deep/b.png")), longText);
        EXPECT_EQ(textOf(zip->read("empty")), "");
        EXPECT_EQ(textOf(zip->read("empty stored")), "");
        EXPECT_EQ(textOf(zip->read("A.xml")), std::nullopt);
    }
}

/// Each case bends one field of a good archive; the file is refused, never guessed at.
TEST(ZipArchive, RefusesBentFields) {
    const std::string good = zipOf({{"a", std::string(5000, 'q')}});
    ASSERT_TRUE(openZip(good)->read("a"));
    constexpr int kEntry = -47; // in the directory, from the end record
    const struct {
        const char* what;
        int at; ///< from the end record
        int bytes;
        std::uint32_t value;
    } cases[] = {
        {"encrypted", kEntry + 8, 2, 1},
        {"unknown method", kEntry + 10, 2, 12},
        {"wrong checksum", kEntry + 16, 4, 1234},
        {"packed beyond the end", kEntry + 20, 4, 0x7FFFFFFF},
        {"packed data cut", kEntry + 20, 4, 3},
        {"claims more than it holds", kEntry + 24, 4, 5001},
        {"claims less than it holds", kEntry + 24, 4, 4999},
        {"claims nothing", kEntry + 24, 4, 0},
        {"claims gigabytes", kEntry + 24, 4, 0xFFFFFFF0},
        {"a longer name", kEntry + 29, 1, 0xFF},
        {"starts beyond the end", kEntry + 42, 4, 0xFFFFFFF0},
        {"starts inside itself", kEntry + 42, 4, 7},
        {"another signature", 0, 1, 0},
        {"a second disk", 4, 1, 1},
        {"more entries than there are", 10, 1, 2},
        {"far more entries", 11, 1, 0xFF},
        {"a longer directory", 15, 1, 0x7F},
        {"a directory beyond the end", 19, 1, 0x7F},
    };
    for (const auto& [what, at, bytes, value] : cases) {
        std::string field;
        putNumber(field, value, bytes);
        const auto place = static_cast<int>(good.size()) - 22 + at;
        const auto zip = openZip(
            std::string(good).replace(static_cast<std::size_t>(place), field.size(), field));
        EXPECT_TRUE(!zip || !zip->read("a")) << what;
    }
    const auto zip = openZip(zipOf({{"bomb", std::string(ZipArchive::kMaxEntryBytes + 1, '\0')}}));
    EXPECT_TRUE(zip && !zip->read("bomb")) << "too large once unpacked";
}

TEST(ZipArchive, SurvivesAnyDamage) {
    const std::string good = zipOf({{"a", std::string(3000, 'a') + "tail"}, {"b", "text", false}});
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(openZip(good.substr(0, size))) << "cut at " << size;
    }
    support::Random random(1);
    for (int round = 0; round < 3000; ++round) {
        std::string bent = good;
        for (int i = 0; i < 3; ++i) {
            bent[static_cast<std::size_t>(random.below(static_cast<int>(bent.size())))] =
                static_cast<char>(random.below(256));
        }
        if (const auto zip = openZip(bent)) {
            const auto text = textOf(zip->read("b"));
            EXPECT_TRUE(!text || text == "text") << "damage never shows as data";
            static_cast<void>(zip->read("a"));
        }
    }
}
