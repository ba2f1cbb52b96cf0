// The pointer as Windows shows it, after real movements, and sizes given from outside.
#include <cmath>
#include <tuple>
#include <utility>

#include <windows.h>

#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Win32Window.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"
#include "tests/toolkit/ToolkitTest.h"

namespace {

using platform::PointerShape;

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

TEST(Appearance, FollowsTheSystemWhileItIsToldTo) {
    using platform::Appearance;
    platform::WindowHost& windows = test::gui().windows();
    test::TestWindow window;
    window.show();
    constexpr const wchar_t* kPlace =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    constexpr const wchar_t* kName = L"AppsUseLightTheme";
    for (const auto& [chosen, isSystemDark, isDark] : {std::tuple(Appearance::light, true, false),
                                                       {Appearance::asSystem, true, true},
                                                       {Appearance::asSystem, false, false},
                                                       {Appearance::dark, false, true},
                                                       {Appearance::light, false, false}}) {
        windows.setAppearance(chosen);
        const DWORD value = isSystemDark ? 0 : 1;
        RegSetKeyValueW(HKEY_CURRENT_USER, kPlace, kName, REG_DWORD, &value, sizeof value);
        SendMessageW(static_cast<platform::win32::Win32Window&>(window.native()).handle(),
                     WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
        EXPECT_EQ(windows.isDark(), isDark);
    }
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
    for (const auto& [shape, cursor] : {std::pair(PointerShape::cross, IDC_CROSS),
                                        {PointerShape::move, IDC_SIZEALL},
                                        {PointerShape::sizeAcross, IDC_SIZEWE},
                                        {PointerShape::sizeDown, IDC_SIZENS},
                                        {PointerShape::notAllowed, IDC_NO}}) {
        driver().native().input().setPointer(shape);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, cursor));
    }
    for (const PointerShape shape :
         {PointerShape::scale, PointerShape::rotate, PointerShape::rectangle}) {
        driver().native().input().setPointer(shape);
        ICONINFO drawn{};
        ASSERT_NE(GetIconInfo(GetCursor(), &drawn), 0);
        const platform::win32::UniqueBitmap color(drawn.hbmColor);
        const platform::win32::UniqueBitmap mask(drawn.hbmMask);
        EXPECT_NE(color.get(), nullptr) << "not the system's";
        EXPECT_EQ(drawn.fIcon, FALSE);
        EXPECT_EQ(drawn.xHotspot, static_cast<DWORD>(std::lround(12 * driver().native().scale())));
    }
}
