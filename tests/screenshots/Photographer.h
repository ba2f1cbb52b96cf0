// Opens the editor's windows as the editor does and writes their pictures.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "scene/SceneSession.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/window/WindowImplBase.h"
#include "ui/WindowContext.h"

namespace screenshots {

/// The end of the name of a window's picture in this size: "@1366x728".
[[nodiscard]] std::string sizeSuffix(platform::Size size);

class Photographer {
public:
    /// Makes `folder`. `plain`: pictures without texts.
    Photographer(std::filesystem::path folder, bool plain);

    [[nodiscard]] bool isPlain() const { return m_isPlain; }
    [[nodiscard]] test::ScriptedGui& gui() { return m_gui; }
    [[nodiscard]] app_state::ScreenState& state() { return m_state; }
    [[nodiscard]] app_state::SharedServices& services() { return m_services; }
    [[nodiscard]] scene::SceneSession& session() { return *m_services.sceneSession; }
    [[nodiscard]] ui::WindowContext context() { return {m_gui, m_state, m_services}; }

    /// Notes whether something that the pictures depend on has come, and says what has not.
    void require(bool works, std::string_view what);
    /// Whether all of it has.
    [[nodiscard]] bool isGood() const { return m_isGood; }

    /// The demo scene as its files hold it.
    void loadDemo();

    /// From now on the windows show pictures of clips, once these are made.
    void startStills();
    /// Those of the scene's clips are made already.
    void makeStills();

    /// From now on: a screen on which the zone editor has its small layout.
    void useLowScreen();
    /// From now on: the end of the pictures' names.
    void setSuffix(std::string suffix);

    void open(toolkit::WindowImplBase& window, platform::NativeWindow* owner = nullptr);

    template <class Window>
    [[nodiscard]] std::shared_ptr<Window> opened() {
        auto window = Window::create(context());
        open(*window);
        return window;
    }

    /// Opens a window, lets `act` work in it and writes its picture.
    template <class Window>
    void take(
        const std::string& name,
        const std::function<void(test::WindowDriver&)>& act = [](test::WindowDriver&) {}) {
        const auto window = opened<Window>();
        test::WindowDriver driver(*window);
        act(driver);
        shoot(name, *window);
    }

    /// The picture of the window; without texts where they are left out.
    [[nodiscard]] platform::Bitmap pictureOf(toolkit::WindowImplBase& window) const;
    void save(const std::string& name, const platform::Bitmap& picture) const;
    void shoot(const std::string& name, toolkit::WindowImplBase& window) const;

private:
    test::ScriptedGui m_gui;
    std::filesystem::path m_folder;
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    std::string m_suffix;
    bool m_isPlain;
    bool m_isGood = false;
};

} // namespace screenshots
