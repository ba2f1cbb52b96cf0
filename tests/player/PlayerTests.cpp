#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <gtest/gtest.h>

#include "player/Chance.h"
#include "player/Clip.h"
#include "player/Player.h"
#include "player/Story.h"

namespace player {
namespace {

using Json = boost::property_tree::ptree;

std::vector<std::string> texts(const Json& list) {
    std::vector<std::string> found;
    for (const auto& [name, value] : list) {
        found.push_back(value.get_value<std::string>());
    }
    return found;
}

Action readAction(const Json& json) {
    static const std::map<std::string, Action::When> kKinds = {
        {"Default", Action::When::clipEnds},
        {"Keypress", Action::When::keyPressed},
        {"Zone", Action::When::zoneClicked},
        {"Random", Action::When::byChance}};
    const std::vector<std::string> parts = texts(json);
    return {kKinds.at(parts.at(0)), parts.at(1), parts.at(2), parts.at(3) == "true"};
}

ZoneShape readShape(const Json& json) {
    ZoneShape shape{json.get<int>("from"), json.get<bool>("active"), {}};
    for (const auto& [name, point] : json.get_child("points")) {
        const std::vector<std::string> parts = texts(point);
        shape.points.push_back({std::stoi(parts.at(0)), std::stoi(parts.at(1))});
    }
    return shape;
}

Clip readClip(const Json& json) {
    Clip clip{json.get<int>("frames"), json.get<double>("fps"), {}};
    for (const auto& [name, zone] : json.get_child("zones")) {
        ZoneTrack track{zone.get<std::string>("name"), {}};
        for (const auto& [place, shape] : zone.get_child("shapes")) {
            track.shapes.push_back(readShape(shape));
        }
        clip.zones.push_back(track);
    }
    return clip;
}

struct Scene {
    explicit Scene(const Json& json) : story{json.get<std::string>("first"), {}} {
        for (const auto& [name, clip] : json.get_child("clips")) {
            clips[name] = std::make_shared<const Clip>(readClip(clip));
        }
        for (const auto& [place, branch] : json.get_child("branches")) {
            Branch read{branch.get<std::string>("name"), branch.get<std::string>("video"), {}};
            for (const auto& [row, action] : branch.get_child("actions")) {
                read.actions.push_back(readAction(action));
            }
            story.branches.push_back(read);
        }
    }

    [[nodiscard]] Player player(std::uint32_t seed) const {
        return Player(
            story,
            [all = clips](const std::string& video) -> std::shared_ptr<const Clip> {
                const auto found = all.find(video);
                return found == all.end() ? nullptr : found->second;
            },
            seed);
    }

    Story story;
    std::map<std::string, std::shared_ptr<const Clip>> clips;
};

struct Table {
    Table() { boost::property_tree::read_json(QUORVEL_PLAYER_CASES, json); }
    [[nodiscard]] Scene scene() const { return Scene(json.get_child("scenes.drill")); }
    Json json;
};

std::string textOf(const Step& step) {
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%.2f ", step.seconds);
    const Reason& reason = step.reason;
    const std::string when = reason.isImmediate ? ", immediate" : ", at end";
    std::string why;
    switch (reason.cause) {
    case Reason::Cause::started:
        why = "started";
        break;
    case Reason::Cause::zone:
        why = "zone " + reason.name + when;
        break;
    case Reason::Cause::key:
        why = "key " + reason.name + when;
        break;
    case Reason::Cause::clipEnd:
        why = "end";
        break;
    case Reason::Cause::chance:
        why = "chance 1 of " + std::to_string(reason.choices);
        break;
    }
    return time.data() + step.name + ": " + why;
}

std::string textOf(Player::State state) {
    switch (state) {
    case Player::State::playing:
        return "playing";
    case Player::State::ended:
        return "ended";
    case Player::State::noBranch:
        return "no branch";
    case Player::State::noVideo:
        return "no video";
    case Player::State::unreadableClip:
        return "unreadable";
    }
    return {};
}

void happens(Player& player, const std::vector<std::string>& event) {
    const auto number = [&](std::size_t place) { return std::stoi(event.at(place)); };
    if (event[0] == "key") {
        (void)player.press(event.at(1), number(2));
    } else if (event[0] == "click") {
        (void)player.click({number(1), number(2)}, number(3));
    } else if (event[0] == "choose") {
        (void)player.choose(number(1), number(2));
    } else if (event[0] == "end") {
        player.clipEnded(number(1));
    } else if (event[0] == "back") {
        (void)player.back();
    } else if (event[0] == "restart") {
        player.restart();
    } else {
        FAIL() << "unknown event " << event[0];
    }
}

/// Whether the event is the author's; then the player has the changed story.
bool isEdited(Player& player, Story& story, const std::vector<std::string>& event) {
    std::vector<int> moved;
    for (std::size_t i = 0; i < story.branches.size(); ++i) {
        moved.push_back(static_cast<int>(i));
    }
    const auto named =
        std::find_if(story.branches.begin(), story.branches.end(), [&](const Branch& branch) {
            return event.size() > 1 && branch.name == event[1];
        });
    if (event[0] == "add") {
        story.branches.push_back({event.at(1), event.at(2), {}});
    } else if (event[0] == "first") {
        story.first = event.at(1);
    } else if (event[0] == "video") {
        named->video = event.at(2);
    } else if (event[0] == "remove") {
        const auto gone = moved.begin() + (named - story.branches.begin());
        *gone = -1;
        std::for_each(gone + 1, moved.end(), [](int& place) { --place; });
        story.branches.erase(named);
    } else {
        return false;
    }
    player.replaceStory(story, moved);
    return true;
}

int followCases(const Json& cases, const Scene& scene) {
    int count = 0;
    for (const auto& [place, entry] : cases) {
        SCOPED_TRACE(entry.get<std::string>("name"));
        Player player = scene.player(entry.get<std::uint32_t>("seed", 1));
        player.start(entry.get<std::string>("from", scene.story.first));
        Story story = scene.story;
        for (const auto& [row, event] : entry.get_child("events")) {
            if (!isEdited(player, story, texts(event))) {
                happens(player, texts(event));
            }
        }
        std::vector<std::string> path;
        for (const Step& step : player.path()) {
            path.push_back(textOf(step));
        }
        EXPECT_EQ(path, texts(entry.get_child("path")));
        EXPECT_EQ(textOf(player.state()), entry.get<std::string>("state"));
        EXPECT_EQ(player.waiting(), entry.get<int>("waiting", -1));
        ++count;
    }
    return count;
}

TEST(Player, FollowsTheTableOfRules) {
    const Table table;
    EXPECT_GE(followCases(table.json.get_child("cases"), table.scene()), 20);
    EXPECT_GE(followCases(table.json.get_child("edited"), table.scene()), 5);
}

TEST(Player, ThrowsEveryNumberAboutEquallyOften) {
    for (const int count : {2, 3, 7}) {
        Chance chance(12345);
        std::vector<int> thrown(static_cast<std::size_t>(count));
        for (int i = 0; i < count * 1000; ++i) {
            ++thrown.at(static_cast<std::size_t>(chance.pick(count)));
        }
        for (const int times : thrown) {
            EXPECT_NEAR(times, 1000, 120);
        }
    }
}

std::vector<std::string> targets(const Player& player, int frame) {
    std::vector<std::string> found;
    for (const Choice& choice : player.choices(frame)) {
        const Action& action = player.branch().actions.at(static_cast<std::size_t>(choice.action));
        found.push_back(action.parameter + ">" + action.target + (choice.waits ? "!" : "") +
                        (choice.outOf > 0 ? std::to_string(choice.outOf) : ""));
    }
    return found;
}

TEST(Player, OffersWhatCanHappenFromAFrameOn) {
    const Scene scene = Table().scene();
    Player player = scene.player(1);
    player.start(0);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(targets(player, 0),
              (Texts{"Exit>Out", "Fire>Burnt", "L>Lift", "b>Stairs", ">Smoke", "Star>Lift"}));
    EXPECT_TRUE(player.choose(1, 0));
    EXPECT_EQ(targets(player, 50),
              (Texts{"Fire>Burnt!", "L>Lift", "b>Stairs", ">Smoke", "Star>Lift"}));
    EXPECT_EQ(player.likelyNext(), (std::vector<int>{5, 1, 4, 3, 2}));
    player.start("Smoke");
    EXPECT_EQ(targets(player, 0), (Texts{">Alarm3", ">Stairs3", ">Lift3", "S>Smoke"}));
}

TEST(Player, KeepsTheLastStepsOfAWayThatNeverEnds) {
    constexpr int kTurns = 2500;
    const Story circle{"Round",
                       {{"Round", "clip.ogv", {{Action::When::clipEnds, "", "Round", false}}}}};
    Player player(
        circle,
        [](const std::string&) {
            return std::make_shared<Clip>(Clip{25, 25.0, {}});
        },
        1);
    player.start(0);
    for (int turn = 0; turn < kTurns; ++turn) {
        player.clipEnded(25);
    }
    EXPECT_EQ(player.path().size(), Player::kMostSteps);
    EXPECT_EQ(player.stepsBefore() + static_cast<int>(player.path().size()), kTurns + 1);
    EXPECT_EQ(player.path().back().seconds, kTurns);
    for (std::size_t step = 1; step < Player::kMostSteps; ++step) {
        ASSERT_TRUE(player.back());
    }
    EXPECT_FALSE(player.back());
    EXPECT_EQ(player.path().back().seconds, player.stepsBefore());
    player.start(0);
    EXPECT_EQ(player.stepsBefore(), 0);
}

TEST(Player, PlaysOnWhileTheStoryChanges) {
    const Scene scene = Table().scene();
    Player player = scene.player(1);
    player.start(0);
    player.clipEnded(100);
    (void)player.press("S", 5);

    Story changed = scene.story; // without "Alarm", "Smoke" renamed and last
    Branch smoke = changed.branches.at(1);
    smoke.name = "Smoke spreads";
    smoke.actions = {{Action::When::keyPressed, "K", "Out", false}};
    changed.branches.erase(changed.branches.begin(), changed.branches.begin() + 2);
    changed.branches.push_back(smoke);
    player.replaceStory(changed, std::array{-1, 5, 0, 1, 2, 3, 4});
    EXPECT_EQ(player.branch().name, "Smoke spreads");
    EXPECT_TRUE(player.press("k", 6));
    player.replaceStory(changed, std::array{0, 1, 2, 3, 4, 5});
    EXPECT_EQ(player.waiting(), 0) << "the actions are the same";

    changed.branches.pop_back();
    player.replaceStory(changed, std::array{0, 1, 2, 3, 4, -1});
    player.clipEnded(10);
    EXPECT_EQ(player.branch().name, "Out") << "a branch that is gone plays on as it was";
    EXPECT_TRUE(player.back());
    EXPECT_EQ(player.state(), Player::State::noBranch);
    player.replaceStory({}, std::array{-1, -1, -1, -1, -1});
    player.restart();
    EXPECT_EQ(player.state(), Player::State::noBranch);
}

} // namespace
} // namespace player
