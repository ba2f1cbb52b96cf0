// One clickable region of a video, followed frame by frame: a name and one shape for every frame.
// Owned by the ZoneManager. One thread at a time.
//
// An operation given a frame that is not there logs "..\Zone.cpp:LINE Frame index is invalid" and
// does nothing. Changes that "spread" reach the given frame alone, or all later frames as well
// when the scope's progressChanges is on. Coordinates are display pixels with (0, 0) at the picture
// area's top left.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "core/File.h"
#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "zone/EditContext.h"
#include "zone/Scale.h"
#include "zone/ShapeDrawing.h"
#include "zone/ShapeStretch.h"
#include "zone/ShapeTrack.h"
#include "zone/SharedTrack.h"
#include "zone/ZoneShape.h"

namespace tinyxml2 {
class XMLElement;
}

namespace zone {

/// Given for a frame count: a zone keeps as many frames as its record holds.
inline constexpr int kStoredFrameCount = -0x7FFFFFFF - 1;
/// Bytes of a name that fit into its line of the zone information file.
inline constexpr std::size_t kMaxNameBytes = 243;

/// What became of a zone's record.
struct ZoneReadResult {
    bool complete = false;
    /// Complete, and of the very size and form that a save gives it.
    bool whole = false;
    /// The record ends one byte before its stated end: zones without a name are written so.
    bool endsOneEarly = false;
    std::uint32_t framesRead = 0;   ///< surplus ones included
    std::uint32_t framesStored = 0; ///< according to the record; 0 when it has no room for them
};

class Zone {
public:
    /// Frames without a shape, no name.
    [[nodiscard]] static std::shared_ptr<Zone> create(int frameCount);
    /// No frames. Children other than "Name" are logged.
    [[nodiscard]] static std::shared_ptr<Zone> createFromXml(const tinyxml2::XMLElement& element);

    [[nodiscard]] const std::string& name() const { return m_name; }
    /// As a name is kept: up to the first zero byte, and up to the character that no longer fits
    /// kMaxNameBytes.
    [[nodiscard]] static std::string storedName(const std::string& name);
    void setName(const std::string& name);
    /// `name` as storedName() made it.
    void swapName(std::string& name) noexcept { m_name.swap(name); }
    [[nodiscard]] int frameCount() const { return m_track->frameCount(); }
    /// A copy of the frame's shape; none when the frame has none. Logs nothing.
    [[nodiscard]] std::optional<ZoneShape> shape(int frame) const;
    /// The points of the frame's shape, valid until the next change; none when it has none. Logs
    /// nothing.
    [[nodiscard]] std::optional<std::span<const platform::Point>> points(int frame) const;
    /// The same; empty when the frame has no shape.
    [[nodiscard]] std::span<const platform::Point> outline(int frame) const {
        return points(frame).value_or(std::span<const platform::Point>());
    }

    /// The frames from `frame`, which the zone has, up to this one are alike: one look at them is
    /// enough.
    [[nodiscard]] int sameUntil(int frame) const {
        return m_track->endFrame(m_track->indexOf(frame));
    }

    /// For this module's sources only.
    [[nodiscard]] const ShapeTrack& track() const { return m_track.get(); }

    /// True for a frame without a shape.
    [[nodiscard]] bool isActive(int frame) const;
    /// Spreads.
    void setActive(const EditScope& scope, int frame, bool active);
    /// Nothing for a frame without a shape.
    void draw(int frame, platform::Canvas& canvas, const Placement& place, int selectedPoint,
              NumberFont font, LineEdge edge = LineEdge::none) const;
    /// Selects the handle at (x, y), or none; true when there is one.
    [[nodiscard]] bool hitTest(ZoneEditing& editing, int frame, int x, int y, double reach) const;
    /// Whether hitTest would select a handle. Logs nothing.
    [[nodiscard]] bool isHandleAt(const ZoneEditing& editing, int frame, int x, int y,
                                  double reach) const;
    /// Nothing but the frame's check: the moves have been stored already.
    void endMove(int frame, int x, int y) const;
    /// Puts the selected point there, clamped, or shifts the shape by its centre handle. Spreads:
    /// a shift by the same distance, a point to the same place. Nothing without a selection.
    void moveSelectedPoint(const EditScope& scope, int frame, int x, int y);
    /// Inserts behind the selected point, in every frame, and selects the new one. Deleting leaves
    /// the selection alone, so one that is no point any more inserts nothing. Intended.
    void addPoint(const EditScope& scope, int frame, int x, int y);
    /// Removes the point at (x, y), in every frame that has one there. With `orSame`, frames lose
    /// the point of the number that it has on `frame`, wherever it is.
    void deletePoint(const EditScope& scope, int frame, int x, int y, bool orSame = false);
    /// Gives one frame a shape of as many points as it has.
    void putShape(const EditScope& scope, int frame, const ZoneShape& shape);
    /// Gives frames of the zone other shapes.
    void replaceShapes(const EditScope& scope, const ShapeStretch& stretch);
    /// Whether any frame has a point.
    [[nodiscard]] bool hasPoints() const;
    /// Whether addPoint with that selection, or deletePoint at that place, would change a frame.
    [[nodiscard]] bool takesPoint(int selectedPoint) const;
    [[nodiscard]] bool hasPointAt(int x, int y, double reach) const;
    /// Moves every point of every frame to where `map` says. No step, and not undoable.
    void mapPoints(const std::function<platform::Point(platform::Point)>& map);
    void revert(TrackChanges& changes) noexcept;
    void redo(TrackChanges& changes);
    /// Adds frames without a shape up to `frameCount`.
    void fillTo(int frameCount);

    /// The first frame, from `from` on, whose record a file would hold otherwise than `other`'s;
    /// none when all frames that both have are alike. Stops there, so that it costs little when
    /// asked again from the frame found before.
    [[nodiscard]] std::optional<int> firstDifference(const Zone& other, Scale scale,
                                                     int from = 0) const;
    /// Zones with the same number have the same shapes; after a change it is another one.
    [[nodiscard]] std::uint64_t shapesId() const { return m_track.contentId(); }
    /// Roughly what the zone takes in memory.
    [[nodiscard]] std::size_t bytes() const { return sizeof *this + m_track->bytes(); }
    /// Makes sure that the next change need not copy shapes that a copy of the zone shares.
    void unshare() { (void)m_track.own(); }

    /// Appends the binary record. False when a write fails or the record would not fit its 32-bit
    /// size. Frames without a shape are written as empty active shapes.
    [[nodiscard]] bool write(core::File& file, Scale scale) const;
    /// Replaces name and frames by what the record holds after its tag and size, brought to
    /// `frameCount` frames: the last is copied, surplus ones are dropped. `body` may be cut;
    /// `statedSize` is what the record says. When not complete, what was read before is kept;
    /// without a scale that is no shape.
    ZoneReadResult read(std::span<const std::uint8_t> body, std::size_t statedSize, int frameCount,
                        std::optional<Scale> scale);

private:
    [[nodiscard]] bool checkFrame(int frame, int line) const;
    /// Before the runs behind the first of `range` become like it, or move along with it: notes the
    /// frames that differ from it.
    void countOwn(const EditScope& scope, RunRange range, bool isAboutFlags) const;
    /// The runs that a change at `frame` reaches; no run of them reaches beyond.
    [[nodiscard]] RunRange spreadFrom(const EditScope& scope, int frame);
    void moveHandle(const EditScope& scope, RunRange range, platform::Point to);
    /// Moves each frame's own centre to `to`. Returns how many runs were added behind `run`.
    std::size_t shiftByCenters(const ZoneEditing& editing, std::size_t run, platform::Point to);
    static ZoneReadResult readUnnamed(ShapeTrack& track, std::span<const std::uint8_t> body,
                                      std::size_t statedSize, int limit,
                                      std::optional<Scale> scale);

    SharedTrack m_track;
    std::string m_name;
};

} // namespace zone
