// The zones of an hour-long video as plain arrays, and the image of their file: 10 zones x 108,000
// frames x 8 points, a different shape on every frame.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "zone/ZoneManager.h"

namespace bench {

inline constexpr std::size_t kZones = 10;
inline constexpr int kFrames = 108'000;
inline constexpr std::size_t kPoints = 8;
inline constexpr std::size_t kShapeBytes = 8 + 8 * kPoints;
inline constexpr std::size_t kHeadBytes = 8 + 4 + 6 + 4;
inline constexpr std::size_t kZoneBytes = kHeadBytes + kShapeBytes * kFrames;
inline constexpr std::size_t kCoordinateBytes = kZones * kFrames * kPoints * 8;
inline constexpr float kScale = 1280.0F / 1920.0F;

inline std::int32_t scaled(std::int32_t value, float factor) {
    const float result = static_cast<float>(value) * factor + 0.5F;
    return static_cast<std::int32_t>(result);
}

/// One zone.
struct BareZone {
    std::unique_ptr<std::int32_t[]> coordinates =
        std::make_unique_for_overwrite<std::int32_t[]>(2 * kPoints * kFrames);
    std::unique_ptr<std::uint8_t[]> active =
        std::make_unique_for_overwrite<std::uint8_t[]>(kFrames);
};
using BareModel = std::vector<BareZone>;

inline BareModel makeBareModel() {
    BareModel model(kZones);
    for (BareZone& zone : model) {
        for (std::size_t frame = 0; frame < kFrames; ++frame) {
            zone.active[frame] = 1;
            for (std::size_t i = 0; i < 2 * kPoints; ++i) {
                zone.coordinates[2 * kPoints * frame + i] =
                    static_cast<std::int32_t>((frame + i * 37) % 700);
            }
        }
    }
    return model;
}

inline std::unique_ptr<std::uint8_t[]> buildImage(const BareModel& model) {
    constexpr float kInverse = 1.0F / kScale;
    auto image = std::make_unique_for_overwrite<std::uint8_t[]>(kZones * kZoneBytes);
    std::uint8_t* to = image.get();
    for (const BareZone& zone : model) {
        const std::uint32_t head[3] = {zone::kZoneTag, kZoneBytes - 8, 6};
        const std::uint32_t count = kFrames;
        std::memcpy(to, head, 12);
        std::memcpy(to + 12, "Zone1", 6);
        std::memcpy(to + 18, &count, 4);
        to += kHeadBytes;
        const std::int32_t* from = zone.coordinates.get();
        for (std::size_t frame = 0; frame < kFrames; ++frame) {
            const std::uint32_t shape[2] = {kShapeBytes, zone.active[frame]};
            std::int32_t points[2 * kPoints];
            for (std::size_t i = 0; i < 2 * kPoints; ++i) {
                points[i] = scaled(from[i], kInverse);
            }
            std::memcpy(to, shape, 8);
            std::memcpy(to + 8, points, sizeof points);
            to += kShapeBytes;
            from += 2 * kPoints;
        }
    }
    return image;
}

} // namespace bench
