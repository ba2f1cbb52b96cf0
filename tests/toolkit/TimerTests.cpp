// Timers of controls.
#include <functional>
#include <map>

#include "tests/toolkit/ToolkitTest.h"

using namespace toolkit_test;

namespace {

class Ticking : public toolkit::CControlUI {
public:
    bool DoEvent(const toolkit::TEventUI& event) override {
        if (event.Type == toolkit::UIEVENT_TIMER) {
            ++ticks[event.native.timerId];
            if (onTick) {
                onTick();
            }
        }
        return true;
    }
    std::map<unsigned, int> ticks;
    std::function<void()> onTick;
};

class Timers : public ToolkitTest {
protected:
    void SetUp() override { open(""); }
    Ticking& add() { return *root().AddNew<Ticking>(); }
    toolkit::CPaintManagerUI& manager() { return window().GetPaintManager(); }
};

} // namespace

TEST_F(Timers, BelongToTheirControlByItsOwnNumber) {
    Ticking& a = add();
    Ticking& b = add();
    EXPECT_TRUE(manager().SetTimer(a, 1824, 1) && manager().SetTimer(b, 1824, 1) &&
                manager().SetTimer(b, 7, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return a.ticks[1824] > 2 && b.ticks[1824] > 2; }));
    EXPECT_TRUE(manager().KillTimer(a, 1824));
    EXPECT_FALSE(manager().KillTimer(a, 1824));
    EXPECT_FALSE(manager().KillTimer(a, 7)) << "another control's";
    const auto before = a.ticks;
    const int goal = b.ticks[1824] + 2;
    ASSERT_TRUE(test::pumpUntil([&] { return b.ticks[1824] > goal && b.ticks[7] > 2; }));
    EXPECT_EQ(a.ticks, before);
}

TEST_F(Timers, EndWithTheirControlAlsoInsideTheirOwnTickAndWithTheirWindow) {
    int ticks = 0;
    Ticking& doomed = add();
    doomed.onTick = [&] {
        ++ticks;
        root().RemoveAll();
    };
    EXPECT_TRUE(manager().SetTimer(doomed, 1, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return ticks > 0; }));
    Ticking& next = add();
    EXPECT_TRUE(manager().SetTimer(next, 1, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return next.ticks[1] > 3; }));
    EXPECT_EQ(ticks, 1);
    window().Close(1);
    test::gui().loop().run();
    EXPECT_FALSE(manager().SetTimer(next, 1, 1) || manager().KillTimer(next, 1));
}
