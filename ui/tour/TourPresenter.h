// The tour: five steps about the branch editor, each in a panel beside what it is about, while the
// window works on. It begins by itself when a demo scene is the first scene that is ever opened
// here, and from the menu at any time. Used by the branch editor. UI thread only.
#pragma once

#include <string>
#include <string_view>

#include "edit/Observers.h"
#include "platform/Geometry.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/LeftPane.h"

namespace core {
class EditorSettings;
}

namespace ui {

/// Whether the tour is to begin by itself in the scene of this name, which has just been opened.
/// True once: the settings, which may be null, keep that it was.
[[nodiscard]] bool isTourDue(core::EditorSettings* settings, const std::string& scene);

class TourPresenter {
public:
    /// All outlive it. `step`: the one on show, -1 for none; kept while another screen is open.
    TourPresenter(Controls controls, scene::SceneSession& session, const BranchPresenter& branches,
                  LeftPane& leftPane, int& step);

    [[nodiscard]] bool isShown() const { return m_step >= 0; }
    [[nodiscard]] bool isFirstStep() const { return m_step == 0; }
    /// At the first step.
    void begin() { show(0); }
    /// Goes on at the step that was on show when the window was left.
    void resume() { show(m_step); }
    /// Behind the last step it ends.
    void go(int by);
    void leave();
    /// Has a screen reader read out the step.
    void announce();
    /// Another branch may be on show.
    void refresh();
    /// What the step is about may stand elsewhere.
    void follow();

private:
    void show(int step);
    /// In a narrow window the map has the column's place during its step.
    void turnMap(bool shown);
    [[nodiscard]] std::u16string text() const;
    /// The visible part of the first of the step's subjects that is on show.
    [[nodiscard]] platform::Rect subject() const;
    [[nodiscard]] platform::Rect areaOf(std::u16string_view name) const;
    /// Of all rows of the action list.
    [[nodiscard]] platform::Rect rows() const;

    Controls m_controls;
    const scene::SceneSession& m_session;
    const BranchPresenter& m_branches;
    LeftPane& m_leftPane;
    int& m_step;
    bool m_hasTurnedMap = false;
    edit::Subscription m_subscription;
};

} // namespace ui
