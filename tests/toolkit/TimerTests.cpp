// Timers of controls.
#include "tests/toolkit/ToolkitTest.h"

using namespace toolkit_test;
using toolkit::CControlUI;

namespace {

class Ticking : public CControlUI {
public:
    bool DoEvent(const toolkit::TEventUI& event) override {
        if (event.Type == toolkit::UIEVENT_TIMER) {
            ticks.push_back(event.native.timerId);
            if (onTick) {
                onTick();
            }
        }
        return true;
    }
    std::vector<unsigned> ticks;
    std::function<void()> onTick;
};

class Timers : public ToolkitTest {
protected:
    Ticking& add() { return *window().GetPaintManager().GetRoot()->AddNew<Ticking>(); }
};

} // namespace

TEST_F(Timers, BelongToTheirControlByItsOwnNumber) {
    open("");
    Ticking& a = add();
    Ticking& b = add();
    auto& manager = window().GetPaintManager();
    EXPECT_TRUE(manager.SetTimer(a, 1824, 1));
    EXPECT_TRUE(manager.SetTimer(b, 1824, 1));
    EXPECT_TRUE(manager.SetTimer(b, 7, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return a.ticks.size() > 2 && b.ticks.size() > 4; }));
    EXPECT_EQ(a.ticks.front(), 1824U);
    EXPECT_NE(std::find(b.ticks.begin(), b.ticks.end(), 7U), b.ticks.end());
    EXPECT_TRUE(manager.KillTimer(a, 1824));
    EXPECT_FALSE(manager.KillTimer(a, 1824));
    EXPECT_FALSE(manager.KillTimer(a, 7)) << "another control's";
    const std::size_t before = a.ticks.size();
    const std::size_t other = b.ticks.size();
    ASSERT_TRUE(test::pumpUntil([&] { return b.ticks.size() > other + 4; }));
    EXPECT_EQ(a.ticks.size(), before);
}

TEST_F(Timers, EndWithTheirControlAlsoInsideTheirOwnTick) {
    open("");
    auto& manager = window().GetPaintManager();
    Ticking& doomed = add();
    int ticks = 0;
    doomed.onTick = [&] {
        ++ticks;
        manager.GetRoot()->RemoveAll();
    };
    EXPECT_TRUE(manager.SetTimer(doomed, 1, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return ticks > 0; }));
    Ticking& next = add();
    EXPECT_TRUE(manager.SetTimer(next, 1, 1));
    ASSERT_TRUE(test::pumpUntil([&] { return next.ticks.size() > 3; }));
    EXPECT_EQ(ticks, 1);
}

TEST_F(Timers, NeedAWindow) {
    open("");
    Ticking& control = add();
    window().Close(1);
    test::gui().loop().run();
    EXPECT_FALSE(window().GetPaintManager().SetTimer(control, 1, 1));
    EXPECT_FALSE(window().GetPaintManager().KillTimer(control, 1));
}
