// Edits under real mouse, keys, clipboard and input methods.
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/CEditUI.h"

using namespace toolkit_test;
using platform::Key;
using platform::Point;
using toolkit::CEditUI;

namespace {

class Edits : public ToolkitTest {
protected:
    void SetUp() override {
        open(R"(<Edit name="Edit" pos="20,20,200,25" text="one two three"/>
                <Edit name="Fixed" pos="20,60,200,25" text="fixed" readonly="true"/>
                <Edit name="Other" pos="20,100,60,25"/>)",
             "bkcolor=\"#FFFFFFFF\"");
    }
    [[nodiscard]] CEditUI& edit() { return get<CEditUI>(u"Edit"); }
    /// The x of the caret before code unit `index` of the edit "Edit".
    [[nodiscard]] Point at(int index) {
        const auto positions = test::gui().fonts().caretPositions(edit().GetText(), 0);
        return {20 + 5 + positions[static_cast<std::size_t>(index)], 32};
    }
    using Sel = std::pair<int, int>;
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
    test::WindowDriver d = driver();
    d.click(at(13));
    d.press(Key::left, kControl);
    d.press(Key::end, kShift);
    EXPECT_EQ(edit().GetSel(), (Sel{8, 13}));
    d.type(u"4\U0001F600");
    EXPECT_TRUE(edit().GetText() == u"one two 4\U0001F600");
    d.press(Key::backspace);
    d.press(Key::home);
    d.press(Key::del, kControl);
    EXPECT_TRUE(edit().GetText() == u"two 4");
    d.press(Key::z, kControl);
    EXPECT_TRUE(edit().GetText() == u"one two 4");
    d.press(Key::y, kControl);
    EXPECT_TRUE(edit().GetText() == u"two 4");
    d.press(Key::space);
    EXPECT_TRUE(edit().GetText() == u" two 4") << "a blank, and no press of anything";
}

TEST_F(Edits, UseTheClipboard) {
    test::WindowDriver d = driver();
    platform::WindowHost& windows = test::gui().windows();
    d.doubleClick(at(5));
    d.press(Key::c, kControl);
    EXPECT_TRUE(windows.clipboardText() == u"two");
    d.press(Key::x, kControl);
    EXPECT_TRUE(edit().GetText() == u"one  three");
    d.press(Key::home);
    d.press(Key::v, kControl);
    EXPECT_TRUE(edit().GetText() == u"twoone  three");
    d.press(Key::a, kControl);
    windows.setClipboardText(u"a\r\nb\tc");
    d.press(Key::insert, kShift);
    EXPECT_TRUE(edit().GetText() == u"abc");
    d.press(Key::c, kControl);
    EXPECT_TRUE(windows.clipboardText() == u"a\r\nb\tc") << "nothing is selected: nothing copied";
    d.press(Key::a, kControl);
    d.press(Key::del, kShift);
    EXPECT_TRUE(edit().GetText().empty());
    EXPECT_TRUE(windows.clipboardText() == u"abc");
}

TEST_F(Edits, ThatAreReadOnlyLetCopyButNotChange) {
    test::WindowDriver d = driver();
    d.click(u"Fixed");
    d.press(Key::a, kControl);
    d.press(Key::c, kControl);
    EXPECT_TRUE(test::gui().windows().clipboardText() == u"fixed");
    for (const Key key : {Key::x, Key::v, Key::z}) {
        d.press(key, kControl);
    }
    d.press(Key::del);
    d.type(u"z");
    test::input().commit(d.native(), u"z");
    test::pump();
    EXPECT_TRUE(d.get<CEditUI>(u"Fixed").GetText() == u"fixed");
}

TEST_F(Edits, TakeTextFromInputMethods) {
    test::WindowDriver d = driver();
    d.click(at(3));
    test::input().preedit(d.native(), u"\u304b\u306a");
    test::pump();
    EXPECT_TRUE(edit().GetText() == u"one two three") << "not committed yet";
    EXPECT_TRUE(window().take().empty());
    test::input().commit(d.native(), u"\u4eee\u540d");
    test::pump();
    EXPECT_TRUE(edit().GetText() == u"one\u4eee\u540d two three");
    test::input().preedit(d.native(), u"x");
    test::pump();
    d.click(u"Other");
    EXPECT_TRUE(edit().GetText() == u"one\u4eee\u540d two three");
}

TEST_F(Edits, KeepTheCaretInViewInAnyText) {
    test::WindowDriver d = driver();
    auto& other = d.get<CEditUI>(u"Other");
    d.click(u"Other");
    d.type(u"a text much longer than its edit");
    const platform::Bitmap end = d.picture();
    d.press(Key::home);
    const platform::Bitmap start = d.picture();
    const auto caretInside = [](const platform::Bitmap& picture) {
        for (int x = 20; x < 80; ++x) {
            bool column = true;
            for (int y = 108; y < 117; ++y) {
                column = column && picture.at(x, y) == 0xFF000000;
            }
            if (column) {
                return x;
            }
        }
        return -1;
    };
    EXPECT_GT(caretInside(end), 60);
    EXPECT_EQ(caretInside(start), 25);
    EXPECT_FALSE(other.GetText().empty());
}

TEST_F(Edits, PaintSelectionAndCaretOnlyWithTheKeyboard) {
    test::WindowDriver d = driver();
    edit().SetSel(0, 3);
    EXPECT_NE(d.pixel({at(1).x, 27}), 0xFFC1E3FF);
    d.manager().SetFocus(&edit());
    const platform::Bitmap picture = d.picture();
    int selected = 0;
    for (int x = at(0).x; x < at(3).x; ++x) {
        selected += picture.at(x, 27) == 0xFFC1E3FF ? 1 : 0;
    }
    EXPECT_GT(selected, (at(3).x - at(0).x) / 2);
    EXPECT_NE(picture.at(at(3).x + 2, 27), 0xFFC1E3FF);
}
