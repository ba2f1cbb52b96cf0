// The loop over the screens, which form a stack: open scene, above it new scene or the branch
// editor, above that the zone editor. Only the top one has a window. The flags of the screen state
// say what comes next; the result of a screen goes to the one below it.
//
//   ScreenLoop loop(state, components, screens);
//   bool good = loop.run();
//
// Main thread only.
#pragma once

#include <vector>

#include "app/Screens.h"
#include "app/state/ScreenState.h"
#include "platform/Gui.h"

namespace app {

class ScreenLoop {
public:
    /// All three outlive the loop.
    ScreenLoop(app_state::ScreenState& state, platform::ComponentLibrary& components,
               Screens& screens);

    /// Shows screens from the state's present one on until a window sets the quit flag. False when
    /// the system's components cannot be initialised: nothing is shown then.
    [[nodiscard]] bool run();

private:
    void runTop();
    void leaveTop(const app_state::ScreenResult& result);
    void push(app_state::Screen screen);
    void pop(const app_state::ScreenResult& result);

    app_state::ScreenState& m_state;
    platform::ComponentLibrary& m_components;
    Screens& m_screens;
    std::vector<app_state::Screen> m_stack; ///< the last is the state's present one
    app_state::ScreenResult m_returned;     ///< for the next screen shown
};

} // namespace app
