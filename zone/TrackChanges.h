// What the changes of one step did to a track, kept so that they can be undone exactly and redone:
// not the shapes before and after, but for each kind of change the least that restores it. A point
// moved on 100,000 frames keeps its old places, a whole shape moved keeps one distance. Undoing
// needs no memory. This module's sources only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeTrack.h"
#include "zone/SharedTrack.h"
#include "zone/StepReach.h"

namespace zone {

/// Each keep... is called right before the track is changed so. One that throws has kept nothing.
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
    /// The active flags will become `active`, and missing shapes be created.
    void keepFlags(const ShapeTrack& track, RunRange range, bool active);
    /// The point `index` of each run that has one will be put at `to`. Anything may happen to the
    /// others, as long as each fills the same frames.
    void keepPoint(const SharedTrack& track, RunRange range, std::size_t index, platform::Point to);
    void keepShift(const SharedTrack& track, RunRange range, platform::Point delta);
    void keepInsert(const SharedTrack& track, int afterIndex, platform::Point point);
    void keepRemoval(const ShapeTrack& track, std::size_t run, std::size_t index);
    /// Anything may happen.
    void keepTrack(const SharedTrack& track);
    /// The run will get other points, of the same number, and other flags.
    void keepShape(const ShapeTrack& track, std::size_t run);

    /// What the change came to beside that.
    [[nodiscard]] FrameCounts& counts() { return m_counts; }
    /// Whether it is the first of its kind in a gesture.
    [[nodiscard]] bool isFirst() const { return m_keep == Keep::all; }

    void revert(SharedTrack& track) noexcept;
    /// Changes nothing when it throws.
    void redo(SharedTrack& track);
    /// Makes one change of this and the next, which was made with nothingTwice.
    void absorb(const TrackChanges& next) noexcept;
    [[nodiscard]] std::size_t bytes() const;

private:
    // One kind of change each. Where both directions are the same, what is kept and what the track
    // holds change places.
    struct Split {
        int frame;

        void revert(SharedTrack& track) const noexcept { track.own().joinAt(frame); }
        void redo(SharedTrack& track) const { (void)track.own().splitAt(frame); }
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Flags {
        struct Stretch {
            std::uint32_t runs;
            bool present;
            bool active;
        };
        RunRange range;
        bool active;
        std::vector<Stretch> before;

        Flags(const ShapeTrack& track, RunRange runs, bool active);
        void revert(SharedTrack& track) const noexcept;
        void redo(SharedTrack& track) const;
        [[nodiscard]] std::size_t bytes() const { return before.capacity() * sizeof(Stretch); }
    };
    struct Column {
        struct Stretch {
            std::uint32_t runs;
            platform::Point point;
        };
        RunRange range;
        std::size_t index;
        platform::Point after;
        std::vector<Stretch> before;

        void keepBefore(const ShapeTrack& track);
        void revert(SharedTrack& track) const noexcept;
        void redo(SharedTrack& track) const;
        [[nodiscard]] std::size_t bytes() const { return before.capacity() * sizeof(Stretch); }
    };
    struct Shift {
        RunRange range;
        platform::Point delta;

        void revert(SharedTrack& track) const noexcept;
        void redo(SharedTrack& track) const { track.own().shift(range, delta); }
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Insert {
        int afterIndex;
        platform::Point point;

        void revert(SharedTrack& track) const noexcept;
        void redo(SharedTrack& track) const;
        [[nodiscard]] std::size_t bytes() const { return 0; }
    };
    struct Removal {
        std::vector<PlacedPoint> points;

        void revert(SharedTrack& track) const noexcept;
        void redo(SharedTrack& track) const;
        [[nodiscard]] std::size_t bytes() const { return points.capacity() * sizeof(PlacedPoint); }
    };
    struct Shape {
        std::size_t run;
        ShapeRun flags;
        std::vector<platform::Point> points;

        void swap(SharedTrack& track) noexcept;
        void revert(SharedTrack& track) noexcept { swap(track); }
        void redo(SharedTrack& track) { swap(track); }
        [[nodiscard]] std::size_t bytes() const { return points.capacity() * sizeof points[0]; }
    };
    struct Whole {
        /// Never shared, unless it is the first change of a step and has been redone: then nothing
        /// is reverted after it, which might have to copy it.
        SharedTrack other;

        void revert(SharedTrack& track) noexcept { other.swap(track); }
        void redo(SharedTrack& track) noexcept { other.swap(track); }
        [[nodiscard]] std::size_t bytes() const { return other->bytes(); }
    };
    using Change = std::variant<Split, Flags, Column, Shift, Insert, Removal, Shape, Whole>;

    std::vector<Change> m_changes;
    Keep m_keep;
    FrameCounts m_counts;
};

} // namespace zone
