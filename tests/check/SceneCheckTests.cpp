// One scene for each kind of finding, and for what looks like it and is none; then random edits,
// after each of which the check finds what a plain reading of the whole scene finds.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "check/SceneCheck.h"
#include "scene/SceneSession.h"
#include "tests/check/CheckFixture.h"
#include "tests/support/Random.h"

namespace {

using check::FolderFacts;
using check::Kind;
using check::VideoFacts;
using check_tests::goodVideo;
using check_tests::goodZone;
using check_tests::lineOf;
using check_tests::sceneFrom;
using Lines = std::vector<std::string>;
using State = VideoFacts::State;

std::shared_ptr<const VideoFacts> shared(VideoFacts facts) {
    return std::make_shared<const VideoFacts>(std::move(facts));
}

FolderFacts folderOf(const VideoFacts& a) {
    FolderFacts folder;
    folder.videos = {{"a", shared(a)}, {"b", shared(goodVideo())}};
    return folder;
}

Lines check(const scene::SceneManager& scene, FolderFacts facts) {
    check::SceneCheck check;
    check.setFacts(std::move(facts));
    check.checkAll(scene);
    Lines lines;
    for (const check::Finding* finding : check.findings()) {
        lines.push_back(lineOf(*finding, scene));
    }
    return lines;
}

TEST(SceneCheck, ScenesHaveTheFindingsOfTheirFaultsAlone) {
    const VideoFacts zones = goodVideo({goodZone("Exit"), goodZone("Door")});
    const struct {
        const char* scene;
        Lines found;
    } cases[] = {
        {"", {}},
        {"A a D>A", {}},
        {"A a D>A D>C R>B KL>- | B -",
         {"error missing-target A 2: An action of \"A\" leads to \"C\", which is not in the scene.",
          "error missing-target A 4: An action of \"A\" has no target yet.",
          "error no-video B: \"B\" has no video.", "note no-way-out B: \"B\" has no way out.",
          "warning never-fires A 1: \"A\" has Random actions: its Default never counts."}},
        {"A a D>B D>B D>A | B a | C b R>C | D b R>C",
         {"warning default-twice A 2: \"A\" has two Default actions: the first counts.",
          "note no-way-out B: \"B\" has no way out.",
          "warning unreached C: \"C\" is not reached from the first branch.",
          "warning unreached D: No action leads to \"D\"."}},
        {"A a R>B KL>A | B a | C b",
         {"warning no-way-out B: \"B\" has no way out.",
          "warning no-way-out C: \"C\" has no way out.",
          "warning unreached C: No action leads to \"C\"."}},
        {"A a KL>B KM>A KL>A KL>A K->A K->A | A a D>A | a__ a ZExit>A | B b D>A",
         {"warning key-twice A 3: Two actions of \"A\" use the key L.",
          "note waits A: \"A\" ends the scene when nothing is chosen: it has no Default action.",
          "error duplicate-branch A: Two branches are named \"A\".",
          "warning similar-names a  : The names \"A\" and \"a  \" are easily confused.",
          "warning unreached a  : No action leads to \"a  \".",
          "note waits a  : \"a  \" ends the scene when nothing is chosen: it has no Default "
          "action."}},
        {"A a D>\xC3\x89t\xC3\xA9 | \xC3\x89t\xC3\xA9 a D>\xC3\xA9t\xC3\xA9 | \xC3\xA9t\xC3\xA9 a "
         "D>caf\xE9 | caf\xE9 a D>caf\xE8 | caf\xE8 a D>A",
         {"warning similar-names \xC3\xA9t\xC3\xA9: The names \"\xC3\x89t\xC3\xA9\" and "
          "\"\xC3\xA9t\xC3\xA9\" are easily confused."}},
        {"A a ZExit>A ZNo>A ZExit>A Z->A ZNo>A D>B | B - ZExit>A Z->A R>A",
         {"error zone-missing A 2 a No: An action of \"A\" waits for the zone \"No\", which its "
          "video does not have.",
          "warning never-fires A 3: Action 3 of \"A\" never applies: action 1 comes first.",
          "error zone-missing A 4: A Zone action of \"A\" has no zone yet.",
          "error zone-missing A 5 a No: An action of \"A\" waits for the zone \"No\", which its "
          "video does not have.",
          "warning never-fires A 5: Action 5 of \"A\" never applies: action 2 comes first.",
          "error no-video B: \"B\" has no video.",
          "error zone-missing B 2: A Zone action of \"B\" has no zone yet."}},
        {"A&B a D>x<y KL>A&lt;B KL&#65;>&c; | A&lt;B b D>q\x7Fr Z<>A&B | &c; b D>A&B",
         {"error unreadable-name A&B 1: The name \"x<y\" holds a \"<\": the scene will not load "
          "again.",
          "error unreadable-name A&B 3: The name \"L&#65;\" holds a \"&\": the scene will not load "
          "again.",
          "error unreadable-name A&lt;B: The name \"A&lt;B\" holds a \"&\": the scene will not "
          "load again.",
          "error unreadable-name A&lt;B 1: The name \"q\x7Fr\" holds a control character: the "
          "scene will not load again.",
          "error unreadable-name A&lt;B 2: The name \"<\" holds a \"<\": the scene will not load "
          "again."}},
        {"A none ZExit>A D>B | B none D>A", {}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.scene);
        Lines found = check(*sceneFrom(test.scene), folderOf(zones));
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [](const std::string& line) {
                                       return line.starts_with("note zone-unused");
                                   }),
                    found.end());
        Lines expected = test.found;
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(found, expected);
    }
}

TEST(SceneCheck, TheFirstBranchDecidesWhatIsReached) {
    const auto scene = sceneFrom("A a D>A | B b D>B");
    scene->SetName("a<b");
    const struct {
        const char* first;
        Lines found;
    } cases[] = {
        {"", {"warning unreached B: \"B\" is not reached from the first branch."}},
        {"B", {"warning unreached A: \"A\" is not reached from the first branch."}},
        {"b", {"error no-first-branch: The scene has no first branch."}},
        {"\x01",
         {"error unreadable-name: The name \"\x01\" holds a control character: the scene will not "
          "load again."}},
    };
    for (const auto& test : cases) {
        scene->SetFirstBranch(test.first);
        Lines expected = test.found;
        expected.insert(expected.begin(), "error unreadable-name: The name \"a<b\" holds a \"<\": "
                                          "the scene will not load again.");
        EXPECT_EQ(check(*scene, {}), expected);
    }
}

TEST(SceneCheck, VideosAndTheirZonesAreReportedOnce) {
    const auto with = [](const std::function<void(VideoFacts&)>& change) {
        VideoFacts facts = goodVideo({goodZone("Exit"), goodZone("Door")});
        change(facts);
        return facts;
    };
    const std::string missing = "error zone-missing A 1 a Exit: An action of \"A\" waits for the "
                                "zone \"Exit\", which its video does not have.";
    const struct {
        VideoFacts a;
        Lines found;
    } cases[] = {
        {with([](VideoFacts&) {}), {}},
        {with([](VideoFacts& a) { a.width = 18; }),
         {"warning sheared A a: a is 18 pixels wide and will show sheared: convert it."}},
        {with([](VideoFacts& a) { a.keyFrameSeconds = 5.0; }), {}},
        {with([](VideoFacts& a) { a.keyFrameSeconds = 7.6; }),
         {"warning slow-seeks A a: Steps and jumps in a will be slow: its key frames are 8 s "
          "apart."}},
        {with([](VideoFacts& a) { a.zones[1].storedFrames = 40; }),
         {"warning zone-frames A a: The zones of \"a\" count 40 frames, the video 50."}},
        {with([](VideoFacts& a) { a.zones[1].storedFrames = a.frameCount = -1; }), {}},
        {with([](VideoFacts& a) { a.zones[1].activeFrames = 0; }),
         {"warning zone-never-active A a Door: The zone \"Door\" is active on no frame."}},
        {with([](VideoFacts& a) { a.zones[1] = {.name = "Door"}; }), {}},
        {with([](VideoFacts& a) {
             a.zones[1].fewPoints.add(3, 7);
             a.zones[1].outside.add(0, 1);
             a.zones[1].outside.add(9, 10);
         }),
         {"warning zone-few-points A a Door 3-6: The zone \"Door\" has fewer than 3 points on 4 "
          "frames.",
          "warning zone-outside A a Door 0-9: The zone \"Door\" lies outside the picture on 2 "
          "frames."}},
        {with([](VideoFacts& a) { a.zones[0].name = "Door"; }),
         {"warning zone-name-twice A a Door: Two zones of a are named \"Door\".", missing}},
        {with([](VideoFacts& a) {
             a.zones.push_back(goodZone(""));
             a.zones.push_back(goodZone("x<"));
         }),
         {"warning zone-no-name A a: A zone of a has no name.",
          "error unreadable-name A a x<: The name \"x<\" holds a \"<\": the scene will not load "
          "again.",
          "note zone-unused A a x<: No action uses the zone \"x<\" of a."}},
        {{.state = State::missing}, {"error video-missing A a: The video \"a\" is missing."}},
        {{.state = State::missing, .hasZoneFiles = true},
         {"error video-missing A a: The video \"a\" is missing.", missing,
          "error zone-missing B 1 a Door: An action of \"B\" waits for the zone \"Door\", which "
          "its video does not have."}},
        {with([](VideoFacts& a) { a.state = State::unreadable; }),
         {"error video-unreadable A a: The video \"a\" cannot be read."}},
        {{}, {}},
    };
    const auto scene = sceneFrom("A a ZExit>B D>A | B a ZDoor>C D>A | C b D>A");
    for (const auto& test : cases) {
        EXPECT_EQ(check(*scene, folderOf(test.a)), test.found);
    }
    FolderFacts facts = folderOf({.state = State::missing, .id = {1, 2}});
    facts.files = {{"a", {1, 2}}, {"A", {1, 2}}, {"b", {}}, {"c", {}}, {"d", {}}};
    facts.copying = {"a", "d"};
    EXPECT_EQ(check(*scene, facts), (Lines{"note video-unused A: A is used by no branch.",
                                           "note video-unused c: c is used by no branch."}));
    facts.copying = {"d"};
    EXPECT_EQ(check(*scene, facts).size(), 2U); // "A" is the same file as "a"
    EXPECT_EQ(check(*sceneFrom(""), facts), Lines{});
}

/// What is wrong with references, ways and repetitions, by loops over everything.
std::multiset<std::string> plainReading(const scene::SceneSession& session,
                                        const FolderFacts& facts) {
    std::multiset<std::string> lines;
    const int count = session.branchCount();
    const std::vector<std::string> names = session.branchNames();
    const auto has = [&](const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    const std::string start =
        session.firstBranch().empty() && count > 0 ? names[0] : session.firstBranch();
    std::set<std::string> reached{start};
    std::set<std::string> targets;
    std::map<std::string, std::set<std::string>> waitedFor;
    int ends = 0;
    for (int round = 0; round <= count; ++round) {
        for (int i = 0; i < count; ++i) {
            for (const scene::Action& action : session.actions(i)) {
                targets.insert(action.BranchID());
                if (reached.contains(session.branchName(i))) {
                    reached.insert(action.BranchID());
                }
                if (action.Type() == 2) {
                    waitedFor[session.video(i)].insert(action.Parameter());
                }
            }
        }
    }
    const auto add = [&](Kind kind, int branch, int action = -1) {
        lines.insert(std::string(check::kindName(kind)) + " " + std::to_string(branch) + " " +
                     std::to_string(action));
    };
    for (int i = 0; i < count; ++i) {
        ends += session.actionCount(i) == 0 ? 1 : 0;
    }
    if (count > 0 && !has(start)) {
        add(Kind::noFirstBranch, -1);
    }
    for (int i = 0; i < count; ++i) {
        const std::string name = session.branchName(i);
        const std::string video = session.video(i);
        const std::vector<scene::Action> actions = session.actions(i);
        if (std::count(names.begin(), names.begin() + i, name) == 1) {
            add(Kind::duplicateBranch, i);
        }
        if (video.empty()) {
            add(Kind::noVideo, i);
        }
        if (has(start) && !reached.contains(name)) {
            add(Kind::unreached, i);
            lines.insert(targets.contains(name) ? "led to" : "not led to");
        }
        if (actions.empty()) {
            add(Kind::noWayOut, i);
            lines.insert(ends == 1 ? "note" : "warning");
        }
        for (int a = 0; a < static_cast<int>(actions.size()); ++a) {
            const scene::Action& action = actions[static_cast<std::size_t>(a)];
            if (!has(action.BranchID())) {
                add(Kind::missingTarget, i, a);
            }
            const auto known = facts.videos.find(video);
            bool isZone = known == facts.videos.end() && !action.Parameter().empty();
            if (known != facts.videos.end()) {
                for (const auto& zone : known->second->zones) {
                    isZone = isZone || zone.name == action.Parameter();
                }
            }
            if (action.Type() == 2 && !isZone) {
                add(Kind::zoneMissing, i, a);
            }
        }
    }
    for (const auto& [name, video] : facts.videos) {
        int user = -1;
        for (int i = count; i-- > 0;) {
            user = session.video(i) == name ? i : user;
        }
        for (const auto& zone : video->zones) {
            if (user >= 0 && !waitedFor[name].contains(zone.name)) {
                add(Kind::zoneUnused, user);
            }
        }
        if (user < 0 && count > 0) {
            add(Kind::videoUnused, -1);
        }
    }
    return lines;
}

std::multiset<std::string> linesOf(const check::SceneCheck& check) {
    static const std::set<Kind> kRead{
        Kind::noFirstBranch, Kind::duplicateBranch, Kind::noVideo,
        Kind::unreached,     Kind::noWayOut,        Kind::missingTarget,
        Kind::zoneMissing,   Kind::zoneUnused,      Kind::videoUnused};
    std::multiset<std::string> lines;
    for (const check::Finding* finding : check.findings()) {
        if (!kRead.contains(finding->kind)) {
            continue;
        }
        lines.insert(std::string(check::kindName(finding->kind)) + " " +
                     std::to_string(finding->branch) + " " + std::to_string(finding->action));
        if (finding->kind == Kind::unreached) {
            lines.insert(finding->variant == 1 ? "led to" : "not led to");
        } else if (finding->kind == Kind::noWayOut) {
            lines.insert(std::string(check::severityName(finding->severity)));
        }
    }
    return lines;
}

void edit(scene::SceneSession& session, support::Random& random) {
    const char* const names[] = {"A", "B", "C", "a", "D", "b_", ""};
    const char* const videos[] = {"a", "b", "none", ""};
    const char* const zones[] = {"Exit", "Door", "No"};
    const int count = session.branchCount();
    const int branch = random.below(std::max(count, 1));
    const int action = count > 0 ? random.below(session.actionCount(branch) + 1) - 1 : -1;
    const int other = random.below(std::max(count, 1));
    switch (count > 0 ? random.below(16) : 0) {
    case 0:
        session.addBranch();
        session.renameBranch(session.branchCount() - 1, random.oneOf(names));
        break;
    case 1:
        session.removeBranch(branch);
        break;
    case 2:
        session.moveBranch(branch, other);
        break;
    case 3:
        session.renameBranch(branch, random.oneOf(names));
        break;
    case 4:
        session.setVideo(branch, random.oneOf(videos));
        break;
    case 5:
        session.setFirstBranch(random.oneOf(names));
        break;
    case 6:
        session.duplicateBranch(branch);
        break;
    case 7:
        session.retarget(random.oneOf(names), random.oneOf(names));
        break;
    case 8:
        if (action >= 0) {
            session.removeAction(branch, action);
        }
        break;
    case 9:
        if (action >= 0) {
            session.setParameter(branch, action, random.oneOf(zones));
        }
        break;
    case 10:
        session.moveAction(branch, action, 0);
        break;
    case 11:
        session.undo();
        break;
    case 12:
        session.redo();
        break;
    default:
        session.addAction(branch);
        session.setType(branch, session.actionCount(branch) - 1, random.below(4));
        session.setTarget(branch, session.actionCount(branch) - 1, random.oneOf(names));
        break;
    }
}

TEST(SceneCheck, AfterEveryEditItFindsWhatAPlainReadingFinds) {
    FolderFacts facts = folderOf(goodVideo({goodZone("Exit"), goodZone("Door")}));
    FolderFacts others = folderOf(goodVideo({goodZone("Door"), goodZone("New")}));
    facts.files = {{"a", {}}, {"b", {}}};
    others.files = facts.files;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(seed);
        support::Random random(seed);
        scene::SceneSession session(scene::SceneManager::create());
        session.newScene("S");
        check::SceneCheck check;
        check.setFacts(facts);
        check.checkAll(session.scene());
        const auto token =
            session.observe([&](const auto& changes) { check.update(session.scene(), changes); });
        for (int step = 0; step < 200 && !testing::Test::HasFailure(); ++step) {
            {
                auto gesture = session.begin({scene::SceneStep::target});
                for (int edits = random.below(8) == 0 ? 4 : 1; edits > 0; --edits) {
                    edit(session, random);
                }
                gesture.commit();
            }
            if (random.below(16) == 0) {
                std::swap(facts, others);
                check.setFacts(facts);
                check.update(session.scene(), {});
            }
            EXPECT_EQ(linesOf(check), plainReading(session, facts));
            const auto key = [](const check::Finding* one) {
                return std::tuple(one->branch, one->action, one->video);
            };
            EXPECT_TRUE(std::is_sorted(
                check.findings().begin(), check.findings().end(),
                [&](const auto* one, const auto* next) { return key(one) < key(next); }));
            // The other kinds too are those of a check from the start.
            check::SceneCheck fresh;
            fresh.setFacts(facts);
            fresh.checkAll(session.scene());
            EXPECT_TRUE(
                std::equal(check.findings().begin(), check.findings().end(),
                           fresh.findings().begin(), fresh.findings().end(),
                           [](const auto* one, const auto* same) { return *one == *same; }));
            EXPECT_EQ(check.counts(), fresh.counts());
        }
    }
}

} // namespace
