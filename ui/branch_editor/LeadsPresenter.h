// Who leads to the branch on show: how many actions do, and the list from which the author can go
// to each of them. Used by the branch editor.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"

namespace ui {

/// UI thread only.
class LeadsPresenter {
public:
    using Place = scene::SceneSession::ActionPlace;

    /// The session outlives it. `go` shows an action.
    LeadsPresenter(Controls controls, scene::SceneSession& session,
                   std::function<void(const Place& place)> go);

    /// -1: no branch is on show.
    void show(int branch);
    [[nodiscard]] bool areThere() const { return !m_places.empty(); }
    /// Opens the list at a control.
    void open(std::u16string_view control);

private:
    void changed();
    void read();
    /// As many names of branches as there is room for.
    [[nodiscard]] std::u16string namesText() const;

    Controls m_controls;
    scene::SceneSession& m_session;
    std::function<void(const Place&)> m_go;
    int m_branch = -1;
    std::vector<Place> m_places;
    std::uint64_t m_read = 0; ///< the session's revision at that time
    edit::Subscription m_subscription;
};

} // namespace ui
