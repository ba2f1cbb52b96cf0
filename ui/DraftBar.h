// The bar of the open scene window that offers unsaved work: that of the chosen scene or, if it has
// none, the newest. Hidden while there is none, and for the rest of the run once the author has
// hidden it. UI thread only.
#pragma once

#include <string>
#include <vector>

#include "app/state/ScreenState.h"
#include "recovery/KeptDrafts.h"
#include "ui/Controls.h"

namespace ui {

class DraftBar {
public:
    /// Looks for drafts. `state` outlives the bar.
    DraftBar(const Controls& controls, app_state::ScreenState& state);

    /// `scene` is the chosen one by its name in the list; empty for none.
    void show(const std::string& scene);
    /// Null while nothing is offered.
    [[nodiscard]] const recovery::KeptDraft* offered() const { return m_offered; }
    void hide();

private:
    Controls m_controls;
    app_state::ScreenState& m_state;
    std::vector<recovery::KeptDraft> m_drafts; ///< the newest first
    const recovery::KeptDraft* m_offered = nullptr;
};

} // namespace ui
