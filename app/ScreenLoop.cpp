#include "app/ScreenLoop.h"

#include <cstdint>

#include "core/Log.h"

namespace app {

using app_state::Screen;

ScreenLoop::ScreenLoop(app_state::ScreenState& state, platform::ComponentLibrary& components,
                       Screens& screens)
    : m_state(state), m_components(components), m_screens(screens) {}

bool ScreenLoop::run() {
    std::uint32_t error = 0;
    const bool initialized = m_components.initialize(error);
    if (initialized) {
        m_state.quit = false;
        m_state.newSceneRequest = false;
        do {
            runScreen();
        } while (!m_state.quit);
    } else {
        core::Log::get()->Error("CoInitialize failed (%08X)", error);
    }
    m_components.uninitialize();
    return initialized;
}

void ScreenLoop::runScreen() {
    switch (m_state.screen) {
    case Screen::openScene:
        return runOpenScene();
    case Screen::newScene:
        return runNewScene();
    case Screen::branchEditor:
        return runBranchEditor();
    case Screen::zoneEditor:
        return runZoneEditor();
    }
}

void ScreenLoop::runOpenScene() {
    if (!m_screens.showOpenScene()) {
        m_state.quit = true;
    }
    if (m_state.quit) {
        return;
    }
    if (m_state.newSceneRequest) {
        m_state.screen = Screen::newScene;
    } else if (m_screens.loadChosenScene()) {
        m_state.screen = Screen::branchEditor;
    }
}

void ScreenLoop::runNewScene() {
    m_state.newSceneRequest = false;
    if (!m_screens.showNewScene()) {
        m_state.quit = true;
    }
    if (!m_state.quit) {
        m_state.screen = m_state.sceneCreated ? Screen::branchEditor : Screen::openScene;
    }
}

void ScreenLoop::runBranchEditor() {
    if (!m_screens.showBranchEditor()) {
        m_state.quit = true;
    }
    if (!m_state.quit && m_state.zoneEditRequest) {
        m_state.screen = Screen::zoneEditor;
    }
}

void ScreenLoop::runZoneEditor() {
    m_state.zoneEditRequest = false;
    if (!m_screens.showZoneEditor()) {
        m_state.quit = true;
    }
    if (!m_state.quit) {
        m_state.screen = Screen::branchEditor;
    }
}

} // namespace app
