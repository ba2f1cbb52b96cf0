// The editor's own windows as Windows sees them: classes, styles, titles, the messages with a rule
// of their own, handles, and what a screen reader hears of every control.
#include <cstddef>
#include <iterator>
#include <string>

#include <windows.h>

#include "platform/Window.h"
#include "platform/win32/Win32Window.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/platform/win32/ScreenReader.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/window/ToolTipWindow.h"
#include "ui/BranchList.h"
#include "ui/Confirmation.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace {

HWND handleOf(const toolkit::WindowImplBase& window) {
    return static_cast<platform::win32::Win32Window&>(*window.GetNative()).handle();
}

class EditorWindows : public test::ZoneEditTest {
protected:
    EditorWindows() {
        makeClip(2);
        support::writeBytes("Scenes/Fire/Scene.xml",
                            "<Scene><Name>Fire</Name><FirstBranch>Start</FirstBranch><Branch>"
                            "<ID>Start</ID><Filename>clip.ogv</Filename>"
                            "<Action><Type>ZoneAction</Type></Action></Branch></Scene>");
        EXPECT_TRUE(scene().Load("Fire"));
    }

    /// Shows each of the editor's windows in turn, as the program makes them.
    template <class Visit>
    void visitAll(Visit visit) {
        visitOne<ui::OpenScene>(u"Open or Create Scene", visit);
        visitOne<ui::NewScene>(u"New Scene", visit);
        visitOne<zoneedit::ZoneEdit>(u"Zone Edit", visit);
        const auto asker = openTitled<ui::BranchList>(u"Quorvel");
        visit(*asker);
        {
            ui::Confirmation question(context(), *asker, "Exit?", "Are you sure?");
            ASSERT_TRUE(question.Create(asker->GetNative(), u"Exit?", ui::kDialogStyle,
                                        ui::kDialogExtendedStyle));
            question.ShowWindow(true);
            test::pump();
            visit(question);
            question.Close(1);
            test::pump();
        }
        asker->Close(1);
        test::pump();
    }

private:
    template <class Window, class Visit>
    void visitOne(const std::u16string& title, Visit visit) {
        const auto window = openTitled<Window>(title);
        visit(*window);
        window->Close(1);
        test::pump();
    }
};

TEST_F(EditorWindows, HaveTheirClassesStylesAndTitlesAndNoFrame) {
    constexpr DWORD kScreen = 0x96C80000 | WS_MINIMIZEBOX; // added once the window is made
    constexpr DWORD kDialog = WS_POPUP | WS_VISIBLE;
    const struct {
        const wchar_t* title;
        const wchar_t* className;
        DWORD style = kScreen;
        DWORD extendedStyle = 0x60000;
    } windows[] = {{L"Open or Create Scene", L"OpenSceneWindow"},
                   {L"New Scene", L"NewSceneWindow"},
                   {L"Zone Edit", L"ZoneEditWindow", kScreen | WS_THICKFRAME | WS_MAXIMIZEBOX},
                   {L"Quorvel", L"QuorvelWindow", kScreen | WS_THICKFRAME | WS_MAXIMIZEBOX,
                    0x60000 | WS_EX_ACCEPTFILES}, // takes dropped videos
                   {L"Exit?", L"ConfirmationWindow", kDialog, 0x20000}};
    std::size_t visits = 0;
    visitAll([&](toolkit::WindowImplBase& window) {
        const auto& expected = windows[visits++];
        HWND handle = handleOf(window);
        wchar_t text[256] = {};
        GetWindowTextW(handle, text, 256);
        EXPECT_STREQ(text, expected.title);
        GetClassNameW(handle, text, 256);
        EXPECT_STREQ(text, expected.className);
        EXPECT_NE(IsWindowUnicode(handle), FALSE);
        // The system adds these two to top-level windows by itself.
        constexpr DWORD kAdded = WS_CLIPSIBLINGS;
        constexpr DWORD kAddedExtended = WS_EX_WINDOWEDGE;
        const DWORD style = static_cast<DWORD>(GetWindowLongW(handle, GWL_STYLE));
        EXPECT_EQ(style | kAdded, expected.style | kAdded) << expected.title;
        const DWORD extended = static_cast<DWORD>(GetWindowLongW(handle, GWL_EXSTYLE));
        EXPECT_EQ(extended | kAddedExtended, expected.extendedStyle | kAddedExtended)
            << expected.title;

        RECT client{};
        RECT frame{};
        GetClientRect(handle, &client);
        GetWindowRect(handle, &frame);
        EXPECT_EQ(client.right, frame.right - frame.left);
        EXPECT_EQ(client.bottom, frame.bottom - frame.top);
        EXPECT_EQ(window.GetPaintManager().GetRoot()->GetPos().size(),
                  (platform::Size{client.right, client.bottom}));
        EXPECT_EQ(SendMessageW(handle, WM_ERASEBKGND, 0, 0), 1);
        EXPECT_EQ(SendMessageW(handle, WM_NCPAINT, 1, 0), 0);
    });
    EXPECT_EQ(visits, std::size(windows));
    const auto fresh = ui::NewScene::create(context());
    ASSERT_TRUE(fresh->Create(nullptr, u"", ui::kScreenStyle, ui::kScreenExtendedStyle));
    EXPECT_EQ(IsWindowVisible(handleOf(*fresh)), FALSE) << "shown once it is centred";
}

TEST_F(EditorWindows, CanBeSizedAndMinimisedAndHaveTheirSystemMenu) {
    const auto editor = openTitled<ui::BranchList>(u"Quorvel");
    HWND handle = handleOf(*editor);
    HMENU menu = GetSystemMenu(handle, FALSE);
    constexpr UINT kMissing = 0xFFFFFFFF;
    for (const UINT command : {SC_MOVE, SC_SIZE, SC_MINIMIZE, SC_MAXIMIZE, SC_CLOSE}) {
        EXPECT_NE(GetMenuState(menu, command, MF_BYCOMMAND), kMissing) << command;
    }
    const auto opensMenu = [&](platform::Key key, const std::u16string& text) {
        bool opened = false;
        test::input().key(*editor->GetNative(), platform::EventKind::keyDown, key, text,
                          {.alt = true});
        test::gui().loop().post([&] {
            GUITHREADINFO info{};
            info.cbSize = sizeof info;
            GetGUIThreadInfo(GetCurrentThreadId(), &info);
            opened = (info.flags & GUI_INMENUMODE) != 0;
            EndMenu();
        });
        test::pump();
        return opened;
    };
    EXPECT_TRUE(opensMenu(platform::Key::space, u" "));
    EXPECT_FALSE(opensMenu(platform::Key::other, u"q")) << "a menu that the window does not have";

    test::input().minimize(*editor->GetNative(), true);
    test::pump();
    EXPECT_NE(IsIconic(handle), FALSE);
    test::input().minimize(*editor->GetNative(), false);
    test::pump();
    EXPECT_EQ(IsIconic(handle), FALSE);
}

TEST_F(EditorWindows, EndTheirLoopHoweverTheyAreDestroyed) {
    const struct {
        const char* what;
        void (*end)(HWND);
    } cases[] = {
        {"the system's close box", [](HWND window) { SendMessageW(window, WM_CLOSE, 0, 0); }},
        {"destroyed from outside", [](HWND window) { DestroyWindow(window); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        auto window = open<ui::OpenScene>();
        HWND handle = handleOf(*window);
        test::gui().loop().post([&] { c.end(handle); });
        EXPECT_EQ(test::gui().loop().run(), 0);
        EXPECT_EQ(window->GetNative(), nullptr);
        window.reset();
        EXPECT_EQ(IsWindow(handle), FALSE);
    }
}

TEST_F(EditorWindows, LeaveNoHandleBehindInAHundredVisits) {
    const auto work = [](toolkit::WindowImplBase& window) {
        test::WindowDriver driver(window);
        if (auto* combo = window.FindControl<toolkit::CComboUI>(u"ComboBranchName")) {
            driver.openDropList(*combo);
            combo->CloseDrop();
        }
        driver.hover(platform::Point{30, 30});
        window.GetPaintManager().toolTip().timeOver();
        test::pump();
    };
    visitAll(work); // what the first ones make for good: classes, fonts
    const int before = support::processFigures().handles;
    constexpr int kRounds = 20; // of five windows
    for (int round = 0; round < kRounds; ++round) {
        visitAll(work);
    }
    EXPECT_LE(support::processFigures().handles, before);
}

TEST(WindowsOfANewClass, LeaveNoHandleBehind) {
    test::TestWindow events;
    const auto visit = [&events](const std::u16string& className) {
        platform::WindowOptions options;
        options.className = className;
        options.style = ui::kScreenStyle;
        options.size = {200, 100};
        const auto window = test::gui().windows().createWindow(options, events);
        window->show(true);
        test::pump();
    };
    visit(u"First");
    const int before = support::processFigures().handles;
    visit(u"Second");
    visit(u"Third");
    EXPECT_LE(support::processFigures().handles, before);
}

TEST_F(EditorWindows, TellAScreenReaderOfEveryControl) {
    visitAll([](toolkit::WindowImplBase& window) {
        const auto client = test::clientOf(handleOf(window));
        ASSERT_NE(client, nullptr);
        test::TreeReader(handleOf(window)).readTree(*client, *window.GetPaintManager().GetRoot());
    });
}

} // namespace
