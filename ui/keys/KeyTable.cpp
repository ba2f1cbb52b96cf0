#include "ui/keys/KeyTable.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>

#include "platform/Geometry.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/SkinColor.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/commands/Command.h"

namespace ui {

using platform::Key;
using toolkit::EventType;

namespace {

constexpr int kColumnWidth = 308;
constexpr int kColumnPitch = 316;
constexpr int kTextInset = 6;
constexpr int kTextLeft =
    130; ///< of a row, where its column has neither longer keys nor long texts
constexpr int kLeastTextLeft = 110;
constexpr int kHeadingHeight = 24;
constexpr int kLineTop = 26;
constexpr int kRowsTop = 32;
constexpr int kRowHeight = 22;
constexpr int kGroupGap = 10;

int columnOf(const KeyRow& row) {
    return row.GetPlace()->left / kColumnPitch;
}

} // namespace

KeyTable::KeyTable() : m_scrollBar(std::make_unique<toolkit::CScrollBarUI>()) {
    m_scrollBar->setOnScroll([this] { NeedUpdate(); });
}

void KeyTable::RemoveAll() {
    m_rows.clear();
    m_tops = {};
    m_chosen = nullptr;
    CContainerUI::RemoveAll();
}

void KeyTable::show(const std::vector<KeyGroup>& groups) {
    const toolkit::CPaintManagerUI::Busy busy(GetManager());
    const KeyLine before = m_chosen != nullptr ? m_chosen->line() : KeyLine{};
    RemoveAll();
    for (const KeyGroup& group : groups) {
        addGroup(group);
    }
    std::stable_sort(m_rows.begin(), m_rows.end(), [](const KeyRow* left, const KeyRow* right) {
        return columnOf(*left) < columnOf(*right);
    });
    alignTexts();
    for (KeyRow* row : m_rows) {
        const KeyLine& line = row->line();
        const bool isSame = line.command != nullptr && line.command == before.command;
        if (isSame && (m_chosen == nullptr || line.number == before.number)) {
            choose(row);
        }
    }
}

void KeyTable::alignTexts() {
    std::array<int, 3> lefts{};
    std::array<int, 3> lasts{};
    lefts.fill(kTextLeft);
    lasts.fill(kColumnWidth);
    for (const KeyRow* row : m_rows) {
        const auto column = static_cast<std::size_t>(columnOf(*row));
        lefts[column] = std::max(lefts[column], row->keysWidth());
        lasts[column] = std::min(lasts[column], row->lastTextLeft());
    }
    for (KeyRow* row : m_rows) {
        const auto column = static_cast<std::size_t>(columnOf(*row));
        row->setTextLeft(std::max(kLeastTextLeft, std::min(lefts[column], lasts[column])));
    }
}

void KeyTable::addGroup(const KeyGroup& group) {
    const int column = group.column;
    const int left = column * kColumnPitch;
    int& top = m_tops[static_cast<std::size_t>(column)];
    auto heading = std::make_unique<toolkit::CLabelUI>();
    heading->SetText(group.name);
    GetManager()->look().ApplyDefaults(*heading);
    heading->SetFont(m_headingFont);
    const int width = kColumnWidth - 2 * kTextInset;
    heading->SetPlace(Rect::at(left + kTextInset, top, width, kHeadingHeight));
    Add(std::move(heading));
    auto rule = std::make_unique<CControlUI>();
    rule->SetAttribute(u"bkcolor", m_ruleColor);
    rule->SetPlace(Rect::at(left + kTextInset, top + kLineTop, width, 1));
    Add(std::move(rule));
    top += kRowsTop;
    for (const KeyLine& line : group.lines) {
        auto row = std::make_unique<KeyRow>(*this, line);
        row->SetPlace(Rect::at(left, top, kColumnWidth, kRowHeight));
        m_rows.push_back(row.get());
        Add(std::move(row));
        top += kRowHeight;
    }
    top += kGroupGap;
}

void KeyTable::layoutChildren(const Rect& content) {
    toolkit::ScrollModel& scroll = m_scrollBar->model();
    scroll.setExtent(*std::max_element(m_tops.begin(), m_tops.end()) - kGroupGap, content.height());
    if (m_chosen != nullptr && m_reveals) {
        const Rect place = *m_chosen->GetPlace();
        const bool isFirst = place.top <= kRowsTop; // its heading is worth seeing too
        scroll.reveal(isFirst ? 0 : place.top, place.bottom);
    }
    m_reveals = false;
    for (const std::unique_ptr<CControlUI>& child : items()) {
        child->SetPos(child->GetPlace().value_or(Rect{}).translated(content.left,
                                                                    content.top - scroll.offset()));
    }
    m_scrollBar->SetPos(scroll.isNeeded() ? Rect{content.right - m_scrollBar->width(), content.top,
                                                 content.right, content.bottom}
                                          : Rect{});
}

void KeyTable::choose(KeyRow* row) {
    if (m_chosen != nullptr && m_chosen != row) {
        m_chosen->setWaiting(false);
        m_chosen->setSelected(false);
    }
    m_chosen = row;
    if (row != nullptr) {
        row->setSelected(true);
        m_reveals = true;
        NeedUpdate();
    }
}

void KeyTable::pick(KeyRow& row, bool activates) {
    const toolkit::CPaintManagerUI::Busy busy(GetManager());
    choose(&row);
    if (notify(toolkit::kItemSelect) && activates && m_chosen == &row) {
        notify(toolkit::kItemActivate);
    }
}

void KeyTable::setWaiting(bool waiting) {
    if (m_chosen != nullptr && m_chosen->isWaiting() != waiting) {
        m_chosen->setWaiting(waiting);
        if (waiting && GetManager() != nullptr) {
            GetManager()->SetFocus(this);
        }
    }
}

bool KeyTable::SetAttribute(std::u16string_view name, std::u16string_view value) {
    using Text = std::u16string_view;
    using toolkit::assignIf;
    using toolkit::parseSkinColor;
    static const toolkit::AttributeTable<KeyTable> attributes{
        {u"font", [](KeyTable& t, Text v) { assignIf(t.m_style.font, toolkit::parseInt(v)); }},
        {u"headingfont",
         [](KeyTable& t, Text v) { assignIf(t.m_headingFont, toolkit::parseInt(v)); }},
        {u"textcolor",
         [](KeyTable& t, Text v) { assignIf(t.m_style.textColor, parseSkinColor(v)); }},
        {u"hintcolor",
         [](KeyTable& t, Text v) { assignIf(t.m_style.hintColor, parseSkinColor(v)); }},
        {u"refusedcolor",
         [](KeyTable& t, Text v) { assignIf(t.m_style.refusedColor, parseSkinColor(v)); }},
        {u"rulecolor", [](KeyTable& t, Text v) { t.m_ruleColor = v; }},
        {u"capcolor", [](KeyTable& t, Text v) { assignIf(t.m_style.capColor, parseSkinColor(v)); }},
        {u"capedgecolor",
         [](KeyTable& t, Text v) { assignIf(t.m_style.capEdgeColor, parseSkinColor(v)); }},
        {u"chosenedgecolor",
         [](KeyTable& t, Text v) { assignIf(t.m_style.chosenEdgeColor, parseSkinColor(v)); }},
    };
    return attributes.apply(*this, name, value) || m_style.item.apply(name, value) ||
           CContainerUI::SetAttribute(name, value);
}

bool KeyTable::DoEvent(const toolkit::TEventUI& event) {
    switch (event.Type) {
    case EventType::wheel:
        if (m_scrollBar->model().turnWheel(event.native.wheelDelta, kRowHeight)) {
            NeedUpdate();
        }
        return true;
    case EventType::keyDown:
        return onKey(event.native);
    case EventType::textInput:
        if (isWaiting() && m_isOther && m_onKey) {
            m_onKey({});
        }
        return isWaiting();
    case EventType::killFocus:
        setWaiting(false);
        return true;
    default:
        return CContainerUI::DoEvent(event);
    }
}

bool KeyTable::claimsKey(const platform::Event& event) const {
    return isWaiting() || (!event.modifiers.control && !event.modifiers.alt &&
                           event.key >= Key::left && event.key <= Key::pageDown);
}

bool KeyTable::onKey(const platform::Event& event) {
    if (isWaiting()) {
        m_isOther = event.key == Key::other;
        if (!m_isOther && !event.repeat && m_onKey) {
            m_onKey(chordOf(event.key, event.modifiers));
        }
        return true;
    }
    if (event.modifiers.control || event.modifiers.alt) {
        return false;
    }
    if (event.key == Key::enter && m_chosen != nullptr && !event.repeat) {
        notify(toolkit::kItemActivate);
        return true;
    }
    if (KeyRow* row = target(event.key)) {
        pick(*row, false);
        return true;
    }
    return claimsKey(event);
}

KeyRow* KeyTable::target(Key key) const {
    if (m_rows.empty()) {
        return nullptr;
    }
    const auto at = std::find(m_rows.begin(), m_rows.end(), m_chosen);
    switch (key) {
    case Key::home:
        return m_rows.front();
    case Key::end:
        return m_rows.back();
    case Key::up:
        return at == m_rows.begin() || at == m_rows.end() ? m_rows.front() : *std::prev(at);
    case Key::down:
        return at == m_rows.end() ? m_rows.front() : at + 1 == m_rows.end() ? *at : *(at + 1);
    case Key::left:
        return beside(-1);
    case Key::right:
        return beside(1);
    case Key::pageUp:
        return below(-contentRect().height());
    case Key::pageDown:
        return below(contentRect().height());
    default:
        return nullptr;
    }
}

KeyRow* KeyTable::beside(int columns) const {
    KeyRow* nearest = nullptr;
    const auto distance = [this](const KeyRow& row) {
        return std::abs(row.GetPlace()->top - m_chosen->GetPlace()->top);
    };
    for (KeyRow* row : m_rows) {
        if (m_chosen != nullptr && columnOf(*row) == columnOf(*m_chosen) + columns &&
            (nearest == nullptr || distance(*row) < distance(*nearest))) {
            nearest = row;
        }
    }
    return m_chosen != nullptr ? nearest : m_rows.front();
}

KeyRow* KeyTable::below(int pixels) const {
    KeyRow* last = nullptr;
    for (KeyRow* row : m_rows) {
        if (m_chosen == nullptr || columnOf(*row) != columnOf(*m_chosen)) {
            continue;
        }
        const int target = m_chosen->GetPlace()->top + pixels;
        const bool isBeyond = pixels > 0 ? row->GetPlace()->top > target && last != nullptr
                                         : last != nullptr && last->GetPlace()->top >= target;
        if (!isBeyond) {
            last = row;
        }
    }
    return m_chosen != nullptr ? last : m_rows.front();
}

toolkit::CControlUI* KeyTable::childAt(int index) const {
    return index == CContainerUI::childCount() ? m_scrollBar.get() : CContainerUI::childAt(index);
}

toolkit::CControlUI* KeyTable::controlAt(Point point, toolkit::Meeting kind) {
    CControlUI* bar = isShown() ? m_scrollBar->controlAt(point, kind) : nullptr;
    return bar != nullptr ? bar : CContainerUI::controlAt(point, kind);
}

void KeyTable::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    CContainerUI::DoPaint(canvas, dirty);
    const platform::ClipScope scope(canvas, GetPos());
    paintChild(canvas, dirty, *m_scrollBar);
}

platform::AccessibleRole KeyTable::accessibleRole() const {
    return platform::AccessibleRole::list;
}

} // namespace ui
