// The screens as the screen loop sees them. The program's windows implement it; tests stand in for
// them.
#pragma once

#include <optional>

#include "app/state/ScreenState.h"

namespace app {

/// UI thread only.
class Screens {
public:
    virtual ~Screens() = default;
    /// Returns when the screen's window is closed; empty when there was no window to show.
    /// `returned` is the result of the screen above it, when one has just ended.
    [[nodiscard]] virtual std::optional<app_state::ScreenResult>
    show(app_state::Screen screen, const app_state::ScreenResult& returned) = 0;
    /// Loads the scene whose name the open scene window has left; false when that fails (the log
    /// says why).
    [[nodiscard]] virtual bool loadChosenScene() = 0;
};

} // namespace app
