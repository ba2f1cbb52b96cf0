// Random edits of shapes over many frames, against a model that keeps each frame by itself, blends
// straight in whole numbers and smoothly by Bezier curves. After each the zone files are the
// model's, byte for byte; all are taken back and done again.
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "tests/support/Random.h"
#include "tests/zone/ShapeFixture.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/PointMatching.h"
#include "zone/ShapeEdits.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zone_tests {
namespace {

using platform::Point;
using zone::BlendWay;
using zone::FrameRange;
using zone::NewShapes;
using Name = zone::StepLabel::Name;

/// `from` plus `part` / `whole` of the way to `to`, halves away from zero.
int between(int from, int to, int part, int whole) {
    const std::int64_t parts = std::int64_t{from} * (whole - part) + std::int64_t{to} * part;
    const std::int64_t size = (2 * std::abs(parts) + whole) / (2 * whole);
    return static_cast<int>(parts < 0 ? -size : size);
}

/// `held` where that is the value rounded, halves either way.
int rounded(double value, int held) {
    return std::abs(value - held) < 0.5 + 1e-6 ? held : static_cast<int>(std::lround(value));
}

using Place = std::complex<double>;

Place placeOf(Point point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}
Point rounded(Place place, Point held) {
    return {rounded(place.real(), held.x), rounded(place.imag(), held.y)};
}

/// A coordinate at some frames; no frame stands for a missing one at either end.
struct Mark {
    int frame = -1;
    double value = 0;
};

/// Between the second and the third, by halving lines.
double smoothAt(const Mark (&marks)[4], int frame) {
    const auto rise = [&](int from, int to) {
        return (marks[to].value - marks[from].value) / (marks[to].frame - marks[from].frame);
    };
    const double length = marks[2].frame - marks[1].frame;
    const auto slope = [&](int outer, int key) {
        if (marks[outer].frame < 0) {
            return rise(1, 2);
        }
        const double least = std::min(std::abs(rise(outer, key)), std::abs(rise(1, 2)));
        const bool goesOn = rise(outer, key) * rise(1, 2) > 0;
        return goesOn ? std::clamp(rise(outer, 3 - key), -3 * least, 3 * least) : 0;
    };
    double line[] = {marks[1].value, marks[1].value + slope(0, 1) * length / 3,
                     marks[2].value - slope(3, 2) * length / 3, marks[2].value};
    for (int left = 3; left > 0; --left) {
        for (int i = 0; i < left; ++i) {
            line[i] = std::lerp(line[i], line[i + 1], (frame - marks[1].frame) / length);
        }
    }
    return line[0];
}

class ShapeEditTest : public ShapeTest {
protected:
    /// Sets the plain frames between two keys, if their shapes can be blended.
    void blendPlain(int from, int to) {
        const Points start = plain(from).points;
        const Points end = plain(to).points;
        for (int frame = from + 1; start.size() == end.size() && frame < to; ++frame) {
            plain(frame).points.clear();
            for (std::size_t i = 0; i < start.size(); ++i) {
                plain(frame).points.push_back(
                    {between(start[i].x, end[i].x, frame - from, to - from),
                     between(start[i].y, end[i].y, frame - from, to - from)});
            }
        }
    }
    /// The same smoothly where `way` says so, as far as shapes beside the gap can tell the course.
    void blendPlain(const std::vector<int>& keys, std::size_t gap, BlendWay way) {
        const int from = keys[gap];
        const int to = keys[gap + 1];
        const std::size_t size = plain(from).points.size();
        blendPlain(from, to);
        if (way == BlendWay::straight || plain(to).points.size() != size) {
            return;
        }
        const auto beside = [&](bool isThere, std::size_t key) {
            return isThere && plain(keys[key]).points.size() == size ? keys[key] : -1;
        };
        const int around[] = {beside(gap > 0, gap - 1), from, to,
                              beside(gap + 2 < keys.size(), gap + 2)};
        for (int frame = from + 1; frame < to; ++frame) {
            for (std::size_t i = 0; i < size; ++i) {
                for (int Point::*side : {&Point::x, &Point::y}) {
                    Mark marks[4];
                    for (std::size_t k = 0; k < 4; ++k) {
                        if (around[k] >= 0) {
                            marks[k] = {around[k],
                                        static_cast<double>(plain(around[k]).points[i].*side)};
                        }
                    }
                    int& value = plain(frame).points[i].*side;
                    value = rounded(smoothAt(marks, frame), heldPoint(frame, i).*side);
                }
            }
        }
    }
    [[nodiscard]] Point heldPoint(int frame, std::size_t index) const {
        const auto points = held().outline(frame);
        return index < points.size() ? points[index] : Point{};
    }
    BlendWay randomWay() { return m_random.below(2) == 0 ? BlendWay::straight : BlendWay::smooth; }
    Points randomPoints(int most) {
        Points points;
        for (int left = m_random.below(most + 1); left > 0; --left) {
            points.push_back({m_random.below(400), m_random.below(400)});
        }
        return points;
    }
    std::vector<int> randomKeys() {
        std::set<int> keys{m_random.below(count())};
        for (int left = m_random.below(5); left > 0; --left) {
            keys.insert(m_random.below(count()));
        }
        return {keys.begin(), keys.end()};
    }
    FrameRange randomRange() {
        const int one = m_random.below(count());
        const int other = m_random.below(count());
        return {std::min(one, other), std::max(one, other) + 1};
    }
    void interpolate();
    void fillGaps();
    void deleteKeys();
    void drag();
    void applyShape();
    void setFlags();
    void removePoint();
    void addPoint();
    void match();

    support::Random m_random{26};
};

void ShapeEditTest::interpolate() {
    const std::vector<int> keys = randomKeys();
    const BlendWay way = randomWay();
    const auto stretch = zone::blendedShapes(held(), keys, way, {});
    const bool areEqual = std::ranges::all_of(keys, [&](int key) {
        return plain(key).points.size() == plain(keys.front()).points.size();
    });
    ASSERT_EQ(stretch.has_value(), keys.size() > 1 && areEqual);
    if (stretch) {
        NewShapes shapes{*stretch};
        shapes.filled = zone::blendedGaps(held(), keys);
        EXPECT_EQ(shapes.filled.size(), keys.size() - 1);
        replace(Name::interpolate, shapes);
        for (std::size_t i = 1; i < keys.size(); ++i) {
            blendPlain(keys, i - 1, way);
        }
    }
}

void ShapeEditTest::fillGaps() {
    const std::vector<int> keys = randomKeys();
    const BlendWay way = randomWay();
    NewShapes shapes{zone::filledGaps(held(), keys, way)};
    shapes.filled = zone::blendedGaps(held(), keys);
    replace(Name::interpolate, shapes);
    for (std::size_t i = 1; i < keys.size(); ++i) {
        blendPlain(keys, i - 1, way);
    }
}

void ShapeEditTest::deleteKeys() {
    const std::vector<int> keys = randomKeys();
    const FrameRange range = randomRange();
    const BlendWay way = randomWay();
    const auto result = zone::withoutKeys(held(), keys, range, way);
    std::vector<int> before;
    std::vector<int> behind;
    for (const int key : keys) {
        if (key < range.first) {
            before.push_back(key);
        } else if (key >= range.end) {
            behind.push_back(key);
        }
    }
    std::vector<int> beside(before.size() > 2 ? before.end() - 2 : before.begin(), before.end());
    const std::size_t last = beside.empty() ? 0 : beside.size() - 1;
    beside.insert(beside.end(), behind.begin(),
                  behind.size() > 2 ? behind.begin() + 2 : behind.end());
    const bool isBetween = !before.empty() && !behind.empty();
    const bool areEqual =
        isBetween && plain(before.back()).points.size() == plain(behind.front()).points.size();
    ASSERT_EQ(result.has_value(), !beside.empty() && (!isBetween || areEqual));
    if (!result) {
        return;
    }
    replace(Name::fill, *result);
    if (isBetween) {
        blendPlain(beside, last, way);
        return;
    }
    const int shown = before.empty() ? behind.front() : before.back();
    for (int at = before.empty() ? 0 : shown; at < (before.empty() ? shown : count()); ++at) {
        plain(at).points = plain(shown).points;
    }
}

/// Of a point or the whole shape, by hand, by a factor, or by pasting another; carried or filled.
void ShapeEditTest::drag() {
    const int frame = m_random.below(count());
    const bool carries = m_random.below(2) == 0;
    const bool fills = m_random.below(2) == 0;
    const std::vector<int> keys = randomKeys();
    const int index = m_random.below(7) - 3;
    const Point to{m_random.below(400), m_random.below(300)};
    const zone::EditReach reach = fills ? zone::fillReach(held(), frame, keys, carries)
                                        : zone::plainReach(held(), frame, carries);
    const double factor = m_random.oneOf({0.5, 0.8, 1.25});
    const double degrees = m_random.below(720) - 360;
    const bool grows = m_random.below(2) == 0;
    const Points pasted = randomPoints(4);
    replace(Name::movePoint, zone::reshaped(held(), reach,
                                            index >= 0    ? zone::movedPoint(index, to)
                                            : index == -1 ? zone::shifted(to)
                                            : index == -2 ? zone::replaced(pasted)
                                            : grows       ? zone::scaled(factor)
                                                          : zone::rotated(degrees)));
    const Place turn = grows ? Place(factor) : std::polar(1.0, std::acos(-1.0) / 180 * degrees);
    EXPECT_TRUE(m_session->editingOf(0).shapedFrames.contains(frame));
    const auto behind = std::ranges::upper_bound(keys, frame);
    const auto before = std::ranges::lower_bound(keys, frame);
    const bool isLast = fills && (behind == keys.end() ||
                                  plain(*behind).points.size() != plain(frame).points.size());
    const bool spreads = carries && (!fills || isLast);
    const int last = fills && behind != keys.end() ? *behind : count();
    for (int at = frame; at < (spreads ? last : frame + 1); ++at) {
        Place middle;
        for (const Point& point : plain(at).points) {
            middle += placeOf(point) / static_cast<double>(plain(at).points.size());
        }
        if (index == -2) {
            plain(at).points = pasted;
        }
        for (std::size_t i = 0; i < plain(at).points.size(); ++i) {
            Point& point = plain(at).points[i];
            if (index == -1) {
                point = {point.x + to.x, point.y + to.y};
            } else if (index == -3) {
                point = rounded(middle + (placeOf(point) - middle) * turn, heldPoint(at, i));
            } else if (static_cast<int>(i) == index) {
                point = to;
            }
        }
    }
    if (fills && before != keys.begin()) {
        blendPlain(*std::prev(before), frame);
    }
    if (fills && !isLast) {
        blendPlain(frame, *behind);
    }
}

void ShapeEditTest::applyShape() {
    const FrameRange range = randomRange();
    const int frame = m_random.below(2) == 0 ? range.first : range.end - 1;
    replace(Name::applyShape, zone::applied(held(), frame, range));
    const Points shape = plain(frame).points;
    for (int at = range.first; at < range.end; ++at) {
        plain(at).points = shape;
    }
}

void ShapeEditTest::setFlags() {
    const FrameRange range = randomRange();
    const bool active = m_random.below(2) == 0;
    const bool only = m_random.below(2) == 0;
    replace(Name::active, zone::flagged(held(), range, active, only));
    for (int at = 0; at < count(); ++at) {
        if (range.contains(at) || only) {
            plain(at).active = range.contains(at) == active;
        }
    }
}

void ShapeEditTest::removePoint() {
    const int index = m_random.below(4);
    replace(Name::deletePoint, zone::withoutPoint(held(), index));
    for (Frame& frame : m_plain) {
        if (index < static_cast<int>(frame.points.size())) {
            frame.points.erase(frame.points.begin() + index);
        }
    }
}

/// On an edge, and with it wherever it goes.
void ShapeEditTest::addPoint() {
    const int frame = m_random.below(count());
    const Points shape = plain(frame).points;
    if (shape.empty()) {
        return;
    }
    const auto index = static_cast<std::size_t>(m_random.below(static_cast<int>(shape.size())));
    const Point from = shape[index];
    const Point to = shape[(index + 1) % shape.size()];
    const Point at{(from.x + to.x) / 2 + m_random.below(7) - 3,
                   (from.y + to.y) / 2 + m_random.below(7) - 3};
    replace(Name::addPoint, zone::withPointEverywhere(held(), frame, static_cast<int>(index), at));
    const Place way = placeOf(to) - placeOf(from);
    const Place offset = placeOf(at) - placeOf(from);
    for (int other = 0; other < count(); ++other) {
        Points& points = plain(other).points;
        if (index < points.size()) {
            const Place start = placeOf(points[index]);
            const Place own = placeOf(points[(index + 1) % points.size()]) - start;
            const Place place = start + (way == Place() ? offset : offset / way * own);
            points.insert(points.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                          rounded(place, heldPoint(other, index + 1)));
        } else {
            points.push_back(at);
        }
    }
}

void ShapeEditTest::match() {
    const int one = m_random.below(count());
    const int other = m_random.below(count());
    const int third = m_random.below(count());
    std::vector<int> keys{one, other, third};
    std::ranges::sort(keys);
    const auto sizeAt = [this](int at) { return plain(at).points.size(); };
    std::size_t few = sizeAt(one);
    std::size_t many = few;
    for (const int key : keys) {
        few = std::min(few, sizeAt(key));
        many = std::max(many, sizeAt(key));
    }
    const auto result = zone::matched(held(), keys);
    ASSERT_EQ(result.has_value(), few >= 1 && few < many);
    if (!result) {
        return;
    }
    std::set<int> changed; // with those beside them that are alike
    for (const int key : keys) {
        for (const int way : {-1, 1}) {
            for (int at = key; at >= 0 && at < count() && sizeAt(at) == sizeAt(key); at += way) {
                changed.insert(at);
            }
        }
    }
    replace(Name::matchPoints, *result);
    for (const int at : changed) {
        const Points points = held().shape(at)->points;
        EXPECT_EQ(points.size(), many);
        // The old ones are there still, in their order.
        auto from = points.begin();
        for (const Point& old : plain(at).points) {
            from = std::find(from, points.end(), old);
            ASSERT_NE(from, points.end());
            ++from;
        }
        plain(at).points = points;
    }
}

TEST_F(ShapeEditTest, RandomEditsSaveWhatAPlainModelOfTheirRulesDoesAndAreTakenBackExactly) {
    for (int round = 0; round < 150; ++round) {
        std::vector<Frame> frames(1 + static_cast<std::size_t>(m_random.below(12)));
        for (Frame& frame : frames) {
            frame = m_random.below(3) == 0 && &frame != frames.data()
                        ? *(&frame - 1)
                        : Frame{randomPoints(4), m_random.below(4) > 0};
        }
        begin(frames);
        Lines states{saved()};
        std::vector<zone::ZoneEditing> known(1);
        const auto expectKnown = [&](std::size_t state) {
            const zone::ZoneEditing& now = m_session->editingOf(0);
            const zone::ZoneEditing& then = known.at(state);
            ASSERT_EQ(now.shapedFrames, then.shapedFrames);
            ASSERT_EQ(now.filled, then.filled);
            ASSERT_EQ(now.followed.size(), then.followed.size());
            ASSERT_EQ(now.isNew, then.isNew);
        };
        for (int step = 0; step < 30; ++step) {
            const std::function<void()> edits[] = {
                [&] { interpolate(); }, [&] { fillGaps(); },    [&] { deleteKeys(); },
                [&] { drag(); },        [&] { applyShape(); },  [&] { setFlags(); },
                [&] { addPoint(); },    [&] { removePoint(); }, [&] { match(); }};
            const std::size_t steps = m_session->history().size();
            edits[m_random.below(step % 5 == 0 ? 9 : 6)]();
            ASSERT_EQ(saved(), plainBytes()) << round << ", " << step;
            if (m_session->history().size() > steps) {
                states.push_back(saved());
                known.push_back(m_session->editingOf(0));
            }
        }
        for (std::size_t left = states.size() - 1; left > 0; --left) {
            ASSERT_TRUE(m_session->undo());
            ASSERT_EQ(saved(), states[left - 1]);
            ASSERT_NO_FATAL_FAILURE(expectKnown(left - 1));
        }
        for (std::size_t done = 1; done < states.size(); ++done) {
            ASSERT_TRUE(m_session->redo());
            ASSERT_EQ(saved(), states[done]);
            ASSERT_NO_FATAL_FAILURE(expectKnown(done));
        }
    }
}

TEST_F(ShapeEditTest, OutlinesOfManyPointsAreMatchedAtOnceUnlessAllOfThemWouldTakeTooMuchMemory) {
    constexpr std::size_t kMany = 200'000;
    Points many;
    for (int i = 0; i < static_cast<int>(kMany); ++i) {
        many.push_back({i % 1280, i / 1280});
    }
    std::vector<Frame> frames(300, {{{0, 0}, {900, 0}, {0, 600}}});
    frames.back().points = many;
    begin(frames);
    const int keys[] = {0, 299};
    const auto result = zone::matched(held(), keys);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->stretch.frames(), (FrameRange{0, 299}));
    EXPECT_EQ(result->stretch.shapes().points(0).size(), kMany);
    for (int frame = 0; frame < 299; ++frame) { // a shape of its own each
        frames[static_cast<std::size_t>(frame)].points[0].x = frame;
    }
    begin(frames);
    EXPECT_FALSE(zone::matched(held(), keys));
    frames[0].points = many;
    frames.back().points[0] = {7, 7};
    begin(frames);
    EXPECT_FALSE(zone::canBlend(held(), keys));
}

TEST_F(ShapeEditTest, AStepKeepsWhatItChangedHoweverManyFramesWereShapedBefore) {
    constexpr int kMoves = 3000;
    begin(std::vector<Frame>(kMoves, {{{0, 0}}}));
    m_session->hitTest(0, 0, 0, 0);
    for (int frame = 0; frame < kMoves; ++frame) {
        m_session->moveSelectedPoint(0, frame, frame % 400, 7);
    }
    EXPECT_EQ(m_session->history().size(), 1000U);
    EXPECT_LT(m_session->history().bytes(), 2'000'000U);
    EXPECT_EQ(m_session->editingOf(0).shapedFrames.size(), std::size_t{kMoves});
    begin(std::vector<Frame>(9, {{{0, 0}}}));
    m_session->hitTest(0, 0, 0, 0);
    m_session->moveSelectedPoint(0, 7, 3, 3);
    m_session->moveSelectedPoint(0, 5, 1, 1);
    ASSERT_TRUE(m_session->keepToOneFrame());
    EXPECT_EQ(m_session->editingOf(0).shapedFrames, (std::set<int>{5, 7}));
}

TEST_F(ShapeEditTest, ADragThatReplacesItsFramesAgainAndAgainIsOneSmallStep) {
    begin(std::vector<Frame>(60, {{{0, 0}, {90, 0}, {0, 90}}}));
    const std::string before = saved();
    m_session->beginGesture({Name::fill, 0, 30});
    const int keys[] = {0};
    for (int x = 1; x <= 2000; ++x) { // some of them leave equal neighbours, and so other runs
        replace(Name::fill, zone::reshaped(held(), zone::fillReach(held(), 30, keys, false),
                                           zone::movedPoint(0, {x % 40, 7})));
    }
    m_session->endGesture();
    EXPECT_EQ(held().shape(15)->points, (Points{{0, 4}, {90, 0}, {0, 90}}));
    EXPECT_LT(held().bytes(), 100'000U);
    EXPECT_LT(m_session->history().bytes(), 100'000U);
    EXPECT_EQ(m_session->history().size(), 1U);
    (void)m_session->undo();
    EXPECT_EQ(saved(), before);
}

} // namespace
} // namespace zone_tests
