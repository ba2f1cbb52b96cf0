// What a screen reader may do with a node: focus, select, press, write.
#include <string_view>

#include "platform/AccessibleTree.h"
#include "platform/Guard.h"
#include "platform/win32/AccessibleNode.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

bool AccessibleNode::takesInput() const {
    const Win32Window* window = Win32Window::fromHandle(m_window);
    return window != nullptr && window->takesInput();
}

HRESULT AccessibleNode::accSelect(long flags, VARIANT child) {
    Accessible* meant = target(child);
    if (meant == nullptr || !meant->accessibleState().enabled) {
        return E_INVALIDARG;
    }
    if (!takesInput()) {
        return E_ACCESSDENIED;
    }
    if ((flags & SELFLAG_TAKEFOCUS) != 0 && meant->accessibleState().focusable) {
        guardedRun("accessible focus", [&] { meant->accessibleFocus(); });
        return S_OK;
    }
    const long one = flags & (SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION);
    if (one != 0 && meant->accessibleState().selectable) {
        guardedRun("accessible selection",
                   [&] { meant->accessibleSelect((one & SELFLAG_ADDSELECTION) != 0); });
        return S_OK;
    }
    if ((flags & SELFLAG_TAKESELECTION) != 0 && meant->accessibleState().selectable) {
        guardedRun("accessible selection", [&] { meant->accessiblePress(); });
        return S_OK;
    }
    return S_FALSE;
}

// Done after the call has returned: the caller waits for it, and a press may open a dialog and
// return only when that is closed.
HRESULT AccessibleNode::accDoDefaultAction(VARIANT child) {
    Accessible* meant = target(child);
    if (meant == nullptr || !meant->accessibleState().enabled ||
        !isPressable(meant->accessibleRole())) {
        return DISP_E_MEMBERNOTFOUND;
    }
    PostMessageW(m_window, Win32Window::kPressMessage, 0, numberOf(*meant));
    return S_OK;
}

HRESULT AccessibleNode::put_accName(VARIANT, BSTR) {
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleNode::put_accValue(VARIANT child, BSTR value) {
    Accessible* meant = target(child);
    const bool writable = meant != nullptr && meant->accessibleRole() == AccessibleRole::edit &&
                          !meant->accessibleState().readOnly && meant->accessibleState().enabled;
    if (!writable) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (!takesInput()) {
        return E_ACCESSDENIED;
    }
    const std::wstring_view text(value != nullptr ? value : L"", SysStringLen(value));
    guardedRun("accessible text", [&] { meant->accessibleSetValue(fromWide(text)); });
    return S_OK;
}

} // namespace platform::win32
