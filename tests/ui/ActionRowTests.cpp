// What a row of the action list shows for an action, and the way back.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/LogCapture.h"
#include "ui/ActionRow.h"

namespace {

using ui::ParameterKind;

TEST(ActionRow, EachConditionHasItsParameters) {
    const struct {
        int condition;
        ParameterKind kind;
    } cases[] = {
        {ui::kConditionDefault, ParameterKind::none},
        {ui::kConditionKeypress, ParameterKind::letters},
        {ui::kConditionZone, ParameterKind::zones},
        {ui::kConditionRandom, ParameterKind::none},
        {4, ParameterKind::unknown},
        {-1, ParameterKind::unknown},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(ui::parameterKind(test.condition), test.kind) << test.condition;
    }
}

TEST(ActionRow, KeysAreTheCapitalLetters) {
    const std::vector<std::string>& letters = ui::keyLetters();
    ASSERT_EQ(letters.size(), 26U);
    EXPECT_EQ(letters.front(), "A");
    EXPECT_EQ(letters[12], "M");
    EXPECT_EQ(letters.back(), "Z");
}

TEST(ActionRow, ReadsItsNumberFromTheUserData) {
    const support::LogCapture log;
    EXPECT_EQ(ui::actionNumber(u""), -1);
    EXPECT_EQ(ui::actionNumber(u"0"), 0);
    EXPECT_EQ(ui::actionNumber(u"199"), 199);
    EXPECT_TRUE(log.errors().empty());
}

TEST(ActionRow, FindsTheFirstItemWithExactlyTheText) {
    const std::vector<std::string> items{"b", "a", "a", ""};
    EXPECT_EQ(ui::indexOfText(items, "a"), 1);
    EXPECT_EQ(ui::indexOfText(items, ""), 3);
    EXPECT_EQ(ui::indexOfText(items, "A"), -1);
}

TEST(ActionRow, AChoiceGivesTheStoredBytes) {
    const std::vector<std::string> items{"plain",
                                         "b\xFF"
                                         "d",
                                         "\xC3\xA4"};
    EXPECT_EQ(ui::storedChoice(items, 0, u"plain"), "plain");
    EXPECT_EQ(ui::storedChoice(items, 1, u"b\uFFFDd"), "b\xFF"
                                                       "d");
    EXPECT_EQ(ui::storedChoice(items, 2, u"\u00E4"), "\xC3\xA4");
    // A list that no longer fits its items still gives what is on the screen.
    EXPECT_EQ(ui::storedChoice(items, 0, u"other"), "other");
    EXPECT_EQ(ui::storedChoice(items, -1, u"x"), "x");
    EXPECT_EQ(ui::storedChoice(items, 3, u""), "");
}

} // namespace
