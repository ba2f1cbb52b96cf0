#include "tests/support/gui/TestWindow.h"

#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"

namespace test {

namespace {

using platform::Event;
using platform::EventKind;

const char* nameOf(EventKind kind) {
    switch (kind) {
    case EventKind::mouseMove:
        return "move";
    case EventKind::mouseDown:
        return "down";
    case EventKind::mouseUp:
        return "up";
    case EventKind::mouseDoubleClick:
        return "double";
    case EventKind::mouseWheel:
        return "wheel";
    case EventKind::mouseLeave:
        return "leave";
    case EventKind::keyDown:
        return "keyDown";
    case EventKind::keyUp:
        return "keyUp";
    case EventKind::textInput:
        return "text";
    case EventKind::textPreedit:
        return "preedit";
    case EventKind::activated:
        return "activated";
    case EventKind::deactivated:
        return "deactivated";
    case EventKind::captureLost:
        return "captureLost";
    case EventKind::timer:
        return "timer";
    case EventKind::closeRequest:
        return "closeRequest";
    case EventKind::destroyed:
        return "destroyed";
    }
    return "?";
}

/// ASCII as it is, everything else as its code unit.
std::string readable(const std::u16string& text) {
    std::ostringstream out;
    for (const char16_t c : text) {
        if (c < 0x80) {
            out << static_cast<char>(c);
        } else {
            out << "<" << std::hex << static_cast<unsigned>(c) << ">";
        }
    }
    return out.str();
}

} // namespace

std::string describe(const Event& event) {
    std::ostringstream out;
    out << nameOf(event.kind);
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
        out << " '" << readable(event.text) << "'";
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

TestWindow::TestWindow(platform::Size size, platform::NativeWindow* owner,
                       platform::WindowKind kind) {
    platform::WindowOptions options;
    options.className = u"TestWindow";
    options.title = u"Test";
    options.kind = kind;
    options.size = size;
    options.owner = owner;
    m_native = gui().windows().createWindow(options, *this);
    EXPECT_NE(m_native, nullptr);
}

TestWindow::~TestWindow() {
    answer = nullptr; // what it refers to may be gone already
    m_native.reset();
}

bool TestWindow::isOfInterest(const Event& event) const {
    switch (event.kind) {
    case EventKind::mouseMove:
    case EventKind::mouseLeave:
        return noteMoves;
    case EventKind::activated:
    case EventKind::deactivated:
        return noteFocus;
    case EventKind::timer:
        return noteTimers;
    default:
        return true;
    }
}

bool TestWindow::onEvent(const Event& event) {
    if (isOfInterest(event)) {
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
    native().invalidate({0, 0, place.width(), place.height()});
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
