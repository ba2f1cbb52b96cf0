#include "tests/support/gui/WindowDriver.h"

#include <string>
#include <utility>

#include "core/Text.h"
#include "platform/testing/OpenWindows.h"
#include "toolkit/controls/DropListWindow.h"

namespace test {

using platform::EventKind;
using platform::Key;
using platform::MouseButton;
using platform::Point;
using toolkit::CControlUI;

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what);
}

constexpr int kNotch = 120;

} // namespace

toolkit::WindowImplBase& topWindow() {
    const auto windows = platform::openWindowsOf<toolkit::WindowImplBase>();
    if (windows.empty()) {
        fail("no window is open");
    }
    return *windows.back();
}

platform::NativeWindow& WindowDriver::native() const {
    if (m_window.GetNative() == nullptr) {
        fail("the window is gone");
    }
    return *m_window.GetNative();
}

void WindowDriver::show() {
    m_window.CenterWindow();
    m_window.ShowWindow();
    native().activate();
    pump();
}

CControlUI& WindowDriver::control(std::u16string_view name) const {
    manager().UpdateLayout();
    CControlUI* found = manager().FindControl(name);
    if (found == nullptr) {
        fail("no control " + core::storedText(name));
    }
    return *found;
}

CControlUI& WindowDriver::controlIn(CControlUI& parent, std::u16string_view name) {
    const auto* container = toolkit::controlCast<toolkit::CContainerUI>(&parent);
    CControlUI* found = container != nullptr ? container->FindSubControl(name) : nullptr;
    if (found == nullptr) {
        fail("no control " + core::storedText(name) + " inside another");
    }
    return *found;
}

Point WindowDriver::middleOf(const CControlUI& control) {
    const platform::Rect& pos = control.GetPos();
    return {(pos.left + pos.right) / 2, (pos.top + pos.bottom) / 2};
}

void WindowDriver::click(CControlUI& control, platform::Modifiers modifiers) const {
    manager().UpdateLayout();
    click(middleOf(control), modifiers);
}

void WindowDriver::clickThen(std::u16string_view name, std::function<void()> then) const {
    const Point at = middleOf(control(name));
    input().mouse(native(), EventKind::mouseMove, at, MouseButton::none);
    input().mouse(native(), EventKind::mouseDown, at);
    input().mouse(native(), EventKind::mouseUp, at);
    gui().loop().post(std::move(then));
    pump();
}

void WindowDriver::pressThen(platform::Key key, std::function<void()> then) const {
    input().key(native(), EventKind::keyDown, key);
    input().key(native(), EventKind::keyUp, key);
    gui().loop().post(std::move(then));
    pump();
}

void WindowDriver::send(EventKind kind, Point at) const {
    input().mouse(native(), kind, at);
    pump();
}

void WindowDriver::hover(Point at) const {
    // The window system drops a move to where its pointer already is, perhaps in another window.
    input().mouse(native(), EventKind::mouseMove, {at.x, at.y + 1}, MouseButton::none);
    input().mouse(native(), EventKind::mouseMove, at, MouseButton::none);
    pump();
}

void WindowDriver::wheel(Point at, int notches) const {
    input().wheel(native(), at, notches * kNotch);
    pump();
}

void WindowDriver::retype(std::u16string_view edit, const std::u16string& text) const {
    platform::Modifiers control;
    control.control = true;
    click(edit);
    press(Key::a, control);
    press(Key::del);
    type(text);
}

void WindowDriver::enter(std::u16string_view edit, const std::u16string& text) const {
    retype(edit, text);
    press(Key::enter);
}

void WindowDriver::openDropList(toolkit::CComboUI& combo) const {
    click(combo);
    if (!combo.IsDropped()) {
        fail("a drop list does not open");
    }
}

void WindowDriver::clickDropList(Point at) const {
    platform::NativeWindow* popup = toolkit::DropListWindow::of(manager()).native();
    if (popup == nullptr) {
        fail("no drop list is open");
    }
    test::click(*popup, at);
}

void WindowDriver::pick(toolkit::CComboUI& combo, int index) const {
    openDropList(combo);
    toolkit::DropListWindow& list = toolkit::DropListWindow::of(manager());
    const int height = list.geometry().height();
    // Scroll until the item is visible; a notch without movement means that it is.
    for (int left = combo.GetCount(); left > 0; --left) {
        const platform::Rect item = list.itemRect(index);
        if (item.top >= 0 && item.bottom <= height) {
            break;
        }
        input().wheel(*list.native(), {5, 5}, item.top < 0 ? kNotch : -kNotch);
        pump();
    }
    const platform::Rect item = list.itemRect(index);
    clickDropList({item.left + 5, (item.top + item.bottom) / 2});
}

std::u16string WindowDriver::focusName() const {
    const CControlUI* focused = manager().GetFocus();
    return focused != nullptr ? focused->GetName() : std::u16string();
}

} // namespace test
