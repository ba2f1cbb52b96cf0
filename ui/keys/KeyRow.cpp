#include "ui/keys/KeyRow.h"

#include <algorithm>
#include <cstddef>

#include "core/Texts.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/commands/Command.h"
#include "ui/keys/KeyTable.h"

namespace ui {

namespace {

constexpr int kInset = 6;   ///< free at both ends of a row
constexpr int kTextGap = 8; ///< least distance between caps and text
constexpr int kCapHeight = 18;
constexpr int kCapPadding = 6;
constexpr int kPlusGap = 3;
constexpr core::Text kWaiting = "Press the new key"_tr;
constexpr std::u16string_view kNoKey = u"–";

} // namespace

KeyRow::KeyRow(KeyTable& table, const KeyLine& line) : m_table(table), m_line(line) {
    SetText(line.text);
    if (line.command == nullptr) {
        SetToolTip(line.text); // it may be longer than the row
    } else if (line.isChosen) {
        const std::u16string usual = shownKey(line.command->keys[line.number]);
        SetToolTip(usual.empty() ? core::tr("Originally: no key"_tr)
                                 : core::tr("Originally|Originally: {0}"_tr, usual));
    } else if (!line.command->isFixed) {
        SetToolTip(core::tr("Change: double-click or Enter"_tr));
    }
}

const KeyStyle& KeyRow::style() const {
    return m_table.style();
}

void KeyRow::setSelected(bool selected) {
    if (m_isSelected != selected) {
        m_isSelected = selected;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::state);
    }
}

void KeyRow::setWaiting(bool waiting) {
    m_isWaiting = waiting;
    m_refusal.clear();
    Invalidate();
    accessibleChanged(platform::AccessibleChange::name);
}

void KeyRow::refuse(const std::u16string& why) {
    m_refusal = why;
    Invalidate();
    announce(true);
}

bool KeyRow::notePress(const toolkit::TEventUI& event) {
    m_table.pick(*this, event.Type == toolkit::EventType::doubleClick);
    return false;
}

void KeyRow::accessiblePress() {
    m_table.pick(*this, true);
}

bool KeyRow::DoEvent(const toolkit::TEventUI& event) {
    using toolkit::EventType;
    if (event.Type != EventType::mouseEnter && event.Type != EventType::mouseLeave) {
        return CControlUI::DoEvent(event);
    }
    m_isHot = event.Type == EventType::mouseEnter && m_line.command != nullptr;
    Invalidate();
    return true;
}

platform::AccessibleRole KeyRow::accessibleRole() const {
    return platform::AccessibleRole::listItem;
}

std::u16string KeyRow::accessibleName() const {
    if (!m_refusal.empty()) {
        return m_refusal;
    }
    if (m_isWaiting) {
        return core::tr(kWaiting) + u": " + GetText();
    }
    const std::u16string keys = shownKeys(m_line);
    return keys.empty() ? GetText() : keys + u": " + GetText();
}

platform::AccessibleState KeyRow::accessibleState() const {
    platform::AccessibleState state = CControlUI::accessibleState();
    state.selectable = true;
    state.selected = m_isSelected;
    return state;
}

int KeyRow::paintWords(platform::Canvas& canvas, std::u16string_view text, int left,
                       const toolkit::SkinColor& color) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(style().font);
    look.color = paletteColor(color);
    Rect box = GetPos();
    box.left = left;
    box.right -= kInset;
    toolkit::paintTextLine(canvas, manager.fonts(), text, box, look);
    return left + widthOf(text);
}

int KeyRow::widthOf(std::u16string_view text) const {
    const toolkit::CPaintManagerUI& manager = *GetManager();
    return manager.fonts().measure(text, manager.look().GetFont(style().font)).width;
}

int KeyRow::capWidth(std::u16string_view key) const {
    return std::max(widthOf(key) + 2 * kCapPadding, kCapHeight);
}

int KeyRow::keysWidth() const {
    int width = kInset + kTextGap;
    std::u16string keys = shownKeys(m_line);
    for (std::size_t end = 0; end != std::u16string::npos && !keys.empty();) {
        end = keys.find(u'+');
        width += capWidth(keys.substr(0, end));
        if (end != std::u16string::npos) {
            width += widthOf(u"+") + 2 * kPlusGap;
            keys.erase(0, end + 1);
        }
    }
    return width;
}

int KeyRow::lastTextLeft() const {
    return GetPlace()->width() - kInset - widthOf(GetText());
}

int KeyRow::paintCap(platform::Canvas& canvas, std::u16string_view key, int left) const {
    const int width = capWidth(key);
    const int top = GetPos().top + (GetPos().height() - kCapHeight) / 2;
    // The lower edge is twice as thick: a key seen from the front.
    toolkit::fillRoundBox(
        canvas, Rect::at(left, top, width, kCapHeight), 3,
        paletteColor(m_line.isChosen ? style().chosenEdgeColor : style().capEdgeColor));
    toolkit::fillRoundBox(canvas, Rect::at(left + 1, top + 1, width - 2, kCapHeight - 3), 2,
                          paletteColor(style().capColor));
    paintWords(canvas, key, left + (width - widthOf(key)) / 2, style().textColor);
    return left + width;
}

int KeyRow::paintKeys(platform::Canvas& canvas, int left) const {
    if (m_line.command == nullptr) {
        return left;
    }
    const std::u16string keys = shownKeys(m_line);
    if (m_isWaiting || keys.empty()) {
        const std::u16string words = m_isWaiting ? core::tr(kWaiting) : std::u16string(kNoKey);
        return paintWords(canvas, words, left, style().hintColor);
    }
    std::u16string_view rest = keys;
    while (true) {
        const std::size_t end = rest.find(u'+');
        left = paintCap(canvas, rest.substr(0, end), left);
        if (end == std::u16string_view::npos) {
            return left;
        }
        left = paintWords(canvas, u"+", left + kPlusGap, style().hintColor) + kPlusGap;
        rest = rest.substr(end + 1);
    }
}

void KeyRow::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    style().item.paintBackground(canvas, *GetManager(), GetPos(), {true, m_isSelected, m_isHot});
    const int end = paintKeys(canvas, GetPos().left + kInset);
    const bool isNote = m_line.command == nullptr;
    const std::u16string text = m_refusal.empty() ? GetText() : m_refusal;
    // A long one begins before the others, as far as its keys allow.
    const int last = GetPos().right - kInset - widthOf(text);
    paintWords(canvas, text,
               isNote ? end : std::max(std::min(GetPos().left + m_textLeft, last), end + kTextGap),
               !m_refusal.empty() ? style().refusedColor
               : isNote           ? style().hintColor
                                  : style().textColor);
}

} // namespace ui
