#include "tests/support/gui/TestWindow.h"

#include <cstddef>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/support/gui/TestGui.h"

namespace test {

namespace {

using platform::Event;
using platform::EventKind;

/// By EventKind.
constexpr const char* kNames[] = {
    "move",  "down",       "up",      "double",       "wheel",       "leave",       "keyDown",
    "keyUp", "text",       "preedit", "activated",    "deactivated", "captureLost", "resized",
    "files", "appearance", "timer",   "closeRequest", "destroyed"};

/// An event as text: its kind, then what it carries.
std::string describe(const Event& event) {
    std::ostringstream out;
    out << kNames[static_cast<std::size_t>(event.kind)];
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseUp:
    case EventKind::mouseDoubleClick:
        out << " " << static_cast<int>(event.button);
        [[fallthrough]];
    case EventKind::mouseMove:
        out << " " << event.position.x << "," << event.position.y;
        break;
    case EventKind::mouseWheel:
        out << " " << event.wheelDelta;
        break;
    case EventKind::keyDown:
    case EventKind::keyUp:
        out << " " << static_cast<int>(event.key) << (event.repeat ? " again" : "");
        break;
    case EventKind::textInput:
    case EventKind::textPreedit:
        out << " '" << core::storedText(event.text) << "'";
        break;
    case EventKind::filesDropped:
        for (const std::string& file : event.files) {
            out << " " << file;
        }
        break;
    case EventKind::timer:
        out << " " << event.timerId;
        break;
    default:
        break;
    }
    out << (event.modifiers.shift ? " shift" : "") << (event.modifiers.control ? " control" : "")
        << (event.modifiers.alt ? " alt" : "");
    return out.str();
}

} // namespace

TestWindow::TestWindow(platform::Size size, platform::NativeWindow* owner,
                       platform::WindowKind kind, platform::Size leastSize) {
    platform::WindowOptions options;
    options.className = u"TestWindow";
    options.title = u"Test";
    options.kind = kind;
    options.size = size;
    options.owner = owner;
    options.leastSize = leastSize;
    if (leastSize != platform::Size{}) {
        options.style = 0x96C80000; // with a system menu, as all windows that can be sized
    }
    m_native = gui().windows().createWindow(options, *this);
    EXPECT_NE(m_native, nullptr);
}

TestWindow::~TestWindow() {
    answer = nullptr; // it may refer to destroyed objects
    m_native.reset();
}

bool TestWindow::onEvent(const Event& event) {
    if (!unnoted.contains(event.kind)) {
        m_events.push_back(describe(event));
    }
    m_destroyed = m_destroyed || event.kind == EventKind::destroyed;
    return answer ? answer(event) : false;
}

void TestWindow::onPaint(platform::Canvas& canvas, const platform::Rect& dirty) {
    m_paints.push_back(dirty);
    m_painted = true;
    if (paint) {
        paint(canvas);
    }
}

void TestWindow::show() {
    m_painted = false;
    const platform::Rect place = native().geometry();
    native().picture().invalidate({0, 0, place.width(), place.height()});
    native().show(true);
    EXPECT_TRUE(pumpUntil([this] { return m_painted; }));
    pump();
    m_paints.clear();
    m_events.clear();
}

std::vector<std::string> TestWindow::takeEvents() {
    return std::exchange(m_events, {});
}

std::vector<platform::Rect> TestWindow::takePaints() {
    return std::exchange(m_paints, {});
}

} // namespace test
