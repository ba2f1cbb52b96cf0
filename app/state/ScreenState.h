// The screen number and the flags by which windows steer the screen loop. The loop in app owns the
// one record and reads it; windows write it. Main thread only.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace app_state {

enum class Screen { openScene = 0, newScene = 1, branchEditor = 2, zoneEditor = 3 };

/// The result of a screen, for the one below it on the stack.
struct ScreenResult {
    /// The zone editor closed itself because it could not read this video; UTF-8 path, else empty.
    std::string unreadableVideo;
    struct Rename {
        std::string from;
        std::string to;
    };
    /// The zones of the video that zoneEditVideo names still that got other names in its files.
    std::vector<Rename> renamedZones{};
};

/// Where the branch editor stands in a scene.
struct BranchPlace {
    int branch = 0;
    int action = -1; ///< the selected one, -1 for none
    int scroll = 0;  ///< of the actions, in pixels
};

/// Where the zone editor stands in a video.
struct ZonePlace {
    int frame = 0;
    int zone = -1;
};

struct ScreenState {
    Screen screen = Screen::openScene;
    bool quit = false;
    bool newSceneRequest = false;
    /// Stays while the open scene window is not asked for again: a later New Scene window that is
    /// left by Back leads to the branch editor. Intended.
    bool sceneCreated = false;
    bool zoneEditRequest = false;
    /// The branch editor asks for the open scene window, or that one to be shown again.
    bool openSceneRequest = false;
    /// The video that the zone editor opens; UTF-8 path.
    std::string zoneEditVideo;
    /// The zone editor opens where it last left that video.
    bool zoneEditResumes = false;
    /// Where it has left each video in this run, by path.
    std::map<std::string, ZonePlace> zonePlaces;
    /// Where the branch editor was left for the zone editor; empty once it is back there.
    std::optional<BranchPlace> branchPlace;
    /// Of the branch editor's tour, the one on show; -1: none.
    int tourStep = -1;
    /// The folder of the draft that the open scene window asks to restore; empty: none.
    std::string draftToRestore;
    /// The folder of the draft that the author chose last, if it could not be restored: it is not
    /// offered. Empty otherwise.
    std::string unreadableDraft;
    /// The author does not want to see drafts offered in this run.
    bool draftsHidden = false;
};

} // namespace app_state
