// The row of the video card that shows the clip of the branch on show: a still, its length, the
// size of its picture and, where the window has room, of its file. UI thread only.
#pragma once

#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "stills/Still.h"
#include "stills/StillService.h"
#include "ui/Controls.h"

namespace ui {

class ClipCard {
public:
    /// `stills` outlives the card; without it, nothing is shown.
    ClipCard(Controls controls, stills::StillService* stills);

    /// The clip at `path`, absolute; empty for a branch without one. `isNew`: another file may be
    /// there than before.
    void show(const std::string& path, bool isNew);
    /// There is no branch.
    void hide();
    /// The controls are laid out for another size of the window: something else may have room.
    void windowSized() { showFacts(); }

    /// Of the picture: twice the size of the large place, sharp on every screen.
    static constexpr platform::Size kStillBox{220, 124};

private:
    void showFacts();
    [[nodiscard]] stills::StillRequest request() const;
    void showTexts(const stills::Still& still);

    Controls m_controls;
    std::string m_path;
    std::unique_ptr<stills::StillClient> m_client; ///< null without a service
};

} // namespace ui
