// The four screens as the screen loop sees them: it shows one at a time and hears nothing back but
// the flags of the screen state. The program's windows implement it; tests stand in for them.
#pragma once

namespace app {

/// Each show returns when its window is closed; false when there was no window to show. UI thread.
class Screens {
public:
    virtual ~Screens() = default;
    [[nodiscard]] virtual bool showOpenScene() = 0;
    [[nodiscard]] virtual bool showNewScene() = 0;
    [[nodiscard]] virtual bool showBranchEditor() = 0;
    [[nodiscard]] virtual bool showZoneEditor() = 0;
    /// Loads the scene whose name the open scene window has left; false when that fails (the log
    /// says why).
    [[nodiscard]] virtual bool loadChosenScene() = 0;
};

} // namespace app
