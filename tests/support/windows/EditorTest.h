// The base of window tests: a temporary working directory with skin and texts, the shared services,
// and the editor's windows on a headless screen.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/controls/CListUI.h"
#include "ui/EditorWindow.h"

namespace test {

/// What a combo lists.
[[nodiscard]] std::vector<std::u16string> itemsOf(const toolkit::CComboUI& combo);
/// Whether the option `name` is checked.
[[nodiscard]] bool isChecked(const WindowDriver& driver, std::u16string_view name);
/// The control `name` in row `row` of the list `list`.
template <class T = toolkit::CControlUI>
[[nodiscard]] T& inRow(const WindowDriver& driver, std::u16string_view list, int row,
                       std::u16string_view name) {
    return driver.getIn<T>(*driver.get<toolkit::CListUI>(list).GetItemAt(row), name);
}

/// The texts of the open menu's rows, "-" for a line; empty while none is open.
[[nodiscard]] std::vector<std::u16string> menuOf(const WindowDriver& driver);

/// Puts the skin and the texts into the working directory.
void copySkin();

class EditorTest : public support::TempFolderTest {
protected:
    EditorTest();
    ~EditorTest() override;

    [[nodiscard]] ui::WindowContext context() { return {m_gui, m_state, m_services}; }
    [[nodiscard]] scene::SceneManager& scene() { return *m_services.sceneManager; }
    [[nodiscard]] scene::SceneSession& session() { return *m_services.sceneSession; }
    /// Creates and shows a window; the test pumps its events.
    template <class Window, class... Results>
    std::shared_ptr<Window> open(const Results&... returned) {
        return openTitled<Window>(u"Test", returned...);
    }
    template <class Window, class... Results>
    std::shared_ptr<Window> openTitled(const std::u16string& title, const Results&... returned) {
        forgetQuit();
        auto window = Window::create(context(), returned...);
        if (!window ||
            !window->Create(nullptr, title, ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            throw std::runtime_error("no window");
        }
        window->ShowWindow(true);
        test::pump();
        return window;
    }
    /// Whether the window has closed itself.
    [[nodiscard]] static bool isClosed(const ui::EditorWindow& window) {
        return window.GetNative() == nullptr || window.IsClosing();
    }
    /// Runs `act` in the loop of the next window with this layout, once it is on top.
    void inWindow(const std::string& layout, const std::function<void(const WindowDriver&)>& act);
    /// Runs the loop that a window closed outside of any loop has already asked to end.
    static void forgetQuit();
    /// The folder of a scene below the test's folder, as the editor spells it.
    [[nodiscard]] std::string sceneFolder(const std::string& name) {
        return m_folder.path() + "Scenes/" + name + "\\";
    }

    support::LogCapture m_log;
    ScriptedGui m_gui{test::gui()};
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
};

/// Tests of one kind of window.
template <class Window>
class WindowTest : public EditorTest {
protected:
    /// Ends the window while what its threads may use of the fixture is still there.
    void TearDown() override {
        endWindow();
        EditorTest::TearDown();
    }
    /// Waits for its threads.
    void endWindow() {
        m_driver.reset();
        m_window.reset();
    }
    /// Replaces the previous window.
    template <class... Results>
    WindowDriver& show(const Results&... returned) {
        endWindow();
        m_window = open<Window>(returned...);
        m_driver = std::make_unique<WindowDriver>(*m_window);
        return *m_driver;
    }
    bool isVisible(std::u16string_view name) { return m_driver->get(name).IsVisible(); }

    std::shared_ptr<Window> m_window;
    std::unique_ptr<WindowDriver> m_driver;
};

} // namespace test
