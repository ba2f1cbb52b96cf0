// Keeps the unsaved work of the open scene: follows the session through edits, saves and the
// opening of other scenes, and opens a scene with what was kept of it. There is one for the whole
// run. UI thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "edit/Observers.h"
#include "recovery/DraftFolder.h"
#include "recovery/Drafts.h"
#include "scene/SceneSession.h"

namespace recovery {

class SceneDraft {
public:
    /// Both outlive the object.
    SceneDraft(scene::SceneSession& session, Drafts& drafts);

    /// Opens the scene that the list calls `name`; false, logged, if it cannot be read.
    bool load(const std::string& name);
    /// Opens the saved scene that the draft in `folder` was made of, or an empty one if there is
    /// none, and restores the draft as one step. False, logged, if the draft cannot be had; nothing
    /// is opened then.
    bool restore(const std::string& folder);
    /// Writes what is not in the draft yet, before the scene's window is left.
    void flush();
    /// The scene is not going to be edited any more: its unsaved work stays as a draft that can be
    /// restored in this run too. Whether there is any.
    bool leave();

private:
    void opened(std::string listedAs);
    [[nodiscard]] std::optional<DraftContent> unsaved() const;

    scene::SceneSession& m_session;
    Drafts& m_drafts;
    std::optional<std::string> m_loading; ///< the name in the list, while a scene is loaded by it
    std::unique_ptr<Draft> m_draft;       ///< none until a scene is opened
    edit::Subscription m_openings;
    edit::Subscription m_changes;
    edit::Subscription m_saves;
};

/// Whether the scene's file is another one now than when the draft was begun.
[[nodiscard]] bool isSceneSavedSince(const DraftInfo& info);

} // namespace recovery
