// Operates a real window like a user: finds its controls by name, sends mouse and key events to
// their positions, and reads pixels back. Everything goes through the window system.
//
//   WindowDriver driver(window);                 // the window was created
//   driver.show();
//   driver.click(u"ButtonAddBranch");
//   driver.pick(u"ComboVideoName", 1);
//   driver.clickThen(u"ButtonExit", [] { WindowDriver(topWindow()).click(u"ButtonNo"); });
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/gui/TestGui.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/window/WindowImplBase.h"

namespace test {

/// The window that opened last and is still open. Throws std::runtime_error when there is none.
[[nodiscard]] toolkit::WindowImplBase& topWindow();

class WindowDriver {
public:
    /// `window` has been created and outlives the driver. Every function that needs the native
    /// window throws std::runtime_error once it is gone.
    explicit WindowDriver(toolkit::WindowImplBase& window) : m_window(window) {}

    /// Centres, shows and activates the window and waits until the system has done so.
    void show();
    [[nodiscard]] platform::NativeWindow& native() const;
    [[nodiscard]] toolkit::CPaintManagerUI& manager() const { return m_window.GetPaintManager(); }

    /// Throws std::runtime_error, with the name, when there is no such control of that kind.
    template <class T = toolkit::CControlUI>
    [[nodiscard]] T& get(std::u16string_view name) const {
        return as<T>(control(name));
    }
    /// The control `name` inside the container `parent` (a row, for one).
    template <class T = toolkit::CControlUI>
    [[nodiscard]] T& getIn(toolkit::CControlUI& parent, std::u16string_view name) const {
        return as<T>(controlIn(parent, name));
    }

    void click(std::u16string_view name, platform::Modifiers modifiers = {}) const {
        click(control(name), modifiers);
    }
    /// In the control's middle.
    void click(toolkit::CControlUI& control, platform::Modifiers modifiers = {}) const;
    void click(platform::Point at, platform::Modifiers modifiers = {}) const {
        test::click(native(), at, modifiers);
    }
    void doubleClick(platform::Point at) const { test::doubleClick(native(), at); }
    /// Clicks, and runs `then` in whatever loop the click starts (a dialog's), or after it.
    void clickThen(std::u16string_view name, std::function<void()> then) const;
    void pressThen(platform::Key key, std::function<void()> then) const;
    /// One event of the mouse, with the left button.
    void send(platform::EventKind kind, platform::Point at) const;
    /// Moves the pointer without a button.
    void hover(std::u16string_view name) const { hover(middleOf(control(name))); }
    void hover(platform::Point at) const;
    /// Presses at the first point, moves over the others, releases at the last.
    void drag(const std::vector<platform::Point>& points) const { test::drag(native(), points); }
    /// Positive: away from the user.
    void wheel(platform::Point at, int notches) const;

    void press(platform::Key key, platform::Modifiers modifiers = {}) const {
        test::press(native(), key, modifiers);
    }
    /// One key per character.
    void type(const std::u16string& text) const { test::type(native(), text); }
    /// Clicks the edit and replaces its text by typing; it keeps the focus.
    void retype(std::u16string_view edit, const std::u16string& text) const;
    /// The same, and leaves the edit by Enter.
    void enter(std::u16string_view edit, const std::u16string& text) const;

    /// Opens the list by a click, scrolls to item `index` and clicks it.
    void pick(std::u16string_view combo, int index) const {
        pick(get<toolkit::CComboUI>(combo), index);
    }
    void pick(toolkit::CComboUI& combo, int index) const;
    void openDropList(toolkit::CComboUI& combo) const;
    /// A click into the open drop list, relative to the list.
    void clickDropList(platform::Point at) const;

    [[nodiscard]] std::u16string textOf(std::u16string_view name) const {
        return control(name).GetText();
    }
    /// The middle of a control, in window pixels.
    [[nodiscard]] static platform::Point middleOf(const toolkit::CControlUI& control);
    /// The window's picture, freshly painted; 0xAARRGGBB.
    [[nodiscard]] platform::Bitmap picture() const { return native().picture().snapshot(); }
    [[nodiscard]] std::uint32_t pixel(platform::Point at) const { return picture().at(at.x, at.y); }
    [[nodiscard]] std::u16string focusName() const;

private:
    template <class T>
    static T& as(toolkit::CControlUI& found) {
        auto* control = toolkit::controlCast<T>(&found);
        if (control == nullptr) {
            throw std::runtime_error("a control is of another kind");
        }
        return *control;
    }
    [[nodiscard]] toolkit::CControlUI& control(std::u16string_view name) const;
    [[nodiscard]] static toolkit::CControlUI& controlIn(toolkit::CControlUI& parent,
                                                        std::u16string_view name);

    toolkit::WindowImplBase& m_window;
};

} // namespace test
