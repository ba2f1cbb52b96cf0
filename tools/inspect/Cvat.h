// Zones as tracks of polygons in the file format "CVAT for videos 1.1", as its public description
// has it (the section "XML annotation format" of CVAT's documentation): a track for each zone, and
// in it polygons for some frames, each of them outside the picture or not. docs/formats.md says
// what is kept.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Geometry.h"

namespace zone {
class ZoneManager;
}

namespace inspect {

inline constexpr std::size_t kMaxCvatBytes = std::size_t{32} * 1024 * 1024; ///< of a file
inline constexpr const char* kCvatTooLarge = "the file is larger than 32 MB";
inline constexpr std::size_t kLeastCvatPoints = 3; ///< of a polygon

/// What a file of tracks has to fit.
struct CvatClip {
    platform::Size size;
    int frameCount = 0;
};

struct CvatPolygon {
    int frame = 0;
    bool isOutside = false;
    std::vector<platform::Point> points; ///< at least three, in the picture
};

struct CvatTrack {
    std::string label;
    std::vector<CvatPolygon> polygons; ///< the frames rise
};

struct CvatProblem {
    int line = 0; ///< from 1; 0: of the file as a whole
    std::string text;
};

/// Any text may be given. The first problem ends the reading. Takes at most 32 MB of text, and no
/// more tracks and polygons than would make a pair of 256 MB.
[[nodiscard]] std::variant<std::vector<CvatTrack>, CvatProblem> readCvat(std::string_view text,
                                                                         const CvatClip& clip);

/// The shapes of a track, frame by frame from 0 on: the polygon of that frame; between two that are
/// not outside and have equal numbers of points, points on the straight lines between theirs; else
/// the polygon before.
class CvatCourse {
public:
    /// The track must outlive it.
    explicit CvatCourse(const CvatTrack& track) : m_track(track) {}
    /// None in front of the first polygon.
    [[nodiscard]] std::optional<CvatPolygon> next();

private:
    const CvatTrack& m_track;
    std::size_t m_behind = 0; ///< the first polygon behind the frame
    int m_frame = 0;
};

/// Writes the zones of a manager of scale 1. Returns what the format cannot hold, a line for each
/// zone.
std::vector<std::string> writeCvat(std::ostream& out, const zone::ZoneManager& zones,
                                   const CvatClip& clip);

/// Makes zones out of tracks, with shapes on all frames of the clip, in a manager of scale 1.
void addZones(zone::ZoneManager& zones, const std::vector<CvatTrack>& tracks, const CvatClip& clip);

} // namespace inspect
