// Text, caret, selection and undo of an edit, without a window.
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "toolkit/EditModel.h"

using toolkit::EditModel;

namespace {

using Step = std::function<void(EditModel&)>;

const Step kLeft = [](auto& m) { m.moveLeft(false, false); };
const Step kRight = [](auto& m) { m.moveRight(false, false); };
const Step kExtendLeft = [](auto& m) { m.moveLeft(false, true); };
const Step kWordLeft = [](auto& m) { m.moveLeft(true, false); };
const Step kWordRight = [](auto& m) { m.moveRight(true, false); };
const Step kHome = [](auto& m) { m.moveHome(false); };
const Step kBack = [](auto& m) { m.eraseBack(false); };
const Step kBackWord = [](auto& m) { m.eraseBack(true); };
const Step kDelete = [](auto& m) { m.eraseForward(false); };
const Step kUndo = [](auto& m) { m.undo(); };
const Step kRedo = [](auto& m) { m.redo(); };

Step type(std::u16string_view text) {
    return [text](auto& m) { m.insert(text); };
}

Step select(std::size_t begin, std::size_t end) {
    return [=](auto& m) { m.select(begin, end); };
}

Step wordAt(std::size_t position) {
    return [=](auto& m) { m.selectWordAt(position); };
}

Step limit(std::size_t units) {
    return [=](auto& m) { m.setMaxLength(units); };
}

/// Text with "|" at the caret or "[" "]" around a selection.
std::u16string shown(const EditModel& model) {
    std::u16string text = model.text();
    if (model.hasSelection()) {
        text.insert(model.selectionEnd(), u"]");
        text.insert(model.selectionBegin(), u"[");
    } else {
        text.insert(model.caret(), u"|");
    }
    return text;
}

EditModel modelOf(std::u16string_view text) {
    EditModel model;
    model.setText(text);
    return model;
}

void expectAfter(const char* what, std::u16string_view text, const std::vector<Step>& steps,
                 std::u16string_view expected) {
    EditModel model = modelOf(text);
    for (const Step& step : steps) {
        step(model);
    }
    EXPECT_TRUE(shown(model) == expected) << what;
}

} // namespace

TEST(EditModel, MovesAndSelects) {
    expectAfter("starts at the end", u"abc", {}, u"abc|");
    expectAfter("typing", u"ac", {kLeft, type(u"b")}, u"ab|c");
    expectAfter("left at the start", u"a", {kHome, kLeft}, u"|a");
    expectAfter("right at the end", u"a", {kRight}, u"a|");
    expectAfter("extends", u"abc", {kExtendLeft, kExtendLeft}, u"a[bc]");
    expectAfter("left collapses to the begin", u"abc", {select(1, 3), kLeft}, u"a|bc");
    expectAfter("right collapses to the end", u"abc", {select(0, 2), kRight}, u"ab|c");
    expectAfter("word left", u"one two, three", {kWordLeft}, u"one two, |three");
    expectAfter("over the comma", u"one two, three", {kWordLeft, kWordLeft}, u"one two|, three");
    expectAfter("word right", u"one  two", {kHome, kWordRight}, u"one  |two");
    expectAfter("a word by position", u"one two three", {wordAt(5)}, u"one [two] three");
    expectAfter("a word at the end", u"one two", {wordAt(7)}, u"one [two]");
    expectAfter("no word in no text", u"", {wordAt(3)}, u"|");
    expectAfter("positions beyond the text", u"ab", {select(1, 99)}, u"a[b]");
    expectAfter("a pair is one to the left", u"a\U0001F600", {kLeft}, u"a|\U0001F600");
    expectAfter("and to the right", u"\U0001F600b", {kHome, kRight}, u"\U0001F600|b");
}

TEST(EditModel, InsertsAndErases) {
    expectAfter("typing replaces the selection", u"abc", {select(0, 2), type(u"x")}, u"x|c");
    expectAfter("backspace", u"abc", {kBack}, u"ab|");
    expectAfter("backspace at the start", u"abc", {kHome, kBack}, u"|abc");
    expectAfter("backspace takes a word", u"one two", {kBackWord}, u"one |");
    expectAfter("delete", u"abc", {kHome, kDelete}, u"|bc");
    expectAfter("delete takes the selection", u"abcd", {select(3, 1), kDelete}, u"a|d");
    expectAfter("line ends and tabs", u"", {type(u"a\r\nb\tc\x7F\u2028")}, u"abc|");
    expectAfter("set text is cleaned too", u"a\nb", {}, u"ab|");
    expectAfter("an unpaired half", u"", {type(u"a\xD83Dz")}, u"a\uFFFDz|");
    expectAfter("backspace takes a whole pair", u"a\U0001F600", {kBack}, u"a|");
    expectAfter("delete takes a whole pair", u"\U0001F600b", {kHome, kDelete}, u"|b");
    expectAfter("the longest text", u"", {limit(3), type(u"abcdef")}, u"abc|");
    expectAfter("not half a pair", u"", {limit(2), type(u"a\U0001F600")}, u"a|");
}

TEST(EditModel, UndoesAndDoesAgain) {
    expectAfter("undo joins typing", u"", {type(u"a"), type(u"b"), kUndo}, u"|");
    expectAfter("a moved caret parts it", u"", {type(u"a"), kHome, type(u"b"), kUndo}, u"|a");
    expectAfter("undo and redo", u"", {type(u"a"), kBack, kUndo, kUndo, kRedo}, u"a|");
    expectAfter("the selection too", u"abc", {select(0, 2), type(u"x"), kUndo}, u"[ab]c");
    expectAfter("typing ends redo", u"", {type(u"a"), kUndo, type(u"b"), kRedo}, u"b|");
    EditModel model = modelOf(u"a");
    model.insert(u"b");
    model.setText(u"c");
    EXPECT_FALSE(model.undo()) << "a set text has no past";
}

TEST(EditModel, TellsWhetherTheTextChanged) {
    EditModel model = modelOf(u"ab");
    EXPECT_FALSE(model.eraseForward(false) || model.insert(u"\n") || model.eraseSelection());
    EXPECT_FALSE(model.undo() || model.redo());
    EXPECT_TRUE(model.insert(u"c"));
    EXPECT_TRUE(model.undo());
    EXPECT_TRUE(model.redo());
    model.setMaxLength(3);
    EXPECT_FALSE(model.insert(u"d")) << "no room";
    model.setMaxLength(8'000'000);
    EXPECT_TRUE(model.insert(std::u16string(8'000'000, u'x')));
    EXPECT_EQ(model.text().size(), EditModel::kMaxLength) << "a huge paste";
}

/// Whatever the keys, positions stay inside the text and never inside a pair, and undoing
/// everything leads back to the beginning.
TEST(EditModel, HoldsTogetherUnderAnyKeys) {
    const Step keys[] = {kLeft,           kRight,
                         kExtendLeft,     kWordLeft,
                         kWordRight,      kHome,
                         kBack,           kBackWord,
                         kDelete,         wordAt(17),
                         type(u"a"),      type(u" "),
                         type(u"\n"),     type(u"\U0001F600"),
                         type(u"\u00e9"), type(u"w, ")};
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        EditModel model = modelOf(u"start \U0001F600 end");
        const std::u16string first = model.text();
        for (int i = 0; i < 100; ++i) {
            keys[random() % std::size(keys)](model);
            if (random() % 4 == 0) {
                model.setCaret(random() % 40, random() % 2 == 0);
            }
            for (const std::size_t at : {model.selectionBegin(), model.selectionEnd()}) {
                ASSERT_LE(at, model.text().size());
                const bool inside = at > 0 && at < model.text().size() &&
                                    (model.text()[at - 1] & 0xFC00) == 0xD800 &&
                                    (model.text()[at] & 0xFC00) == 0xDC00;
                ASSERT_FALSE(inside);
            }
        }
        while (model.undo()) {
        }
        EXPECT_TRUE(model.text() == first);
    }
}
