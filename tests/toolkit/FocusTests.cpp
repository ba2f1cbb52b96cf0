// Who has the keyboard and how Tab moves it.
#include <cstdint>
#include <string>
#include <utility>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CEditUI.h"

using namespace toolkit_test;
using platform::Key;

namespace {

class Focus : public ToolkitTest {
protected:
    std::u16string focus() { return driver().focusName(); }
};

constexpr const char* kOrder = R"(
    <Label text="Name" pos="0,0,40,20"/>
    <Button name="Last" pos="0,200,80,25" tabstop="false"/>
    <Edit name="A" pos="0,30,80,25"/>
    <Button name="Off" pos="0,60,80,25" enabled="false"/>
    <Container pos="100,0,200,100">
        <Option name="B" pos="0,0,80,25"/>
        <Button name="Hidden" pos="0,30,80,25" visible="false"/>
        <Combo name="C" pos="0,60,80,25"/>
    </Container>
    <Container pos="100,100,200,100" enabled="false"><Button name="Inside" pos="0,0,80,25"/></Container>
    <List name="D" pos="0,100,80,80"/>)";

} // namespace

TEST_F(Focus, TabFollowsTheLayoutAndSkipsWhatCannotTakeIt) {
    open(kOrder);
    for (const char16_t* name : {u"A", u"B", u"C", u"D", u"A"}) {
        driver().press(Key::tab);
        EXPECT_EQ(focus(), name);
    }
    for (const char16_t* name : {u"D", u"C", u"B", u"A", u"D"}) {
        driver().press(Key::tab, kShift);
        EXPECT_EQ(focus(), name);
    }
    EXPECT_TRUE(driver().manager().focusKeeper().showsRing());
    driver().click(u"B");
    EXPECT_FALSE(driver().manager().focusKeeper().showsRing()) << "the mouse puts it away again";
    driver().click(u"A");
    EXPECT_TRUE(driver().manager().focusKeeper().showsRing()) << "but never from an edit";
    driver().press(Key::enter);
    EXPECT_EQ(focus(), u"");
    driver().press(Key::tab);
    EXPECT_EQ(focus(), u"B") << "on from where the keyboard was";
    driver().get(u"B").SetEnabled(false);
    driver().press(Key::tab);
    EXPECT_EQ(focus(), u"C") << "also when that takes it no more";
}

TEST_F(Focus, TheRingLiesBelowWhatLiesOverItsControl) {
    support::writeBytes("UI/ring.bmp", bmp(8, 8, 0xFFFF0000));
    open(R"(<Container pos="0,0,200,200"><Edit name="Edit" pos="20,20,100,30"/></Container>
            <Control name="Over" pos="40,10,60,80" bkcolor="#FF00AA00"/>)",
         "bkcolor=\"#FFFFFFFF\" focusedimage=\"ring.bmp\"");
    const auto before = driver().picture();
    driver().press(Key::tab);
    EXPECT_EQ(focus(), u"Edit");
    const auto after = driver().picture();
    EXPECT_NE(after.at(30, 20), before.at(30, 20)) << "the ring";
    for (int y = 10; y < 80; ++y) {
        EXPECT_EQ(after.at(50, y), before.at(50, y));
    }
}

TEST_F(Focus, AHeldKeyAndUncommittedTextEndWithWhatIsAroundTheirControl) {
    open(kOrder, "bkcolor=\"#FFFFFFFF\"");
    const auto hideAndShow = [&] {
        root().SetVisible(false);
        root().SetVisible(true);
    };
    auto& manager = window().GetPaintManager();
    const auto rest = [&] { return driver().pixel({9, 40}); };
    const std::uint32_t before = rest();
    manager.SetFocus(&driver().get(u"A"));
    test::input().preedit(driver().native(), u"\u2588\u2588\u2588");
    test::pump();
    EXPECT_NE(rest(), before);
    hideAndShow();
    EXPECT_EQ(rest(), before);
    manager.SetFocus(&driver().get(u"B"));
    test::input().key(driver().native(), platform::EventKind::keyDown, Key::space, u" ");
    test::pump();
    hideAndShow();
    manager.SetFocus(&driver().get(u"B"));
    test::input().key(driver().native(), platform::EventKind::keyUp, Key::space);
    test::pump();
    expectNotes("nothing was pressed and nothing typed", {});
}

TEST_F(Focus, LeavesWhatIsHiddenDisabledOrRemoved) {
    open(kOrder);
    auto& manager = window().GetPaintManager();
    auto& a = get<toolkit::CEditUI>(u"A");
    manager.SetFocus(&a);
    a.SetEnabled(false);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    manager.SetFocus(&a);
    EXPECT_EQ(manager.GetFocus(), nullptr) << "a disabled control takes no keyboard";
    auto& b = driver().get(u"B");
    manager.SetFocus(&b);
    b.GetParent()->SetVisible(false);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    auto& d = driver().get(u"D");
    manager.SetFocus(&d);
    root().RemoveAll();
    EXPECT_EQ(manager.GetFocus(), nullptr);
    EXPECT_TRUE(window().take().empty());
}

TEST_F(Focus, AKillFocusHandlerMayMoveTheKeyboardItself) {
    open(kOrder);
    window().reactions["killfocus A"] = [&](auto&) {
        window().GetPaintManager().SetFocus(&driver().get(u"C"));
    };
    driver().click(u"A");
    driver().press(Key::tab);
    EXPECT_EQ(focus(), u"C");
}

TEST_F(Focus, ScrollsToTheRowThatTakesIt) {
    std::string rows;
    for (const char* name : {"A", "B", "C"}) {
        rows += "<ListContainerElement height=\"60\"><Button name=\"" + std::string(name) +
                "\" pos=\"0,0,80,25\"/></ListContainerElement>";
    }
    open("<List name=\"List\" pos=\"0,0,200,100\">" + rows + "</List>");
    const auto tops = [&] {
        return std::pair(driver().get(u"A").GetPos().top, driver().get(u"C").GetPos().top);
    };
    EXPECT_EQ(tops(), std::pair(0, 120));
    driver().press(Key::tab, kShift);
    EXPECT_EQ(focus(), u"C");
    EXPECT_EQ(tops(), std::pair(-80, 40));
    driver().press(Key::tab);
    driver().press(Key::tab);
    EXPECT_EQ(focus(), u"A");
    EXPECT_EQ(tops(), std::pair(0, 120));
}
