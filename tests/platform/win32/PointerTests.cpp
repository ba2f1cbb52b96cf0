// The pointer as Windows shows it, after real movements, and sizes given from outside.
#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "platform/WindowScale.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Win32Window.h"
#include "tests/platform/Appearance.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"
#include "tests/toolkit/ToolkitTest.h"

namespace {

using platform::PointerShape;

/// Real movements and presses of the mouse, in pixels of the screen.
void send(DWORD what, POINT at) {
    constexpr LONG kWhole = 65536;
    const SIZE screen{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = (at.x * kWhole + screen.cx - 1) / screen.cx;
    input.mi.dy = (at.y * kWhole + screen.cy - 1) / screen.cy;
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | what;
    SendInput(1, &input, sizeof input);
}

/// Whether the system sizes a window, which it does in a loop of its own.
bool isSizing() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    return (info.flags & GUI_INMOVESIZE) != 0;
}

class Pointer : public toolkit_test::ToolkitTest {};

} // namespace

TEST(Sizing, OfTheUsersIsKeptThroughOtherScales) {
    test::TestWindow window({300, 200}, nullptr, platform::WindowKind::normal, {250, 150});
    window.show();
    SetWindowPos(static_cast<platform::win32::Win32Window&>(window.native()).handle(), nullptr, 0,
                 0, 340, 260, SWP_NOMOVE | SWP_NOZORDER);
    for (const double zoom : {8.0, 1.25, 1.0}) { // the first is too large for the screen
        test::gui().windows().setZoom(zoom);
        test::pump();
    }
    EXPECT_EQ(window.native().geometry().size(), (platform::Size{340, 260}));
}

TEST(Sizing, OnAMonitorWithOtherPixelsKeepsTheLayout) {
    test::TestWindow fixed({301, 101});
    test::TestWindow sizable({301, 201}, nullptr, platform::WindowKind::normal, {250, 150});
    for (test::TestWindow* window : {&fixed, &sizable}) {
        window->show();
        const platform::Size size = window->native().geometry().size();
        for (const WORD dpi : {WORD{144}, WORD{192}, WORD{96}}) {
            const double scale = dpi / 96.0;
            RECT place{40, 30, 40 + 900, 30 + 600}; // what the system would do
            SendMessageW(static_cast<platform::win32::Win32Window&>(window->native()).handle(),
                         WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
            EXPECT_TRUE(test::pumpUntil([&] { return !window->takePaints().empty(); }));
            EXPECT_EQ(window->native().scale(), scale);
            EXPECT_EQ(window->native().geometry().size(), size);
            EXPECT_EQ(window->native().picture().snapshot().size(),
                      platform::toSystem(size, scale));
            test::click(window->native(), {297, 77});
            const auto events = window->takeEvents();
            EXPECT_EQ(std::count(events.begin(), events.end(), "down 1 297,77"), 1);
        }
    }
}

TEST(SizingBorder, LiesOutsideTheWindowAndTakesNothingFromItsContent) {
    test::TestWindow window({300, 200}, nullptr, platform::WindowKind::normal, {250, 150});
    HWND handle = static_cast<platform::win32::Win32Window&>(window.native()).handle();
    window.show();
    const struct {
        POINT from; ///< in the window
        POINT by;
        const wchar_t* cursor;
        platform::Rect expected;
    } cases[] = {
        {{302, 100}, {40, 9}, IDC_SIZEWE, platform::Rect::at(100, 100, 340, 200)},
        {{-3, 100}, {30, 9}, IDC_SIZEWE, platform::Rect::at(130, 100, 270, 200)},
        {{150, -6}, {5, -30}, IDC_SIZENS, platform::Rect::at(100, 70, 300, 230)},
        {{303, 190}, {20, -30}, IDC_SIZENWSE, platform::Rect::at(100, 100, 320, 170)},
        {{-4, 204}, {-20, 10}, IDC_SIZENESW, platform::Rect::at(80, 100, 320, 210)},
    };
    constexpr unsigned kTimer = 1;
    const auto under = [](LONG x, LONG y) { return WindowFromPoint({100 + x, 100 + y}); };
    for (const auto& c : cases) {
        window.native().setGeometry(platform::Rect::at(100, 100, 300, 200));
        test::pump();
        for (const POINT at : {POINT{0, 100}, {299, 100}, {150, 0}, {150, 199}, {299, 199}}) {
            EXPECT_EQ(under(at.x, at.y), handle) << at.x << "," << at.y;
        }
        send(MOUSEEVENTF_MOVE, {100 + c.from.x, 100 + c.from.y});
        test::pump();
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, c.cursor)) << c.from.x;
        send(MOUSEEVENTF_LEFTDOWN, {100 + c.from.x, 100 + c.from.y});
        window.native().timers().start(kTimer, 5);
        window.answer = [&](const platform::Event& event) {
            if (event.kind == platform::EventKind::timer && isSizing()) {
                window.native().timers().stop(kTimer);
                for (const DWORD what : {MOUSEEVENTF_MOVE, MOUSEEVENTF_LEFTUP}) {
                    send(what, {100 + c.from.x + c.by.x, 100 + c.from.y + c.by.y});
                }
            }
            return false;
        };
        EXPECT_TRUE(test::pumpUntil([&] { return window.native().geometry() == c.expected; }))
            << c.from.x << "," << c.from.y;
        test::pump();
    }
    const std::vector<std::string> events = window.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), "resized"),
              static_cast<std::ptrdiff_t>(events.size()))
        << "no press is the content's";
    window.native().setGeometry(platform::Rect::at(100, 100, 300, 200));
    HWND border = under(-3, 100);
    window.native().setEnabled(false); // as below a dialog
    EXPECT_NE(under(-3, 100), border);
    window.native().setEnabled(true);
    EXPECT_EQ(under(-3, 100), border);
    window.native().setState(platform::WindowState::minimized);
    EXPECT_NE(under(-3, 100), border);
}

TEST(Appearance, FollowsTheSystemWhileItIsToldTo) {
    constexpr const wchar_t* kPlace =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    constexpr const wchar_t* kName = L"AppsUseLightTheme";
    test::expectWindowsFollow([](bool isDark) {
        const DWORD value = isDark ? 0 : 1;
        RegSetKeyValueW(HKEY_CURRENT_USER, kPlace, kName, REG_DWORD, &value, sizeof value);
        SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0,
                            reinterpret_cast<LPARAM>(L"ImmersiveColorSet"), SMTO_ABORTIFHUNG, 2000,
                            nullptr);
    });
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kPlace, kName);
}

TEST_F(Pointer, HasTheShapeOfWhatIsUnderIt) {
    open(
        R"(<Edit name="Edit" pos="10,10,80,20"/><Control name="Link" pos="10,40,80,20" link="true"/>
        <Button name="Go" pos="10,70,80,20" text="Go"/>)");
    for (const auto& [name, cursor] :
         {std::pair(u"Edit", IDC_IBEAM), {u"Link", IDC_HAND}, {u"Go", IDC_ARROW}}) {
        driver().hover(name);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, cursor));
    }
    for (const auto& [shape, cursor] : {std::pair(PointerShape::sizeAcross, IDC_SIZEWE),
                                        {PointerShape::sizeDown, IDC_SIZENS},
                                        {PointerShape::notAllowed, IDC_NO}}) {
        driver().native().input().setPointer(shape);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, cursor));
    }
    for (const auto& [shape, hotSpot] : {std::pair{PointerShape::move, 12.0},
                                         {PointerShape::addPoint, 8.5},
                                         {PointerShape::deletePoint, 8.5},
                                         {PointerShape::scale, 12.0},
                                         {PointerShape::rotate, 12.0},
                                         {PointerShape::rectangle, 12.0}}) {
        driver().native().input().setPointer(shape);
        ICONINFO drawn{};
        ASSERT_NE(GetIconInfo(GetCursor(), &drawn), 0);
        const platform::win32::UniqueBitmap color(drawn.hbmColor);
        const platform::win32::UniqueBitmap mask(drawn.hbmMask);
        EXPECT_NE(color.get(), nullptr) << "not the system's";
        EXPECT_EQ(drawn.fIcon, FALSE);
        EXPECT_EQ(drawn.xHotspot, static_cast<DWORD>(hotSpot * driver().native().scale()));
    }
}
