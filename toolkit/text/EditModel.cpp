#include "toolkit/text/EditModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace toolkit {
namespace {

constexpr std::size_t kMaxSteps = 200;

bool isHighHalf(char16_t c) {
    return (c & 0xFC00) == 0xD800;
}

bool isLowHalf(char16_t c) {
    return (c & 0xFC00) == 0xDC00;
}

/// Blocks of marks that belong to the character before them: accents, and variants of symbols.
bool isMark(char16_t c) {
    static constexpr std::pair<char16_t, char16_t> kBlocks[] = {{0x0300, 0x036F}, {0x1AB0, 0x1AFF},
                                                                {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF},
                                                                {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};
    return std::any_of(std::begin(kBlocks), std::end(kBlocks),
                       [c](const auto& block) { return c >= block.first && c <= block.second; });
}

bool isControl(char16_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

enum class Kind { blank, word, other };

Kind kindOf(char16_t c) {
    if (c == u' ' || c == 0xA0 || c == 0x3000) {
        return Kind::blank;
    }
    const bool asciiWord = (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') ||
                           (c >= u'A' && c <= u'Z') || c == u'_';
    return asciiWord || c >= 0x80 ? Kind::word : Kind::other;
}

/// What an edit takes of `text`: one line, whole characters.
std::u16string cleaned(std::u16string_view text) {
    std::u16string clean;
    clean.reserve(std::min(text.size(), EditModel::kMaxLength));
    for (std::size_t i = 0; i < text.size() && clean.size() < EditModel::kMaxLength; ++i) {
        const char16_t c = text[i];
        if (isControl(c)) {
            continue;
        }
        if (isHighHalf(c) && i + 1 < text.size() && isLowHalf(text[i + 1])) {
            clean.push_back(c);
            clean.push_back(text[++i]);
        } else {
            clean.push_back(isHighHalf(c) || isLowHalf(c) ? u'\uFFFD' : c);
        }
    }
    return clean;
}

} // namespace

std::u16string_view EditModel::selectedText() const {
    return std::u16string_view(m_text).substr(selectionBegin(), selectionEnd() - selectionBegin());
}

void EditModel::setText(std::u16string_view text) {
    m_text.clear();
    m_caret = m_anchor = 0;
    replace(0, 0, cleaned(text));
    m_undo.clear();
    m_redo.clear();
    m_lastChange = Change::none;
}

bool EditModel::isInsidePair(std::size_t position) const {
    return position > 0 && position < m_text.size() && isHighHalf(m_text[position - 1]) &&
           isLowHalf(m_text[position]);
}

bool EditModel::isInsideCharacter(std::size_t position) const {
    return isInsidePair(position) ||
           (position > 0 && position < m_text.size() && isMark(m_text[position]));
}

std::size_t EditModel::characterBegin(std::size_t position) const {
    while (isInsideCharacter(position)) {
        --position;
    }
    return position;
}

std::size_t EditModel::characterEnd(std::size_t position) const {
    position = std::min(position, m_text.size());
    while (isInsideCharacter(position)) {
        ++position;
    }
    return position;
}

std::size_t EditModel::before(std::size_t position) const {
    return position == 0 ? 0 : characterBegin(position - 1);
}

std::size_t EditModel::after(std::size_t position) const {
    return characterEnd(position + 1);
}

std::size_t EditModel::wordBefore(std::size_t position) const {
    while (position > 0 && kindOf(m_text[position - 1]) == Kind::blank) {
        --position;
    }
    if (position == 0) {
        return 0;
    }
    const Kind kind = kindOf(m_text[position - 1]);
    while (position > 0 && kindOf(m_text[position - 1]) == kind) {
        --position;
    }
    return characterBegin(position);
}

std::size_t EditModel::wordAfter(std::size_t position) const {
    const std::size_t end = m_text.size();
    if (position < end && kindOf(m_text[position]) != Kind::blank) {
        const Kind kind = kindOf(m_text[position]);
        while (position < end && kindOf(m_text[position]) == kind) {
            ++position;
        }
    }
    while (position < end && kindOf(m_text[position]) == Kind::blank) {
        ++position;
    }
    return characterEnd(position);
}

void EditModel::setCaret(std::size_t position, bool extend) {
    m_caret = characterEnd(position);
    if (!extend) {
        m_anchor = m_caret;
    }
    m_lastChange = Change::none;
}

void EditModel::select(std::size_t begin, std::size_t end) {
    setCaret(begin, false);
    setCaret(end, true);
}

void EditModel::selectWordAt(std::size_t position) {
    position = std::min(position, m_text.size());
    if (m_text.empty()) {
        return;
    }
    const Kind kind = kindOf(m_text[std::min(position, m_text.size() - 1)]);
    std::size_t begin = position;
    std::size_t end = position;
    while (begin > 0 && kindOf(m_text[begin - 1]) == kind) {
        --begin;
    }
    while (end < m_text.size() && kindOf(m_text[end]) == kind) {
        ++end;
    }
    select(begin, end);
}

void EditModel::moveLeft(bool word, bool extend) {
    const bool collapses = hasSelection() && !extend && !word;
    setCaret(collapses ? selectionBegin() : word ? wordBefore(m_caret) : before(m_caret), extend);
}

void EditModel::moveRight(bool word, bool extend) {
    const bool collapses = hasSelection() && !extend && !word;
    setCaret(collapses ? selectionEnd() : word ? wordAfter(m_caret) : after(m_caret), extend);
}

/// Typing, and erasing with one key, are undone in one step each until the caret moves.
void EditModel::remember(Change change, Step former) {
    if (change != m_lastChange || change == Change::other) {
        m_undo.push_back(std::move(former));
        if (m_undo.size() > kMaxSteps) {
            m_undo.erase(m_undo.begin());
        }
    }
    m_redo.clear();
    m_lastChange = change;
}

void EditModel::replace(std::size_t begin, std::size_t end, std::u16string_view with) {
    m_text.erase(begin, end - begin);
    std::size_t room = m_maxLength > m_text.size() ? m_maxLength - m_text.size() : 0;
    room = std::min(room, with.size());
    if (room > 0 && room < with.size() && isHighHalf(with[room - 1])) {
        --room;
    }
    m_text.insert(begin, with.substr(0, room));
    m_caret = m_anchor = characterEnd(begin + room);
}

bool EditModel::insert(std::u16string_view text) {
    const std::u16string clean = cleaned(text);
    if (clean.empty()) {
        return false;
    }
    const bool typed = clean.size() <= 2 && !hasSelection();
    const Step former = present();
    replace(selectionBegin(), selectionEnd(), clean);
    if (m_text == former.text) { // it is full, or what was selected came again
        return false;
    }
    remember(typed ? Change::typing : Change::other, former);
    return true;
}

bool EditModel::eraseSelection() {
    if (!hasSelection()) {
        return false;
    }
    remember(Change::other, present());
    replace(selectionBegin(), selectionEnd(), {});
    return true;
}

bool EditModel::eraseBack(bool word) {
    if (hasSelection()) {
        return eraseSelection();
    }
    if (m_caret == 0) {
        return false;
    }
    // One key takes a mark off its character, as it was typed.
    const std::size_t unit = m_caret - (isInsidePair(m_caret - 1) ? 2 : 1);
    const std::size_t begin = word ? wordBefore(m_caret) : unit;
    remember(Change::erasing, present());
    replace(begin, m_caret, {});
    return true;
}

bool EditModel::eraseForward(bool word) {
    if (hasSelection()) {
        return eraseSelection();
    }
    const std::size_t end = word ? wordAfter(m_caret) : after(m_caret);
    if (end == m_caret) {
        return false;
    }
    remember(Change::erasing, present());
    replace(m_caret, end, {});
    return true;
}

void EditModel::restore(std::vector<Step>& from, std::vector<Step>& to) {
    to.push_back({std::move(m_text), m_caret, m_anchor});
    m_text = std::move(from.back().text);
    m_caret = from.back().caret;
    m_anchor = from.back().anchor;
    from.pop_back();
    m_lastChange = Change::none;
}

bool EditModel::undo() {
    if (m_undo.empty()) {
        return false;
    }
    restore(m_undo, m_redo);
    return true;
}

bool EditModel::redo() {
    if (m_redo.empty()) {
        return false;
    }
    restore(m_redo, m_undo);
    return true;
}

} // namespace toolkit
