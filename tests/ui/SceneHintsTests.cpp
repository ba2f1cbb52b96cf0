// The one line that informs the author about the state of a scene.
#include <utility>

#include <gtest/gtest.h>

#include "ui/SceneHints.h"

namespace {

TEST(SceneHints, ACopyUnderWayIsToldInPercent) {
    const std::pair<jobs::CopyStatus, const char16_t*> states[] = {
        {{"a.ogv", 1, 1, 0, 0}, u"Copying a.ogv. Esc cancels."},
        {{"a.ogv", 1, 1, 0, 3}, u"Copying a.ogv: 0 %. Esc cancels."},
        {{"a.ogv", 1, 1, 2, 3}, u"Copying a.ogv: 66 %. Esc cancels."},
        {{"a.ogv", 1, 1, 4, 3}, u"Copying a.ogv: 100 %. Esc cancels."}, // it grew meanwhile
        {{"b.ogv", 2, 3, 5'000'000'000ULL, 10'000'000'000ULL},
         u"Copying b.ogv (2 of 3): 50 %. Esc cancels."},
    };
    for (const auto& [state, shown] : states) {
        EXPECT_EQ(ui::copyText(state), shown);
    }
}

} // namespace
