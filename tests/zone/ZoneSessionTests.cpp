// Random edits through a session: each step taken back and done again leaves what was there before
// and after it, listeners hear of every frame that differs, and "modified" means that a save
// would write other bytes.
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Random.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zone_tests {
namespace {

using zone::StepLabel;
using zone::ZoneChange;
using zone::ZoneManager;
using zone::ZoneSession;
using Name = StepLabel::Name;
using What = ZoneChange::What;

/// One zone: its name, then each frame's shape with its size in files.
Lines contents(const zone::Zone& zone) {
    Lines lines{zone.name()};
    for (int frame = 0; frame < zone.frameCount(); ++frame) {
        std::ostringstream line;
        if (const auto shape = zone.shape(frame)) {
            line << shape->recordSize << " " << shown(&*shape);
        }
        lines.push_back(line.str());
    }
    return lines;
}
std::vector<Lines> contents(const ZoneManager& zones) {
    std::vector<Lines> all;
    for (int index = 0; index < zones.zoneCount(); ++index) {
        all.push_back(contents(*zones.zone(index)));
    }
    return all;
}

/// Whether a listener that reads again what `changes` name has seen all that differs.
bool namesEverything(const std::vector<ZoneChange>& changes, std::vector<Lines> before,
                     const std::vector<Lines>& after) {
    for (const ZoneChange& change : changes) {
        const auto zone = static_cast<std::size_t>(change.zone);
        if (change.what == What::list) {
            before.resize(after.size());
            for (std::size_t i = zone; i < after.size(); ++i) {
                before[i] = after[i];
            }
        } else if (zone < before.size() && zone < after.size()) {
            const bool isName = change.what == What::name;
            const int end = isName ? 1 : change.frames.end + 1;
            for (int line = isName ? 0 : change.frames.first + 1; line < end; ++line) {
                const auto at = static_cast<std::size_t>(line);
                before[zone][at] = after[zone].at(at);
            }
        }
    }
    return before == after;
}

class ZoneSessionTest : public ZoneTest {
protected:
    void begin(int frames, edit::Limits limits = {1'000'000, std::size_t{1} << 40}) {
        m_frames = frames;
        m_token.reset();
        m_manager = ZoneManager::createEmpty();
        m_manager->scale = zone::Scale{0.5F, 2.0F};
        m_manager->videoWidth = m_manager->videoHeight = 40;
        m_manager->frameCount = frames;
        m_snapshot = m_manager->snapshot();
        m_snapshotContents.clear();
        m_session = std::make_unique<ZoneSession>(m_manager, limits);
        m_token = m_session->observe([this](const auto& changes) {
            m_heard.insert(m_heard.end(), changes.begin(), changes.end());
        });
    }
    /// What a save would write.
    std::string bytes() {
        EXPECT_TRUE(m_manager->saveAs("probe"));
        return file("probe-ZoneInfo.xml") + file("probe-ZoneInfo.bin");
    }
    /// Takes a new one instead when it is time for that.
    void checkSnapshot() {
        ASSERT_EQ(contents(*m_snapshot), m_snapshotContents);
        if (m_random.below(3) == 0) {
            m_snapshot = m_session->snapshot();
            m_snapshotContents = contents(*m_snapshot);
        }
    }
    void randomEdit();
    void randomStep();

    support::Random m_random{77};
    int m_frames = 0;
    std::unique_ptr<ZoneSession> m_session;
    edit::Subscription m_token;
    std::vector<ZoneChange> m_heard;
    std::shared_ptr<const ZoneManager> m_snapshot;
    std::vector<Lines> m_snapshotContents; ///< when it was taken
};

void ZoneSessionTest::randomEdit() {
    ZoneSession& s = *m_session;
    const int zone = m_random.below(s.zones().zoneCount() + 1); // sometimes one that is not there
    const int frame = m_random.below(m_frames);
    const int x = m_random.below(9) * 5;
    const int y = m_random.below(3) * 5;
    const std::function<void()> edits[] = {
        [&] {
            s.addZone(m_random.oneOf<3, std::string>({"", "a", "R&D"}), m_frames);
        },
        [&] { s.removeZone(zone); },
        [&] { ASSERT_TRUE(s.restore(*m_snapshot)); },
        [&] {
            s.renameZone(zone, m_random.oneOf<3, std::string>({"", "b", "c"}));
        },
        [&] { s.setActive(zone, frame, m_random.below(2) == 0); },
        [&] { s.setProgressChanges(m_random.below(2) == 0); },
        [&] { s.chooseZone(zone); },
        [&] { s.showFrame(frame); },
        [&] { s.deletePoint(zone, frame, x, y); },
        [&] { s.addPoint(zone, frame, x, y); },
        [&] { s.addPoint(zone, frame, x, y); },
        [&] { (void)s.hitTest(zone, frame, x, y); },
        [&] { (void)s.hitTest(zone, frame, x, y); },
        [&] { s.moveSelectedPoint(zone, frame, x, y); },
        [&] { // a drag
            const bool isOwn = !s.inGesture();
            if (isOwn) {
                s.beginGesture({Name::movePoint, zone, frame});
            }
            for (const int move : {x, y, x + y}) {
                s.moveSelectedPoint(zone, frame, move, y);
            }
            if (isOwn) {
                s.endGesture();
            }
        },
    };
    constexpr int kFirstForGestures = 5; // those before it end one
    const int first = s.inGesture() ? kFirstForGestures : m_random.below(10) == 0 ? 0 : 3;
    edits[first + m_random.below(static_cast<int>(std::size(edits)) - first)]();
    checkSnapshot();
}

/// An edit, or a gesture of several.
void ZoneSessionTest::randomStep() {
    if (m_random.below(3) > 0) {
        randomEdit();
        return;
    }
    const std::vector<Lines> before = contents(*m_manager);
    m_session->beginGesture({Name::movePoint});
    for (int left = m_random.below(4); left > 0; --left) {
        randomEdit();
    }
    if (m_random.below(4) > 0) {
        m_session->endGesture();
    } else {
        m_session->cancelGesture();
        ASSERT_EQ(contents(*m_manager), before);
    }
}

TEST_F(ZoneSessionTest, TwentyThousandEditsAreTakenBackAndDoneAgainExactly) {
    int edits = 0;
    for (int round = 0; edits < 20'000; ++round) {
        begin(1 + m_random.below(12));
        testing::internal::CaptureStderr(); // a line for each edit of a zone that is not there
        const std::string firstBytes = bytes();
        std::vector<std::vector<Lines>> states{contents(*m_manager)};
        for (; states.size() < 150 && !HasFatalFailure(); ++edits) {
            m_heard.clear();
            randomStep();
            const std::vector<Lines> now = contents(*m_manager);
            ASSERT_TRUE(namesEverything(m_heard, states.back(), now)) << edits;
            const std::size_t position = m_session->history().position();
            ASSERT_LE(position, states.size());
            ASSERT_TRUE(position == states.size() || now == states.back()) << edits;
            if (position == states.size()) {
                states.push_back(now);
            }
            if (edits % 4 == 0) {
                ASSERT_EQ(m_session->isModified(), bytes() != firstBytes) << edits;
            }
            if (states.size() > 1 && m_random.below(6) == 0) { // the next edit goes on from there
                ASSERT_TRUE(m_session->undo());
                states.pop_back();
                ASSERT_EQ(contents(*m_manager), states.back()) << edits;
            }
        }
        (void)testing::internal::GetCapturedStderr();
        const std::string lastBytes = bytes();
        for (const bool back : {true, false}) {
            for (std::size_t step = 1; step < states.size(); ++step) {
                const std::size_t to = back ? states.size() - 1 - step : step;
                m_heard.clear();
                const std::uint64_t count = m_session->changeCount();
                ASSERT_TRUE(back ? m_session->undo() : m_session->redo());
                ASSERT_GT(m_session->changeCount(), count);
                checkSnapshot();
                ASSERT_EQ(contents(*m_manager), states[to]) << round << " " << to;
                ASSERT_TRUE(namesEverything(m_heard, states[back ? to + 1 : to - 1], states[to]));
            }
            EXPECT_FALSE(back ? m_session->undo() : m_session->redo());
            ASSERT_EQ(bytes(), back ? firstBytes : lastBytes);
            ASSERT_EQ(m_session->isModified(), bytes() != firstBytes);
        }
        if (round % 8 == 0) { // saved in the middle of its history
            m_session->undo();
            ASSERT_TRUE(m_session->save("clip.ogv"));
            ASSERT_FALSE(m_session->isModified());
            const std::string saved = bytes();
            while (m_session->undo()) {
                ASSERT_EQ(m_session->isModified(), bytes() != saved);
            }
        }
    }
}

TEST_F(ZoneSessionTest, AGestureIsOneStepNamedByWhatItBeganWith) {
    begin(300);
    m_session->addZone("Zone 1", m_frames);
    m_session->beginGesture({Name::addPoint, 0, 31});
    m_session->addPoint(0, 31, 5, 5);
    for (int x = 6; x < 30; ++x) {
        m_session->moveSelectedPoint(0, 31, x, 5);
    }
    EXPECT_FALSE(m_session->undo()) << "not in the middle of it";
    m_session->endGesture();
    EXPECT_EQ(m_session->history().position(), 2U);
    EXPECT_EQ(*m_session->undoLabel(), (StepLabel{Name::addPoint, 0, 31}));
    EXPECT_EQ(m_heard.back(), (ZoneChange{What::shapes, 0, {31, 300}})) << "the last move's";
    m_session->beginGesture({Name::movePoint, 0, 40});
    EXPECT_TRUE(m_session->hitTest(0, 40, 29, 5));
    m_session->endGesture();
    EXPECT_EQ(m_session->history().position(), 2U) << "choosing a point is no step";
    m_session->deletePoint(0, 40, 100, 100);
    m_session->renameZone(0, "Zone 1");
    EXPECT_EQ(m_session->history().position(), 2U) << "what changes nothing is none";
    const std::function<void()> others[] = {
        [&] { m_session->addZone("Zone 2", m_frames); },
        [&] { m_session->renameZone(1, "Z"); },
        [&] { m_session->setActive(1, 3, false); },
        [&] { m_session->removeZone(1); },
    };
    for (const auto& edit : others) {
        m_session->beginGesture({Name::movePoint, 0, 40});
        m_session->moveSelectedPoint(0, 40, 20, 5);
        edit();
        EXPECT_FALSE(m_session->inGesture());
        m_session->undo();
        EXPECT_EQ(m_session->undo(), (StepLabel{Name::movePoint, 0, 40}));
        edit();
    }
    while (m_session->history().position() > 2) {
        m_session->undo();
    }
    EXPECT_EQ(m_session->undo(), (StepLabel{Name::addPoint, 0, 31}));
    EXPECT_EQ(m_session->undo(), (StepLabel{Name::addZone, 0}));
    EXPECT_EQ(m_session->redoLabel()->name, Name::addZone);
    m_session->redo();
    for (int times = 0; times < 10'000; ++times) {
        m_session->redo();
        m_session->undo();
    }
    EXPECT_LT(m_manager->zone(0)->bytes(), 50'000U) << "places that are no longer used are freed";
}

TEST_F(ZoneSessionTest, DuplicatesHaveNamesOfTheirOwnHoweverLong) {
    begin(2);
    m_session->addZone(std::string(241, 'x') + "\xC3\xA4", 2);
    std::set<std::string> names{m_manager->getZoneName(0)};
    for (int copy = 2; copy <= 12; ++copy) {
        m_session->duplicateZone(0);
        names.insert(m_manager->getZoneName(1));
    }
    EXPECT_EQ(names.size(), 12U);
    EXPECT_EQ(m_manager->getZoneName(1), std::string(240, 'x') + " 12");
}

TEST_F(ZoneSessionTest, AnotherThreadReadsASnapshotWhileEditingGoesOn) {
    begin(500);
    m_session->addZone("Z", m_frames);
    m_session->addZone("Y", m_frames);
    m_session->addPoint(1, 0, 5, 5);
    const std::shared_ptr<const ZoneManager> snapshot = m_session->snapshot();
    const std::vector<Lines> expected = contents(*m_manager);
    std::vector<Lines> read;
    std::thread reader([&] { read = contents(*snapshot); });
    for (int frame = 0; frame < m_frames; ++frame) {
        m_session->addPoint(0, frame, frame, 5);
        m_session->setActive(1, frame, frame % 2 == 0);
        m_session->renameZone(1, std::to_string(frame));
    }
    while (m_session->undo()) {
    }
    reader.join();
    EXPECT_EQ(read, expected);
}

TEST_F(ZoneSessionTest, AVersionIsRestoredAsOneStepOnTopOfWhatIsThere) {
    begin(3);
    m_session->addZone("Z", m_frames);
    const std::string older = bytes();
    const std::shared_ptr<const ZoneManager> version = m_session->snapshot();
    m_session->addPoint(0, 1, 5, 5);
    std::string saves;
    const edit::Subscription token = m_session->observeSaves([&](bool good) {
        saves += good == m_session->isModified() ? "?" : good ? "saved" : "failed ";
    });
    m_files.failOn("sync", EIO);
    EXPECT_FALSE(m_session->save("clip.ogv"));
    m_files.heal();
    ASSERT_TRUE(m_session->save("clip.ogv"));
    EXPECT_EQ(saves, "failed saved");
    const std::string newer = bytes();
    EXPECT_TRUE(m_session->restore(*version));
    EXPECT_EQ(bytes(), older);
    EXPECT_EQ(m_session->undoLabel()->name, Name::restore);
    const std::size_t steps = m_session->history().size();
    EXPECT_TRUE(m_session->restore(*version));
    EXPECT_EQ(m_session->history().size(), steps) << "it is restored already";
    m_session->setActive(0, 0, false); // which must not reach the version
    m_session->undo();
    m_session->undo();
    EXPECT_EQ(bytes(), newer);
    EXPECT_FALSE(m_session->isModified());
    const auto other = ZoneManager::createEmpty();
    other->addZone(zone::Zone::create(m_frames + 1));
    EXPECT_FALSE(m_session->restore(*other)) << "of another video";
    EXPECT_EQ(bytes(), newer);
}

TEST_F(ZoneSessionTest, WhatASaveWouldWriteDecidesAndNotTheSteps) {
    begin(3);
    m_session->addZone("Z", m_frames);
    m_session->setProgressChanges(false);
    m_session->setActive(0, 0, false);
    ASSERT_TRUE(m_session->save("clip.ogv"));
    m_session->setActive(0, 0, true);
    m_session->setActive(0, 1, false);
    EXPECT_TRUE(m_session->isModified()) << "the same flags on other frames";
    m_session->setActive(0, 1, true);
    m_session->setActive(0, 0, false);
    EXPECT_FALSE(m_session->isModified());
}

TEST_F(ZoneSessionTest, TheCentreHandleIsWhereTheFrameOnShowHasIt) {
    begin(3);
    m_session->addZone("Z", m_frames);
    for (const platform::Point p : {platform::Point{0, 0}, {30, 0}, {0, 30}}) {
        m_session->addPoint(0, 0, p.x, p.y);
    }
    EXPECT_FALSE(m_session->hitTest(0, 1, 10, 10)) << "never shown";
    m_session->showFrame(1);
    EXPECT_TRUE(m_session->hitTest(0, 1, 10, 10));
    m_session->moveSelectedPoint(0, 1, 15, 10);
    m_session->moveSelectedPoint(0, 1, 16, 10); // though nothing was painted in between
    EXPECT_EQ(m_session->zones().zone(0)->shape(2)->points, (Points{{6, 0}, {36, 0}, {6, 30}}));
    m_session->undo();
    m_session->undo();
    EXPECT_TRUE(m_session->hitTest(0, 1, 10, 10)) << "taken back, it is where it was";
}

TEST_F(ZoneSessionTest, AStepOnALongZoneKeepsWhatItChangedAndNotTheZone) {
    constexpr int kLong = 20'000;
    Lines shapes;
    for (int frame = 0; frame < kLong; ++frame) {
        shapes.push_back(shapeBytes({{frame, 0}, {frame, 1}, {frame, 2}, {frame, 3}}));
    }
    m_manager = load(zoneBytes("Z", shapes), kLong);
    m_manager->videoWidth = m_manager->videoHeight = kLong;
    const std::size_t whole = m_manager->zone(0)->bytes();
    const std::vector<Lines> before = contents(*m_manager);
    ZoneSession session(m_manager);
    std::size_t kept = 0;
    const auto expectKept = [&](std::size_t most, const std::function<void()>& edit) {
        edit();
        EXPECT_LE(session.history().bytes() - kept, most) << stepName(session.undoLabel()->name);
        kept = session.history().bytes();
    };
    (void)session.hitTest(0, 0, 0, 0);
    expectKept(whole / 3, [&] { session.moveSelectedPoint(0, 0, 500, 5); });
    expectKept(4096, [&] { session.moveSelectedPoint(0, 0, 7, 7); }); // all from one place
    expectKept(4096, [&] { session.setActive(0, 100, false); });
    expectKept(4096, [&] { session.addPoint(0, 9, 30'000, 30'000); });
    session.showFrame(0);
    (void)session.hitTest(0, 0, 6001, 6003);
    expectKept(4096, [&] { session.moveSelectedPoint(0, 0, 9, 9); });
    expectKept(whole / 3 * 2, [&] { session.deletePoint(0, 0, 10, 10); });
    while (session.undo()) {
    }
    EXPECT_EQ(contents(*m_manager), before);
}

} // namespace
} // namespace zone_tests
