// Text, caret, selection and undo of an edit, without a window.
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "toolkit/EditModel.h"

using toolkit::EditModel;

namespace {

/// Text with "|" at the caret and "[" "]" around a selection (the caret is at its other end from
/// where it began).
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

struct Case {
    const char* what;
    std::u16string_view text;
    std::function<void(EditModel&)> act;
    std::u16string expected;
};

} // namespace

TEST(EditModel, MovesSelectsAndErases) {
    const Case cases[] = {
        {"starts at the end", u"abc", [](auto&) {}, u"abc|"},
        {"typing", u"ac",
         [](auto& m) {
             m.moveLeft(false, false);
             m.insert(u"b");
         },
         u"ab|c"},
        {"left at the start", u"a",
         [](auto& m) {
             m.moveHome(false);
             m.moveLeft(false, false);
         },
         u"|a"},
        {"right at the end", u"a", [](auto& m) { m.moveRight(false, false); }, u"a|"},
        {"extends", u"abc",
         [](auto& m) {
             m.moveLeft(false, true);
             m.moveLeft(false, true);
         },
         u"a[bc]"},
        {"left collapses to the begin", u"abc",
         [](auto& m) {
             m.select(1, 3);
             m.moveLeft(false, false);
         },
         u"a|bc"},
        {"right collapses to the end", u"abc",
         [](auto& m) {
             m.select(0, 2);
             m.moveRight(false, false);
         },
         u"ab|c"},
        {"home extends", u"abc", [](auto& m) { m.moveHome(true); }, u"[abc]"},
        {"typing replaces the selection", u"abc",
         [](auto& m) {
             m.select(0, 2);
             m.insert(u"x");
         },
         u"x|c"},
        {"backspace", u"abc", [](auto& m) { m.eraseBack(false); }, u"ab|"},
        {"backspace at the start", u"abc",
         [](auto& m) {
             m.moveHome(false);
             m.eraseBack(false);
         },
         u"|abc"},
        {"delete", u"abc",
         [](auto& m) {
             m.moveHome(false);
             m.eraseForward(false);
         },
         u"|bc"},
        {"delete takes the selection", u"abcd",
         [](auto& m) {
             m.select(3, 1);
             m.eraseForward(false);
         },
         u"a|d"},
        {"word left", u"one two, three", [](auto& m) { m.moveLeft(true, false); },
         u"one two, |three"},
        {"over the comma", u"one two, three",
         [](auto& m) {
             m.moveLeft(true, false);
             m.moveLeft(true, false);
         },
         u"one two|, three"},
        {"word right", u"one  two",
         [](auto& m) {
             m.moveHome(false);
             m.moveRight(true, false);
         },
         u"one  |two"},
        {"backspace takes a word", u"one two", [](auto& m) { m.eraseBack(true); }, u"one |"},
        {"delete takes a word", u"one two",
         [](auto& m) {
             m.moveHome(false);
             m.eraseForward(true);
         },
         u"|two"},
        {"a word by position", u"one two three", [](auto& m) { m.selectWordAt(5); },
         u"one [two] three"},
        {"a word at the end", u"one two", [](auto& m) { m.selectWordAt(7); }, u"one [two]"},
        {"no word in no text", u"", [](auto& m) { m.selectWordAt(3); }, u"|"},
        {"positions beyond the text", u"ab", [](auto& m) { m.select(1, 99); }, u"a[b]"},
        {"line ends and tabs are dropped", u"", [](auto& m) { m.insert(u"a\r\nb\tc\x7F\u2028"); },
         u"abc|"},
        {"set text is cleaned too", u"a\nb", [](auto&) {}, u"ab|"},
        {"an unpaired half", u"", [](auto& m) { m.insert(u"a\xD83Dz"); }, u"a\uFFFDz|"},
        {"a pair is one character to the left", u"a\U0001F600",
         [](auto& m) { m.moveLeft(false, false); }, u"a|\U0001F600"},
        {"and to the right", u"\U0001F600b",
         [](auto& m) {
             m.moveHome(false);
             m.moveRight(false, false);
         },
         u"\U0001F600|b"},
        {"backspace takes a whole pair", u"a\U0001F600", [](auto& m) { m.eraseBack(false); },
         u"a|"},
        {"delete takes a whole pair", u"\U0001F600b",
         [](auto& m) {
             m.moveHome(false);
             m.eraseForward(false);
         },
         u"|b"},
        {"no caret inside a pair", u"\U0001F600", [](auto& m) { m.setCaret(1, false); },
         u"|\U0001F600"},
        {"undo joins typing", u"",
         [](auto& m) {
             m.insert(u"a");
             m.insert(u"b");
             m.undo();
         },
         u"|"},
        {"a moved caret parts it", u"",
         [](auto& m) {
             m.insert(u"a");
             m.moveHome(false);
             m.insert(u"b");
             m.undo();
         },
         u"|a"},
        {"undo and redo", u"",
         [](auto& m) {
             m.insert(u"a");
             m.eraseBack(false);
             m.undo();
             m.undo();
             m.redo();
         },
         u"a|"},
        {"undo brings the selection back", u"abc",
         [](auto& m) {
             m.select(0, 2);
             m.insert(u"x");
             m.undo();
         },
         u"[ab]c"},
        {"typing ends redo", u"",
         [](auto& m) {
             m.insert(u"a");
             m.undo();
             m.insert(u"b");
             m.redo();
         },
         u"b|"},
        {"a set text has no past", u"a",
         [](auto& m) {
             m.insert(u"b");
             m.setText(u"c");
             m.undo();
         },
         u"c|"},
        {"the longest text", u"",
         [](auto& m) {
             m.setMaxLength(3);
             m.insert(u"abcdef");
         },
         u"abc|"},
        {"never ends in half a pair", u"",
         [](auto& m) {
             m.setMaxLength(2);
             m.insert(u"a\U0001F600");
         },
         u"a|"},
    };
    for (const Case& c : cases) {
        EditModel model = modelOf(c.text);
        c.act(model);
        EXPECT_TRUE(shown(model) == c.expected) << c.what;
    }
}

TEST(EditModel, TellsWhetherTheTextChanged) {
    EditModel model = modelOf(u"ab");
    EXPECT_FALSE(model.eraseForward(false));
    EXPECT_FALSE(model.insert(u"\n"));
    EXPECT_FALSE(model.eraseSelection());
    EXPECT_FALSE(model.undo());
    EXPECT_FALSE(model.redo());
    EXPECT_TRUE(model.insert(u"c"));
    EXPECT_TRUE(model.undo());
    EXPECT_TRUE(model.redo());
    model.setMaxLength(3);
    EXPECT_FALSE(model.insert(u"d")) << "no room";
}

TEST(EditModel, IsBoundedForAHugePaste) {
    EditModel model;
    EXPECT_TRUE(model.insert(std::u16string(8'000'000, u'x')));
    EXPECT_EQ(model.text().size(), EditModel::kMaxLength);
}

/// Whatever the keys, positions stay inside the text and never inside a pair, and undoing
/// everything leads back to the beginning.
TEST(EditModel, HoldsTogetherUnderAnyKeys) {
    std::mt19937 random(7);
    const std::u16string_view pieces[] = {u"a", u" ", u"\U0001F600", u"\u00e9", u"word, ", u"\n"};
    for (int round = 0; round < 50; ++round) {
        EditModel model = modelOf(u"start \U0001F600 end");
        const std::u16string first = model.text();
        for (int i = 0; i < 100; ++i) {
            const bool word = random() % 2 == 0;
            const bool extend = random() % 2 == 0;
            switch (random() % 8) {
            case 0:
                model.moveLeft(word, extend);
                break;
            case 1:
                model.moveRight(word, extend);
                break;
            case 2:
                model.eraseBack(word);
                break;
            case 3:
                model.eraseForward(word);
                break;
            case 4:
                model.setCaret(random() % 40, extend);
                break;
            case 5:
                model.selectWordAt(random() % 40);
                break;
            default:
                model.insert(pieces[random() % std::size(pieces)]);
                break;
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
