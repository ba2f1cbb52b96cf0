// A window that records what it receives, for tests of the back ends.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Window.h"

namespace test {

class TestWindow final : public platform::WindowEvents {
public:
    /// Made by test::gui(), not shown.
    explicit TestWindow(platform::Size size = {200, 100}, platform::NativeWindow* owner = nullptr,
                        platform::WindowKind kind = platform::WindowKind::normal,
                        platform::Size leastSize = {});
    ~TestWindow() override;
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    bool onEvent(const platform::Event& event) override;
    void onPaint(platform::Canvas& canvas, const platform::Rect& dirty) override;
    bool takesPress(platform::Point at) override { return pressed.contains(at); }

    [[nodiscard]] platform::NativeWindow& native() { return *m_native; }
    /// Shows the window and waits until the system has painted it.
    void show();
    /// Ends the native window with the object.
    void destroy() { m_native.reset(); }

    /// The events of interest so far, as "kind details"; forgets them.
    [[nodiscard]] std::vector<std::string> takeEvents();
    /// The rectangles painted so far; forgets them.
    [[nodiscard]] std::vector<platform::Rect> takePaints();
    [[nodiscard]] bool isDestroyed() const { return m_destroyed; }

    /// Answers events after recording; by default the system handles them.
    std::function<bool(const platform::Event&)> answer;
    /// Draws, after the rectangle is recorded.
    std::function<void(platform::Canvas&)> paint;
    /// Where the content takes presses.
    platform::Rect pressed;
    /// Events that are not recorded.
    std::set<platform::EventKind> unnoted{
        platform::EventKind::mouseMove, platform::EventKind::mouseLeave,
        platform::EventKind::activated, platform::EventKind::deactivated,
        platform::EventKind::timer};

private:
    std::unique_ptr<platform::NativeWindow> m_native;
    std::vector<std::string> m_events;
    std::vector<platform::Rect> m_paints;
    bool m_painted = false;
    bool m_destroyed = false;
};

} // namespace test
