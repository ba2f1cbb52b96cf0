// Zip archives as a skin meets them, good and hostile.
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "tests/toolkit/ZipMaker.h"
#include "toolkit/ZipArchive.h"

using toolkit::ZipArchive;
using toolkit_test::ZipMaker;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<std::string> readText(const ZipArchive& zip, const std::string& name) {
    const auto bytes = zip.read(name);
    return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
}

} // namespace

TEST(ZipArchive, ReadsStoredAndDeflatedFiles) {
    ZipMaker maker;
    const std::string longText(100'000, 'x');
    maker.add("a.xml", "stored", false);
    maker.add("deep/b.png", longText, true);
    maker.add("empty", "", true);
    maker.add("empty stored", "", false);
    for (const std::string& comment :
         {std::string(), std::string("made by hand"), std::string(65535, 'c')}) {
        const auto zip = ZipArchive::open(maker.finish(comment));
        ASSERT_TRUE(zip);
        EXPECT_EQ(readText(*zip, "a.xml"), "stored");
        EXPECT_EQ(readText(*zip, "deep/b.png"), longText);
        EXPECT_EQ(readText(*zip, "empty"), "");
        EXPECT_EQ(readText(*zip, "empty stored"), "");
        EXPECT_EQ(readText(*zip, "A.xml"), std::nullopt);
        EXPECT_TRUE(zip->contains("a.xml"));
    }
}

/// Each case bends one field of a good archive; the file is refused, never guessed at.
TEST(ZipArchive, RefusesHostileEntries) {
    const std::string text(5000, 'q');
    const std::vector<std::pair<const char*, std::function<void(ZipMaker&)>>> cases{
        {"encrypted", [](ZipMaker& m) { m.flags = 1; }},
        {"unknown method", [](ZipMaker& m) { m.method = 12; }},
        {"wrong checksum", [](ZipMaker& m) { m.crc = 1234; }},
        {"claims more than it holds", [](ZipMaker& m) { m.size = 5001; }},
        {"claims less than it holds", [](ZipMaker& m) { m.size = 4999; }},
        {"claims nothing", [](ZipMaker& m) { m.size = 0; }},
        {"claims gigabytes", [](ZipMaker& m) { m.size = 0xFFFFFFF0; }},
        {"packed beyond the end", [](ZipMaker& m) { m.packedSize = 0x7FFFFFFF; }},
        {"packed data cut", [](ZipMaker& m) { m.packedSize = 3; }},
        {"starts beyond the end", [](ZipMaker& m) { m.offset = 0xFFFFFFF0; }},
        {"starts inside itself", [](ZipMaker& m) { m.offset = 7; }},
    };
    for (const auto& [what, bend] : cases) {
        ZipMaker maker;
        bend(maker);
        maker.add("a", text, true);
        const auto zip = ZipArchive::open(maker.finish());
        EXPECT_TRUE(!zip || !zip->read("a")) << what;
    }
    ZipMaker bomb;
    bomb.add("bomb", std::string(ZipArchive::kMaxEntryBytes + 1, '\0'), true);
    const auto zip = ZipArchive::open(bomb.finish());
    EXPECT_TRUE(zip && !zip->read("bomb")) << "too large once unpacked";
}

TEST(ZipArchive, RefusesHostileDirectories) {
    ZipMaker maker;
    maker.add("a", "text", false);
    const Bytes good = maker.finish();
    const auto end = static_cast<int>(good.size()) - 22; // where the end record starts
    const std::tuple<const char*, int, std::uint8_t> cases[] = {
        {"more entries than there are", 10, 2},
        {"far more entries", 11, 0xFF},
        {"a directory beyond the end", 19, 0x7F},
        {"a longer directory", 15, 0x7F},
        {"a second disk", 4, 1},
        {"a longer name", 29 - 47, 0xFF},
        {"another signature", 0, 0},
    };
    for (const auto& [what, at, value] : cases) {
        Bytes bent = good;
        bent[static_cast<std::size_t>(end + at)] = value;
        EXPECT_FALSE(ZipArchive::open(bent)) << what;
    }
}

TEST(ZipArchive, SurvivesAnyDamage) {
    ZipMaker maker;
    maker.add("a", std::string(3000, 'a') + "tail", true);
    maker.add("b", "text", false);
    const Bytes good = maker.finish();
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(ZipArchive::open(Bytes(good.data(), good.data() + size))) << "cut at " << size;
    }
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        Bytes bent = good;
        for (int i = 0; i < 3; ++i) {
            bent[random() % bent.size()] = static_cast<std::uint8_t>(random());
        }
        if (const auto zip = ZipArchive::open(bent)) {
            const auto text = readText(*zip, "b");
            EXPECT_TRUE(!text || text == "text") << "damage never shows as data";
            static_cast<void>(zip->read("a"));
        }
    }
}
