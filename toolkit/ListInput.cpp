// Wheel and keys of a list.
#include <algorithm>

#include "toolkit/CListUI.h"

namespace toolkit {
namespace {

constexpr int kWheelNotch = 120;
constexpr int kRowsPerNotch = 3;

} // namespace

void CListUI::scrollBy(int pixels) {
    ScrollModel& scroll = m_scrollBar->model();
    if (scroll.setOffset(scroll.offset() + pixels)) {
        NeedUpdate();
    }
}

bool CListUI::DoEvent(const TEventUI& event) {
    if (event.Type == EventType::wheel && m_scrollBar->model().isNeeded()) {
        scrollBy(-event.native.wheelDelta * kRowsPerNotch * m_itemStyle.height / kWheelNotch);
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

bool CListUI::onKey(const TEventUI& event) {
    if (event.native.modifiers.control || event.native.modifiers.alt || GetCount() == 0) {
        return false;
    }
    const int last = GetCount() - 1;
    int target = -1;
    switch (event.native.key) {
    case platform::Key::up:
        target = m_current < 0 ? last : std::max(m_current - 1, 0);
        break;
    case platform::Key::down:
        target = std::min(m_current + 1, last);
        break;
    case platform::Key::home:
        target = 0;
        break;
    case platform::Key::end:
        target = last;
        break;
    case platform::Key::pageUp:
        target = rowAtOffset(-m_rowsRect.height());
        break;
    case platform::Key::pageDown:
        target = rowAtOffset(m_rowsRect.height());
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
