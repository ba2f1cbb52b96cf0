// The loop over screens: it owns their order and the flags by which windows pass control on.
//
//   ScreenLoop loop(state, components, screens);
//   bool good = loop.run();
//
// Screens never nest. Main thread only.
#pragma once

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
    void runScreen();
    void runOpenScene();
    void runNewScene();
    void runBranchEditor();
    void runZoneEditor();

    app_state::ScreenState& m_state;
    platform::ComponentLibrary& m_components;
    Screens& m_screens;
};

} // namespace app
