// Native handles come back: windows, pictures and fonts leave nothing behind.
#include <gtest/gtest.h>

#include "platform/win32/Win32Window.h"
#include "tests/platform/win32/HandleCount.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

namespace {

/// A window's whole life, as the editor's windows have it.
void visitWindow() {
    test::TestWindow owner({400, 300});
    auto frame = owner.native().createFrameBuffer({320, 240}).buffer;
    ASSERT_NE(frame, nullptr);
    owner.paint = [&](platform::Canvas& canvas) {
        canvas.drawFrame(*frame, {0, 0, 400, 300});
        canvas.drawEllipse({5, 5, 21, 21}, 0xFFFF0000, 0xFFFFFFFF);
        canvas.drawLine({0, 0}, {99, 50}, 0xFFFF0000);
        const auto font = test::gui().fonts().open({"", 14, true, false});
        canvas.drawText(u"12", {0, 0, 50, 20}, font, 0xFF000000, platform::TextAlign::center);
    };
    owner.show();
    owner.native().startTimer(1824, 33);
    owner.native().setTextInput(true, {0, 0, 1, 9});
    test::TestWindow popup({50, 50}, &owner.native(), platform::WindowKind::popup);
    popup.show();
    test::click(popup.native(), {5, 5});
    static_cast<void>(owner.native().snapshot());
    popup.native().close();
    owner.native().close();
    test::pump();
}

} // namespace

TEST(Handles, DoNotGrowOverAHundredWindowVisits) {
    visitWindow(); // what the first one makes for good: classes, fonts
    const test::HandleCount before;
    for (int visit = 0; visit < 100; ++visit) {
        visitWindow();
    }
    const test::HandleCount after;
    EXPECT_TRUE(after.isNoMoreThan(before))
        << before.gdiRoom << " " << after.gdiRoom << " " << before.windows << " " << after.windows;
}

TEST(Frame, GivesTheWholeWindowToTheClientWhateverTheStyle) {
    platform::WindowOptions options;
    options.className = u"FrameTestWindow";
    options.title = u"Frame";
    options.style = 0x96C80000;
    options.extendedStyle = 0x60000;
    options.size = {640, 480};
    test::TestWindow events;
    auto window = test::gui().windows().createWindow(options, events);
    ASSERT_NE(window, nullptr);
    const HWND handle = static_cast<platform::win32::Win32Window&>(*window).handle();
    EXPECT_EQ(GetWindowLongW(handle, GWL_STYLE) & ~WS_VISIBLE, 0x86C80000);
    EXPECT_EQ(IsWindowVisible(handle), FALSE) << "shown once it is centred, not when it is made";
    for (const bool visible : {false, true}) {
        window->show(visible);
        test::pump();
        RECT client{};
        GetClientRect(handle, &client);
        EXPECT_EQ(client.right, 640);
        EXPECT_EQ(client.bottom, 480);
        EXPECT_EQ(window->geometry().size(), (platform::Size{640, 480}));
    }
    wchar_t name[64] = {};
    GetClassNameW(handle, name, 64);
    EXPECT_STREQ(name, L"FrameTestWindow");
    EXPECT_EQ(SendMessageW(handle, WM_ERASEBKGND, 0, 0), 1);
}
