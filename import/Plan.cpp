#include "import/Plan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace imports {
namespace {

using platform::Size;

constexpr int kBlock = 16;
constexpr double kPictureShape = 16.0 / 9.0;
constexpr double kShapeTolerance = 0.02;
constexpr double kRateTolerance = 0.02;
constexpr Ratio kHighestRate{60, 1};
constexpr Ratio kUnknownRate{25, 1};
constexpr double kLowestRate = 0.1;

/// What a full picture of 16:9 is scaled to before it is cropped to the largest frame.
Size boxBeforeCrop(Quality quality) {
    const Size box = factsOf(quality).box;
    return {box.width, box.width * 9 / 16};
}

int toBlocks(double side) {
    return std::max(1, static_cast<int>(std::lround(side / kBlock))) * kBlock;
}

int even(double side, bool isScaled) {
    const double half = isScaled ? std::round(side / 2) : std::floor(side / 2);
    return std::max(2, static_cast<int>(half) * 2);
}

/// Half of what is left over, on a whole pixel of the colour planes.
int evenHalf(int rest) {
    return rest / 2 / 2 * 2;
}

/// The sides of a frame that is 16:9 as nearly as multiples of 16 allow.
Size frameAround(Size cropped, Size box) {
    Size frame = cropped;
    if (cropped.width < cropped.height * kPictureShape) {
        frame.width = toBlocks(cropped.height * kPictureShape);
    } else {
        frame.height = toBlocks(cropped.width / kPictureShape);
    }
    return {std::max(cropped.width, std::min(frame.width, box.width)),
            std::max(cropped.height, std::min(frame.height, box.height))};
}

} // namespace

Framing frameFor(Size upright, Quality quality) {
    const Size box = boxBeforeCrop(quality);
    const double factor = std::min({1.0, static_cast<double>(box.width) / upright.width,
                                    static_cast<double>(box.height) / upright.height});
    Framing framing;
    framing.scaled = {even(upright.width * factor, factor < 1),
                      even(upright.height * factor, factor < 1)};
    const auto kept = [](int side) { return side < kBlock ? side : side / kBlock * kBlock; };
    framing.cropped = {kept(framing.scaled.width), kept(framing.scaled.height)};
    framing.crop = {evenHalf(framing.scaled.width - framing.cropped.width),
                    evenHalf(framing.scaled.height - framing.cropped.height)};
    framing.frame = {std::max(kBlock, framing.cropped.width),
                     std::max(kBlock, framing.cropped.height)};
    const double shape = static_cast<double>(upright.width) / upright.height;
    if (std::abs(shape / kPictureShape - 1) > kShapeTolerance) {
        framing.frame = frameAround(framing.frame, factsOf(quality).box);
    }
    framing.inFrame = {evenHalf(framing.frame.width - framing.cropped.width),
                       evenHalf(framing.frame.height - framing.cropped.height)};
    return framing;
}

Ratio constantRate(const Ratio& average) {
    constexpr std::array kUsual{Ratio{24000, 1001}, Ratio{24, 1},       Ratio{25, 1},
                                Ratio{30000, 1001}, Ratio{30, 1},       Ratio{48, 1},
                                Ratio{50, 1},       Ratio{60000, 1001}, Ratio{60, 1}};
    const double rate = average.value();
    if (rate < kLowestRate) {
        return kUnknownRate;
    }
    const auto distance = [rate](const Ratio& usual) { return std::abs(usual.value() - rate); };
    const Ratio nearest =
        *std::min_element(kUsual.begin(), kUsual.end(), [&](const Ratio& a, const Ratio& b) {
            return distance(a) < distance(b);
        });
    if (distance(nearest) <= kRateTolerance * rate) {
        return nearest;
    }
    if (rate > kHighestRate.value()) {
        return kHighestRate;
    }
    // The clip's header has room for 32 bits.
    constexpr std::int64_t kMost = 1'000'000'000;
    constexpr std::int64_t kParts = 10'000;
    return average.top < kMost && average.bottom < kMost
               ? average
               : Ratio{std::llround(rate * kParts), kParts};
}

bool needsPacketTimes(const Source& source) {
    const VideoStream& video = *source.video;
    if (video.hasExactRate()) {
        return false;
    }
    const auto isFormat = [&](std::string_view name) {
        return source.format.find(name) != std::string::npos;
    };
    if (isFormat("mpegts") || isFormat("mpeg") || isFormat("dv")) {
        return !video.averageRate.isKnown(); // pictures may lie there in two packets
    }
    if (!isFormat("mov") && !isFormat("avi")) {
        return true; // times are all that is kept of the rate
    }
    const double average = video.averageRate.value();
    return video.seconds <= 0 ||
           std::abs(average - video.baseRate.value()) > kRateTolerance * average;
}

} // namespace imports
