// Holders of the long-lived shared objects, so that windows can take a copy of the pointer without
// their module depending on the one that creates them. Main thread only.
#pragma once

#include <memory>

#include "app/state/Installation.h"

namespace check {
class FactsReader;
}
namespace core {
class EditorSettings;
class Translations;
} // namespace core
namespace recovery {
class Drafts;
}
namespace scene {
class SceneManager;
class SceneSession;
} // namespace scene
namespace stills {
class StillService;
}
namespace ui {
class KeyMap;
class SceneImports;
} // namespace ui

namespace app_state {

/// Filled at start-up, emptied at shutdown (the scene first).
struct SharedServices {
    Installation installation; ///< stays as it is for the whole run
    std::shared_ptr<core::Translations> translations;
    std::shared_ptr<core::EditorSettings> editorSettings;
    std::shared_ptr<scene::SceneManager> sceneManager;
    /// All edits of what the scene manager holds go through it.
    std::shared_ptr<scene::SceneSession> sceneSession;
    /// What is known of the files of the scene that was open last; empty before. Used by one window
    /// at a time.
    std::shared_ptr<check::FactsReader> sceneFiles;
    /// Unsaved work of both editors; while there are windows.
    std::shared_ptr<recovery::Drafts> drafts;
    /// Small pictures of clips; while there are windows.
    std::shared_ptr<stills::StillService> stills;
    /// Videos being imported into the scene that was open last; empty before, and once there are no
    /// windows.
    std::shared_ptr<ui::SceneImports> sceneImports;
    /// Made by the first window.
    std::shared_ptr<ui::KeyMap> keyMap;
};

} // namespace app_state
