// Undo and Redo of the zone editor, and whether the zones are saved: what the caption shows of the
// history. Part of the zone editor. UI thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "edit/Observers.h"
#include "ui/Controls.h"
#include "ui/SavedState.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class FramesPresenter;
class ZonesPresenter;

class HistoryPresenter {
public:
    /// All but `basePath`, of the zone files, outlive it.
    HistoryPresenter(ui::Controls controls, zone::ZoneSession& session, ZonesPresenter& zones,
                     FramesPresenter& frames, const std::string& basePath);

    // Both show the zone and the frame that changed.
    void undo() { go(m_session.undo()); }
    void redo() { go(m_session.redo()); }
    [[nodiscard]] bool canUndo() const { return m_session.undoLabel() != nullptr; }
    [[nodiscard]] bool canRedo() const { return m_session.redoLabel() != nullptr; }
    /// The names of the steps; empty for none.
    [[nodiscard]] std::u16string undoName() const { return nameOf(m_session.undoLabel()); }
    [[nodiscard]] std::u16string redoName() const { return nameOf(m_session.redoLabel()); }
    void showState();

private:
    void go(const std::optional<zone::StepLabel>& step);
    [[nodiscard]] static std::u16string nameOf(const zone::StepLabel* step);

    zone::ZoneSession& m_session;
    ZonesPresenter& m_zones;
    FramesPresenter& m_frames;
    ui::SavedState m_state;
    std::optional<std::int64_t> m_savedAt;
    edit::Subscription m_changes;
    edit::Subscription m_saves;
};

} // namespace zoneedit
