// Edits under real mouse, keys, clipboard and input methods.
#include "core/Text.h"
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/CEditUI.h"

using namespace toolkit_test;
using platform::Key;
using platform::Point;
using toolkit::CEditUI;

namespace {

constexpr std::u16string_view kText = u"one two three";

class Edits : public ToolkitTest {
protected:
    void SetUp() override {
        open(R"(<Edit name="Edit" pos="20,20,200,25" text="one two three"/>
                <Edit name="Other" pos="20,100,60,25"/>)",
             "bkcolor=\"#FFFFFFFF\"");
    }
    [[nodiscard]] CEditUI& edit() { return get<CEditUI>(u"Edit"); }
    void expectText(std::u16string_view text) {
        EXPECT_EQ(core::storedText(edit().GetText()), core::storedText(text));
    }
    /// The x of the caret before code unit `index` of the edit "Edit".
    [[nodiscard]] Point at(int index) {
        const auto positions = test::gui().fonts().caretPositions(edit().GetText(), 0);
        return {20 + 5 + positions[static_cast<std::size_t>(index)], 32};
    }
    void preedit(const std::u16string& text) {
        test::input().preedit(driver().native(), text);
        test::pump();
    }
    void commit(const std::u16string& text) {
        test::input().commit(driver().native(), text);
        test::pump();
    }
    using Sel = std::pair<int, int>;

    platform::WindowHost& m_windows = test::gui().windows();
};

} // namespace

TEST_F(Edits, PlaceTheCaretAndSelectByMouse) {
    driver().click(at(4));
    EXPECT_EQ(edit().GetSel(), (Sel{4, 4}));
    driver().drag({at(4), at(6), at(7)});
    EXPECT_EQ(edit().GetSel(), (Sel{4, 7}));
    driver().click(at(1), kShift);
    EXPECT_EQ(edit().GetSel(), (Sel{1, 4})) << "Shift extends from where the selection began";
    driver().doubleClick(at(9));
    EXPECT_EQ(edit().GetSel(), (Sel{8, 13}));
    driver().drag({at(3), {5000, 32}});
    EXPECT_EQ(edit().GetSel(), (Sel{3, 13})) << "also outside of the window";
    driver().drag({at(3), {-5000, 32}});
    EXPECT_EQ(edit().GetSel(), (Sel{0, 3}));
    driver().click(Point{215, 22});
    EXPECT_EQ(edit().GetSel(), (Sel{13, 13})) << "beside the text";
}

TEST_F(Edits, MoveAndEditByKeys) {
    driver().click(at(13));
    driver().press(Key::left, kControl);
    driver().press(Key::end, kShift);
    EXPECT_EQ(edit().GetSel(), (Sel{8, 13}));
    driver().type(u"4\U0001F600");
    expectText(u"one two 4\U0001F600");
    driver().press(Key::backspace);
    driver().press(Key::home);
    driver().press(Key::del, kControl);
    expectText(u"two 4");
    driver().press(Key::z, kControl);
    expectText(u"one two 4");
    driver().press(Key::y, kControl);
    expectText(u"two 4");
    driver().press(Key::space);
    expectText(u" two 4"); // a blank, and no press of anything
}

TEST_F(Edits, UseTheClipboard) {
    driver().doubleClick(at(5));
    driver().press(Key::c, kControl);
    EXPECT_TRUE(m_windows.clipboardText() == u"two");
    driver().press(Key::x, kControl);
    expectText(u"one  three");
    driver().press(Key::home);
    driver().press(Key::v, kControl);
    expectText(u"twoone  three");
    driver().press(Key::a, kControl);
    m_windows.setClipboardText(u"a\r\nb\tc");
    driver().press(Key::insert, kShift);
    expectText(u"abc");
    driver().press(Key::c, kControl);
    EXPECT_TRUE(m_windows.clipboardText() == u"a\r\nb\tc") << "nothing is selected";
    driver().press(Key::a, kControl);
    driver().press(Key::del, kShift);
    expectText(u"");
    EXPECT_TRUE(m_windows.clipboardText() == u"abc");
}

TEST_F(Edits, ThatAreReadOnlyLetCopyButNotChange) {
    edit().SetReadOnly(true);
    driver().click(at(3));
    driver().press(Key::a, kControl);
    driver().press(Key::c, kControl);
    EXPECT_TRUE(m_windows.clipboardText() == kText);
    for (const Key key : {Key::x, Key::v, Key::z}) {
        driver().press(key, kControl);
    }
    driver().press(Key::del);
    driver().type(u"z");
    commit(u"z");
    expectText(kText);
}

TEST_F(Edits, TakeTextFromInputMethods) {
    driver().click(at(3));
    preedit(u"\u304b\u306a");
    expectText(kText); // not committed yet
    expectNotes("not committed", {});
    commit(u"\u4eee\u540d");
    expectText(u"one\u4eee\u540d two three");
    preedit(u"x");
    driver().click(u"Other");
    expectText(u"one\u4eee\u540d two three");
}

TEST_F(Edits, KeepTheCaretInViewInAnyText) {
    /// The first black column of the short edit.
    const auto caret = [&] {
        const platform::Bitmap picture = driver().picture();
        const auto isCaret = [&](int x) {
            int dark = 0;
            for (int y = 108; y < 117; ++y) {
                dark += picture.at(x, y) == 0xFF000000 ? 1 : 0;
            }
            return dark == 9;
        };
        int x = 20;
        while (x < 80 && !isCaret(x)) {
            ++x;
        }
        return x;
    };
    driver().click(u"Other");
    driver().type(u"a text much longer than its edit");
    EXPECT_GT(caret(), 60);
    EXPECT_LT(caret(), 80);
    driver().press(Key::home);
    EXPECT_EQ(caret(), 25);
}

TEST_F(Edits, PaintSelectionAndCaretOnlyWithTheKeyboard) {
    constexpr std::uint32_t kSelected = 0xFFC1E3FF;
    edit().SetSel(0, 3);
    EXPECT_NE(driver().pixel({at(1).x, 27}), kSelected);
    driver().manager().SetFocus(&edit());
    const platform::Bitmap picture = driver().picture();
    int selected = 0;
    for (int x = at(0).x; x < at(3).x; ++x) {
        selected += picture.at(x, 27) == kSelected ? 1 : 0;
    }
    EXPECT_GT(selected, (at(3).x - at(0).x) / 2);
    EXPECT_NE(picture.at(at(3).x + 2, 27), kSelected);
}
