// The video card: the scene's videos, the one of the branch on show, and the zones that its actions
// can wait for. Used by the branch editor.
#pragma once

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/NameList.h"

namespace ui {

/// UI thread only.
class VideoPresenter {
public:
    /// Whoever shows the zones. It outlives the presenter.
    class Listener {
    public:
        virtual ~Listener() = default;
        /// The branch on show has another video, with other zones(). `picked`: in the list.
        virtual void zonesShown(bool picked) = 0;
    };

    /// `folder` is the scene's, ending in "\"; empty when the working directory is unknown. The
    /// session outlives the presenter.
    VideoPresenter(Controls controls, scene::SceneSession& session, std::string folder,
                   Listener& listener);

    /// Lists the videos of all branches, each once, then the others that were added to the scene,
    /// and reads their zones.
    void fill();
    /// Shows the video of `branch`. One without leaves the list as it is. Intended.
    void show(int branch);
    /// A video was chosen in the list for the branch on show.
    void choose();

    [[nodiscard]] bool isListed(const std::string& name) const;
    /// False when the window has no list for it.
    bool addItem(const std::string& name);
    /// Videos that were listed before are in the scene's folder now.
    void added(const std::vector<std::string>& names) { m_session.addVideos(names); }
    void removeItem(const std::string& name);

    /// Of the video that the list shows; none when they were never loaded.
    [[nodiscard]] const NameList& zones() const { return m_shownZones; }
    /// Whether a video is shown and has no zones.
    [[nodiscard]] bool lacksZones() const;
    /// The selected item of the list, -1 when there is none.
    [[nodiscard]] int selected() const;
    /// The video that Edit Zones opens; empty, and logged if there is no such branch, when there is
    /// nothing to open.
    [[nodiscard]] std::string videoToEdit() const;
    /// The same before that is asked for: logs nothing.
    [[nodiscard]] std::string videoAhead() const;
    /// The own video of the branch on show; empty for none.
    [[nodiscard]] std::string ownVideo() const;
    /// The name in the list; empty for none.
    [[nodiscard]] std::string shownName() const;

private:
    void changed(const scene::SceneSession::Changes& changes);
    /// Lists a video, unless it is listed, and reads its zones.
    void list(const std::string& name);
    /// Lists what undo or an earlier version has brought back. False if all was listed before.
    bool listMissing();
    /// Brings the list up to date with the videos added to the scene.
    void matchAdded();
    void readShownZones();
    /// Says when the list shows another video than the branch has.
    void showOwnVideo();

    Controls m_controls;
    scene::SceneSession& m_session;
    std::string m_folder;
    Listener& m_listener;
    int m_branch = -1;                 ///< on show
    bool m_isOwnEdit = false;          ///< the change being announced is the choice in the list
    bool m_isShowing = false;          ///< the program makes the choice in the list
    std::vector<std::string> m_videos; ///< stored names, in the order of the list
    std::unordered_set<std::string> m_listed; ///< the same names, to look them up
    std::vector<std::string> m_added;         ///< those of them that were added to the scene
    std::map<std::string, NameList> m_zones;  ///< names of the zones, by stored video name
    NameList m_shownZones;
    edit::Subscription m_subscription;
};

} // namespace ui
