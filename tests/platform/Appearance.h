// What the windows of either system do when the desktop turns dark or light.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Gui.h"
#include "platform/Window.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

namespace test {

/// `turn` makes the desktop dark or light and tells the program as the system does.
inline void expectWindowsFollow(const std::function<void(bool isDark)>& turn) {
    using platform::Appearance;
    platform::WindowHost& windows = gui().windows();
    std::array<TestWindow, 2> open;
    for (TestWindow& window : open) {
        window.show();
    }
    for (TestWindow& window : open) {
        static_cast<void>(window.takeEvents());
    }
    for (const auto& [chosen, isSystemDark, isDark] : {std::tuple(Appearance::light, true, false),
                                                       {Appearance::asSystem, true, true},
                                                       {Appearance::asSystem, false, false},
                                                       {Appearance::asSystem, true, true},
                                                       {Appearance::dark, false, true},
                                                       {Appearance::light, false, false}}) {
        const bool changes = windows.isDark() != isDark;
        windows.setAppearance(chosen);
        turn(isSystemDark);
        EXPECT_EQ(windows.isDark(), isDark);
        for (TestWindow& window : open) { // at once
            const std::vector<std::string> events = window.takeEvents();
            EXPECT_EQ(std::count(events.begin(), events.end(), "appearance"), changes ? 1 : 0);
        }
    }
}

} // namespace test
