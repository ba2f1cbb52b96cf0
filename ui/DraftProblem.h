// Shows as the tool tip of an editor's saved state why unsaved work cannot be kept. UI thread only.
#pragma once

#include "edit/Observers.h"
#include "recovery/Drafts.h"
#include "ui/Controls.h"
#include "ui/DraftTexts.h"
#include "ui/SavedState.h"

namespace ui {

class DraftProblem {
public:
    /// `drafts` outlives it; null: nothing is ever shown.
    DraftProblem(Controls controls, recovery::Drafts* drafts)
        : m_state(controls), m_drafts(drafts) {
        if (m_drafts != nullptr) {
            m_changes = m_drafts->observe([this] { show(); });
            show();
        }
    }

private:
    void show() { m_state.showDraftProblem(draftProblemText(m_drafts->failure())); }

    SavedState m_state;
    recovery::Drafts* m_drafts;
    edit::Subscription m_changes;
};

} // namespace ui
