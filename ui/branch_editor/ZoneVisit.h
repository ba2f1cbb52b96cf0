// The way to the zone editor and back: which video it opens, and where the branch editor stands
// when the author returns. Used by the branch editor.
#pragma once

#include <functional>
#include <string>

#include "app/state/ScreenState.h"
#include "ui/branch_editor/StripOffer.h"

namespace scene {
class SceneSession;
}

namespace ui {

class ActionPresenter;
class BranchPresenter;
class ChosenActions;
class VideoPresenter;

/// UI thread only.
class ZoneVisit {
public:
    /// What it reads and sets; all outlive it. `folder` is the scene's, ending in "\".
    struct Parts {
        scene::SceneSession& session;
        const std::string& folder;
        app_state::ScreenState& state;
        BranchPresenter& branches;
        ActionPresenter& actions;
        ChosenActions& chosen;
        const VideoPresenter& videos;
    };
    explicit ZoneVisit(const Parts& parts) : m_parts(parts) {}

    /// The next branch editor stands where this one does.
    void keepPlace();
    /// Asks for the zone editor once the window is closed. `resumes`: where it last left the video.
    void begin(const std::string& video, bool resumes);
    /// Shows what was on show when the visit began, if there was one, and offers to have the
    /// actions follow the zones that were renamed.
    void end(const app_state::ScreenResult& result, const std::function<void(StripOffer)>& offer);
    /// What the author has to know of the zones that can be drawn now; empty for nothing.
    [[nodiscard]] std::u16string hint() const;

private:
    Parts m_parts;
};

} // namespace ui
