#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <utf8.h>

#include "core/Text.h"
#include "tests/support/LogCapture.h"

namespace {

using namespace std::string_literals;

TEST(Text, DecimalTextBecomesAnIntegerOrZeroWithALogLine) {
    const std::string noDigits = "convertStringToInt: Error invalid stoi argument";
    const std::string outOfRange = "convertStringToInt: Error stoi argument out of range";
    struct Case {
        std::string text;
        int value;
        std::string error;
    };
    const Case cases[] = {
        {"", 0, ""},
        {" \t\r\n\v\f-7", -7, ""},
        {"+5", 5, ""},
        {"012abc", 12, ""},
        {"0x10", 0, ""},
        {"2147483647", 2147483647, ""},
        {"-2147483648", -2147483647 - 1, ""},
        {"2147483648", 0, outOfRange},
        {"-2147483649", 0, outOfRange},
        {"abc", 0, noDigits},
        {" ", 0, noDigits},
        {"-", 0, noDigits},
        {"+", 0, noDigits},
        {"+-5", 0, noDigits},
        {"- 5", 0, noDigits},
    };
    for (const Case& c : cases) {
        const support::LogCapture log;
        const std::u16string wide(c.text.begin(), c.text.end());
        EXPECT_EQ(core::convertStringToInt(c.text), c.value) << c.text;
        EXPECT_EQ(core::convertStringToInt(wide), c.value) << c.text;
        using Lines = std::vector<std::string>;
        EXPECT_EQ(log.errors(), c.error.empty() ? Lines{} : Lines(2, c.error)) << c.text;
    }
    EXPECT_EQ(core::convertStringToInt(u"1\u0131"), 1) << "another script ends it";
}

TEST(Text, ConvertsBothWaysAndTheStrictFormsThrow) {
    const std::string narrow = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    const std::u16string wide = u"a\u00E9\u20AC\U0001F600";
    EXPECT_EQ(core::narrowToWide(narrow), wide);
    EXPECT_EQ(core::wideToNarrow(wide), narrow);
    EXPECT_EQ(core::displayText(narrow), wide);
    EXPECT_EQ(core::storedText(wide), narrow);
    for (const char* bad : {"\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "a\xFF"}) {
        EXPECT_THROW((void)core::narrowToWide(bad), utf8::exception) << bad;
    }
    EXPECT_THROW((void)core::wideToNarrow(std::u16string(1, u'\xD800')), utf8::exception);
}

TEST(Text, BadSequencesAreShownAsReplacementCharacters) {
    struct Case {
        std::string narrow;
        std::u16string shown;
    };
    const Case cases[] = {
        {"a\x80z", u"a\uFFFDz"},       {"a\xC3", u"a\uFFFD"},
        {"\xE2\x82z", u"\uFFFDz"},     {"\xFF\xFE", u"\uFFFD\uFFFD"},
        {"\xED\xA0\x80z", u"\uFFFDz"}, {"\xF4\x90\x80\x80", u"\uFFFD"},
        {"caf\xE9 1", u"caf\uFFFD 1"}, {"a\0b"s, u"a\0b"s},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(core::displayText(c.narrow), c.shown);
        EXPECT_EQ(core::validUtf8(c.narrow), core::wideToNarrow(c.shown));
    }
    const std::u16string lone{u'a', u'\xDC00', u'\xD83D', u'z', u'\xD83D'};
    EXPECT_EQ(core::storedText(lone), "a\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD");
}

TEST(Text, CaseChangesForAsciiAloneOrForFinding) {
    EXPECT_EQ(core::lowerCase("@AZ[\xC3\x89]xyz"), "@az[\xC3\x89]xyz");
    EXPECT_EQ(core::foldCase(u"\u0141\u00D3D\u0179 \u017D\u0178\u00D7\u0416\u03A9\u0138"),
              u"\u0142\u00F3d\u017A \u017E\u00FF\u00D7\u0436\u03C9\u0138");
    EXPECT_TRUE(core::toBool("true") && core::toBool("TRUE"));
    EXPECT_FALSE(core::toBool("") || core::toBool("1") || core::toBool(" true"));
}

} // namespace
