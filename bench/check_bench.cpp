// How long checking a scene of 1,000 branches, 5,000 actions and 200 videos with 10 zones each
// holds the UI thread: everything at once, and again after an edit. A third of what could be wrong
// is.
//
// Usage: check_bench prints a Markdown table.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "bench/MarkdownTable.h"
#include "bench/Samples.h"
#include "check/SceneCheck.h"
#include "scene/Action.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"

namespace {

constexpr int kRounds = 200;
constexpr int kBranches = 1000;
constexpr int kActionsEach = 5;
constexpr int kVideos = 200;
constexpr int kZonesEach = 10;

std::string branchName(int number) {
    return "Branch of the scene, number " + std::to_string(number);
}

std::shared_ptr<scene::SceneManager> makeScene() {
    auto scene = scene::SceneManager::create();
    for (int i = 0; i < kBranches; ++i) {
        scene->AddBranch();
        scene->renameBranch(i, branchName(i));
        scene->setBranchFilename(i, "video " + std::to_string(i % kVideos) + ".ogv");
        for (int k = 0; k < kActionsEach; ++k) {
            const auto action = scene::Action::create();
            action->SetType(k % 4);
            action->SetParameter(k % 4 == 2 ? "Zone " + std::to_string(i % 15) : "");
            action->SetBranchID(branchName(k == 0 ? (i * 7 + 1) % (kBranches * 3 / 2) : i / 2 + k));
            scene->addAction(i, action);
        }
    }
    return scene;
}

check::FolderFacts makeFacts() {
    check::FolderFacts facts;
    for (int i = 0; i < kVideos; ++i) {
        check::VideoFacts video{.state = check::VideoFacts::State::good,
                                .width = 1280,
                                .frameCount = 250,
                                .hasZoneFiles = true};
        for (int zone = 0; zone < kZonesEach; ++zone) {
            video.zones.push_back({.name = "Zone " + std::to_string(zone),
                                   .hasShapes = true,
                                   .storedFrames = 250,
                                   .activeFrames = zone % 3});
        }
        const std::string name = "video " + std::to_string(i) + ".ogv";
        facts.files[name] = {1, static_cast<std::uint64_t>(i) + 1};
        facts.videos[name] = std::make_shared<const check::VideoFacts>(std::move(video));
    }
    return facts;
}

void measure(const char* what, const char* target, const std::function<double(int round)>& run) {
    bench::Samples times;
    for (int round = 0; round < kRounds; ++round) {
        times.add(run(round));
    }
    bench::tableRow(what, bench::timesText(times), "", target);
}

} // namespace

int main() {
    scene::SceneSession session(makeScene());
    check::SceneCheck check;
    check.setFacts(makeFacts());
    check.checkAll(session.scene());
    const std::string title = "Check: 1,000 branches, 5,000 actions, " +
                              std::to_string(check.findings().size()) + " findings";
    bench::tableHead(title.c_str());
    measure("everything", "p95 <= 50 ms", [&](int) {
        const auto start = bench::Clock::now();
        check.checkAll(session.scene());
        return bench::millisecondsSince(start);
    });
    double last = 0.0;
    const auto token = session.observe([&](const auto& changes) {
        const auto start = bench::Clock::now();
        check.update(session.scene(), changes);
        last = bench::millisecondsSince(start);
    });
    const std::pair<const char*, std::function<void(int)>> edits[] = {
        {"after a target", [&](int i) { session.setTarget(i, 1, branchName(i + 2)); }},
        {"after a name", [&](int i) { session.renameBranch(i, "Other " + std::to_string(i)); }},
        {"after a video", [&](int i) { session.setVideo(i, "video 7.ogv"); }},
        {"after a zone", [&](int i) { session.setParameter(i, 2, "Zone 14"); }},
        {"after a branch more", [&](int) { session.addBranch(); }},
        {"after a move of a branch", [&](int i) { session.moveBranch(i, kBranches - 1); }},
        {"after another first branch", [&](int i) { session.setFirstBranch(branchName(i + 500)); }},
        {"after undo", [&](int) { session.undo(); }},
    };
    for (const auto& edit : edits) {
        measure(edit.first, "<= 2 ms", [&](int round) {
            edit.second(round);
            return last;
        });
    }
    return 0;
}
