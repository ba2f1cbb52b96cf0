#include "toolkit/controls/COptionUI.h"

#include <cstddef>
#include <vector>

#include "platform/Event.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"

namespace toolkit {

struct COptionUI::Attributes {
    static const AttributeTable<COptionUI>& table();
};

const AttributeTable<COptionUI>& COptionUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<COptionUI> attributes{
        {u"group", [](COptionUI& c, Text v) { c.SetGroup(v); }},
        {u"selected", [](COptionUI& c, Text v) { setIf(c, &COptionUI::Selected, parseBool(v)); }},
        {u"selectedimage", [](COptionUI& c, Text v) { c.m_selectedImage = v; }},
        {u"selectedhotimage", [](COptionUI& c, Text v) { c.m_selectedHotImage = v; }},
        {u"selectedpushedimage", [](COptionUI& c, Text v) { c.m_selectedPushedImage = v; }},
        {u"selecteddisabledimage", [](COptionUI& c, Text v) { c.m_selectedDisabledImage = v; }},
        {u"selectedtextcolor",
         [](COptionUI& c, Text v) { assignIf(c.m_selectedTextColor, parseSkinColor(v)); }},
    };
    return attributes;
}

namespace {

void collectGroup(CControlUI& from, std::u16string_view group, std::vector<COptionUI*>& options) {
    auto* option = controlCast<COptionUI>(&from);
    if (option != nullptr && option->GetGroup() == group) {
        options.push_back(option);
    }
    for (int i = 0; i < from.childCount(); ++i) {
        collectGroup(*from.childAt(i), group, options);
    }
}

/// The options of `option`'s group in its window, in layout order.
std::vector<COptionUI*> groupOf(const COptionUI& option) {
    std::vector<COptionUI*> options;
    const CPaintManagerUI* manager = option.GetManager();
    if (manager != nullptr && manager->GetRoot() != nullptr && !option.GetGroup().empty()) {
        collectGroup(*manager->GetRoot(), option.GetGroup(), options);
    }
    return options;
}

} // namespace

void* COptionUI::GetInterface(std::u16string_view name) {
    return name == u"Option" ? this : CButtonUI::GetInterface(name);
}

void COptionUI::clearOthers() {
    for (COptionUI* other : groupOf(*this)) {
        if (other != this && other->m_selected) {
            other->m_selected = false;
            other->Invalidate();
            other->accessibleChanged(platform::AccessibleChange::state);
        }
    }
}

void COptionUI::Selected(bool selected) {
    if (m_selected != selected) {
        m_selected = selected;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::state);
    }
    if (selected) {
        clearOthers();
    }
}

void COptionUI::attach(CPaintManagerUI* manager, CControlUI* parent) {
    CButtonUI::attach(manager, parent);
    if (manager != nullptr && m_selected) {
        clearOthers();
    }
}

bool COptionUI::Activate() {
    const CPaintManagerUI::Busy busy(GetManager());
    if (!takesPress()) {
        return false;
    }
    const bool changes = m_group.empty() || !m_selected;
    if (changes) {
        Selected(!m_selected);
        if (!notify(kSelectChanged)) {
            return true; // the handler removed this option
        }
    }
    notify(kClick);
    return true;
}

/// The arrows choose the next option of the group, as a click on it would.
bool COptionUI::moveInGroup(bool backward) {
    const std::vector<COptionUI*> options = groupOf(*this);
    const int count = static_cast<int>(options.size());
    int self = 0;
    while (self < count && options[static_cast<std::size_t>(self)] != this) {
        ++self;
    }
    for (int step = 1; step < count; ++step) {
        const int index = (self + (backward ? count - step : step)) % count;
        COptionUI* next = options[static_cast<std::size_t>(index)];
        if (next->CanTakeFocus()) {
            GetManager()->SetFocus(next);
            next->Activate();
            return true;
        }
    }
    return false;
}

bool COptionUI::DoEvent(const TEventUI& event) {
    const platform::Modifiers& modifiers = event.native.modifiers;
    if (event.Type == EventType::keyDown && !m_group.empty() && !modifiers.control &&
        !modifiers.alt) {
        switch (event.native.key) {
        case platform::Key::left:
        case platform::Key::up:
            return moveInGroup(true);
        case platform::Key::right:
        case platform::Key::down:
            return moveInGroup(false);
        default:
            break;
        }
    }
    return CButtonUI::DoEvent(event);
}

bool COptionUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value)) {
        return CButtonUI::SetAttribute(name, value);
    }
    Invalidate();
    return true;
}

void COptionUI::paintStatus(platform::Canvas& canvas) {
    if (!m_selected) {
        CButtonUI::paintStatus(canvas);
        return;
    }
    if (!IsEnabled()) {
        if (!drawImage(canvas, m_selectedDisabledImage)) {
            CButtonUI::paintStatus(canvas);
        }
        return;
    }
    if ((isPushed() && drawImage(canvas, m_selectedPushedImage)) ||
        ((isPushed() || isHot()) && drawImage(canvas, m_selectedHotImage)) ||
        drawImage(canvas, m_selectedImage)) {
        return;
    }
    CButtonUI::paintStatus(canvas);
}

SkinColor COptionUI::currentTextColor() const {
    return m_selected && m_selectedTextColor.isSet() && IsEnabled() ? m_selectedTextColor
                                                                    : CButtonUI::currentTextColor();
}

IconState COptionUI::iconState() const {
    return m_selected && IsEnabled() ? IconState::chosen : CButtonUI::iconState();
}

platform::AccessibleRole COptionUI::accessibleRole() const {
    return m_group.empty() ? platform::AccessibleRole::checkBox
                           : platform::AccessibleRole::radioButton;
}

platform::AccessibleState COptionUI::accessibleState() const {
    platform::AccessibleState state = CButtonUI::accessibleState();
    state.checkable = true;
    state.checked = m_selected;
    return state;
}

} // namespace toolkit
