#include <set>
#include <string>

#include <gtest/gtest.h>

#include "core/Settings.h"
#include "core/Translations.h"
#include "tests/support/TempFolder.h"

namespace {

class TranslationsTest : public support::TempFolderTest {
protected:
    /// The translation of `key` with `text` as the one file.
    static std::string translated(const std::string& text, const std::string& language,
                                  const std::string& key) {
        support::writeBytes("T.ini", text);
        const auto translations = core::Translations::create("T.ini", language);
        return translations ? translations->translate(key) : "(nothing)";
    }
};

TEST_F(TranslationsTest, LooksInTheLanguageThenInEnglishThenGivesTheKey) {
    const std::string file = "[Language:English]\nkeypress = Key Press\nZone=Zone\n2 = two\n"
                             "[Other]\nRandom=never\n"
                             "[LANGUAGE:French]\nKEYPRESS=Touche\nEmpty =\n";
    struct Case {
        const char* language;
        const char* key;
        const char* text;
    };
    const Case cases[] = {
        {"FRENCH", "Keypress", "Touche"},
        {"French", "Zone", "Zone"},
        {"French", "Random", "Random"},
        {"French", "Empty", ""},
        {"English", "Empty", "Empty"},
        {"english", "keyPRESS", "Key Press"},
        {"", "keypress", "Key Press"},
        {"English", "2", "2"},
        {"English", "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(translated(file, c.language, c.key), c.text) << c.language << " " << c.key;
    }
}

TEST_F(TranslationsTest, BadLinesAreSkippedAndTheFirstOfTwoTextsStands) {
    const std::string file = "\xEF\xBB\xBF[Language:English]\r\nfirst line is no INI\r\n"
                             "Zone = A ; a comment\r\nZone = B\r\n# remark\r\n[broken\r\n"
                             "Random = R;no comment\r\n";
    EXPECT_EQ(translated(file, "English", "Zone"), "A");
    EXPECT_EQ(translated(file, "English", "Random"), "R;no comment");
    EXPECT_EQ(translated("", "French", "Default"), "Default") << "an empty file is usable";
}

TEST_F(TranslationsTest, AnOverlongLineIsCutBetweenCharactersAndReported) {
    std::string kept; // the parser's lines hold 198 bytes; "Zone=" takes five of them
    for (int i = 0; i < 64; ++i) {
        kept += "\xE2\x82\xAC";
    }
    const std::string file = "[Language:English]\nZone=" + kept +
                             "\xE2\x82\xAC Random=no\nDefault=" + std::string(190, 'x') +
                             "Random=no\nKeypress=K\n";
    testing::internal::CaptureStderr();
    EXPECT_EQ(translated(file, "English", "Zone"), kept);
    EXPECT_EQ(translated(file, "English", "Random"), "Random") << "nothing is another line";
    EXPECT_EQ(translated(file, "English", "Default"), std::string(190, 'x'));
    EXPECT_EQ(translated(file, "English", "Keypress"), "K");
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(report.starts_with("T.ini:2: line is longer than ")) << report;
}

TEST_F(TranslationsTest, AFolderGivesAllItsFilesAndTheFirstWins) {
    support::writeBytes("texts/b.ini", "[Language:English]\nZone=from b\nRandom=b\n");
    support::writeBytes("texts/A.INI", "[Language:english]\nZone=A\n[Language: Dutch ]\nZone=Z\n"
                                       "[Language:]\nZone=nobody's\n");
    support::writeBytes("texts/c.txt", "[Language:English]\nDefault=no\n");
    const auto translations = core::Translations::create("texts", "English");
    ASSERT_TRUE(translations);
    EXPECT_EQ(translations->translate("Zone") + translations->translate("Random"), "Ab");
    EXPECT_EQ(translations->translate("Default"), "Default");
    EXPECT_EQ(translations->languages(), (std::set<std::string>{"Dutch", "English", "english"}));
    support::makeFolder("none");
    EXPECT_TRUE(core::Translations::create("none", "English"));
}

TEST_F(TranslationsTest, AMissingFileYieldsNothingAndStandardErrorTellsWhereItWasLookedFor) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(core::Translations::create("T.ini", "English"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Translations cannot be read: \"T.ini\", looked for as \"" + m_folder.path() +
                  "T.ini\"\n");
}

TEST_F(TranslationsTest, SettingsComeFromTheUnnamedSectionAndNothingFromABadFile) {
    struct Case {
        const char *text, *language;
    };
    const Case cases[] = {
        {"\xEF\xBB\xBFLANGUAGE = Fran\xC3\xA7 x\r\n[x]\r\nlanguage=no\r\n", "Fran\xC3\xA7 x"},
        {"[x]\nlanguage=French\n", "English"},
        {"", "English"},
        {"language=\n", ""},
        {"language=French\nno equals sign here\n", "(nothing)"},
        {"[open\n", "(nothing)"},
    };
    for (const Case& c : cases) {
        support::writeBytes("S.ini", c.text);
        const auto settings = core::Settings::create("S.ini");
        EXPECT_EQ(settings ? settings->getString("", "language", "English") : "(nothing)",
                  c.language);
    }
    EXPECT_FALSE(core::Settings::create("missing.ini"));
}

} // namespace
