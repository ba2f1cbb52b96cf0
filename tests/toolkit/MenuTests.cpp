// Menus under real events.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "toolkit/window/PopupPlacement.h"

using namespace toolkit_test;
using platform::AccessibleRole;
using platform::Key;
using platform::Point;
using platform::Rect;

namespace {

class Menus : public ToolkitTest {
protected:
    void SetUp() override {
        open(R"(<Default class="Menu" bkcolor="#FFFFFFFF" bordercolor="#FF112233" bordersize="1"
                    itemhotbkcolor="#FFE9F5FF"/>
                <Edit name="Edit" pos="5,5,80,25" text="old"/>
                <Button name="More" pos="100,5,28,25"/><Button name="Go" pos="5,270,80,25"/>)");
        window().reactions["click More"] = [this](toolkit::CControlUI& button) {
            EXPECT_TRUE(popup().open(button, entries()));
        };
    }
    std::vector<toolkit::MenuEntry> entries() {
        const auto row = [this](std::u16string text) {
            const std::string name(text.begin(), text.end());
            return toolkit::MenuEntry{.text = std::move(text), .run = [this, name] {
                                          EXPECT_EQ(menu(), nullptr) << "it closes first";
                                          m_ran += name;
                                      }};
        };
        auto versions = row(u"Earlier");
        versions.enabled = false;
        auto ticked = row(u"Edges");
        ticked.checked = true;
        ticked.key = u"Ctrl+E";
        return {row(u"Settings"), {}, std::move(versions), row(u"Manual"), std::move(ticked)};
    }
    [[nodiscard]] toolkit::MenuPopup& popup() {
        return toolkit::MenuPopup::of(window().GetPaintManager());
    }
    [[nodiscard]] toolkit::CMenuUI* menu() { return popup().menu(); }
    /// The text of the highlighted row.
    std::u16string highlighted() {
        const toolkit::CControlUI* focus = window().GetPaintManager().GetFocus();
        return focus != nullptr && focus->GetParent() == menu() ? focus->GetText() : u"";
    }
    Point rowAt(int row) { return test::WindowDriver::middleOf(*menu()->GetItemAt(row)); }
    /// What has run since the last time.
    std::string ran() { return std::exchange(m_ran, {}); }

    std::string m_ran;
};

} // namespace

TEST(MenuPlace, StandsBelowItsButtonAndStaysInTheWindow) {
    constexpr platform::Size kWindow{600, 400};
    const std::pair<Rect, Rect> cases[] = {
        {{100, 5, 128, 30}, Rect::at(100, 32, 280, 100)},
        {{560, 5, 588, 30}, Rect::at(316, 32, 280, 100)},
        {{144, 370, 172, 395}, Rect::at(144, 268, 280, 100)},
        {{-9, 5, 20, 390}, Rect::at(4, 296, 280, 100)},
    };
    for (const auto& [anchor, place] : cases) {
        EXPECT_EQ(toolkit::placeMenu(anchor, {280, 100}, kWindow), place);
    }
    EXPECT_EQ(toolkit::placeMenu({0, 0, 9, 9}, {700, 500}, kWindow).topLeft(), (Point{4, 4}));
}

TEST_F(Menus, RunByTheMouseAndCloseByAnyOtherPress) {
    driver().click(u"More");
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(menu()->GetPos(), Rect::at(100, 32, 280, 4 * 26 + 9 + 8));
    EXPECT_EQ(highlighted(), u"");
    driver().hover(rowAt(0));
    EXPECT_EQ(highlighted(), u"Settings");
    EXPECT_EQ(driver().pixel({370, rowAt(0).y}), 0xFFE9F5FFU);
    driver().hover(rowAt(2));
    EXPECT_EQ(highlighted(), u"Settings") << "a disabled row is passed over";
    for (const int row : {1, 2}) {
        driver().click(rowAt(row));
        EXPECT_NE(menu(), nullptr);
    }
    driver().click(rowAt(3));
    EXPECT_EQ(ran(), "Manual");
    EXPECT_EQ(driver().focusName(), u"More") << "where it was";

    driver().click(u"More");
    driver().click(u"More");
    EXPECT_EQ(menu(), nullptr) << "a press on the button itself only closes";
    driver().click(u"More");
    window().notes.clear();
    driver().click(u"Go");
    EXPECT_EQ(menu(), nullptr);
    expectNotes("a press outside reaches what is there", {"click Go"});
    const Point button = test::WindowDriver::middleOf(driver().get(u"More"));
    driver().click(u"More");
    const Point row = rowAt(0);
    driver().click(u"More");
    driver().drag({row, button});
    EXPECT_EQ(ran(), "") << "nothing is open there";
}

TEST_F(Menus, GoByTheKeyboardAlone) {
    driver().retype(u"Edit", u"new");
    window().GetPaintManager().SetFocus(&driver().get(u"More"));
    const struct {
        std::vector<Key> keys;
        std::u16string text;
        std::u16string highlighted;
    } cases[] = {
        {{}, u"", u"Settings"},
        {{Key::down}, u"", u"Manual"},
        {{Key::down, Key::down, Key::down}, u"", u"Settings"},
        {{Key::up}, u"", u"Edges"},
        {{Key::end}, u"", u"Edges"},
        {{Key::end, Key::home}, u"", u"Settings"},
        {{}, u"m", u"Manual"},
        {{}, u"e", u"Edges"},
        {{}, u"x", u"Settings"},
    };
    for (const auto& test : cases) {
        driver().press(Key::space);
        for (const Key key : test.keys) {
            driver().press(key);
        }
        driver().type(test.text);
        EXPECT_EQ(highlighted(), test.highlighted);
        driver().press(Key::enter);
        EXPECT_EQ(ran(), std::string(test.highlighted.begin(), test.highlighted.end()));
        EXPECT_EQ(driver().focusName(), u"More");
    }
    for (const Key key : {Key::escape, Key::menu}) {
        driver().press(Key::enter);
        test::input().key(driver().native(), platform::EventKind::keyDown, Key::a, {}, {});
        ASSERT_NE(menu(), nullptr) << "other keys are swallowed";
        driver().press(key);
        EXPECT_EQ(menu(), nullptr);
        EXPECT_EQ(driver().focusName(), u"More");
    }
    driver().press(Key::enter);
    driver().press(Key::tab);
    EXPECT_EQ(driver().focusName(), u"Go");
    EXPECT_EQ(ran(), "");
}

TEST_F(Menus, EndWithWhatTheyStandOn) {
    const std::function<void()> ends[] = {
        [&] { driver().get(u"More").SetVisible(false), popup().close(); },
        [&] {
            platform::Event left;
            left.kind = platform::EventKind::deactivated;
            driver().manager().MessageHandler(left);
        },
        [&] { root().RemoveAll(); },
    };
    for (const auto& end : ends) {
        SetUp();
        driver().click(u"More");
        ASSERT_NE(menu(), nullptr);
        end();
        test::pump();
        EXPECT_EQ(menu(), nullptr);
        driver().press(Key::down);
    }
}

TEST_F(Menus, TellRolesNamesAndStates) {
    const auto& button = static_cast<const platform::Accessible&>(driver().get(u"More"));
    EXPECT_FALSE(button.accessibleState().expandable);
    driver().click(u"More");
    EXPECT_TRUE(button.accessibleState().expanded);
    auto& node = static_cast<platform::Accessible&>(*menu());
    EXPECT_EQ(node.accessibleRole(), AccessibleRole::menu);
    EXPECT_EQ(node.accessibleName(), button.accessibleName());
    ASSERT_EQ(node.accessibleChildCount(), 5);
    EXPECT_EQ(node.accessibleChild(1)->accessibleRole(), AccessibleRole::group);
    EXPECT_FALSE(node.accessibleChild(2)->accessibleState().enabled);
    platform::Accessible& ticked = *node.accessibleChild(4);
    EXPECT_EQ(ticked.accessibleRole(), AccessibleRole::menuItem);
    EXPECT_EQ(ticked.accessibleName(), u"Edges");
    EXPECT_TRUE(ticked.accessibleState().checkable && ticked.accessibleState().checked);
    driver().press(Key::end);
    EXPECT_TRUE(ticked.accessibleState().focused);
    ticked.accessiblePress();
    EXPECT_EQ(ran(), "Edges");
}
