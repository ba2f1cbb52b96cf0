// Moves the keyboard between the parts of a window. A part begins with a named control and goes on
// to the next part in layout order; back in it, the control that had the keyboard there has it
// again. UI thread only.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string_view>

namespace toolkit {
class CControlUI;
class CPaintManagerUI;
} // namespace toolkit

namespace ui {

class Panes {
public:
    /// The manager outlives this.
    explicit Panes(toolkit::CPaintManagerUI& manager) : m_manager(manager) {}

    /// To the next of the parts, or the one before, that can take the keyboard; round at the ends.
    /// `parts`: the controls that they begin with, in layout order; constants.
    void go(std::span<const std::u16string_view> parts, bool backward);

private:
    struct Place {
        toolkit::CControlUI* control = nullptr;
        std::weak_ptr<const void> life;
    };

    /// The part that the focus is in, -1 for none.
    [[nodiscard]] int current(std::span<const std::u16string_view> parts) const;
    bool enter(std::u16string_view part);

    toolkit::CPaintManagerUI& m_manager;
    std::map<std::u16string_view, Place> m_last; ///< by the part that it was in
};

} // namespace ui
