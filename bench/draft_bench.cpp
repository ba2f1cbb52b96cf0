// How long keeping unsaved work holds the UI thread, which edits: a scene of 1,000 branches, and 10
// zones x 108,000 frames x 8 points. Counts what the thread does for one draft: noticing the edit,
// finding out whether anything is unsaved, handing the contents over, and hearing how it went.
// Beside it the age of a change when its draft is on the disk, at worst: it was made right after a
// draft began to be written, so it waits for that one, for the delay, and for its own.
//
// Usage: draft_bench prints a Markdown table. The files are in a temporary folder while it runs.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/BareZones.h"
#include "bench/MarkdownTable.h"
#include "core/Services.h"
#include "recovery/Drafts.h"
#include "recovery/SceneDraft.h"
#include "recovery/ZoneDraft.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/support/FixedClock.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"
#include "zone/ZoneSession.h"

namespace {

using bench::Clock;
using bench::kFrames;
using bench::kZones;
using bench::millisecondsSince;
using bench::Samples;

constexpr int kRounds = 25;
constexpr int kBranches = 1000;
constexpr int kActionsEach = 8;
constexpr int kPointOfShape = 2;
constexpr const char* kVideo = "Scenes/Large/clip.ogv";
constexpr const char* kTarget = "max <= 5 ms";

class Desk {
public:
    /// One sample for each draft: its longest time without a pause. `edit` is not counted.
    void measure(const char* what, const std::function<void(int round)>& edit) {
        Samples times;
        Samples writing;
        for (int round = 0; round < kRounds; ++round) {
            edit(round);
            m_clock.passed += recovery::Drafts::kDelay.count();
            const auto began = Clock::now();
            const double handedOver = runTask();
            times.add(std::max(handedOver, runTask()));
            writing.add(millisecondsSince(began));
            if (!m_drafts.failure().empty()) {
                throw std::runtime_error(m_drafts.failure().text());
            }
        }
        bench::tableRow(what, timesText(times), "", kTarget);
        const double age =
            static_cast<double>(recovery::Drafts::kDelay.count()) + 2 * writing.most();
        bench::tableRow(std::string(what) + ": age on the disk",
                        "at most " + std::to_string(std::lround(age)) + " ms", "", "<= 5000 ms");
    }
    recovery::Drafts& drafts() { return m_drafts; }

private:
    double runTask() {
        m_loop.waitForTask();
        const auto began = Clock::now();
        static_cast<void>(m_loop.runNext());
        return millisecondsSince(began);
    }

    support::TempFolder m_folder;
    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
    support::TaskLoop m_loop;
    recovery::Drafts m_drafts{m_loop, [] { return true; }};
};

void measureScene(Desk& desk) {
    const auto manager = scene::SceneManager::create();
    scene::SceneSession session(manager);
    recovery::SceneDraft draft(session, desk.drafts());
    session.newScene("Large");
    for (int i = 0; i < kBranches; ++i) {
        manager->AddBranch();
        manager->setBranchFilename(i, "clip " + std::to_string(i) + ".ogv");
        for (int action = 0; action < kActionsEach; ++action) {
            manager->addAction(i, scene::Action::create());
        }
    }
    desk.measure("scene: 1,000 branches, 8,000 actions", [&](int round) {
        session.setParameter(kBranches - 1, 0, "Zone " + std::to_string(round));
    });
}

std::shared_ptr<zone::ZoneManager> loadZones() {
    {
        const auto image = bench::buildImage(bench::makeBareModel());
        support::writeBytes(
            "Scenes/Large/clip-ZoneInfo.bin",
            std::string(reinterpret_cast<const char*>(image.get()), kZones * bench::kZoneBytes));
    }
    auto zones = zone::ZoneManager::createForEditing("Scenes/Large/clip", kFrames,
                                                     zone::scaleBetween({1280, 720}, {1920, 1080}));
    if (!zones || zones->zoneCount() != static_cast<int>(kZones)) {
        throw std::runtime_error("no zones");
    }
    return zones;
}

void moveEverywhere(zone::ZoneSession& session, int zone) {
    const platform::Point at = session.zones().zone(zone)->shape(0)->points[kPointOfShape];
    static_cast<void>(session.hitTest(zone, 0, at.x, at.y));
    session.moveSelectedPoint(zone, 0, at.x + 10, at.y);
}

void measureZones(Desk& desk) {
    zone::ZoneSession session(loadZones());
    recovery::ZoneDraft draft(session, desk.drafts(), "Large", kVideo);
    // As the editor's caption does.
    const auto caption =
        session.observe([&](const auto&) { static_cast<void>(session.isModified()); });
    bool active = true;
    const auto editLastFrame = [&](int /*round*/) {
        session.setActive(static_cast<int>(kZones) - 1, kFrames - 1, active = !active);
    };
    session.setActive(0, 0, false);
    desk.measure("zones: an edit of one frame of the last", editLastFrame);
    session.undo();
    desk.measure("zones: a change of all frames",
                 [&](int round) { moveEverywhere(session, round % static_cast<int>(kZones)); });
    while (session.undo()) {
    }
    desk.measure("zones: all changed and undone, then one step more or less", [&](int round) {
        if (round % 2 == 0) {
            editLastFrame(round);
        } else {
            session.undo();
        }
    });
}

} // namespace

int main() {
    try {
        Desk desk;
        bench::tableHead("Drafts: how long the UI thread is held");
        measureScene(desk);
        measureZones(desk);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "draft_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
