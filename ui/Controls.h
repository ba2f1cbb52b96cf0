// The controls of a window by name, for the parts of a window that fill them. A control that the
// layout does not have is passed over. UI thread only.
#pragma once

#include <string_view>

#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CEditUI.h"
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

    void setFocus(std::u16string_view name) const { m_manager.SetFocus(find(name)); }
    /// Puts the cursor into a text field with its whole text selected.
    void startTyping(std::u16string_view field) const {
        if (auto* edit = find<toolkit::CEditUI>(field)) {
            m_manager.SetFocus(edit);
            edit->SetSel(0, static_cast<int>(edit->GetText().size()));
        }
    }
    /// Whether the author can use it now.
    [[nodiscard]] bool isUsable(std::u16string_view name) const {
        const toolkit::CControlUI* control = find(name);
        return control != nullptr && control->IsEnabled() && control->IsVisible();
    }
    /// Shows `text` in the layout's label for problems in place of the label `usual` (which may
    /// stand elsewhere); an empty text brings that back. False when the layout has no such label.
    bool showProblem(std::u16string_view text, std::u16string_view usual) const {
        toolkit::CControlUI* problem = find(u"LabelProblem");
        if (problem == nullptr) {
            return false;
        }
        problem->SetText(text);
        problem->SetVisible(!text.empty());
        if (!usual.empty()) {
            setVisible(usual, text.empty());
        }
        return true;
    }

private:
    toolkit::CPaintManagerUI& m_manager;
};

} // namespace ui
