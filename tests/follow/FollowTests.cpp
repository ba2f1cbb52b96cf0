#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "follow/FollowJob.h"
#include "follow/Following.h"
#include "platform/FileSystem.h"
#include "tests/support/BoxClip.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"

namespace {

using follow::Outcome;
using follow::Points;

class FollowTest : public support::TempFolderTest {
protected:
    FollowTest() {
        m_clip.place = [](int frame) { return platform::Point{30 + 4 * frame, 60 + frame}; };
    }

    void write() { support::writeBytes("clip.ogv", m_clip.make()); }
    /// The box on a frame, in display pixels, which are two a pixel of the clip.
    [[nodiscard]] Points boxOn(int frame) const {
        const auto [x, y] = m_clip.place(frame);
        const int right = 2 * (x + m_clip.side) - 1;
        const int bottom = 2 * (y + m_clip.side) - 1;
        return {{2 * x, 2 * y}, {right, 2 * y}, {right, bottom}, {2 * x, bottom}};
    }
    [[nodiscard]] follow::Request request(int frame, int last) const {
        return {"clip.ogv", {2 * m_clip.width, 2 * m_clip.height}, frame, boxOn(frame), last, {}};
    }
    static Outcome run(const follow::Request& request) {
        return followZone(
            request, platform::nativeFileSystem(), [] { return false; }, [](const auto&) {});
    }
    /// The largest distance of a coordinate from the truth.
    [[nodiscard]] static int error(const Points& found, const Points& truth) {
        int largest = 0;
        for (std::size_t i = 0; i < truth.size(); ++i) {
            largest = std::max(
                {largest, std::abs(found[i].x - truth[i].x), std::abs(found[i].y - truth[i].y)});
        }
        return largest;
    }

    support::BoxClip m_clip;
};

TEST_F(FollowTest, AllFramesUpToTheLastGetAShapeInBothDirections) {
    write();
    for (const auto& [frame, last] : {std::pair{0, 39}, std::pair{39, 0}, std::pair{20, 23}}) {
        const Outcome outcome = run(request(frame, last));
        ASSERT_EQ(outcome.shapes.size(), static_cast<std::size_t>(std::abs(last - frame)));
        EXPECT_FALSE(outcome.lostAt || outcome.isUnreadable);
        EXPECT_GT(outcome.leastMatch, 0.6);
        const int step = last < frame ? -1 : 1;
        for (int i = 0; i < std::abs(last - frame); ++i) {
            EXPECT_LE(
                error(outcome.shapes[static_cast<std::size_t>(i)], boxOn(frame + step * (i + 1))),
                4)
                << frame << " " << i;
        }
    }
}

TEST_F(FollowTest, AKnownShapeAtTheOtherEndIsReached) {
    write();
    follow::Request request = this->request(0, 9);
    request.pointsBeyond = boxOn(10);
    for (platform::Point& p : request.pointsBeyond) {
        p.x += 20; // the author has it there
    }
    int done = 0;
    const Outcome outcome = followZone(
        request, platform::nativeFileSystem(), [] { return false; },
        [&](const follow::News& news) {
            done = news.done;
            EXPECT_EQ(news.all, 18);
        });
    ASSERT_EQ(outcome.shapes.size(), 9U);
    EXPECT_EQ(done, 18);
    EXPECT_NEAR(outcome.shapes[0][0].x, boxOn(1)[0].x + 2, 3);
    EXPECT_NEAR(outcome.shapes[8][0].x, boxOn(9)[0].x + 18, 3);
}

TEST_F(FollowTest, LostSightAndUnreadableClipsEndIt) {
    m_clip.hiddenFrom = 25;
    write();
    const Outcome lost = run(request(0, 39));
    ASSERT_TRUE(lost.lostAt);
    EXPECT_EQ(lost.lostAt, static_cast<int>(lost.shapes.size()) + 1);
    EXPECT_TRUE(*lost.lostAt >= 25 && *lost.lostAt <= 28) << *lost.lostAt;
    EXPECT_EQ(lost.sight, track::Sight::covered);

    EXPECT_TRUE(run({"missing.ogv", {640, 384}, 0, boxOn(0), 9, {}}).isUnreadable);
    support::writeBytes("text.ogv", "no clip");
    EXPECT_TRUE(run({"text.ogv", {640, 384}, 0, boxOn(0), 9, {}}).isUnreadable);
    const Outcome beyond = run(request(38, 60));
    EXPECT_TRUE(beyond.isUnreadable) << "beyond the end";
    EXPECT_EQ(beyond.lostAt, 40);
    const Outcome before = run(request(2, -3));
    EXPECT_TRUE(before.isUnreadable) << "before the start";
    EXPECT_EQ(before.lostAt, -1);
    // Towards a shape that is known behind the cover.
    m_clip.hiddenTo = 34;
    write();
    follow::Request request = this->request(0, 38);
    request.pointsBeyond = boxOn(39);
    const Outcome parted = run(request);
    EXPECT_GE(parted.shapes.size(), 23U);
    ASSERT_GE(parted.shapesBeyond.size(), 3U);
    EXPECT_LE(error(parted.shapesBeyond[0], boxOn(38)), 4);
    EXPECT_EQ(parted.lostAt, static_cast<int>(parted.shapes.size()) + 1);
}

TEST_F(FollowTest, AJobThatIsStoppedBringsWhatItFoundAndOneThatGoesNothing) {
    write();
    support::TaskLoop loop;
    std::optional<follow::FollowJob> job(std::in_place, loop, platform::nativeFileSystem());
    std::optional<Outcome> outcome;
    int last = 0;
    job->start(
        request(0, 39),
        [&](const follow::News& news) {
            last = news.frame;
            EXPECT_LE(error(news.points, boxOn(news.frame)), 4);
            job->stop();
        },
        [&](const Outcome& found) { outcome = found; });
    while (!outcome) {
        loop.processEvents(true);
    }
    EXPECT_FALSE(job->isRunning());
    EXPECT_GE(static_cast<int>(outcome->shapes.size()), last);
    EXPECT_FALSE(outcome->lostAt || outcome->isUnreadable);
    outcome.reset();
    job->start(
        request(0, 39), [](const auto&) {}, [&](const Outcome& found) { outcome = found; });
    job.reset();
    loop.processEvents(false);
    EXPECT_FALSE(outcome);
}

} // namespace
