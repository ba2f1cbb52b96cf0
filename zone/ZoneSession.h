// The one object through which a zone editor edits: every change of the zones is a named step that
// can be taken back and done again, and listeners learn what it changed. Holds the zones, the
// history and what editing remembers. Owned by the zone editor. UI thread only.
//
// Operations given a zone or frame that is not there log what ZoneManager logs and are no step;
// neither is one that would change nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "edit/Announcements.h"
#include "edit/History.h"
#include "edit/Observers.h"
#include "platform/Geometry.h"
#include "zone/EditContext.h"
#include "zone/NewShapes.h"
#include "zone/SavedContent.h"
#include "zone/ShapeStretch.h"
#include "zone/ShapedFrames.h"
#include "zone/StepLabel.h"
#include "zone/StepReach.h"
#include "zone/TrackChanges.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneOperations.h"

namespace zone {

class ZoneSession {
public:
    struct Types {
        using Model = ZoneModel;
        using Change = ZoneChange;
        using Label = StepLabel;
        using Operation = ZoneOperation;
    };
    using History = edit::History<Types>;

    /// Edits `zones`, which is not empty; what it holds now counts as saved.
    explicit ZoneSession(std::shared_ptr<ZoneManager> zones, edit::Limits limits = {});

    [[nodiscard]] const ZoneManager& zones() const { return *m_model.zones; }
    [[nodiscard]] const EditContext& context() const { return m_model.context; }

    // What editing remembers. These are no steps, and listeners are not called.
    void chooseZone(int zone);
    void setProgressChanges(bool on) { m_model.context.progressChanges = on; }
    /// The frame on show: its centre handle can be hit where the current zone's shape has it now.
    void showFrame(int frame);
    /// The picture area, to which points are clamped and which saves write.
    void setArea(platform::Size area);
    /// How far handles reach: half their side, in display pixels.
    void setHandleReach(double reach) { m_model.context.handleReach = reach; }
    /// Selects the handle at (x, y), or none; true when there is one.
    bool hitTest(int zone, int frame, int x, int y);
    // What a press would do; they log nothing.
    [[nodiscard]] bool isHandleAt(int zone, int frame, int x, int y) const;
    [[nodiscard]] bool takesPoint(int zone) const;
    [[nodiscard]] bool hasPointAt(int zone, int x, int y) const;
    /// The nearest place in the picture area.
    [[nodiscard]] platform::Point clamped(platform::Point point) const;
    /// As editing begins for a zone that it has not touched.
    [[nodiscard]] const ZoneEditing& editingOf(int zone) const;
    void endMove(int zone, int frame, int x, int y) const { zones().endMove(zone, frame, x, y); }

    /// Everything up to endGesture becomes one step of that name, or none when nothing was done.
    /// Meant for a press of the mouse up to its release.
    void beginGesture(StepLabel label);
    void endGesture();
    /// Takes back what was done since beginGesture.
    void cancelGesture();
    [[nodiscard]] bool inGesture() const { return m_gesture.has_value(); }

    // Never part of a gesture, which they end.
    /// Appends a zone without shapes, or with those of its first frames, and makes it the current
    /// one.
    void addZone(const std::string& name, int frameCount, const ShapeStretch* shapes = nullptr);
    void removeZone(int zone);
    /// A copy behind it, with a name of its own, becomes the current one; a step "add zone".
    void duplicateZone(int zone);
    void renameZone(int zone, const std::string& name);
    void setActive(int zone, int frame, bool active);

    /// Makes the zones of `version` the contents, as the step "restore version". False, with
    /// nothing changed, when they do not count as many frames as the video; true without a step
    /// when a save would write the same bytes, which takes a while to find out for long zones that
    /// are alike, and is not asked where it `isKnownToDiffer`. `version` may be changed afterwards.
    bool restore(const ZoneManager& version, bool isKnownToDiffer = false);

    void moveSelectedPoint(int zone, int frame, int x, int y);
    void addPoint(int zone, int frame, int x, int y);
    void deletePoint(int zone, int frame, int x, int y);
    /// Gives frames of a zone, which are there, other shapes. May be repeated in a gesture, for the
    /// same frames without a cost that adds up.
    void replaceShapes(const StepLabel& label, NewShapes shapes);

    /// How far the last step reached. Plain after an undo or redo, and while a gesture is open.
    [[nodiscard]] StepReach reach() const;
    /// After a step that reached over later frames with shapes of their own: gives them these back.
    /// Step and correction are one step. False when there is no such step.
    bool keepToOneFrame();
    /// Whether extendToAllFrames() has an effect.
    [[nodiscard]] bool canExtend() const;
    /// After a point was added or removed on some frames, or added where the shape is on one of
    /// them alone: does it on all. A new point goes where its neighbours are; where frames lack
    /// these, it becomes their last. Of removed ones, all are of the same number. One step, too.
    bool extendToAllFrames();

    /// The step that was taken back or done again; none when there is none or a gesture is open.
    std::optional<StepLabel> undo();
    std::optional<StepLabel> redo();
    [[nodiscard]] const StepLabel* undoLabel() const { return m_history.undoLabel(); }
    [[nodiscard]] const StepLabel* redoLabel() const { return m_history.redoLabel(); }
    /// The listener is called after each operation, undo and redo, and once more when a gesture
    /// has become a step.
    [[nodiscard]] edit::Subscription observe(History::Listener listener);
    [[nodiscard]] const History& history() const { return m_history; }

    /// As ZoneManager::save; a good one makes the zones count as saved.
    bool save(const std::string& videoPath);
    /// The listener is called after each save.
    [[nodiscard]] edit::Subscription observeSaves(std::function<void(bool good)> listener);
    /// Whether a save would write other bytes now than right after opening or the last good save.
    [[nodiscard]] bool isModified() const { return m_model.saved.differs(zones()); }
    /// What a save would write now, for a thread that writes it elsewhere: see
    /// ZoneManager::snapshot(). May be taken in the middle of a gesture.
    [[nodiscard]] std::shared_ptr<const ZoneManager> snapshot();
    /// Another number after every change, undo and redo, so that whoever took a snapshot knows
    /// whether it is the latest state. Never the same again.
    [[nodiscard]] std::uint64_t changeCount() const { return m_model.changeCount; }

private:
    /// What was added or removed last.
    struct LastPoint {
        platform::Point at;
        int index = -1;   ///< of an added one, on the edited frame; -1: it got none
        double reach = 0; ///< of handles then
    };

    [[nodiscard]] bool isThere(int zone, int frame) const;
    [[nodiscard]] bool changesNothing(int zone, const NewShapes& shapes) const;
    void run(const StepLabel& label, ZoneOperation operation);
    void edit(const StepLabel& label, FrameRange frames, EditShapes::Edit edit,
              TrackChanges::Keep keep = TrackChanges::Keep::all, const ShapedFrames& shaped = {});
    /// A step that is never part of a gesture.
    void runAlone(const StepLabel& label, ZoneOperation operation);
    void beginReach(const StepLabel& label);
    void noteLastPoint(int zone, int frame, platform::Point at);
    void addToAllFrames(const StepLabel& label, int index);
    [[nodiscard]] FrameRange allFrames(int zone) const;
    [[nodiscard]] FrameRange spreadFrom(int zone, int frame) const;

    /// What a moved handle depends on: a drag's moves differ in their place alone.
    struct Move {
        int zone = -1;
        int frame = -1;
        int handle = -1;
        bool progressChanges = false;

        bool operator==(const Move&) const = default;
    };

    ZoneModel m_model;
    History m_history;
    std::optional<History::Gesture> m_gesture;
    StepLabel m_gestureLabel;
    std::vector<int> m_gestureZones; ///< that it has changed
    LastPoint m_lastPoint;
    /// Whether the last step is one edit of one frame, and at most moves after it.
    bool m_isPlainEdit = false;
    edit::Observers<bool> m_saveObservers;
    /// Frames that the gesture's last operation replaced; of zone -1 when it did not.
    int m_replacedZone = -1;
    FrameRange m_replaced;
    ShapedFrames m_replacedShaped;
    Move m_lastMove; ///< the gesture's last operation; of zone -1 when that was no move
};

} // namespace zone
