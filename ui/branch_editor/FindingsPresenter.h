// What is wrong with the scene, as a list that follows every edit: the list at the foot of the left
// pane, its head with a filter for each severity, and the number on the button in the caption. It
// changes nothing in the scene. Used by the branch editor.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "check/Finding.h"
#include "check/SceneCheck.h"
#include "edit/Observers.h"
#include "jobs/BackgroundJob.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"

namespace check {
class FactsReader;
}
namespace core {
class EditorSettings;
}
namespace platform {
class EventLoop;
}
namespace toolkit {
class CControlUI;
}

namespace ui {

/// UI thread only.
class FindingsPresenter {
public:
    /// Who knows the window's other parts. It outlives the presenter.
    class Listener {
    public:
        virtual ~Listener() = default;
        /// The finding was chosen: shows where it is. `opens`: in another window too.
        virtual void showPlace(const check::Finding& finding, bool opens) = 0;
        /// What there is to find may be something else now.
        virtual void findingsChanged() = 0;
    };

    /// `reader` reads the scene's folder; empty when that is unknown. Nobody else uses it
    /// meanwhile. `settings` may be null. All others outlive the presenter.
    FindingsPresenter(Controls controls, scene::SceneSession& session,
                      std::shared_ptr<check::FactsReader> reader, platform::EventLoop& loop,
                      core::EditorSettings* settings, Listener& listener);
    ~FindingsPresenter();
    FindingsPresenter(const FindingsPresenter&) = delete;
    FindingsPresenter& operator=(const FindingsPresenter&) = delete;

    /// Files may have changed: reads again, in the background, those that have.
    void readFiles();
    /// Videos being copied into the folder: nothing is said about them. None: the copy has ended.
    void setCopying(std::set<std::string> names);

    /// A row was selected, by the pointer or by a key.
    void choose(bool byPointer);
    /// Selects the next finding, or the one before, and shows where it is.
    void step(int by);
    /// How many the branch has.
    [[nodiscard]] int errorsOf(int branch) const;
    /// All that there are, whatever the filter shows.
    [[nodiscard]] std::vector<check::Finding> errors() const;
    [[nodiscard]] bool hasRows() const { return !m_shown.empty(); }
    /// A filter or the fold was pressed.
    void filter();
    void turnFold();
    /// Folded, only the head is left. Until the author folds it, a low window has no list.
    void fold(bool folded);
    [[nodiscard]] bool isFolded() const { return m_isFolded; }
    void windowSized();
    /// The author has moved the splitter above.
    void keepHeight();

private:
    void changed(const scene::SceneSession::Changes& changes);
    void update();
    void showList();
    void showCounts();
    void showFold();
    [[nodiscard]] std::vector<const check::Finding*> wanted() const;
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int row) const;
    [[nodiscard]] std::string placeOf(const check::Finding& finding) const;
    [[nodiscard]] const check::Finding* selected() const;

    Controls m_controls;
    scene::SceneSession& m_session;
    core::EditorSettings* m_settings;
    Listener& m_listener;
    int m_height;
    bool m_isFolded = false;
    bool m_isFoldChosen = false; ///< by the author
    check::SceneCheck m_check;
    std::vector<check::Finding> m_shown; ///< by row
    std::optional<check::Counts> m_shownCounts;
    bool m_areNamesNew = false; ///< since the rows were made
    std::set<std::string> m_copying;
    std::set<std::string> m_videos; ///< that facts were asked for
    bool m_isSelecting = false;     ///< the program selects a row
    bool m_readsAgain = false;
    std::shared_ptr<check::FactsReader> m_reader;
    jobs::BackgroundJob m_job;
    edit::Subscription m_subscription;
};

} // namespace ui
