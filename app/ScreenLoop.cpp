#include "app/ScreenLoop.h"

#include <cstdint>
#include <utility>

#include "core/Log.h"

namespace app {

using app_state::Screen;
using app_state::ScreenResult;

namespace {

/// The screen and those below it.
std::vector<Screen> stackUpTo(Screen screen) {
    switch (screen) {
    case Screen::newScene:
    case Screen::branchEditor:
        return {Screen::openScene, screen};
    case Screen::zoneEditor:
        return {Screen::openScene, Screen::branchEditor, screen};
    case Screen::openScene:
        break;
    }
    return {screen};
}

} // namespace

ScreenLoop::ScreenLoop(app_state::ScreenState& state, platform::ComponentLibrary& components,
                       Screens& screens)
    : m_state(state), m_components(components), m_screens(screens) {}

bool ScreenLoop::run() {
    std::uint32_t error = 0;
    const bool initialized = m_components.initialize(error);
    if (initialized) {
        m_stack = stackUpTo(m_state.screen);
        m_state.quit = false;
        m_state.newSceneRequest = m_state.openSceneRequest = false;
        do {
            runTop();
        } while (!m_state.quit);
    } else {
        core::Log::get()->Error("CoInitialize failed (%08X)", error);
    }
    m_components.uninitialize();
    return initialized;
}

void ScreenLoop::runTop() {
    // A request is done once its screen is shown.
    if (m_state.screen == Screen::openScene) {
        m_state.openSceneRequest = false;
    } else if (m_state.screen == Screen::newScene) {
        m_state.newSceneRequest = false;
    } else if (m_state.screen == Screen::zoneEditor) {
        m_state.zoneEditRequest = false;
    }
    const auto result = m_screens.show(m_state.screen, std::exchange(m_returned, {}));
    if (!result) {
        m_state.quit = true;
    }
    if (!m_state.quit) {
        leaveTop(*result);
    }
}

void ScreenLoop::leaveTop(const ScreenResult& result) {
    switch (m_state.screen) {
    case Screen::openScene:
        if (m_state.newSceneRequest) {
            push(Screen::newScene);
        } else if (!m_state.openSceneRequest && m_screens.loadChosenScene()) {
            push(Screen::branchEditor);
        }
        break;
    case Screen::newScene:
        pop(result);
        if (m_state.sceneCreated) {
            push(Screen::branchEditor);
        }
        break;
    case Screen::branchEditor:
        if (m_state.zoneEditRequest) {
            push(Screen::zoneEditor);
        } else if (m_state.openSceneRequest) {
            m_state.sceneCreated = false; // what follows is like another run
            pop(result);
        }
        break;
    case Screen::zoneEditor:
        pop(result);
        break;
    }
}

void ScreenLoop::push(Screen screen) {
    m_stack.push_back(screen);
    m_state.screen = screen;
    m_returned = {};
}

void ScreenLoop::pop(const ScreenResult& result) {
    m_stack.pop_back();
    m_state.screen = m_stack.back();
    m_returned = result;
}

} // namespace app
