// Wheel and keys of a list.
#include <algorithm>
#include <iterator>
#include <optional>

#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/controls/ListRows.h"
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
        return onKey(event.native);
    }
    return CContainerUI::DoEvent(event);
}

/// The row that is `pixels` above or below the current one, inside the list.
int CListUI::rowAtOffset(int pixels) const {
    if (!m_rows.contains(m_current) || !m_rows.isMeasured()) {
        return 0;
    }
    const int target = m_rows.top(m_current) + pixels;
    const int row = m_rows.rowAt(target);
    return pixels < 0 && m_rows.top(row) < target ? row + 1 : row;
}

/// The first row from `index` on, in direction `step`, that can be picked; the current one where
/// there is none.
int CListUI::enabledRow(int index, int step) const {
    for (; m_rows.contains(index); index += step) {
        const CControlUI* row = m_rows.made(index);
        if (canPick(index) && (row == nullptr || row->isShown())) {
            return index;
        }
    }
    return m_current;
}

bool CListUI::claimsKey(const platform::Event& event) const {
    using platform::Key;
    if (event.modifiers.control) {
        return m_isMulti && !event.modifiers.alt && !event.modifiers.shift &&
               (event.key == Key::a || event.key == Key::space);
    }
    const Key own[] = {Key::up, Key::down, Key::home, Key::end, Key::pageUp, Key::pageDown};
    return std::find(std::begin(own), std::end(own), event.key) != std::end(own);
}

/// Where a key leads from the current row; nothing for a key that leads nowhere.
std::optional<int> CListUI::keyTarget(platform::Key key) const {
    const int last = GetCount() - 1;
    switch (key) {
    case platform::Key::up:
        return enabledRow(m_current < 0 ? last : m_current - 1, -1);
    case platform::Key::down:
        return enabledRow(m_current + 1, 1);
    case platform::Key::home:
        return enabledRow(0, 1);
    case platform::Key::end:
        return enabledRow(last, -1);
    case platform::Key::pageUp:
        return enabledRow(rowAtOffset(-m_rowsRect.height()), 1);
    case platform::Key::pageDown:
        return enabledRow(rowAtOffset(m_rowsRect.height()), -1);
    default:
        return std::nullopt;
    }
}

bool CListUI::onControlKey(const platform::Event& key) {
    if (!claimsKey(key)) {
        return false;
    }
    if (key.key == platform::Key::a) {
        selectAll();
    } else if (!key.repeat) {
        pickMore(m_current, key.modifiers, true);
    }
    return true;
}

bool CListUI::onKey(const platform::Event& key) {
    if (key.modifiers.alt || GetCount() == 0) {
        return false;
    }
    if (key.modifiers.control) {
        return onControlKey(key);
    }
    if (key.key == platform::Key::enter) {
        if (!key.repeat) {
            activate();
        }
        return true;
    }
    const std::optional<int> target = keyTarget(key.key);
    if (!target) {
        return false;
    }
    const bool isOneOfMany = m_isMulti && selectedRows().size() > 1;
    if (!pickMore(*target, key.modifiers, true) && (*target != m_current || isOneOfMany)) {
        pick(*target, true);
    }
    return true;
}

} // namespace toolkit
