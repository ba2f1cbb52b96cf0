#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "bench/FollowedClip.h"
#include "track/Follower.h"

namespace {

using bench::ClipKind;
using bench::FollowedClip;
using track::Sight;

constexpr int kFrames = 25;

TEST(FollowerTest, ThingsAreFollowedWhateverTheyDo) {
    const ClipKind kinds[] = {ClipKind::zoom,  ClipKind::turn,  ClipKind::shake,
                              ClipKind::fast,  ClipKind::noise, ClipKind::soft,
                              ClipKind::plain, ClipKind::away,  ClipKind::brightness};
    for (const ClipKind kind : kinds) {
        FollowedClip clip(kind, 11);
        track::Follower follower(clip.picture(0), clip.zone(0));
        double least = 1;
        for (int frame = 1; frame < kFrames; ++frame) {
            const track::Step step = follower.follow(clip.picture(frame));
            ASSERT_EQ(step.sight, Sight::kept) << nameOf(kind) << " " << frame;
            least = std::min(least, bench::overlap(step.shape, clip.zone(frame)));
        }
        EXPECT_GE(least, 0.85) << nameOf(kind);
    }
}

TEST(FollowerTest, APolygonMayHaveAnyNumberOfCornersAnywhere) {
    FollowedClip clip(ClipKind::zoom, 11);
    const track::Polygon corners = clip.zone(0);
    track::Polygon many;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const track::Point from = corners[i];
        const track::Point to = corners[(i + 1) % corners.size()];
        for (int part = 0; part < 100'000; ++part) {
            many.push_back(
                {std::lerp(from.x, to.x, part / 1e5), std::lerp(from.y, to.y, part / 1e5)});
        }
    }
    track::Follower follower(clip.picture(0), many);
    const track::Step step = follower.follow(clip.picture(1));
    ASSERT_EQ(step.shape.size(), many.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        EXPECT_NEAR(step.shape[i * 100'000].x, clip.zone(1)[i].x, 2);
        EXPECT_NEAR(step.shape[i * 100'000].y, clip.zone(1)[i].y, 2);
    }
    track::Polygon far = corners;
    far[1] = {2147483647.0, -2147483648.0};
    const track::Step ofFar = track::Follower(clip.picture(0), far).follow(clip.picture(1));
    EXPECT_EQ(ofFar.sight, Sight::kept);
    EXPECT_NEAR(ofFar.shape[3].x, clip.zone(1)[3].x, 3);
}

TEST(FollowerTest, SoftThingsDoNotDrift) {
    FollowedClip clip(ClipKind::soft, 1003);
    track::Follower follower(clip.picture(0), clip.zone(0));
    track::Step step;
    for (int frame = 1; frame < FollowedClip::kFrames; ++frame) {
        step = follower.follow(clip.picture(frame));
    }
    EXPECT_GE(bench::overlap(step.shape, clip.zone(FollowedClip::kFrames - 1)), 0.93);
}

TEST(FollowerTest, NoiseInTheFirstPictureIsNotKept) {
    FollowedClip clip(ClipKind::mixed, 5000);
    track::Follower follower(clip.picture(0), clip.zone(0));
    for (int frame = 1; frame < FollowedClip::kFrames; ++frame) {
        const track::Step step = follower.follow(clip.picture(frame));
        ASSERT_GE(bench::overlap(step.shape, clip.zone(frame)), 0.85) << frame;
    }
}

TEST(FollowerTest, SightIsLostWhenSomethingSlidesOverTheThing) {
    for (const std::uint32_t seed : {41U, 44U, 2016U}) {
        FollowedClip clip(ClipKind::covered, seed);
        track::Follower follower(clip.picture(0), clip.zone(0));
        int lostAt = 0;
        int coveredAt = 0;
        double hiddenAtLastGood = 0;
        track::Step step;
        for (int frame = 1; frame < FollowedClip::kFrames && lostAt == 0; ++frame) {
            step = follower.follow(clip.picture(frame));
            coveredAt = coveredAt == 0 && clip.covered(frame) > 0.999 ? frame : coveredAt;
            lostAt = step.sight != Sight::kept ? frame : 0;
            hiddenAtLastGood = step.isDoubtful ? hiddenAtLastGood : clip.covered(frame);
        }
        EXPECT_EQ(step.sight, Sight::covered) << seed;
        EXPECT_TRUE(coveredAt == 0 || lostAt <= coveredAt + 3) << seed << ": " << lostAt;
        EXPECT_LT(hiddenAtLastGood, 0.9) << seed;
        // It stays lost, where it was seen last.
        const track::Step after = follower.follow(clip.picture(0));
        EXPECT_EQ(after.sight, Sight::covered);
        EXPECT_EQ(after.shape, step.shape);
    }
}

TEST(FollowerTest, SightIsLostAtACutAndWhenThePictureFadesToBlack) {
    for (const std::uint32_t seed : {105U, 108U}) {
        FollowedClip clip(ClipKind::shift, seed);
        FollowedClip other(ClipKind::shift, seed + 50);
        track::Follower follower(clip.picture(0), clip.zone(0));
        ASSERT_EQ(follower.follow(clip.picture(1)).sight, Sight::kept);
        for (int frame = 2; frame < 4; ++frame) {
            (void)follower.follow(other.picture(frame));
        }
        EXPECT_EQ(follower.follow(other.picture(4)).sight, Sight::covered) << seed;
    }
    FollowedClip clip(ClipKind::shift, 103);
    track::Follower follower(clip.picture(0), clip.zone(0));
    int frame = 1;
    for (Sight sight = Sight::kept; sight == Sight::kept && frame < 25; ++frame) {
        track::GreyView picture = clip.picture(frame);
        std::vector<std::uint8_t> dark(picture.pixels,
                                       picture.pixels + picture.rowBytes * picture.height);
        for (std::uint8_t& pixel : dark) {
            pixel = static_cast<std::uint8_t>(pixel * std::max(0, 16 - frame) / 16);
        }
        picture.pixels = dark.data();
        sight = follower.follow(picture).sight;
    }
    EXPECT_GT(frame, 8) << "half as bright is the same thing still";
    EXPECT_LT(frame, 20);
}

TEST(FollowerTest, SteepEdgesHoldAPlaneThatTurnsAwayAndNoiseIsNoLossOfContrast) {
    for (const auto& [kind, seed, end] : {std::tuple{ClipKind::away, 7003U, FollowedClip::kFrames},
                                          std::tuple{ClipKind::noise, 7004U, 15}}) {
        FollowedClip clip(kind, seed);
        track::Follower follower(clip.picture(0), clip.zone(0));
        for (int frame = 1; frame < end; ++frame) {
            const track::Step step = follower.follow(clip.picture(frame));
            ASSERT_EQ(step.sight, Sight::kept) << nameOf(kind) << " " << frame;
            ASSERT_GE(bench::overlap(step.shape, clip.zone(frame)), 0.75) << frame;
        }
    }
}

/// A square of 12 pixels that moves over ground.
class TinyClip {
public:
    explicit TinyClip(std::uint32_t seed)
        : m_random(seed), m_ground{m_random, part(3, 12), part(8, 40)}, m_thing{m_random,
                                                                                part(3, 9),
                                                                                part(15, 40)},
          m_dx(part(-3, 3)), m_dy(part(-1, 1)) {}

    [[nodiscard]] track::Polygon zone(int frame) const {
        const double x = 180 + m_dx * frame;
        const double y = 100 + m_dy * frame;
        return {{x, y}, {x + 11, y}, {x + 11, y + 11}, {x, y + 11}};
    }
    track::GreyView picture(int frame) {
        const track::Point at = zone(frame)[0];
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const double u = x - at.x;
                const double v = y - at.y;
                const bool isThing = u >= 0 && v >= 0 && u < 12 && v < 12;
                const float grey =
                    isThing ? 110 + m_thing.at(u, v) : 130 + m_ground.at(x + 0.5 * frame, y);
                m_bytes[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)] =
                    static_cast<std::uint8_t>(grey + static_cast<float>(part(-2, 2)));
            }
        }
        return {m_bytes.data(), kWidth, kHeight, kWidth};
    }

private:
    static constexpr int kWidth = 360;
    static constexpr int kHeight = 200;
    double part(double least, double most) {
        return least + (most - least) * (static_cast<double>(m_random()) / 4294967296.0);
    }

    std::mt19937 m_random;
    bench::Texture m_ground;
    bench::Texture m_thing;
    double m_dx;
    double m_dy;
    std::vector<std::uint8_t> m_bytes = std::vector<std::uint8_t>(std::size_t{kWidth} * kHeight);
};

TEST(FollowerTest, ATinyThingIsFollowedOrLostButNothingElseIsTakenForIt) {
    int followed = 0;
    for (std::uint32_t seed = 1; seed <= 16; ++seed) {
        TinyClip clip(seed);
        track::Follower follower(clip.picture(0), clip.zone(0));
        double least = 1;
        double doubtful = 1; // counts when sight is kept behind it
        int frame = 1;
        for (; frame < 50; ++frame) {
            const track::Step step = follower.follow(clip.picture(frame));
            if (step.sight != Sight::kept) {
                break;
            }
            doubtful = std::min(doubtful, bench::overlap(step.shape, clip.zone(frame)));
            if (!step.isDoubtful) {
                least = std::min(least, doubtful);
                doubtful = 1;
            }
        }
        EXPECT_GE(least, 0.5) << seed << " " << frame;
        followed += frame == 50 ? 1 : 0;
    }
    EXPECT_GE(followed, 6);
}

TEST(FollowerTest, WhatPassesInFrontOfHalfOfAThingDoesNotEndIt) {
    FollowedClip clip(ClipKind::part, 1006);
    track::Follower follower(clip.picture(0), clip.zone(0));
    double mostHidden = 0;
    for (int frame = 1; frame < 90; ++frame) {
        const track::Step step = follower.follow(clip.picture(frame));
        ASSERT_EQ(step.sight, Sight::kept) << frame;
        EXPECT_GE(bench::overlap(step.shape, clip.zone(frame)), 0.85) << frame;
        mostHidden = std::max(mostHidden, clip.covered(frame));
    }
    EXPECT_GT(mostHidden, 0.45);
}

TEST(FollowerTest, AShapeThatACoverHasSqueezedIsDoubtful) {
    for (const std::uint32_t seed : {12006U, 14008U}) {
        FollowedClip clip(ClipKind::part, seed);
        track::Follower follower(clip.picture(0), clip.zone(0));
        double least = 1;
        double doubtful = 1;
        for (int frame = 1; frame < FollowedClip::kFrames; ++frame) {
            const track::Step step = follower.follow(clip.picture(frame));
            if (step.sight != Sight::kept) {
                break;
            }
            const double overlap = bench::overlap(step.shape, clip.zone(frame));
            double& which = step.isDoubtful ? doubtful : least;
            which = std::min(which, overlap);
        }
        EXPECT_GE(least, 0.85) << seed;
        EXPECT_LT(doubtful, 0.7) << seed << " squeezes nothing";
    }
}

TEST(FollowerTest, WhatIsHiddenWhileInDoubtIsNotMissedAfterwards) {
    FollowedClip clip(ClipKind::part, 5008);
    track::Follower follower(clip.picture(0), clip.zone(0));
    for (int frame = 1; frame < 70; ++frame) {
        ASSERT_EQ(follower.follow(clip.picture(frame)).sight, Sight::kept) << frame;
    }
}

TEST(FollowerTest, FewSteepPlacesDoNotOutweighWhatTheyEnclose) {
    FollowedClip clip(ClipKind::plain, 12005);
    track::Follower follower(clip.picture(0), clip.zone(0));
    for (int frame = 1; frame < 50; ++frame) {
        const track::Step step = follower.follow(clip.picture(frame));
        ASSERT_EQ(step.sight, Sight::kept) << frame;
        ASSERT_GE(bench::overlap(step.shape, clip.zone(frame)), 0.9) << frame;
    }
}

TEST(FollowerTest, BackwardsFromTheEndAsWell) {
    FollowedClip clip(ClipKind::turn, 3);
    track::Follower follower(clip.picture(kFrames), clip.zone(kFrames));
    for (int frame = kFrames - 1; frame >= 0; --frame) {
        const track::Step step = follower.follow(clip.picture(frame));
        ASSERT_EQ(step.sight, Sight::kept);
        EXPECT_GE(bench::overlap(step.shape, clip.zone(frame)), 0.85) << frame;
    }
}

/// A picture of `side` pixels with a box at (x, y) in it.
std::vector<std::uint8_t> boxAt(int side, int x, int y, int size) {
    const auto width = static_cast<std::size_t>(side);
    std::vector<std::uint8_t> pixels(width * width, 120);
    for (int row = std::max(0, y); row < std::min(side, y + size); ++row) {
        for (int column = std::max(0, x); column < std::min(side, x + size); ++column) {
            pixels[static_cast<std::size_t>(row) * width + static_cast<std::size_t>(column)] =
                static_cast<std::uint8_t>(170 + 8 * ((row - y) / 10 + (column - x) / 10));
        }
    }
    return pixels;
}

TEST(FollowerTest, WhatLeavesThePictureIsLost) {
    const auto polygon = [](double x) {
        return track::Polygon{{x, 60}, {x + 50, 60}, {x + 50, 110}, {x, 110}};
    };
    const auto first = boxAt(200, 100, 60, 50);
    track::Follower follower({first.data(), 200, 200, 200}, polygon(100));
    track::Step step;
    int x = 100;
    while (step.sight == Sight::kept && x < 200) {
        x += 4;
        const auto next = boxAt(200, x, 60, 50);
        step = follower.follow({next.data(), 200, 200, 200});
    }
    EXPECT_EQ(step.sight, Sight::left);
    EXPECT_GE(x, 165); // more than half of it is still there at 175
}

TEST(FollowerTest, EmptyAndOddPicturesShowNothingToFollow) {
    const std::vector<std::uint8_t> grey(64 * 64, 128);
    const double far = 90000;
    const struct {
        int width;
        int height;
        track::Polygon polygon;
    } cases[] = {
        {64, 64, {{10, 10}, {50, 10}, {50, 50}}},
        {64, 64, {{30, 30}, {30, 30}, {30, 30}}},
        {64, 64, {{-far, -far}, {far, -far}, {far, far}}},
        {64, 64, {{far, far}, {far + 9, far}, {far, far + 9}}},
        {1, 1, {{0, 0}, {1, 0}, {1, 1}}},
        {3, 64, {{0, 0}, {2, 0}, {2, 60}}},
    };
    for (const auto& item : cases) {
        const track::GreyView view{grey.data(), item.width, item.height, item.width};
        track::Follower follower(view, item.polygon);
        EXPECT_EQ(follower.follow(view).sight, Sight::plain);
    }
}

TEST(FollowerTest, WhatTellsNothingIsPlainEvenWhereItHasGradients) {
    FollowedClip clip(ClipKind::soft, 22007);
    track::Follower follower(clip.picture(0), clip.zone(0));
    EXPECT_EQ(follower.follow(clip.picture(1)).sight, Sight::plain) << "it has not left";
}

} // namespace
