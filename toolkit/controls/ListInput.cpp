// Wheel and keys of a list.
#include <algorithm>
#include <iterator>

#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/input/TEventUI.h"

namespace toolkit {

bool CListUI::DoEvent(const TEventUI& event) {
    if (event.Type == EventType::wheel && m_scrollBar->model().isNeeded()) {
        if (m_scrollBar->model().turnWheel(event.native.wheelDelta, m_itemStyle.height)) {
            NeedUpdate();
        }
        return true;
    }
    if (event.Type == EventType::keyDown) {
        return onKey(event);
    }
    return CContainerUI::DoEvent(event);
}

/// The row that is `pixels` above or below the selected one, inside the list.
int CListUI::rowAtOffset(int pixels) const {
    const CControlUI* current = GetItemAt(m_current);
    if (current == nullptr) {
        return 0;
    }
    int index = m_current;
    const int target = current->GetPos().top + pixels;
    const int step = pixels < 0 ? -1 : 1;
    while (GetItemAt(index + step) != nullptr &&
           (pixels < 0 ? GetItemAt(index + step)->GetPos().top >= target
                       : GetItemAt(index + step)->GetPos().top <= target)) {
        index += step;
    }
    return index;
}

/// The first row from `index` on, in direction `step`, that can be picked; the selected one where
/// there is none.
int CListUI::enabledRow(int index, int step) const {
    for (; GetItemAt(index) != nullptr; index += step) {
        if (GetItemAt(index)->IsEnabled() && GetItemAt(index)->isShown()) {
            return index;
        }
    }
    return m_current;
}

bool CListUI::claimsKey(const platform::Event& event) const {
    using platform::Key;
    const Key own[] = {Key::up, Key::down, Key::home, Key::end, Key::pageUp, Key::pageDown};
    return !event.modifiers.control &&
           std::find(std::begin(own), std::end(own), event.key) != std::end(own);
}

bool CListUI::onKey(const TEventUI& event) {
    if (event.native.modifiers.control || event.native.modifiers.alt || GetCount() == 0) {
        return false;
    }
    const int last = GetCount() - 1;
    if (event.native.key == platform::Key::enter) {
        if (!event.native.repeat) {
            activate();
        }
        return true;
    }
    int target = -1;
    switch (event.native.key) {
    case platform::Key::up:
        target = enabledRow(m_current < 0 ? last : m_current - 1, -1);
        break;
    case platform::Key::down:
        target = enabledRow(m_current + 1, 1);
        break;
    case platform::Key::home:
        target = enabledRow(0, 1);
        break;
    case platform::Key::end:
        target = enabledRow(last, -1);
        break;
    case platform::Key::pageUp:
        target = enabledRow(rowAtOffset(-m_rowsRect.height()), 1);
        break;
    case platform::Key::pageDown:
        target = enabledRow(rowAtOffset(m_rowsRect.height()), -1);
        break;
    default:
        return false;
    }
    if (target != m_current) {
        pick(target, true);
    }
    return true;
}

} // namespace toolkit
