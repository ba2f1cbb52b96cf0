// Finds branches by any part of their names: the field above the left pane. Typing only says when
// no branch has the name; Enter shows the next one that does. Used by the branch editor.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"

namespace ui {

class BranchPresenter;
class LeftPane;
class StripPresenter;

/// The places of the names that have `text` in them, in small or capital letters; none for an empty
/// text.
[[nodiscard]] std::vector<int> namesWith(const std::vector<std::u16string>& names,
                                         std::u16string_view text);

/// UI thread only.
class BranchFind {
public:
    /// All outlive it.
    BranchFind(Controls controls, scene::SceneSession& session, BranchPresenter& branches,
               LeftPane& pane, StripPresenter& strip);

    /// Puts the cursor into the field, and shows the page of the pane that it stands on.
    void begin();
    /// The text in the field has changed.
    void typed();
    /// Shows the next branch found, or the one before, round at the ends.
    void go(int by);
    /// Whether something is being looked for, or could be typed now.
    [[nodiscard]] bool isActive() const;
    /// Empties the field and leaves it.
    void end();
    /// The branches that have what was typed in their names, ascending.
    [[nodiscard]] std::vector<int> found() const;

private:
    [[nodiscard]] std::u16string text() const;

    Controls m_controls;
    BranchPresenter& m_branches;
    LeftPane& m_pane;
    StripPresenter& m_strip;
    bool m_isNoted = false; ///< the strip says that there is none
    edit::Subscription m_subscription;
};

} // namespace ui
