// What the changes of one step did to a track, kept so that they can be taken back exactly and done
// again: not the shapes before and after, but for each kind of change the least that restores it. A
// point moved on 100,000 frames keeps its old places, a whole shape moved keeps one distance. This
// module's sources only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeTrack.h"

namespace zone {

/// Each keep... is called right before the track is changed so.
class TrackChanges {
public:
    /// How much has to be kept.
    enum class Keep {
        all,
        /// The change repeats the one before it, in the same gesture, with another place to move
        /// to: what was before is kept there, and absorb() has to follow.
        nothingTwice,
    };
    explicit TrackChanges(Keep keep = Keep::all) : m_keep(keep) {}

    /// Splits the track and keeps that.
    std::size_t splitAt(ShapeTrack& track, int frame);
    /// The active flags will be set, and missing shapes created.
    void keepFlags(const ShapeTrack& track, RunRange range);
    /// The point `index` of each run will be set.
    void keepPoint(const ShapeTrack& track, RunRange range, std::size_t index);
    void keepShift(const ShapeTrack& track, RunRange range, platform::Point delta);
    void keepInsert(const ShapeTrack& track, int afterIndex, platform::Point point);
    void keepRemoval(const ShapeTrack& track, std::size_t run, std::size_t index);
    /// Anything may happen to these runs, as long as they fill the same frames.
    void keepRuns(const ShapeTrack& track, RunRange range);

    void revert(ShapeTrack& track);
    void redo(ShapeTrack& track);
    /// Makes one change of this and the next, which was made with nothingTwice.
    void absorb(const TrackChanges& next);
    [[nodiscard]] std::size_t bytes() const;

private:
    // One kind of change each. Where both directions are the same, what is kept and what the track
    // holds change places.
    struct Split {
        int frame;

        void revert(ShapeTrack& track) const { track.joinAt(frame); }
        void redo(ShapeTrack& track) const { (void)track.splitAt(frame); }
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Flags {
        struct Stretch {
            std::uint32_t runs;
            bool present;
            bool active;
        };
        std::size_t first;
        std::vector<Stretch> stretches;

        Flags(const ShapeTrack& track, RunRange range);
        void swap(ShapeTrack& track);
        void revert(ShapeTrack& track) { swap(track); }
        void redo(ShapeTrack& track) { swap(track); }
        [[nodiscard]] std::size_t bytes() const { return stretches.capacity() * sizeof(Stretch); }
    };
    struct Column {
        struct Stretch {
            std::uint32_t runs;
            platform::Point point;
        };
        std::size_t first;
        std::size_t index;
        std::vector<Stretch> stretches;

        Column(const ShapeTrack& track, RunRange range, std::size_t pointIndex);
        void swap(ShapeTrack& track);
        void revert(ShapeTrack& track) { swap(track); }
        void redo(ShapeTrack& track) { swap(track); }
        [[nodiscard]] std::size_t bytes() const { return stretches.capacity() * sizeof(Stretch); }
    };
    struct Shift {
        RunRange range;
        platform::Point delta;

        void revert(ShapeTrack& track) const;
        void redo(ShapeTrack& track) const { track.shift(range, delta); }
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Insert {
        int afterIndex;
        platform::Point point;

        void revert(ShapeTrack& track) const;
        void redo(ShapeTrack& track) const { track.insertPointEverywhere(afterIndex, point); }
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Removal {
        std::vector<PlacedPoint> points;

        void revert(ShapeTrack& track) const { track.insertPoints(points); }
        void redo(ShapeTrack& track) const;
        [[nodiscard]] std::size_t bytes() const { return points.capacity() * sizeof(PlacedPoint); }
    };
    struct Runs {
        int firstFrame;
        int endFrame;
        TrackSlice slice;

        void swap(ShapeTrack& track);
        void revert(ShapeTrack& track) { swap(track); }
        void redo(ShapeTrack& track) { swap(track); }
        [[nodiscard]] std::size_t bytes() const { return slice.bytes(); }
    };
    using Change = std::variant<Split, Flags, Column, Shift, Insert, Removal, Runs>;

    std::vector<Change> m_changes;
    Keep m_keep;
};

} // namespace zone
