#include "bench/FollowedClip.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace bench {
namespace {

using track::Box;
using track::Point;
using track::Polygon;
using track::Warp;

constexpr int kAround = 200;
constexpr double kDegree = std::numbers::pi / 180;

double uniformOf(std::mt19937& random, double least, double most) {
    return least + (most - least) * static_cast<double>(random()) / 4294967296.0;
}

double progress(int frame) {
    return static_cast<double>(frame) / (FollowedClip::kFrames - 1);
}

} // namespace

std::string_view nameOf(ClipKind kind) {
    constexpr std::array<std::string_view, static_cast<std::size_t>(ClipKind::count)> kNames{
        "shift",      "zoom", "turn",  "shake", "fast", "noise", "blur",
        "brightness", "soft", "plain", "away",  "part", "mixed", "covered"};
    return kNames[static_cast<std::size_t>(kind)];
}

Texture::Texture(std::mt19937& random, double finest, double contrast)
    : m_values(static_cast<std::size_t>(kSide) * kSide, 0.0F) {
    int cells = 4; // on a side; details half as large, half as strong each time
    double strength = contrast;
    for (; kSide / cells >= finest; cells *= 2, strength *= 0.7) {
        std::vector<double> lattice(static_cast<std::size_t>(cells) *
                                    static_cast<std::size_t>(cells));
        for (double& value : lattice) {
            value = uniformOf(random, -1, 1) * strength;
        }
        const auto node = [&](int x, int y) {
            return lattice[static_cast<std::size_t>((y % cells) * cells + x % cells)];
        };
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const double u = static_cast<double>(x) * cells / kSide;
                const double v = static_cast<double>(y) * cells / kSide;
                const int left = static_cast<int>(u);
                const int top = static_cast<int>(v);
                const double fx = (u - left) * (u - left) * (3 - 2 * (u - left));
                const double fy = (v - top) * (v - top) * (3 - 2 * (v - top));
                const double above = std::lerp(node(left, top), node(left + 1, top), fx);
                const double below = std::lerp(node(left, top + 1), node(left + 1, top + 1), fx);
                m_values[static_cast<std::size_t>(y * kSide + x)] +=
                    static_cast<float>(std::lerp(above, below, fy));
            }
        }
    }
}

float Texture::at(double x, double y) const {
    const double left = std::floor(x);
    const double top = std::floor(y);
    const auto fx = static_cast<float>(x - left);
    const auto fy = static_cast<float>(y - top);
    const auto wrap = [](int value) { return static_cast<std::size_t>(value & (kSide - 1)); };
    const std::size_t x0 = wrap(static_cast<int>(left));
    const std::size_t x1 = wrap(static_cast<int>(left) + 1);
    const float* upper = m_values.data() + wrap(static_cast<int>(top)) * kSide;
    const float* lower = m_values.data() + wrap(static_cast<int>(top) + 1) * kSide;
    const float above = upper[x0] + fx * (upper[x1] - upper[x0]);
    const float below = lower[x0] + fx * (lower[x1] - lower[x0]);
    return above + fy * (below - above);
}

FollowedClip::FollowedClip(ClipKind kind, std::uint32_t seed)
    : m_kind(kind), m_random(seed * 977 + static_cast<std::uint32_t>(kind) * 7919 + 1),
      // Braces: every compiler draws the same clip only where the order is laid down.
      m_ground{m_random, uniform(3, 12), uniform(8, 45)},
      m_surface{m_random, kind == ClipKind::soft ? uniform(25, 60) : uniform(3, 9),
                kind == ClipKind::soft ? uniform(15, 45) : uniform(12, 45)},
      m_coverSurface{m_random, uniform(3, 40), uniform(0, 40)},
      m_picture(static_cast<std::size_t>(kWidth) * kHeight), m_noiseValues(1 << 16),
      m_bytes(m_picture.size()) {
    m_width = {uniform(60, 260), uniform(60, 220), uniform(60, 190)};
    chooseMotion();
    if (!m_isPartOfGround && m_kind != ClipKind::soft && uniform(0, 1) < 0.35) {
        m_surface = Texture(m_random, 40, 2); // a sign: evenly coloured patches
        const int count = 2 + static_cast<int>(uniform(0, 5));
        for (int i = 0; i < count && m_kind != ClipKind::plain; ++i) {
            const double x = uniform(0, 0.8) * m_width[0];
            const double y = uniform(0, 0.8) * m_width[1];
            m_patches.push_back({x, y, x + uniform(0.1, 0.5) * m_width[0],
                                 y + uniform(0.1, 0.5) * m_width[1],
                                 static_cast<float>(uniform(-90, 90)), uniform(0, 1) < 0.4});
        }
    }
    if (m_kind == ClipKind::plain) {
        m_surface = Texture(m_random, 60, uniform(0, 2));
        m_ground = Texture{m_random, uniform(20, 60), uniform(1, 6)};
        const double contrast = uniform(20, 60);
        m_width[2] = uniform(0, 1) < 0.5 ? 130 - contrast : 130 + contrast;
    }
    chooseZone();
    for (float& value : m_noiseValues) {
        double sum = 0; // nearly normal
        for (int i = 0; i < 4; ++i) {
            sum += uniform(-1, 1);
        }
        value = static_cast<float>(sum * 0.866);
    }
}

double FollowedClip::uniform(double least, double most) {
    return uniformOf(m_random, least, most);
}

void FollowedClip::chooseMotion() {
    const auto is = [this](ClipKind kind) { return m_kind == kind; };
    const bool mixed = is(ClipKind::mixed);
    const auto either = [&](double value) { return uniform(0, 1) < 0.5 ? value : -value; };
    m_isPartOfGround = is(ClipKind::shake) || (!is(ClipKind::plain) && uniform(0, 1) < 0.3);
    m_x = uniform(420, 860);
    m_y = uniform(260, 460);
    const double far = uniform(0.3, 1);
    m_dx = (m_x < 640 ? 1 : -1) * far * 300;
    m_dy = (m_y < 360 ? 1 : -1) * uniform(0, 120);
    m_swingLength = uniform(10, 30);
    m_swing = uniform(0, 40);
    m_groundDx = uniform(-150, 150);
    m_groundDy = uniform(-60, 60);
    if (is(ClipKind::fast)) {
        m_x = 640;
        m_dx = 0;
        m_swingLength = uniform(9, 14);
        m_swing = m_swingLength * uniform(18, 30);
    }
    if (is(ClipKind::zoom) || mixed) {
        m_scale = uniform(0, 1) < 0.5 ? uniform(0.5, 0.8) : uniform(1.25, 2);
    }
    if (is(ClipKind::turn) || mixed) {
        m_angle = either(uniform(10, mixed ? 30 : 60)) * kDegree;
    }
    if (is(ClipKind::away) || (mixed && uniform(0, 1) < 0.5)) {
        m_away = uniform(30, mixed ? 40 : 60) * kDegree;
        m_awayAcross = either(1);
    }
    if (is(ClipKind::noise) || mixed) {
        m_noise = mixed ? uniform(1, 5) : uniform(5, 15);
    } else {
        m_noise = uniform(0.5, 2);
    }
    if (is(ClipKind::blur)) {
        m_blur = uniform(5, 15);
    }
    if (is(ClipKind::brightness) || mixed) {
        m_gain = uniform(0, 1) < 0.6 ? uniform(0.5, 0.8) : uniform(1.2, 1.4);
        m_flicker = uniform(0, 0.05);
    }
    if (is(ClipKind::part)) {
        m_coverShare = uniform(0.2, 0.45);
        m_coverFrom = 20 + static_cast<int>(uniform(0, 20));
    }
    if (is(ClipKind::covered)) {
        m_coverShare = 1.6;
        m_coverFrom = 20 + static_cast<int>(uniform(0, 50));
    }
    double x = 0;
    double y = 0;
    double angle = 0;
    const double jerk = is(ClipKind::shake) ? uniform(2, 9) : 0;
    for (int i = 0; i < kFrames; ++i) { // the hand comes back to where it was
        x = 0.8 * x + uniform(-jerk, jerk);
        y = 0.8 * y + uniform(-jerk, jerk);
        angle = 0.8 * angle + uniform(-jerk, jerk) * 0.0008;
        m_shakes.push_back({x, y, angle});
    }
}

void FollowedClip::chooseZone() {
    const double w = m_width[0];
    const double h = m_width[1];
    const double choice = uniform(0, 1);
    if (choice < 0.5 || m_kind == ClipKind::plain) { // drawn by hand along the outline
        const double off = std::min(w, h) * 0.03;
        for (const Point p : {Point{0, 0}, {w, 0}, {w, h}, {0, h}}) {
            m_zone.push_back({p.x + uniform(-off, off), p.y + uniform(-off, off)});
        }
        return;
    }
    const int corners = 4 + static_cast<int>(uniform(0, 5)); // some part of it
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * (i + uniform(0, 0.4)) / corners;
        const double reach = uniform(0.75, 1);
        m_zone.push_back(
            {w / 2 + w / 2 * reach * std::cos(angle), h / 2 + h / 2 * reach * std::sin(angle)});
    }
}

Warp FollowedClip::groundWarp(int frame) const {
    const double t = progress(frame);
    const Shake& shake = m_shakes[static_cast<std::size_t>(frame)];
    const double c = std::cos(shake.angle);
    const double s = std::sin(shake.angle);
    const Warp moved = Warp::translation(m_groundDx * t, m_groundDy * t);
    const Warp shaken{{c, -s, 640 - c * 640 + s * 360 + shake.x, s, c,
                       360 - s * 640 - c * 360 + shake.y, 0, 0, 1}};
    return shaken * moved;
}

Warp FollowedClip::thingWarp(int frame) const {
    const double t = progress(frame);
    const Warp middle = Warp::translation(-m_width[0] / 2, -m_width[1] / 2);
    if (m_kind == ClipKind::shake) {
        return groundWarp(frame) * Warp::translation(m_x, m_y) * middle;
    }
    const double scale = std::pow(m_scale, t);
    const double c = std::cos(m_angle * t) * scale;
    const double s = std::sin(m_angle * t) * scale;
    const double away = m_away * t;
    // Seen from four times its width away.
    const double depth = std::sin(away) * m_awayAcross / (4 * m_width[0]);
    const Warp turned{{std::cos(away), 0, 0, 0, 1, 0, depth, 0, 1}};
    const double x = m_x + m_dx * t + m_swing * std::sin(frame / m_swingLength);
    const double y = m_y + m_dy * t + 0.4 * m_swing * (1 - std::cos(frame / m_swingLength));
    return Warp{{c, -s, x, s, c, y, 0, 0, 1}} * turned * middle;
}

Polygon FollowedClip::zone(int frame) const {
    return warped(thingWarp(frame), m_zone);
}

Box FollowedClip::coverBox(int frame) const {
    if (m_coverShare == 0 || frame < m_coverFrom) {
        return {};
    }
    const Box box = boundsOf(zone(frame));
    const double steps = frame - m_coverFrom;
    if (m_kind == ClipKind::part) { // passes from left to right
        const double width = m_coverShare * box.width();
        const double left = box.left - width + steps * (box.width() + width) / 40;
        return {left, box.top - 40, left + width, box.bottom + 40};
    }
    const double reach = std::min(1.0, steps / (3 + m_coverFrom % 12));
    return {box.left - 20, box.top - 40, box.left - 20 + reach * (box.width() + 40),
            box.bottom + 40};
}

double FollowedClip::covered(int frame) const {
    const Box box = coverBox(frame);
    const Polygon polygon = zone(frame);
    const Box bounds = boundsOf(polygon);
    int all = 0;
    int hidden = 0;
    for (double y = bounds.top; y < bounds.bottom; y += bounds.height() / 40) {
        for (double x = bounds.left; x < bounds.right; x += bounds.width() / 40) {
            if (contains(polygon, {x, y})) {
                ++all;
                hidden += x >= box.left && x < box.right && y >= box.top && y < box.bottom ? 1 : 0;
            }
        }
    }
    return all > 0 ? static_cast<double>(hidden) / all : 0;
}

float FollowedClip::thingValue(double x, double y) const {
    float value = static_cast<float>(m_width[2]) + m_surface.at(x, y);
    for (const Patch& patch : m_patches) {
        const double u = (2 * x - patch.left - patch.right) / (patch.right - patch.left);
        const double v = (2 * y - patch.top - patch.bottom) / (patch.bottom - patch.top);
        if (patch.isRound ? u * u + v * v < 1 : std::abs(u) < 1 && std::abs(v) < 1) {
            value = static_cast<float>(m_width[2]) + patch.value;
        }
    }
    return value;
}

void FollowedClip::drawGround(int frame) {
    const Warp back = groundWarp(frame).inverse();
    for (int y = m_top; y < m_bottom; ++y) {
        for (int x = m_left; x < m_right; ++x) {
            const double u = back.m[0] * x + back.m[1] * y + back.m[2];
            const double v = back.m[3] * x + back.m[4] * y + back.m[5];
            pixel(x, y) = 130 + m_ground.at(u, v);
        }
    }
}

void FollowedClip::drawThing(int frame) {
    if (m_kind == ClipKind::shake) {
        return; // the zone is a part of the ground
    }
    const double w = m_width[0];
    const double h = m_width[1];
    // A part of the scene goes on around the zone.
    const double more = m_isPartOfGround ? 1000 : 0;
    const Warp warp = thingWarp(frame);
    Box box = boundsOf(warped(warp, {{0, 0}, {w, 0}, {w, h}, {0, h}}));
    if (m_isPartOfGround) {
        box = {box.left - 150, box.top - 150, box.right + 150, box.bottom + 150};
    }
    const Warp back = warp.inverse();
    const double scale =
        std::sqrt(track::signedArea(warped(warp, {{0, 0}, {w, 0}, {w, h}, {0, h}})) / (w * h));
    for (int y = std::max(0, static_cast<int>(box.top) - 1);
         y < std::min<double>(kHeight, box.bottom + 2); ++y) {
        for (int x = std::max(0, static_cast<int>(box.left) - 1);
             x < std::min<double>(kWidth, box.right + 2); ++x) {
            const Point p = back({static_cast<double>(x), static_cast<double>(y)});
            const double within =
                std::min({p.x + more, w + more - p.x, p.y + more, h + more - p.y});
            const auto share = static_cast<float>(std::clamp(within * scale + 0.5, 0.0, 1.0));
            if (share > 0) {
                float value = 0; // four samples: edges of patches are smooth, too
                for (int i = 0; i < 4; ++i) {
                    value += thingValue(p.x + (i % 2 - 0.5) * 0.5 / scale,
                                        p.y + (i / 2 - 0.5) * 0.5 / scale) /
                             4;
                }
                pixel(x, y) += share * (value - pixel(x, y));
            }
        }
    }
}

void FollowedClip::drawCover(int frame) {
    const Box box = coverBox(frame);
    for (int y = std::max(0, static_cast<int>(box.top)); y < std::min<double>(kHeight, box.bottom);
         ++y) {
        for (int x = std::max(0, static_cast<int>(box.left));
             x < std::min<double>(kWidth, box.right); ++x) {
            pixel(x, y) = 110 + m_coverSurface.at(x - box.left, y - box.top);
        }
    }
}

void FollowedClip::blur(int frame) {
    if (m_blur == 0 || frame < 30 || frame >= 60) {
        return;
    }
    const int reach = static_cast<int>(m_blur / 2 * std::sin((frame - 29) * std::numbers::pi / 31));
    std::vector<float> row(kWidth);
    for (int y = m_top; y < m_bottom; ++y) {
        std::copy_n(&pixel(0, y), kWidth, row.begin());
        for (int x = m_left; x < m_right; ++x) {
            float sum = 0;
            for (int d = -reach; d <= reach; ++d) {
                sum += pixel(std::clamp(x + d, m_left, m_right - 1), y);
            }
            row[static_cast<std::size_t>(x)] = sum / static_cast<float>(2 * reach + 1);
        }
        std::ranges::copy(row, &pixel(0, y));
    }
}

void FollowedClip::finish(int frame) {
    std::mt19937 random(static_cast<std::uint32_t>(frame) * 31 + 7);
    const double gain =
        std::lerp(1.0, m_gain, progress(frame)) * (1 + uniformOf(random, -m_flicker, m_flicker));
    const auto noise = static_cast<float>(m_noise);
    for (int y = m_top; y < m_bottom; ++y) {
        std::size_t from = random();
        for (int x = m_left; x < m_right; ++x, ++from) {
            const float value = pixel(x, y) * static_cast<float>(gain) +
                                noise * m_noiseValues[from & (m_noiseValues.size() - 1)];
            m_bytes[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)] =
                static_cast<std::uint8_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
        }
    }
}

track::GreyView FollowedClip::picture(int frame) {
    const Box box = boundsOf(zone(frame));
    m_left = std::clamp(static_cast<int>(box.left) - kAround, 0, kWidth);
    m_top = std::clamp(static_cast<int>(box.top) - kAround, 0, kHeight);
    m_right = std::clamp(static_cast<int>(box.right) + kAround, 0, kWidth);
    m_bottom = std::clamp(static_cast<int>(box.bottom) + kAround, 0, kHeight);
    drawGround(frame);
    drawThing(frame);
    drawCover(frame);
    blur(frame);
    finish(frame);
    return {m_bytes.data(), kWidth, kHeight, kWidth};
}

double overlap(const Polygon& a, const Polygon& b) {
    const Box boxA = boundsOf(a);
    const Box boxB = boundsOf(b);
    const Box box{std::min(boxA.left, boxB.left), std::min(boxA.top, boxB.top),
                  std::max(boxA.right, boxB.right), std::max(boxA.bottom, boxB.bottom)};
    constexpr int kSteps = 150;
    int both = 0;
    int either = 0;
    for (int y = 0; y < kSteps; ++y) {
        for (int x = 0; x < kSteps; ++x) {
            const Point p{box.left + (x + 0.5) * box.width() / kSteps,
                          box.top + (y + 0.5) * box.height() / kSteps};
            const bool inA = contains(a, p);
            const bool inB = contains(b, p);
            both += inA && inB ? 1 : 0;
            either += inA || inB ? 1 : 0;
        }
    }
    return either > 0 ? static_cast<double>(both) / either : 0;
}

} // namespace bench
