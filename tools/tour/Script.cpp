#include "tools/tour/Script.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "core/Text.h"
#include "platform/EventLoop.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "platform/testing/OpenWindows.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/DropListWindow.h"
#include "tools/tour/PngFile.h"
#include "tools/tour/WindowPicture.h"

namespace tour {

namespace {

using platform::EventKind;
using platform::MouseButton;
using platform::Point;

constexpr auto kTick = std::chrono::milliseconds(20);
constexpr auto kShortTick = std::chrono::milliseconds(5); ///< where nobody watches
constexpr auto kStepTimeout = std::chrono::seconds(20);

Point middleOf(const platform::Rect& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

/// Null when none is open.
toolkit::WindowImplBase* topWindow() {
    const auto windows = platform::openWindowsOf<toolkit::WindowImplBase>();
    return windows.empty() ? nullptr : windows.back();
}

} // namespace

Script::Script(std::string folder) : m_folder(std::move(folder)) {}

Script::~Script() {
    stop();
}

void Script::stop() {
    m_ticker.reset();
    m_input.reset();
}

void Script::on(std::u16string window, std::function<void()> action) {
    m_steps.push_back({std::move(window), [] { return true; }, std::move(action)});
}

void Script::wait(std::chrono::milliseconds time) {
    const auto ready = [this, time] {
        return m_skipsWaits || std::chrono::steady_clock::now() - m_stepBegan >= time;
    };
    m_steps.push_back({{}, ready, [] {}});
}

void Script::until(std::u16string window, std::function<bool()> ready) {
    m_steps.push_back({std::move(window), std::move(ready), [] {}});
}

void Script::play(platform::Gui& gui) {
    m_gui = &gui;
    m_input = platform::createTestInput(gui);
    m_stepBegan = std::chrono::steady_clock::now();
    m_ticker =
        std::make_unique<Ticker>(gui.loop(), m_skipsWaits ? kShortTick : kTick, [this] { tick(); });
}

void Script::tick() {
    if (!m_problem.empty()) {
        m_gui->loop().postQuit(1);
        return;
    }
    // The event loop handles input queued by a step in the round after it.
    if (isFinished() || std::exchange(m_settling, false)) {
        return;
    }
    try {
        const Step& step = m_steps[m_next];
        const toolkit::WindowImplBase* window = topWindow();
        const bool here = step.window.empty() ||
                          (window != nullptr && window->GetWindowClassName() == step.window);
        if (here && step.ready()) {
            ++m_next;
            m_stepBegan = std::chrono::steady_clock::now();
            m_settling = true;
            step.action();
        } else if (std::chrono::steady_clock::now() - m_stepBegan > kStepTimeout) {
            fail("step " + std::to_string(m_next) + " waits in vain for " +
                 core::storedText(step.window));
        }
    } catch (const std::exception& exception) {
        fail("step " + std::to_string(m_next) + ": " + exception.what());
    }
}

void Script::fail(const std::string& problem) {
    m_problem = problem;
    m_next = m_steps.size();
}

toolkit::WindowImplBase& Script::top() const {
    toolkit::WindowImplBase* window = topWindow();
    if (window == nullptr) {
        throw std::runtime_error("no window is open");
    }
    return *window;
}

platform::NativeWindow& Script::native() const {
    return *top().GetNative();
}

void Script::click(std::u16string_view name) {
    clickAt(middleOf(get<toolkit::CControlUI>(name).GetPos()));
}

void Script::clickAt(Point at) {
    drag({at});
}

void Script::drag(const std::vector<Point>& points) {
    m_input->mouse(native(), EventKind::mouseMove, points.front(), MouseButton::none);
    m_input->mouse(native(), EventKind::mouseDown, points.front());
    for (std::size_t i = 1; i < points.size(); ++i) {
        m_input->mouse(native(), EventKind::mouseMove, points[i]);
    }
    m_input->mouse(native(), EventKind::mouseUp, points.back());
}

void Script::type(const std::u16string& text) {
    for (const char16_t c : text) {
        const std::u16string one(1, c);
        m_input->key(native(), EventKind::keyDown, platform::Key::other, one);
        m_input->key(native(), EventKind::keyUp, platform::Key::other);
    }
}

void Script::press(platform::Key key, platform::Modifiers modifiers) {
    m_input->key(native(), EventKind::keyDown, key, {}, modifiers);
    m_input->key(native(), EventKind::keyUp, key, {}, modifiers);
}

void Script::pickItem(int index) {
    toolkit::DropListWindow& list = toolkit::DropListWindow::of(top().GetPaintManager());
    if (list.native() == nullptr || list.owner() == nullptr) {
        throw std::runtime_error("no list is open");
    }
    const Point at = middleOf(list.itemRect(index));
    m_input->mouse(*list.native(), EventKind::mouseMove, at, MouseButton::none);
    m_input->mouse(*list.native(), EventKind::mouseDown, at);
    m_input->mouse(*list.native(), EventKind::mouseUp, at);
}

toolkit::CControlUI& Script::inRow(int row, std::u16string_view name) const {
    const auto* item = toolkit::controlCast<toolkit::CContainerUI>(
        get<toolkit::CListUI>(u"BranchList").GetItemAt(row));
    toolkit::CControlUI* control = item != nullptr ? item->FindSubControl(name) : nullptr;
    if (control == nullptr) {
        throw std::runtime_error("no such row");
    }
    return *control;
}

void Script::clickInRow(int row, std::u16string_view name) {
    clickAt(middleOf(inRow(row, name).GetPos()));
}

bool Script::tabTo(const toolkit::CControlUI& control) {
    if (control.IsFocused()) {
        return true;
    }
    press(platform::Key::tab);
    m_settling = true;
    return false;
}

void Script::picture(const std::string& name) {
    native().picture().repaintNow();
    writePng(pictureOf(top()), m_folder + name + ".png");
}

} // namespace tour
