// What is done to many frames of the zone that is edited: filling between keys, copying and
// applying a shape, switching frames on and off. Says on the bar why something was not done. Part
// of the zone editor. UI thread only.
#pragma once

#include <optional>
#include <vector>

#include "ZoneEdit/CopiedShape.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/ShapeEditor.h"
#include "edit/Observers.h"
#include "zone/ShapeStretch.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class RangeActions {
public:
    /// All outlive it.
    RangeActions(zone::ZoneSession& session, ShapeEditor& editor, NoticePresenter& notice);

    [[nodiscard]] bool hasPlace() const { return m_editor.place().has_value(); }
    [[nodiscard]] bool hasRange() const { return hasPlace() && m_editor.range().has_value(); }

    /// Between the keys of the range, or without one between those around the frame on show.
    void interpolate();
    /// Between all keys of the zone.
    void interpolateAll();
    /// Gives the keys of the range and its ends, or those of the gap at the frame on show, one
    /// number of points.
    void matchPoints();
    /// The same for the keys that stood in the way of what was refused last, wherever they are.
    void matchOffered();
    /// Takes the keys of the range away and fills what they leave.
    void deleteKeys();

    void copy();
    [[nodiscard]] bool canPaste() const { return hasPlace() && copiedShape().has_value(); }
    /// Asks what to do with a shape of another number of points.
    void paste();
    /// What was copied, on all frames of the video.
    [[nodiscard]] zone::ShapeStretch pastedZone() const;

    enum class Where { range, onwards, upToHere };
    void applyShape(Where where);
    void setActive(Where where, bool active);
    /// Active on the frames of the range and on no other.
    void activeInRangeOnly();

private:
    /// None, and the bar says so, unless both ends of the range are keys.
    [[nodiscard]] std::optional<std::vector<int>> keysOfGap() const;
    [[nodiscard]] std::optional<zone::FrameRange> framesOf(Where where) const;
    /// Says that the keys cannot be blended, and why.
    void refuse(const std::vector<int>& keys);
    void match(ShapeEditor::Place place, const std::vector<int>& keys);
    void replace(zone::StepLabel::Name name, const zone::NewShapes& shapes);
    [[nodiscard]] const zone::Zone& zone() const;

    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    NoticePresenter& m_notice;
    /// The keys that the bar offers to match, and where that was refused; none after the next step.
    std::vector<int> m_offered;
    ShapeEditor::Place m_offeredAt;
    edit::Subscription m_changes;
};

} // namespace zoneedit
