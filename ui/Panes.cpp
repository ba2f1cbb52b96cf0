#include "ui/Panes.h"

#include <cstddef>

#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace ui {

namespace {

using toolkit::CControlUI;

/// Looks through a tree in layout order up to `end`; `found` is the last part begun until then.
bool findPart(CControlUI& tree, const CControlUI* end, std::span<const std::u16string_view> parts,
              int& found) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (tree.GetName() == parts[i]) {
            found = static_cast<int>(i);
        }
    }
    bool isReached = &tree == end;
    for (int i = 0; i < tree.childCount() && !isReached; ++i) {
        isReached = findPart(*tree.childAt(i), end, parts, found);
    }
    return isReached;
}

} // namespace

int Panes::current(std::span<const std::u16string_view> parts) const {
    int found = -1;
    const CControlUI* focus = m_manager.GetFocus();
    if (focus != nullptr && m_manager.GetRoot() != nullptr) {
        findPart(*m_manager.GetRoot(), focus, parts, found);
    }
    return found;
}

bool Panes::enter(std::u16string_view part) {
    CControlUI* first = m_manager.FindControl(part);
    const Place last = m_last[part];
    if (!last.life.expired() && last.control->GetManager() == &m_manager &&
        last.control->CanTakeFocus()) {
        m_manager.SetFocus(last.control);
        return true;
    }
    return first != nullptr && m_manager.focusKeeper().enter(*first);
}

void Panes::go(std::span<const std::u16string_view> parts, bool backward) {
    const int count = static_cast<int>(parts.size());
    const int from = current(parts);
    if (from >= 0) {
        CControlUI* focus = m_manager.GetFocus();
        m_last[parts[static_cast<std::size_t>(from)]] = {focus, focus->accessibleLife()};
    }
    for (int step = 1; step <= count; ++step) {
        const int next = backward ? (from < 0 ? 0 : from) - step : from + step;
        const int part = (next % count + count) % count;
        if (part != from && enter(parts[static_cast<std::size_t>(part)])) {
            return;
        }
    }
}

} // namespace ui
