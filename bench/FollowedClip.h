// Clips of a thing that moves in a known way, drawn frame by frame from random numbers: what
// following is measured on. The same kind and seed give the same clip on every system.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

#include "track/Geometry.h"
#include "track/Picture.h"

namespace bench {

enum class ClipKind {
    shift,      ///< along a curve
    zoom,       ///< to between half and twice its size
    turn,       ///< by up to 60 degrees in its plane
    shake,      ///< a whole scene, filmed from the hand
    fast,       ///< up to 30 pixels a frame
    noise,      ///< of a standard deviation of 5 to 15
    blur,       ///< up to 15 pixels wide for some frames
    brightness, ///< fading to half, or up, with flicker
    soft,       ///< no detail finer than 25 pixels
    plain,      ///< an evenly coloured thing: only its edges
    away,       ///< a plane that turns away by up to 60 degrees
    part,       ///< something passes in front of a part of it
    mixed,      ///< several of these
    covered,    ///< something slides over all of it and stays there
    count
};

[[nodiscard]] std::string_view nameOf(ClipKind kind);

/// Grey values that repeat every 512 pixels.
class Texture {
public:
    static constexpr int kSide = 512;

    /// `finest`: size of the smallest details.
    Texture(std::mt19937& random, double finest, double contrast);
    [[nodiscard]] float at(double x, double y) const;

private:
    std::vector<float> m_values;
};

class FollowedClip {
public:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 720;
    static constexpr int kFrames = 101;

    FollowedClip(ClipKind kind, std::uint32_t seed);

    /// Valid until the next call.
    [[nodiscard]] track::GreyView picture(int frame);
    /// The zone: a polygon on the thing, near its outline or well inside.
    [[nodiscard]] track::Polygon zone(int frame) const;
    /// Share of the zone's area that something is in front of.
    [[nodiscard]] double covered(int frame) const;

private:
    /// The thing's own rectangle to the picture.
    [[nodiscard]] track::Warp thingWarp(int frame) const;
    [[nodiscard]] track::Warp groundWarp(int frame) const;
    [[nodiscard]] track::Box coverBox(int frame) const;
    [[nodiscard]] float thingValue(double x, double y) const;
    void chooseMotion();
    void chooseZone();
    void drawGround(int frame);
    void drawThing(int frame);
    void drawCover(int frame);
    void blur(int frame);
    void finish(int frame);

    double uniform(double least, double most);
    [[nodiscard]] float& pixel(int x, int y) {
        return m_picture[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)];
    }

    struct Patch { ///< of a sign
        double left, top, right, bottom;
        float value;
        bool isRound;
    };
    struct Shake {
        double x, y, angle;
    };

    ClipKind m_kind;
    std::mt19937 m_random;
    Texture m_ground;
    Texture m_surface;
    Texture m_coverSurface;
    std::vector<Patch> m_patches;    ///< none: the surface is all there is
    std::array<double, 3> m_width{}; ///< width, height, grey value of the thing
    track::Polygon m_zone;           ///< on the thing
    bool m_isPartOfGround = false;
    std::vector<Shake> m_shakes; ///< a frame each
    // How far, how large, how bright the clip gets at its end.
    double m_x = 0, m_y = 0, m_dx = 0, m_dy = 0, m_swing = 0, m_swingLength = 1;
    double m_angle = 0, m_scale = 1, m_away = 0, m_awayAcross = 1;
    double m_groundDx = 0, m_groundDy = 0;
    double m_noise = 0, m_blur = 0, m_gain = 1, m_flicker = 0;
    double m_coverShare = 0;
    int m_coverFrom = 0;
    // What is drawn of a picture: the thing and its surroundings. The rest stays as it was.
    int m_left = 0, m_top = 0, m_right = 0, m_bottom = 0;
    std::vector<float> m_picture;
    std::vector<float> m_noiseValues;
    std::vector<std::uint8_t> m_bytes;
};

/// Intersection over union.
[[nodiscard]] double overlap(const track::Polygon& a, const track::Polygon& b);

} // namespace bench
