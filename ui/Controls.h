// The controls of a window by name, for the parts of a window that fill them. A control that the
// layout does not have is passed over. UI thread only.
#pragma once

#include <string_view>

#include "toolkit/window/CPaintManagerUI.h"

namespace ui {

class Controls {
public:
    /// The manager outlives this.
    explicit Controls(toolkit::CPaintManagerUI& manager) : m_manager(manager) {}

    /// Null when there is none. Not owned.
    [[nodiscard]] toolkit::CControlUI* find(std::u16string_view name) const {
        return m_manager.FindControl(name);
    }
    /// Null as well when it is of another kind.
    template <class T>
    [[nodiscard]] T* find(std::u16string_view name) const {
        return toolkit::FindControl<T>(m_manager, name);
    }
    [[nodiscard]] bool hasFocus(std::u16string_view name) const {
        const toolkit::CControlUI* focus = m_manager.GetFocus();
        return focus != nullptr && focus->GetName() == name;
    }
    [[nodiscard]] toolkit::CPaintManagerUI& manager() const { return m_manager; }

    void setText(std::u16string_view name, std::u16string_view text) const {
        if (toolkit::CControlUI* control = find(name)) {
            control->SetText(text);
        }
    }
    void setEnabled(std::u16string_view name, bool enabled) const {
        if (toolkit::CControlUI* control = find(name)) {
            control->SetEnabled(enabled);
        }
    }
    void setVisible(std::u16string_view name, bool visible) const {
        if (toolkit::CControlUI* control = find(name)) {
            control->SetVisible(visible);
        }
    }

private:
    toolkit::CPaintManagerUI& m_manager;
};

} // namespace ui
