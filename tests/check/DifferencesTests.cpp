#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "check/Differences.h"
#include "scene/SceneManager.h"
#include "zone/EditContext.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

using Texts = std::vector<std::string>;

Texts textsOf(const std::vector<check::Line>& lines) {
    Texts texts;
    for (const check::Line& line : lines) {
        texts.push_back(line.text);
    }
    return texts;
}

/// "A:a.ogv:x,y B" is branch A with a video and default actions to x and y, and branch B.
std::shared_ptr<scene::SceneManager> sceneOf(const std::string& text) {
    auto scene = scene::SceneManager::create();
    std::string xml = "<Scene>";
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string branch = text.substr(at, end - at) + "::";
        const std::size_t name = branch.find(':');
        const std::size_t video = branch.find(':', name + 1);
        xml += "<Branch><ID>" + branch.substr(0, name) + "</ID><Filename>" +
               branch.substr(name + 1, video - name - 1) + "</Filename>";
        for (const char target : branch.substr(video + 1)) {
            if (target != ',' && target != ':') {
                xml += std::string("<Action><BranchID>") + target + "</BranchID></Action>";
            }
        }
        xml += "</Branch>";
        at = end + 1;
    }
    EXPECT_TRUE(scene->loadText(xml + "</Scene>"));
    return scene;
}

TEST(SceneDifferences, SayWhatAVersionHasLacksAndHasOtherwise) {
    struct Case {
        const char* version;
        const char* now;
        const char* summary;
        Texts lines;
    };
    const Case cases[] = {
        {"A B", "A B", "as now", {}},
        {"A:a B:b C", "A:a", "2 branches, 1 video more", {"With \"B\"", "With \"C\""}},
        {"A:a", "A:a B:b C:c", "2 branches, 2 videos fewer", {"Without \"B\"", "Without \"C\""}},
        {"A B", "A C", "1 branch more, 1 branch fewer", {"With \"B\"", "Without \"C\""}},
        {"A::xyzw S::xy",
         "A::xyab S::xa D",
         "1 branch fewer, 3 actions changed",
         {"Without \"D\"", "Other actions: \"A\" 3 and 4, \"S\" 2"}},
        {"A::xyz", "A::wxyz", "1 action changed", {"Other actions: \"A\" 1"}},
        {"A::xayz", "A::xyz", "1 action changed", {"Other actions: \"A\" 2"}},
        {"A::xyz", "A", "3 actions changed", {"Other actions: \"A\" 1, 2 and 3"}},
        {"A::axbyc", "A::1x2y3", "3 actions changed", {"Other actions: \"A\" 1, 3 and 5"}},
        {"A:a B:b", "A:b B:a", "2 videos changed", {"Other videos: \"A\", \"B\""}},
        {"A:a", "A:b", "1 video more, 1 video fewer", {"Other videos: \"A\""}},
        {"A B", "B A", "order changed", {"Other order of the branches"}},
        {"A::x A::y", "A::x A::z", "1 action changed", {"Other actions: \"A\" 1"}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(std::string(test.version) + " / " + test.now);
        const auto differences = check::differencesOf(*sceneOf(test.version), *sceneOf(test.now));
        EXPECT_EQ(check::summaryOf(differences), test.summary);
        EXPECT_EQ(textsOf(check::linesOf(differences)), test.lines);
    }
    const auto other = sceneOf("A B");
    other->SetFirstBranch("B");
    const auto differences = check::differencesOf(*other, *sceneOf("A B"));
    EXPECT_EQ(check::summaryOf(differences), "first branch changed");
    EXPECT_EQ(textsOf(check::linesOf(differences)), Texts{"First branch: \"B\""});
}

TEST(SceneDifferences, ContentsAreBranchesWithTheirActions) {
    const auto scene = sceneOf("A:a.ogv:Bq B");
    scene->SetFirstBranch("A");
    EXPECT_EQ(textsOf(check::contentsOf(*scene, {"Default"})),
              (Texts{"A, a.ogv, first branch", "1  Default, to B",
                     "2  Default, to q, which is missing", "B"}));
    const auto large = sceneOf("A::" + std::string(6000, 'A'));
    const auto lines = check::contentsOf(*large, {});
    EXPECT_EQ(lines.size(), 5001U);
    EXPECT_EQ(lines.back().text, "and 1001 more");
}

/// Zones of ten frames, each with one point.
std::shared_ptr<zone::ZoneManager> zonesOf(const std::vector<std::string>& names) {
    const auto zones = zone::ZoneManager::createEmpty();
    zones->videoWidth = zones->videoHeight = 1000;
    zones->scale = zone::Scale{2.0F, 2.0F};
    zone::EditContext context;
    for (const std::string& name : names) {
        zones->addZone(zone::Zone::create(10));
        const int last = zones->zoneCount() - 1;
        zones->setZoneName(last, name);
        zones->addPoint(context, last, 0, 100, 100);
    }
    return zones;
}

TEST(ZoneDifferences, SayWhichFramesOfWhichZones) {
    const auto now = zonesOf({"Exit", "Door", "New"});
    const auto version = zonesOf({"Exit", "Door", "Old"});
    zone::EditContext context;
    context.progressChanges = false;
    version->setActive(context, 0, 3, false);
    version->setActive(context, 0, 6, false);
    version->setActive(context, 1, 9, false);
    const auto differences = check::differencesOf(*version, *now);
    EXPECT_EQ(check::summaryOf(differences),
              "1 zone more, 1 zone fewer, zone Exit: frames 3 to 6, zone Door: frame 9");
    EXPECT_EQ(textsOf(check::linesOf(differences)),
              (Texts{"With \"Old\"", "Without \"New\"", "Zone Exit: frames 3 to 6",
                     "Zone Door: frame 9"}));
    EXPECT_EQ(textsOf(check::contentsOf(*version)).at(1),
              "10 frames, active on 0 to 2, 4 to 5, 7 to 9");

    EXPECT_EQ(check::summaryOf(check::differencesOf(*zonesOf({"A", "B"}), *zonesOf({"B", "A"}))),
              "order changed");
    // Half a pixel of the video is no difference: a file holds neither.
    const auto moved = zonesOf({"Exit"});
    context.zone(0).selectedPoint = 0;
    moved->moveSelectedPoint(context, 0, 4, 99, 100);
    EXPECT_EQ(check::summaryOf(check::differencesOf(*moved, *zonesOf({"Exit"}))), "as now");
    // One of another video's length.
    const auto shorter = zonesOf({});
    shorter->addZone(zone::Zone::create(4));
    shorter->setZoneName(0, "Exit");
    EXPECT_EQ(check::summaryOf(check::differencesOf(*shorter, *zonesOf({"Exit"}))),
              "zone Exit: frames 0 to 9");
}

} // namespace
