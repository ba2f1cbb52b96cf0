#include "toolkit/controls/CMenuUI.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {
namespace {

using platform::Key;
using platform::Rect;

constexpr int kBorder = 1;
constexpr int kEnds = 4;       ///< free above the first and below the last row
constexpr int kLineHeight = 9; ///< of a row that is a line
constexpr int kIconLeft = 12;
constexpr int kIconSize = 16;
constexpr int kTextLeft = 38;
constexpr int kRight = 12;
constexpr int kKeyGap = 24; ///< least distance between text and key

int textWidth(const CPaintManagerUI& manager, const std::u16string& text, int font) {
    return text.empty() ? 0 : manager.fonts().measure(text, manager.look().GetFont(font)).width;
}

} // namespace

MenuStyle MenuStyle::of(const WindowLook& look) {
    using Text = std::u16string_view;
    static const AttributeTable<MenuStyle> attributes{
        {u"keytextcolor", [](MenuStyle& s, Text v) { assignIf(s.keyColor, parseSkinColor(v)); }},
        {u"linecolor", [](MenuStyle& s, Text v) { assignIf(s.lineColor, parseSkinColor(v)); }},
        {u"width", [](MenuStyle& s, Text v) { assignIf(s.width, parseInt(v)); }},
    };
    MenuStyle style;
    style.item.height = 26;
    for (const auto& [name, value] : look.GetDefaults(u"Menu")) {
        if (!attributes.apply(style, name, value)) {
            style.item.apply(name, value);
        }
    }
    return style;
}

CMenuUI::CMenuUI(const WindowLook& look, const std::vector<MenuEntry>& entries, Run run)
    : m_style(MenuStyle::of(look)), m_run(std::move(run)) {
    look.ApplyDefaults(*this);
    SetInset({kBorder, kEnds, kBorder, kEnds});
    SetAttribute(u"tabstop", u"false");
    for (const MenuEntry& entry : entries) {
        Add(std::make_unique<CMenuItemUI>(*this, entry));
    }
}

platform::Size CMenuUI::EstimateSize(Size available) const {
    Size size{m_style.width, 2 * kEnds};
    for (int row = 0; row < GetCount(); ++row) {
        const Size wanted = GetItemAt(row)->EstimateSize(available);
        size = {std::max(size.width, wanted.width + 2 * kBorder), size.height + wanted.height};
    }
    return size;
}

void CMenuUI::layoutChildren(const Rect& content) {
    int top = content.top;
    for (int row = 0; row < GetCount(); ++row) {
        CControlUI& item = *GetItemAt(row);
        const int height = item.EstimateSize(content.size()).height;
        item.SetPos({content.left, top, content.right, top + height});
        top += height;
    }
}

int CMenuUI::focusedRow() const {
    return GetManager() != nullptr ? GetItemIndex(GetManager()->GetFocus()) : -1;
}

CControlUI* CMenuUI::next(int from, int step) const {
    const int count = GetCount();
    for (int i = 1; i <= count; ++i) {
        CControlUI* item = GetItemAt(((from + step * i) % count + count) % count);
        if (item->CanTakeFocus()) {
            return item;
        }
    }
    return nullptr;
}

bool CMenuUI::useKey(Key key) {
    const int row = focusedRow();
    CControlUI* target = nullptr;
    switch (key) {
    case Key::up:
        target = next(row < 0 ? 0 : row, -1);
        break;
    case Key::down:
        target = next(row, 1);
        break;
    case Key::home:
        target = next(-1, 1);
        break;
    case Key::end:
        target = next(0, -1);
        break;
    case Key::enter:
    case Key::space:
        if (auto* item = controlCast<CMenuItemUI>(GetItemAt(row))) {
            item->run();
        }
        return true;
    default:
        return false;
    }
    if (target != nullptr) {
        GetManager()->focusKeeper().setKeyboardUse(true);
        GetManager()->SetFocus(target);
    }
    return true;
}

void CMenuUI::typed(const std::u16string& text) {
    const platform::WindowHost& windows = GetManager()->Gui().windows();
    const std::u16string wanted = windows.foldedCase(text);
    const int row = std::max(focusedRow(), -1);
    for (int i = 1; i <= GetCount() && !text.empty(); ++i) {
        CControlUI* item = GetItemAt((row + i) % GetCount());
        if (item->CanTakeFocus() &&
            windows.foldedCase(item->GetText().substr(0, text.size())) == wanted) {
            GetManager()->SetFocus(item);
            return;
        }
    }
}

bool CMenuUI::runAt(Point point) {
    auto* item = controlCast<CMenuItemUI>(controlAt(point, Meeting::mouse));
    if (item == nullptr || !item->CanTakeFocus()) {
        return false;
    }
    item->run();
    return true;
}

CMenuItemUI::CMenuItemUI(const CMenuUI& menu, MenuEntry entry)
    : m_menu(menu), m_entry(std::move(entry)) {
    SetText(m_entry.text);
    SetEnabled(m_entry.enabled);
    SetAttribute(u"tabstop", u"false");
}

platform::Size CMenuItemUI::EstimateSize(Size /*available*/) const {
    if (m_entry.text.empty() || GetManager() == nullptr) {
        return {0, kLineHeight};
    }
    const ItemStyle& style = m_menu.style().item;
    const int key = textWidth(*GetManager(), m_entry.key, style.font);
    return {kTextLeft + textWidth(*GetManager(), m_entry.text, style.font) +
                (key > 0 ? kKeyGap + key : 0) + kRight,
            style.height};
}

void CMenuItemUI::run() {
    const CPaintManagerUI::Busy busy(GetManager()); // the menu closes
    if (CanTakeFocus() && m_entry.run) {
        m_menu.run(m_entry.run);
    }
}

bool CMenuItemUI::DoEvent(const TEventUI& event) {
    switch (event.Type) {
    case EventType::mouseEnter:
    case EventType::mouseMove:
        if (CanTakeFocus() && !IsFocused()) {
            GetManager()->focusKeeper().setKeyboardUse(false);
            GetManager()->SetFocus(this);
        }
        return true;
    case EventType::buttonUp:
        if (GetPos().contains(event.native.position)) {
            run();
        }
        return true;
    case EventType::setFocus:
    case EventType::killFocus:
        Invalidate();
        return true;
    default:
        return CControlUI::DoEvent(event);
    }
}

void CMenuItemUI::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    const MenuStyle& style = m_menu.style();
    CPaintManagerUI& manager = *GetManager();
    Rect rect = GetPos();
    if (m_entry.text.empty()) {
        const int middle = rect.top + rect.height() / 2;
        canvas.fillRect({rect.left, middle, rect.right, middle + 1}, paletteColor(style.lineColor));
        return;
    }
    const ItemState state{IsEnabled(), false, IsFocused()};
    style.item.paintBackground(canvas, manager, rect, state);
    rect = {rect.left - kBorder, rect.top, rect.right - kRight + kBorder, rect.bottom};
    const IconStyle sign{this->sign(), u"muted", {kIconLeft, -1}, kIconSize};
    manager.look().icons().draw(canvas, rect, sign,
                                IsEnabled() ? IconState::normal : IconState::disabled);
    TextLook look;
    look.font = manager.look().GetFont(style.item.font);
    look.color = paletteColor(IsEnabled() ? style.keyColor : style.item.disabledTextColor);
    look.align = platform::TextAlign::right;
    paintTextLine(canvas, manager.fonts(), m_entry.key, rect, look);
    rect.left += kTextLeft;
    rect.right -=
        m_entry.key.empty() ? 0 : textWidth(manager, m_entry.key, style.item.font) + kKeyGap / 2;
    look.color = paletteColor(style.item.textColorFor(state));
    look.align = platform::TextAlign::left;
    paintTextLine(canvas, manager.fonts(), m_entry.text, rect, look);
}

std::u16string CMenuItemUI::sign() const {
    if (m_entry.checked) {
        return *m_entry.checked ? u"Check" : u"";
    }
    return m_entry.icon;
}

platform::AccessibleState CMenuItemUI::accessibleState() const {
    platform::AccessibleState state = CControlUI::accessibleState();
    state.checkable = m_entry.checked.has_value();
    state.checked = m_entry.checked.value_or(false);
    return state;
}

platform::AccessibleRole CMenuItemUI::accessibleRole() const {
    return m_entry.text.empty() ? platform::AccessibleRole::group
                                : platform::AccessibleRole::menuItem;
}

} // namespace toolkit
