// What a window has of the system's own frame: nothing.
#include <gtest/gtest.h>

#include "platform/win32/Win32Window.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

TEST(Frame, GivesTheWholeWindowToTheClientWhateverTheStyle) {
    platform::WindowOptions options;
    options.className = u"FrameTestWindow";
    options.style = 0x96C80000;
    options.extendedStyle = 0x60000;
    options.size = {640, 480};
    test::TestWindow events;
    auto window = test::gui().windows().createWindow(options, events);
    ASSERT_NE(window, nullptr);
    HWND handle = static_cast<platform::win32::Win32Window&>(*window).handle();
    EXPECT_EQ(IsWindowVisible(handle), FALSE) << "shown once it is centred, not when it is made";
    for (const bool visible : {false, true}) {
        window->show(visible);
        test::pump();
        RECT client{};
        GetClientRect(handle, &client);
        EXPECT_EQ(client.right, 640);
        EXPECT_EQ(client.bottom, 480);
        EXPECT_EQ(window->geometry().size(), options.size);
    }
}
