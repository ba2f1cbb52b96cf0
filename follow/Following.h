// Follows a zone from one frame through others, forwards or backwards, and towards a shape that is
// known at the other end from there as well. Any thread; one object, one thread at a time.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "track/Follower.h"

namespace follow {

using Points = std::vector<platform::Point>;

struct Request {
    std::string path;       ///< of the clip, UTF-8
    platform::Size display; ///< what the points are measured in
    int frame = 0;          ///< where `points` are given
    Points points;          ///< at least three
    int last = 0;           ///< the last frame to get a shape, in front of `frame` or behind it
    Points pointsBeyond;    ///< known on the frame after that; none: it is followed from one end

    [[nodiscard]] int step() const { return last < frame ? -1 : 1; }
    [[nodiscard]] int count() const { return (last - frame) * step(); }
};

struct Outcome {
    std::vector<Points> shapes; ///< of the frames beside `frame`, in the direction of `last`
    /// Where the two ways did not meet: of `last` and those in front of it, back to `frame`.
    std::vector<Points> shapesBeyond;
    double leastMatch = 1; ///< 0 to 1
    /// The first frame without a shape, unless it was stopped.
    std::optional<int> lostAt;
    /// Why that has none. `kept` where the last frames seen were too doubtful to count.
    track::Sight sight = track::Sight::kept;
    bool isUnreadable = false; ///< the clip gave no picture there
};

/// Of a clip that gives no picture at all.
[[nodiscard]] Outcome nothingRead(const Request& request);

/// What has been found so far.
struct News {
    int frame = 0;
    Points points;
    double match = 1;
    int done = 0; ///< steps of `all`
    int all = 0;
};

/// Ends early, with what was found, once `isStopped` says true. `report` is called after each
/// frame. Never throws but std::bad_alloc.
[[nodiscard]] Outcome followZone(const Request& request, platform::FileSystem& files,
                                 const std::function<bool()>& isStopped,
                                 const std::function<void(const News&)>& report);

} // namespace follow
