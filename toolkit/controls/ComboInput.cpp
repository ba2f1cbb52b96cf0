// Mouse and keys of a combo, closed and open.
#include <algorithm>
#include <string>

#include "platform/Event.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/DropListWindow.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

using platform::Key;

bool CComboUI::DoEvent(const TEventUI& event) {
    switch (event.Type) {
    case EventType::keyDown:
        return IsDropped() ? onDroppedKey(event) : onKey(event);
    case EventType::textInput:
        return onText(event);
    case EventType::killFocus:
        CloseDrop();
        Invalidate();
        return true;
    case EventType::keyUp:
    case EventType::wheel: // a closed combo never changes by it
        return CControlUI::DoEvent(event);
    default:
        return onMouse(event) || CControlUI::DoEvent(event);
    }
}

bool CComboUI::onMouse(const TEventUI& event) {
    switch (event.Type) {
    case EventType::buttonDown:
    case EventType::doubleClick:
        dropOrClose();
        return true;
    case EventType::mouseEnter:
    case EventType::mouseLeave:
        m_hot = event.Type == EventType::mouseEnter;
        Invalidate();
        return true;
    default:
        return false;
    }
}

/// The next item from `from` in direction `step` that can be picked; `otherwise` when none.
int CComboUI::nextEnabled(int from, int step, int otherwise) const {
    for (int i = from + step; i >= 0 && i < GetCount(); i += step) {
        if (IsItemEnabled(i)) {
            return i;
        }
    }
    return otherwise;
}

bool CComboUI::claimsKey(const platform::Event& event) const {
    const Key key = event.key;
    const bool types = key == Key::other || key == Key::space || key >= Key::digit0;
    const bool picks = key == Key::up || key == Key::down || key == Key::home || key == Key::end;
    return !event.modifiers.control && (types || picks || key == Key::f4);
}

bool CComboUI::onKey(const TEventUI& event) {
    const platform::Modifiers& modifiers = event.native.modifiers;
    const Key key = event.native.key;
    if (modifiers.control) {
        return false;
    }
    if (modifiers.alt) {
        return (key == Key::down || key == Key::up) && Drop();
    }
    int target = m_current;
    switch (key) {
    case Key::space:
    case Key::f4:
        Drop();
        return true;
    case Key::up:
        target = nextEnabled(m_current < 0 ? GetCount() : m_current, -1, m_current);
        break;
    case Key::down:
        target = nextEnabled(m_current, 1, m_current);
        break;
    case Key::home:
        target = nextEnabled(-1, 1, m_current);
        break;
    case Key::end:
        target = nextEnabled(GetCount(), -1, m_current);
        break;
    default:
        return false;
    }
    if (target != m_current) {
        pick(target);
    }
    return true;
}

bool CComboUI::onDroppedKey(const TEventUI& event) {
    const platform::Modifiers& modifiers = event.native.modifiers;
    const int highlighted = DropListWindow::of(*GetManager()).highlighted();
    switch (event.native.key) {
    case Key::escape:
        CloseDrop();
        break;
    case Key::f4:
        CloseDrop();
        return !modifiers.alt; // with Alt it asks the window to close
    case Key::enter:
        CloseDrop();
        pick(highlighted);
        break;
    case Key::tab:
        CloseDrop();
        GetManager()->focusKeeper().setKeyboardUse(true);
        GetManager()->focusKeeper().move(modifiers.shift);
        break;
    case Key::up:
    case Key::down:
        if (modifiers.alt) {
            CloseDrop();
            break;
        }
        [[fallthrough]];
    default:
        moveHighlight(event.native.key);
    }
    return true; // all other keys belong to the open list
}

void CComboUI::moveHighlight(Key key) {
    DropListWindow& list = DropListWindow::of(*GetManager());
    const int current = list.highlighted();
    switch (key) {
    case Key::up:
        list.highlight(nextEnabled(current < 0 ? GetCount() : current, -1, current));
        break;
    case Key::down:
        list.highlight(nextEnabled(current, 1, current));
        break;
    case Key::home:
        list.highlight(nextEnabled(-1, 1, current));
        break;
    case Key::end:
        list.highlight(nextEnabled(GetCount(), -1, current));
        break;
    case Key::pageUp:
        list.highlight(nextEnabled(std::max(current - list.pageRows(), 0) - 1, 1, current));
        break;
    case Key::pageDown:
        list.highlight(
            nextEnabled(std::min(current + list.pageRows(), GetCount() - 1) + 1, -1, current));
        break;
    default:
        break;
    }
}

/// A typed letter selects the next item that begins with it, starting over at the end.
bool CComboUI::onText(const TEventUI& event) {
    const std::u16string& typed = event.native.text;
    if (typed.empty() || typed.front() == u' ' || GetCount() == 0) {
        return !typed.empty();
    }
    const bool dropped = IsDropped();
    const platform::WindowHost& windows = GetManager()->Gui().windows();
    const std::u16string wanted = windows.foldedCase(typed);
    const int from = dropped ? DropListWindow::of(*GetManager()).highlighted() : m_current;
    for (int step = 1; step <= GetCount(); ++step) {
        const int index = (std::max(from, -1) + step) % GetCount();
        const std::u16string head = GetItemText(index).substr(0, typed.size());
        if (IsItemEnabled(index) && windows.foldedCase(head) == wanted) {
            if (dropped) {
                DropListWindow::of(*GetManager()).highlight(index);
            } else if (index != m_current) {
                pick(index);
            }
            return true;
        }
    }
    return true;
}

} // namespace toolkit
