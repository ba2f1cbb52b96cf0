// What an edit of a shape reaches: the frame on show alone, all later ones, those up to the keys
// beside it, or the marked range. Drags, keys and fields of the zone editor edit shapes through
// this. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "ZoneEdit/EditedVideo.h"
#include "platform/Geometry.h"
#include "zone/SessionKeys.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeEdits.h"
#include "zone/ShapeStretch.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace core {
class EditorSettings;
}

namespace zoneedit {

class ShapeEditor {
public:
    using Range = std::function<std::optional<zone::FrameRange>()>;

    /// All outlive it. `settings` may be null. `range` gives the marked one.
    ShapeEditor(const EditedVideo& video, zone::ZoneSession& session, zone::SessionKeys& keys,
                Range range, core::EditorSettings* settings);

    /// Whether a drag blends up to the keys on both sides. Kept between runs.
    [[nodiscard]] bool fills() const { return m_fills; }
    void setFills(bool fills);
    /// How frames between keys are filled. Kept between runs.
    [[nodiscard]] zone::BlendWay way() const { return m_way; }
    void setWay(zone::BlendWay way);

    struct Place {
        int zone = -1;
        int frame = -1;

        bool operator==(const Place&) const = default;
    };
    /// The zone that is edited and the frame on show; none when one of them is missing.
    [[nodiscard]] std::optional<Place> place() const;
    /// Of that place; empty without.
    [[nodiscard]] zone::Points points() const;
    /// The handle that is chosen there: a point's index, their number for the centre, or -1.
    [[nodiscard]] int handle() const;
    /// Where it is; none without. Shapes of fewer than three points have no centre to take hold of.
    [[nodiscard]] std::optional<platform::Point> handlePlace() const;
    /// The keys that the author would name, of the zone that is edited.
    [[nodiscard]] std::vector<int> keys() const;
    /// Those at which the author has put the shape: without what only looks like a key where
    /// something was followed, and without mere changes of the active flag.
    [[nodiscard]] std::vector<int> keysOfAuthor() const;
    /// Those that the timeline marks. Valid until the next call.
    [[nodiscard]] const zone::ShapeKeys& markedKeys() const;
    [[nodiscard]] std::optional<zone::FrameRange> range() const { return m_range(); }

    /// What an edit begins with. Each of its steps is worked out from this anew.
    struct Start {
        Place place;
        std::shared_ptr<const zone::Zone> before; ///< empty for a plain move
        zone::EditReach reach;
        int handle = -1;
        platform::Point at; ///< of the handle
        bool isPlain = true;
    };
    /// For the whole shape. None without a place.
    [[nodiscard]] std::optional<Start> start() const { return start(true, false); }
    /// For what the chosen handle moves.
    [[nodiscard]] std::optional<Start> startMove() const;
    /// The zone becomes what `reshape` makes of the start.
    void reshape(const Start& start, zone::StepLabel::Name name, const zone::Reshape& reshape);
    /// Where move() gets the chosen handle to: points stay in the picture area.
    [[nodiscard]] platform::Point reachable(platform::Point to) const;
    /// Puts the chosen handle there.
    void move(const Start& start, platform::Point to);
    /// The name of the step that such a move is.
    [[nodiscard]] static zone::StepLabel::Name moveName(const Start& start);
    /// Adds a point on every frame, to the edge that is at most that far from `at` there, and
    /// chooses it. False where there is none, or a handle.
    bool insertOnEdge(Place place, platform::Point at, double reach);
    /// An edit of the whole shape in one step.
    void reshapeAll(zone::StepLabel::Name name, const zone::Reshape& reshape);

private:
    /// Those of `keys`, in order, that the author would name.
    [[nodiscard]] std::vector<int> authored(std::vector<int> keys) const;
    [[nodiscard]] bool isCentreChosen() const;
    /// Edits of the whole shape change the marked range, if the frame on show is one of it.
    [[nodiscard]] std::optional<Start> start(bool isWhole, bool isMove) const;

    const EditedVideo& m_video;
    zone::ZoneSession& m_session;
    zone::SessionKeys& m_keys;
    Range m_range;
    core::EditorSettings* m_settings;
    bool m_fills;
    zone::BlendWay m_way;
};

} // namespace zoneedit
