// Keeps the unsaved zones of the video that is edited, and restores what was kept of them. Lives as
// long as the editor of that video. UI thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "edit/Observers.h"
#include "recovery/DraftFolder.h"
#include "recovery/Drafts.h"
#include "recovery/KeptDrafts.h"
#include "zone/ZoneSession.h"

namespace recovery {

class ZoneDraft {
public:
    /// Session and drafts outlive the object; `video` is the path of a video of `scene`.
    ZoneDraft(zone::ZoneSession& session, Drafts& drafts, const std::string& scene,
              const std::string& video);

    /// The newest draft of these zones that can be restored; null if there is none.
    [[nodiscard]] const KeptDraft* offered() const { return m_offered ? &*m_offered : nullptr; }
    /// Whether the zones were saved after it was begun.
    [[nodiscard]] bool isSavedSince() const;
    /// Restores the offered draft as one step. False, logged, if it cannot be had; either way it is
    /// no longer offered.
    bool restore();

private:
    [[nodiscard]] std::optional<DraftContent> unsaved() const;

    zone::ZoneSession& m_session;
    std::string m_basePath;
    std::optional<KeptDraft> m_offered;
    std::unique_ptr<Draft> m_draft;
    edit::Subscription m_changes;
    edit::Subscription m_saves;
};

} // namespace recovery
