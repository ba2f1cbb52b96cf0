// What the converter's probe says about a file, as values. Reads whatever was printed: unknown,
// missing and impossible entries count as unknown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "import/ImportTypes.h"
#include "platform/Geometry.h"

namespace imports {

/// 0/0 = unknown; otherwise both are positive.
struct Ratio {
    std::int64_t top = 0;
    std::int64_t bottom = 0;

    [[nodiscard]] bool isKnown() const { return top > 0 && bottom > 0; }
    [[nodiscard]] double value() const {
        return isKnown() ? static_cast<double>(top) / static_cast<double>(bottom) : 0.0;
    }
};

struct VideoStream {
    int index = 0;
    std::string codec{};
    platform::Size coded{};        ///< before turning, in pixels of any shape
    Ratio pixelShape{1, 1};        ///< width by height of a pixel
    int turn = 0;                  ///< degrees, a multiple of 90 in 0 to 270
    Ratio averageRate{};           ///< frames a second
    Ratio baseRate{};              ///< what all times are multiples of, roughly
    std::optional<double> start{}; ///< of its first picture, in seconds
    double seconds = -1;           ///< -1 = unknown
    // As the converter names them; empty if unknown.
    std::string range{};
    std::string matrix{};
    std::string transfer{};
    std::string primaries{};
    std::string fieldOrder{};

    /// Whether its frames come at the base rate, though those that repeat others may be left out.
    [[nodiscard]] bool hasExactRate() const { return codec == "theora" && baseRate.isKnown(); }
};

struct SoundStream {
    int index = 0;
    int channels = 0;
    std::string layout{};
};

struct Source {
    std::string format{};
    std::optional<double> start{};      ///< of what begins first, in seconds
    double seconds = -1;                ///< of the whole file; -1 = unknown
    std::optional<VideoStream> video{}; ///< the preferred one, else the first; no cover picture
    std::optional<SoundStream> sound{}; ///< the preferred one, else the first
};

/// `text`: lines "streams.stream.0.width=1920", values perhaps in quotation marks.
[[nodiscard]] Source readSource(std::string_view text);

/// Upright, with square pixels; at least 1 x 1.
[[nodiscard]] platform::Size uprightSize(const VideoStream& video);
/// How long after the file's own start its first picture is shown, in seconds; the source has a
/// video.
[[nodiscard]] double pictureDelay(const Source& source);
/// For lists; the source has a video.
[[nodiscard]] SourceFacts factsOf(const Source& source);

/// Adds up the times of a stream's packets as they are listed: one line "TIME,DURATION,FLAGS" each,
/// in any order. For files whose headers do not say how many frames there are in how much time.
class PacketTimes {
public:
    void take(std::string_view line);

    [[nodiscard]] std::int64_t count() const { return m_count; }
    /// From the first picture to the end of the last; -1 = unknown.
    [[nodiscard]] double seconds() const;
    /// Frames a second, on average: the headers' `stated` rate if that fits the times.
    [[nodiscard]] Ratio rate(const Ratio& stated) const;

private:
    std::int64_t m_count = 0;
    double m_first = 0;
    double m_last = 0;
    double m_lastDuration = 0;
};

} // namespace imports
