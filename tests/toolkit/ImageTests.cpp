// Image attributes, decoding, and the nine parts on the screen.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/skin/ImageDecoder.h"
#include "toolkit/skin/Skin.h"
#include "toolkit/skin/SkinImage.h"

using namespace toolkit_test;
using platform::Rect;
using toolkit::decodeImage;
using toolkit::ImageAttribute;

namespace {

std::optional<platform::Bitmap> decode(const std::string& bytes) {
    return decodeImage(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

std::string dataFile(const std::string& name) {
    return support::readBytes(std::string(QUORVEL_SOURCE_DIR) + "/tests/data/toolkit/" + name);
}

class Images : public ToolkitTest {};

} // namespace

TEST(ImageAttribute, ToleratesBlanksOrderAndUnknownKeys) {
    using Text = std::u16string_view;
    const std::tuple<Text, Text, Rect, std::optional<Rect>> cases[] = {
        {u"file='a.png' corner='1,2,3,4'", u"a.png", {1, 2, 3, 4}, std::nullopt},
        {u"  corner = '1, 2 ,3,4'  file =\t'a b.png' ", u"a b.png", {1, 2, 3, 4}, std::nullopt},
        {u"file=\"a.png\" fade='7' dest='-3,-3,21,21'", u"a.png", {}, Rect{-3, -3, 21, 21}},
        {u"plain.png", u"plain.png", {}, std::nullopt},
        {u"", u"", {}, std::nullopt},
        {u"file='a.png' corner='1,2,3'", u"a.png", {}, std::nullopt},
        {u"file='a.png' corner='-1,2,-3,4'", u"a.png", {0, 2, 0, 4}, std::nullopt},
        {u"file='a.png", u"", {}, std::nullopt},
        {u"file=a.png", u"", {}, std::nullopt},
        {u"=''='' file='a.png'", u"a.png", {}, std::nullopt},
        {u"file='a.png'corner='1,1,1,1'", u"a.png", {1, 1, 1, 1}, std::nullopt},
    };
    for (const auto& [text, file, corner, dest] : cases) {
        const ImageAttribute parsed = ImageAttribute::parse(text);
        EXPECT_TRUE(parsed.file == file);
        EXPECT_EQ(parsed.corner, corner);
        EXPECT_EQ(parsed.dest, dest);
    }
}

TEST(ImageDecoder, ReadsTheFourFormats) {
    const std::array redGreenBlueWhite{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
    for (const char* name : {"four.png", "four.bmp", "four.gif"}) {
        const auto image = decode(dataFile(name));
        ASSERT_TRUE(image) << name;
        EXPECT_EQ(image->size(), (platform::Size{2, 2})) << name;
        EXPECT_EQ((std::array{image->at(0, 0), image->at(1, 0), image->at(0, 1), image->at(1, 1)}),
                  redGreenBlueWhite)
            << name;
    }
    const auto jpeg = decode(dataFile("grey.jpg"));
    ASSERT_TRUE(jpeg);
    EXPECT_EQ(jpeg->size(), (platform::Size{8, 8}));
    EXPECT_NEAR(static_cast<int>(jpeg->at(3, 3) & 0xFFU), 128, 3);
    const auto clip = decode(dataFile("two-frames.gif"));
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->at(0, 0), 0xFFFF0000) << "the first frame";
}

TEST(ImageDecoder, MultipliesByAlpha) {
    const auto image = decode(bmp(2, 1, {0x80FF8000, 0x00FFFFFF}));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->at(0, 0), 0x80804000U);
    EXPECT_EQ(image->at(1, 0), 0U);
}

TEST(ImageDecoder, RefusesWhatIsNoImageDamagedOrTooLarge) {
    EXPECT_FALSE(decode(""));
    EXPECT_FALSE(decode("no image at all"));
    const std::string png = dataFile("four.png");
    for (const std::size_t size : {8U, 20U, 33U, 45U}) {
        EXPECT_FALSE(decode(png.substr(0, size))) << size;
    }
    for (const auto& [width, height] :
         {std::pair{8193, 1}, {1, 8193}, {8192, 8192}, {0x7FFFFFFF, 2}}) {
        std::string huge = bmp(1, 1, 0);
        for (std::size_t i = 0; i < 4; ++i) {
            huge[18 + i] = static_cast<char>(width >> (8 * i));
            huge[22 + i] = static_cast<char>(height >> (8 * i));
        }
        EXPECT_FALSE(decode(huge)) << width << " x " << height;
    }
}

TEST(ImageDecoder, RefusesJpegTablesWithMoreCodesThanFit) {
    const std::string jpeg = dataFile("grey.jpg");
    const std::size_t table = jpeg.find("\xFF\xC4");
    ASSERT_NE(table, std::string::npos);
    EXPECT_TRUE(decode(std::string(jpeg).insert(table, "\xFF\xFF"))) << "filled up before it";
    std::string tooMany = jpeg;
    tooMany.replace(table + 5, 2, "\x01\x01");
    EXPECT_FALSE(decode(tooMany)) << "beyond the segment";
    std::string overflowing = jpeg.substr(0, table) + std::string("\xFF\xC4\x02\x02\x00", 5);
    overflowing += std::string(12, '\0') + "\x40\x40\x40\x41" + std::string(512 - 17 + 2, 'x');
    EXPECT_FALSE(decode(overflowing + jpeg.substr(table))) << "257 codes";
}

TEST_F(Images, StretchInNineParts) {
    // Corners red, edges green, middle blue; 5 x 5 with corners of 2.
    std::vector<std::uint32_t> pixels(25, 0xFFFF0000);
    for (const std::size_t edge : {2U, 7U, 10U, 11U, 13U, 14U, 17U, 22U}) {
        pixels[edge] = 0xFF00FF00;
    }
    pixels[12] = 0xFF0000FF;
    support::writeBytes("UI/Nine.bmp", bmp(5, 5, pixels));
    open(R"(<Control pos="10,20,100,50" bkimage="file='Nine.bmp' corner='2,2,2,2'"/>
            <Control pos="10,100,20,20" bkimage="file='Nine.bmp' corner='2,2,2,2' dest='5,5,30,10'"/>
            <Control pos="10,200,3,3" bkimage="file='Nine.bmp' corner='2,2,2,2'"/>
            <Control pos="60,200,20,20" bkimage="file='Nine.bmp' corner='200,1,200,1'"/>)");
    const platform::Bitmap picture = driver().picture();
    const std::tuple<int, int, std::uint32_t> points[] = {
        {10, 20, 0xFFFF0000},  {11, 21, 0xFFFF0000},  {12, 21, 0xFF00FF00},  {107, 20, 0xFF00FF00},
        {108, 20, 0xFFFF0000}, {12, 22, 0xFF0000FF},  {107, 67, 0xFF0000FF}, {107, 68, 0xFF00FF00},
        {109, 69, 0xFFFF0000}, {11, 40, 0xFF00FF00},  {15, 105, 0xFFFF0000}, {20, 107, 0xFF0000FF},
        {10, 200, 0xFFFF0000}, {12, 202, 0xFFFF0000}, // smaller than its corners: cut down
    };
    for (const auto& [x, y, color] : points) {
        EXPECT_EQ(picture.at(x, y), color) << x << "," << y;
    }
    EXPECT_NE(picture.at(35, 107), 0xFF00FF00) << "cut off at the control";
}

TEST_F(Images, ThatTogetherTakeTooMuchMemoryAreLeftOut) {
    std::string large = bmp(1, 1, 0); // 8192 x 2000 black pixels of one bit
    large.resize(54);
    large.replace(10, 1, "\x3E").replace(28, 1, "\x01").replace(46, 1, "\x02");
    large.replace(18, 2, std::string("\0\x20", 2)).replace(22, 2, "\xD0\x07");
    large += std::string("\0\0\0\0\xFF\xFF\xFF\0", 8) + std::string(1024 * 2000, '\0');
    std::string controls;
    for (const char* name : {"A", "B", "C"}) {
        support::writeBytes("UI/" + std::string(name) + ".bmp", large);
        controls += "<Control height=\"50\" bkimage=\"" + std::string(name) + ".bmp\"/>";
    }
    open(R"(<Default class="Control" bkcolor="#FF123456"/><VerticalLayout>)" + controls +
         "</VerticalLayout>");
    toolkit::ImageCache::get().clear();
    EXPECT_EQ(driver().pixel({10, 10}), 0xFF000000U);
    EXPECT_EQ(driver().pixel({10, 110}), 0xFF123456U);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>{"Unable to load image UI/C.bmp"});
    toolkit::ImageCache::get().clear();
}

TEST_F(Images, ThatNobodyHoldsAreForgottenTheOldestFirst) {
    const std::vector<std::uint32_t> pixels(500 * 256,
                                            0xFF000000); // four are just within the limit
    support::makeFolder("UI");
    const auto skin = toolkit::Skin::open("UI/");
    toolkit::ImageCache& cache = toolkit::ImageCache::get();
    cache.clear();
    std::vector<std::weak_ptr<const platform::Bitmap>> seen;
    const auto load = [&](int number) {
        const std::string name = std::to_string(number) + ".bmp";
        support::writeBytes("UI/" + name, bmp(500, 256, pixels));
        const auto image = cache.load(*skin, name);
        seen.push_back(image);
        return image;
    };
    const auto held = load(0);
    for (const int number : {1, 2, 3, 4}) {
        load(number);
    }
    load(1); // once more: 2 is the oldest now
    load(5);
    load(6);
    EXPECT_EQ(cache.load(*skin, "0.bmp"), held);
    EXPECT_TRUE(seen[2].expired());
    EXPECT_FALSE(seen[1].expired());
    EXPECT_FALSE(seen.back().expired());
    cache.clear();
}

TEST_F(Images, ThatAreMissingOrBadDrawNothingAndAreLoggedOnce) {
    support::writeBytes("UI/Bad.png", "no image");
    open(R"(<Default class="Control" bkcolor="#FF123456"/>
            <Control pos="0,0,50,50" bkimage="file='Missing.png'"/>
            <Control pos="50,0,50,50" bkimage="file='Bad.png'"/>)");
    for (const int x : {10, 60, 10, 60}) {
        EXPECT_EQ(driver().pixel({x, 10}), 0xFF123456U);
    }
    EXPECT_EQ(m_log.errors(), (std::vector<std::string>{"Unable to load image UI/Missing.png",
                                                        "Unable to load image UI/Bad.png"}));
}
