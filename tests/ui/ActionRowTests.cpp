// What a row of the action list shows for an action, and the way back.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ui/ActionRow.h"

namespace {

TEST(ActionRow, ARowWithoutANumberHasNoAction) {
    EXPECT_EQ(ui::actionNumber(u""), -1);
    EXPECT_EQ(ui::parameterKind(4), ui::ParameterKind::unknown);
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
