// Edits under real mouse, keys, clipboard and input methods.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "core/Text.h"
#include "platform/Bitmap.h"
#include "tests/support/Random.h"
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/text/EditModel.h"
#include "toolkit/text/TextPaint.h"

using namespace toolkit_test;
using platform::Key;
using platform::Point;
using toolkit::CEditUI;
using toolkit::EditModel;

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
    edit().SetSel(8, 99);
    EXPECT_EQ(edit().GetSel(), (Sel{8, 13}));
    driver().doubleClick({30, 110}); // there is no word
}

/// What a row of the table below types: these are keys, all else is text.
const std::map<char16_t, std::pair<Key, platform::Modifiers>> kKeys{
    {u'<', {Key::left, {}}},       {u'>', {Key::right, {}}},
    {u'{', {Key::left, kShift}},   {u'}', {Key::right, kShift}},
    {u'[', {Key::left, kControl}}, {u']', {Key::right, kControl}},
    {u'^', {Key::home, {}}},       {u'$', {Key::end, {}}},
    {u'-', {Key::backspace, {}}},  {u'=', {Key::backspace, kControl}},
    {u'.', {Key::del, {}}},        {u'_', {Key::del, kControl}},
    {u'Z', {Key::z, kControl}},    {u'Y', {Key::y, kControl}},
    {u'A', {Key::a, kControl}},
};

TEST_F(Edits, MoveSelectAndChangeTheirTextByKeys) {
    const struct {
        const char* what;
        std::u16string text;
        std::u16string keys;
        std::u16string shown; ///< "|" at the caret or "[" "]" around a selection
        const char16_t* longest = u"99";
    } cases[] = {
        {"typing in between", u"ac", u"<b", u"ab|c"},
        {"a blank presses nothing", u"ac", u"< ", u"a |c"},
        {"left at the start", u"a", u"^<", u"|a"},
        {"right at the end", u"a", u"^$>", u"a|"},
        {"left to the begin of the selection", u"abc", u"{{<", u"a|bc"},
        {"right to its end", u"abc", u"^}}>", u"ab|c"},
        {"over a word", u"one two, three", u"[", u"one two, |three"},
        {"over a comma", u"one two, three", u"[[", u"one two|, three"},
        {"over blanks", u"one  two", u"^]", u"one  |two"},
        {"a pair is one to the left", u"a\U0001F600", u"{", u"a[\U0001F600]"},
        {"and to the right", u"\U0001F600b", u"^>", u"\U0001F600|b"},
        {"a mark goes with its letter", u"xe\u0301y", u"^>>", u"xe\u0301|y"},
        {"and back", u"xe\u0301", u"<", u"x|e\u0301"},
        {"backspace takes the mark alone", u"e\u0301", u"-", u"e|"},
        {"delete takes both", u"e\u0301x", u"^.", u"|x"},
        {"over a mark that follows no letter", u"a,\u0301", u"[[", u"|a,\u0301"},
        {"typing replaces the selection", u"abc", u"^}}x", u"x|c"},
        {"backspace takes a pair", u"ab", u"\U0001F600--", u"a|"},
        {"backspace at the start", u"abc", u"^-", u"|abc"},
        {"backspace takes a word", u"one two", u"=", u"one |"},
        {"delete takes a pair", u"\U0001F600b", u"^.", u"|b"},
        {"delete takes the selection", u"abcd", u"<{{.", u"a|d"},
        {"delete takes a word", u"one two", u"^_", u"|two"},
        {"undo joins typing", u"", u"abZ", u"|"},
        {"a moved caret parts it", u"", u"a^bZ", u"|a"},
        {"undo and redo", u"", u"a-ZZY", u"a|"},
        {"the selection too", u"abc", u"^}}xZ", u"[ab]c"},
        {"typing ends redo", u"", u"aZbY", u"b|"},
        {"a set text has no past", u"a", u"Z", u"a|"},
        {"and is cleaned", u"a\r\n\tb\x7F\u2028\xD83Dz", u"A", u"[ab\uFFFDz]"},
        {"no longer than it may be", u"abcdefgh", u"x", u"abcdefgh|", u"8"},
        {"nor by half a pair", u"abcdefg", u"\U0001F600", u"abcdefg|", u"8"},
    };
    driver().manager().SetFocus(&edit());
    for (const auto& [what, text, keys, shown, longest] : cases) {
        EXPECT_TRUE(edit().SetAttribute(u"maxchar", longest));
        edit().SetText(text);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const auto key = kKeys.find(keys[i]);
            if (key != kKeys.end()) {
                driver().press(key->second.first, key->second.second);
            } else {
                driver().type(keys.substr(i, keys[i] >= 0xD800 ? 2 : 1));
                i += keys[i] >= 0xD800 ? 1 : 0;
            }
        }
        std::u16string found = edit().GetText();
        const auto [begin, end] = edit().GetSel();
        found.insert(static_cast<std::size_t>(end), begin == end ? u"|" : u"]");
        found.insert(static_cast<std::size_t>(begin), begin == end ? u"" : u"[");
        EXPECT_EQ(core::storedText(found), core::storedText(shown)) << what;
    }
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
    const std::u16string lines = u"a\r\nb\t\u4f60\U0001F600";
    m_windows.setClipboardText(lines);
    driver().press(Key::insert, kShift);
    expectText(u"ab\u4f60\U0001F600");
    driver().press(Key::c, kControl);
    EXPECT_TRUE(m_windows.clipboardText() == lines) << "nothing is selected";
    driver().press(Key::a, kControl);
    driver().press(Key::del, kShift);
    expectText(u"");
    EXPECT_TRUE(m_windows.clipboardText() == u"ab\u4f60\U0001F600");
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
    expectNotes("nothing changed", {});
}

TEST_F(Edits, ThatAreReadOnlyEndInAnEllipsisWhereTheyAreTooNarrow) {
    const std::u16string path = u"/home/anna/.local/share/quorvel/Programs/Scenes";
    const auto shown = [this](const std::u16string& text) {
        edit().SetText(text);
        return driver().picture();
    };
    const auto isAlike = [](const platform::Bitmap& one, const platform::Bitmap& other) {
        for (int y = 20; y < 45; ++y) {
            for (int x = 20; x < 220; ++x) {
                if (one.at(x, y) != other.at(x, y)) {
                    return false;
                }
            }
        }
        return true;
    };
    const std::u16string cut = toolkit::fittedText(path, 190, 0, test::gui().fonts());
    ASSERT_LT(cut.size(), path.size());
    EXPECT_FALSE(isAlike(shown(path), shown(cut))) << "more may be written";
    edit().SetReadOnly(true);
    EXPECT_TRUE(isAlike(shown(path), shown(cut)));
    driver().click(at(3));
    driver().press(Key::end);
    EXPECT_FALSE(isAlike(shown(path), shown(cut))) << "all of it can be read and copied";
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
    auto& other = get<CEditUI>(u"Other");
    other.SetText(u"a text much longer than its");
    driver().click(Point{26, 112});
    EXPECT_EQ(other.GetSel(), (Sel{0, 0})) << "it is read, and hit, from its beginning";
    driver().press(Key::end);
    driver().type(u" edit");
    driver().click(Point{76, 112});
    EXPECT_GT(other.GetSel().first, 29) << "the end is in view";
    for (const auto kind : {platform::EventKind::deactivated, platform::EventKind::activated}) {
        platform::Event event;
        event.kind = kind;
        driver().manager().MessageHandler(event);
    }
    driver().click(Point{26, 112});
    EXPECT_EQ(other.GetSel(), (Sel{0, 0})) << "a press that brings the window back hits, too";
    driver().press(Key::end);
    driver().press(Key::home);
    driver().click(Point{26, 112});
    EXPECT_EQ(other.GetSel(), (Sel{0, 0}));
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

/// Whatever happens, positions stay inside the text and never inside a character, and undoing
/// everything leads back to the beginning.
TEST(EditModel, HoldsTogetherUnderAnyChanges) {
    support::Random random(7);
    const auto flag = [&] { return random.below(2) == 0; };
    const auto place = [&] { return static_cast<std::size_t>(random.below(40)); };
    const std::u16string_view typed[] = {u"a", u" ", u"\n", u"\U0001F600", u"w, ", u"\u0301"};
    for (int round = 0; round < 50; ++round) {
        EditModel model;
        model.setText(u"start \U0001F600 end");
        const std::u16string first = model.text();
        const std::function<void()> changes[] = {
            [&] { model.moveLeft(flag(), flag()); },    [&] { model.moveRight(flag(), flag()); },
            [&] { model.setCaret(place(), flag()); },   [&] { model.selectWordAt(place()); },
            [&] { model.eraseBack(flag()); },           [&] { model.eraseForward(flag()); },
            [&] { model.insert(random.oneOf(typed)); },
        };
        for (int i = 0; i < 100; ++i) {
            changes[random.below(static_cast<int>(std::size(changes)))]();
            for (const std::size_t at : {model.selectionBegin(), model.selectionEnd()}) {
                ASSERT_LE(at, model.text().size());
                const char16_t next = at > 0 && at < model.text().size() ? model.text()[at] : 0;
                ASSERT_TRUE((next & 0xFC00) != 0xDC00 && next != u'\u0301');
            }
        }
        while (model.undo()) {
        }
        EXPECT_TRUE(model.text() == first);
    }
    EditModel model;
    EXPECT_TRUE(model.insert(std::u16string(8'000'000, u'x')));
    EXPECT_EQ(model.text().size(), EditModel::kMaxLength) << "a huge paste";
    EXPECT_FALSE(model.insert(u"y"));
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(model.text(), u"") << "what changed nothing is no step";
}
