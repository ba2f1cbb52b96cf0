// How a video becomes a clip: its frame rate, where its picture comes to lie, and what is done to
// it on the way. Pure: from what the probe said to the converter's arguments, no file is touched.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import/ImportTypes.h"
#include "import/Source.h"
#include "platform/Geometry.h"

namespace imports {

/// Where the picture comes to lie. It is scaled, cropped, and set into the frame.
struct Framing {
    platform::Size scaled{};
    platform::Point crop{}; ///< top left corner of what is kept of the scaled picture
    platform::Size cropped{};
    platform::Size frame{};    ///< of the clip; larger than `cropped` where it has black sides
    platform::Point inFrame{}; ///< top left corner of the kept picture
};

/// For an upright picture with square pixels. It is never enlarged, cropped by at most 15 pixels
/// to multiples of 16, and gets black sides if it is not 16:9 within 2 %.
[[nodiscard]] Framing frameFor(platform::Size upright, Quality quality);

/// The constant rate for an average one: the nearest usual one within 2 %, else the average itself,
/// 60 at most; 25 when it is unknown.
[[nodiscard]] Ratio constantRate(const Ratio& average);

/// Whether the headers of the file leave open how many frames there are in how much time.
[[nodiscard]] bool needsPacketTimes(const Source& source);

struct Plan {
    int videoIndex = 0;
    std::optional<int> soundIndex{};
    Framing framing{};
    Ratio rate{};
    int theoraQuality = 8;
    double seconds = -1; ///< of the picture; -1 = unknown
    std::string videoFilters{};
    std::string soundFilters{};
};

/// What a remake keeps: the file's own rate, so that zones stay on their frames.
enum class RateChoice { usual, asIs };

/// `source` has a video.
[[nodiscard]] Plan planFor(const Source& source, const ImportSettings& settings,
                           RateChoice rate = RateChoice::usual);

// How the converter is called. Paths are absolute.
/// Before all that follows, for both programs: they have to count a file's streams alike.
[[nodiscard]] std::vector<std::string> inputArguments(const std::string& source);
/// What the file is.
[[nodiscard]] std::vector<std::string> probeArguments(const std::string& source);
/// Lists the times of the packets of one stream, for PacketTimes.
[[nodiscard]] std::vector<std::string> packetArguments(const std::string& source, int stream);
/// `takesReadable`: goes on where the file is damaged, instead of failing.
[[nodiscard]] std::vector<std::string> convertArguments(const Plan& plan, const std::string& source,
                                                        const std::string& target,
                                                        bool takesReadable);

} // namespace imports
