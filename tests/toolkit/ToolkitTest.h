// The base of tests on real toolkit windows: a skin folder of its own, a window that writes down
// its notifications, and a driver for it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/window/WindowImplBase.h"

namespace toolkit_test {

using Notes = std::vector<std::string>;

/// Writes each notification as "type name" (itemselect: and the index), then does what the test
/// wants done in that handler.
class RecordingWindow : public toolkit::WindowImplBase {
public:
    explicit RecordingWindow(platform::Gui& gui) : WindowImplBase(gui) {}

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"TestWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Test.xml"; }
    void Notify(toolkit::TNotifyUI& message) override;

    /// The notifications so far; forgets them.
    [[nodiscard]] Notes take() { return std::exchange(notes, {}); }

    Notes notes;
    /// By note.
    std::map<std::string, std::function<void(toolkit::CControlUI& sender)>> reactions;
};

class ToolkitTest : public support::TempFolderTest {
protected:
    /// Writes the layout and opens a window of 400 x 300 with `controls` in it.
    RecordingWindow& open(const std::string& controls, const std::string& windowAttributes = {});
    [[nodiscard]] test::WindowDriver driver() { return test::WindowDriver(*m_window); }
    [[nodiscard]] RecordingWindow& window() { return *m_window; }
    [[nodiscard]] toolkit::CContainerUI& root() {
        return dynamic_cast<toolkit::CContainerUI&>(*window().GetPaintManager().GetRoot());
    }
    /// Compares the notifications since the last time, and forgets them.
    void expectNotes(const char* what, const Notes& expected) {
        EXPECT_EQ(window().take(), expected) << what;
    }
    template <class T>
    [[nodiscard]] T& get(std::u16string_view name) {
        return driver().get<T>(name);
    }

    support::LogCapture m_log;
    std::shared_ptr<RecordingWindow> m_window;
};

/// A BMP file of `width` x `height` pixels 0xAARRGGBB, given row by row from the top.
[[nodiscard]] std::string bmp(int width, int height, const std::vector<std::uint32_t>& pixels);
/// One colour.
[[nodiscard]] std::string bmp(int width, int height, std::uint32_t pixel);

inline constexpr platform::Modifiers kShift{true, false, false};
inline constexpr platform::Modifiers kControl{false, true, false};
inline constexpr platform::Modifiers kAlt{false, false, true};

} // namespace toolkit_test
