// The layout of a scene's map, over made and hostile scenes, and the map as text.
#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "map/BackLines.h"
#include "map/MapLayout.h"
#include "map/MapScene.h"
#include "map/MapText.h"
#include "scene/Action.h"
#include "scene/SceneManager.h"

namespace {

using map::MapLayout;
using map::MapScene;
using map::NodeForm;

void lead(MapScene& scene, int from, int to) {
    scene.branches[static_cast<std::size_t>(from)].actions.push_back(
        {0, "Default", to < 0 ? "Gone" : scene.branches[static_cast<std::size_t>(to)].name, to});
}

MapScene branches(int count) {
    MapScene scene;
    for (int i = 0; i < count; ++i) {
        scene.branches.push_back({"B" + std::to_string(i), "", {}});
    }
    scene.first = count > 0 ? 0 : -1;
    return scene;
}

MapScene randomScene(unsigned seed, int count, int actions) {
    std::mt19937 random(seed);
    MapScene scene = branches(count);
    for (int i = 0; i < actions; ++i) {
        const int to = static_cast<int>(random() % static_cast<unsigned>(count + 1)) - 1;
        lead(scene, static_cast<int>(random() % static_cast<unsigned>(count)), to);
    }
    return scene;
}

void expectSound(const MapScene& scene, const MapLayout& layout) {
    ASSERT_EQ(layout.nodes.size(), scene.branches.size());
    std::vector<map::MapNode> nodes = layout.nodes;
    std::sort(nodes.begin(), nodes.end(), [](const auto& one, const auto& other) {
        return std::tie(one.x, one.y) < std::tie(other.x, other.y);
    });
    nodes.erase(std::unique(nodes.begin(), nodes.end(),
                            [](const auto& one, const auto& other) {
                                return one.chain >= 0 && one == other;
                            }),
                nodes.end());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_TRUE(nodes[i].x >= 0 && nodes[i].y >= 0 &&
                    nodes[i].x + nodes[i].width <= layout.width &&
                    nodes[i].y + nodes[i].height <= layout.height);
        EXPECT_TRUE(nodes[i].isReached || nodes[i].y > layout.unreachedTop);
        if (i > 0 && nodes[i - 1].x == nodes[i].x) {
            EXPECT_GE(nodes[i].y, nodes[i - 1].y + nodes[i - 1].height + 16) << "no overlap";
        }
    }
    for (const map::MapLine& line : layout.lines) {
        const auto branch = static_cast<std::size_t>(line.branch);
        const int target =
            scene.branches[branch].actions[static_cast<std::size_t>(line.action)].branch;
        const map::MapNode& from = layout.nodes[branch];
        const map::MapNode& to = layout.nodes[static_cast<std::size_t>(target)];
        EXPECT_EQ(from.isReached, to.isReached);
        EXPECT_EQ(line.points.front().x, from.x + from.width);
        EXPECT_EQ(line.points.back().x, to.x);
        EXPECT_TRUE(line.points.back().y >= to.y && line.points.back().y <= to.y + to.height);
        EXPECT_TRUE(std::is_sorted(line.points.begin(), line.points.end(),
                                   [](auto one, auto other) { return one.x < other.x; }));
    }
}

TEST(MapLayoutOf, RandomScenesIsSoundAndTheSameEachTime) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        const int count = 1 + static_cast<int>(seed * 9);
        const MapScene scene = randomScene(seed, count, count * 2);
        for (const NodeForm form : {NodeForm::whole, NodeForm::still, NodeForm::name}) {
            const MapLayout layout = map::layOut(scene, form);
            expectSound(scene, layout);
            EXPECT_EQ(map::layOut(scene, form), layout);
        }
    }
}

TEST(MapLayoutOf, HostileScenesIsSound) {
    MapScene loops = branches(4);
    MapScene chain = branches(10'000);
    MapScene star = branches(2'000);
    for (int i = 0; i < 4; ++i) {
        lead(loops, i, i);
        lead(loops, i, (i + 1) % 4);
        loops.branches[static_cast<std::size_t>(i)].name = "Same";
    }
    for (int i = 0; i + 1 < 10'000; ++i) {
        lead(chain, i, i + 1);
        lead(chain, i, 9'999);
    }
    for (int i = 0; i < 2'000; ++i) {
        lead(star, 0, i);
        lead(star, i, 1'999);
    }
    MapScene nowhere = branches(3);
    nowhere.first = -1;
    for (const MapScene& scene :
         {branches(0), branches(1), loops, chain, star, nowhere, randomScene(7, 1'000, 5'000)}) {
        expectSound(scene, map::layOut(scene, NodeForm::whole));
    }
}

TEST(MapLayoutOf, ChainsWithoutAChoiceIsFoldedWhereOnlyNamesAreShown) {
    // 0 to 3 and 6 to 8 are chains, 9 and 10 are a ring that nothing leads into.
    MapScene scene = branches(11);
    const std::pair<int, int> leads[] = {{0, 1}, {1, 2}, {1, 2}, {2, 3}, {3, 4},  {3, 5}, {4, 6},
                                         {5, 6}, {6, 7}, {7, 8}, {8, 0}, {9, 10}, {10, 9}};
    for (const auto& [from, to] : leads) {
        lead(scene, from, to);
    }
    EXPECT_TRUE(map::layOut(scene, NodeForm::still).chains.empty());
    const MapLayout layout = map::layOut(scene, NodeForm::name);
    expectSound(scene, layout);
    EXPECT_EQ(layout.chains, (std::vector<std::vector<int>>{{0, 1, 2, 3}, {6, 7, 8}}));
    EXPECT_EQ(layout.nodes[0], layout.nodes[3]);
    EXPECT_GT(layout.nodes[0].height, layout.nodes[4].height) << "says how many there are";
    EXPECT_EQ(layout.width, 3 * 72 + 2 * 40);
    EXPECT_TRUE(map::linesOf(layout, 1).empty());
    ASSERT_EQ(map::linesOf(layout, 3).size(), 2U) << "the last of a chain leads on";
    EXPECT_EQ(map::linesOf(layout, 3)[1].action, 1);
    EXPECT_EQ(map::backLinesOf(scene, layout, NodeForm::name, 0).size(), 1U)
        << "from 8, none inside a chain";
    lead(scene, 1, -1);
    EXPECT_EQ(map::layOut(scene, NodeForm::name).chains.size(), 1U) << "a target that is missing";
}

TEST(MapLayoutOf, LinesBackRunAroundWhatIsBetween) {
    MapScene scene = branches(7);
    const std::pair<int, int> leads[] = {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {1, 0},
                                         {3, 1}, {3, 0}, {6, 0}, {2, 2}};
    for (const auto& [from, to] : leads) {
        lead(scene, from, to);
    }
    for (const NodeForm form : {NodeForm::whole, NodeForm::still, NodeForm::name}) {
        const MapLayout layout = map::layOut(scene, form);
        for (int branch = 0; branch < 7; ++branch) {
            for (const map::MapLine& line : map::backLinesOf(scene, layout, form, branch)) {
                const auto& points = line.points;
                const auto from = static_cast<std::size_t>(line.branch);
                const auto to = static_cast<std::size_t>(
                    scene.branches[from].actions[static_cast<std::size_t>(line.action)].branch);
                SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
                EXPECT_EQ(points.front().x, layout.nodes[from].x);
                const map::MapNode& target = layout.nodes[to];
                EXPECT_TRUE(points.back().x > target.x &&
                            points.back().x < target.x + target.width);
                EXPECT_EQ(points.back().y,
                          target.y + ((from == 3 && to == 0) || from == 6 ? target.height : 0));
                for (std::size_t i = 1; i < points.size(); ++i) {
                    EXPECT_NE(points[i].x == points[i - 1].x, points[i].y == points[i - 1].y);
                    for (const map::MapNode& node : layout.nodes) {
                        EXPECT_FALSE(std::min(points[i].x, points[i - 1].x) < node.x + node.width &&
                                     std::max(points[i].x, points[i - 1].x) > node.x &&
                                     std::min(points[i].y, points[i - 1].y) <
                                         node.y + node.height &&
                                     std::max(points[i].y, points[i - 1].y) > node.y);
                    }
                }
            }
        }
        EXPECT_EQ(map::backLinesOf(scene, layout, form, 0).size(), 3U) << "from and to it alone";
    }
}

TEST(MapLayoutOf, AStoryGoesFromLeftToRight) {
    MapScene scene = branches(5);
    lead(scene, 0, 1);
    lead(scene, 0, 2);
    lead(scene, 1, 3);
    lead(scene, 2, 3);
    lead(scene, 3, 0); // back: no line
    lead(scene, 0, 3); // passes a column
    lead(scene, 3, -1);
    const MapLayout layout = map::layOut(scene, NodeForm::whole);
    const auto x = [&](std::size_t branch) { return layout.nodes[branch].x; };
    EXPECT_EQ((std::vector{x(0), x(1), x(2), x(3), x(4)}), (std::vector{0, 176, 176, 352, 0}));
    EXPECT_LT(layout.nodes[1].y, layout.nodes[2].y) << "in the order of the actions";
    EXPECT_FALSE(layout.nodes[4].isReached);
    ASSERT_EQ(layout.lines.size(), 5U);
    const auto passing =
        std::find_if(layout.lines.begin(), layout.lines.end(),
                     [](const auto& line) { return line.branch == 0 && line.action == 2; });
    EXPECT_EQ(passing->points.size(), 4U);
}

TEST(MapLayoutOf, StillsStandCloserAndTheirLinesBeginOneBelowTheOther) {
    MapScene scene = branches(4);
    for (const int to : {3, 1, 2}) {
        lead(scene, 0, to);
    }
    const MapLayout layout = map::layOut(scene, NodeForm::still);
    EXPECT_EQ(layout.nodes[1].x, 92 + 22);
    EXPECT_EQ(map::layOut(scene, NodeForm::whole).nodes[1].x, 136 + 40);
    ASSERT_EQ(layout.lines.size(), 3U);
    std::vector<std::pair<int, int>> ends; // where each begins and arrives
    for (const map::MapLine& line : layout.lines) {
        ends.emplace_back(line.points.front().y - layout.nodes[0].y, line.points.back().y);
    }
    std::sort(ends.begin(), ends.end());
    EXPECT_EQ(ends[0].first, 37 - 13);
    EXPECT_EQ(ends[1].first, 37);
    EXPECT_EQ(ends[2].first, 37 + 13);
    EXPECT_TRUE(ends[0].second < ends[1].second && ends[1].second < ends[2].second)
        << "none crosses another";
}

TEST(MapText, HoldsEveryNameWholeAndEscaped) {
    const auto manager = scene::SceneManager::create();
    manager->newScene("Fire");
    for (const auto& name : {std::string("A <b> & \"c\""), "Long " + std::string(300, 'x')}) {
        manager->AddBranch();
        manager->renameBranch(manager->branchCount() - 1, name);
    }
    const auto action = scene::Action::create();
    action->SetType(scene::Action::kKeypressAction);
    action->SetParameter("L");
    action->SetBranchID("Gone\\");
    for (int i = 0; i < 20; ++i) {
        manager->addAction(0, action);
    }
    const MapScene scene = map::readMap(*manager);
    EXPECT_EQ(scene.first, 0);
    const std::string svg = map::svgText(scene);
    const std::string dot = map::dotText(scene);
    for (const auto& part :
         {std::string("A &lt;b&gt; &amp; &quot;c&quot;</text>"),
          "Long " + std::string(300, 'x') + "</text>", std::string("Key L \xE2\x86\x92 Gone\\")}) {
        EXPECT_NE(svg.find(part), std::string::npos) << part;
    }
    int rows = 0;
    for (std::size_t at = 0; (at = svg.find("Gone", at)) != std::string::npos; ++at) {
        ++rows;
    }
    EXPECT_EQ(rows, 20) << "nothing is folded";
    EXPECT_NE(dot.find(R"(b0 [label="A <b> & \"c\"", peripheries=2];)"), std::string::npos) << dot;
    EXPECT_NE(dot.find(R"(b0 -> m0 [label="Key L"];)"), std::string::npos);
    EXPECT_NE(dot.find(R"(m0 [label="Gone\\", style=dashed];)"), std::string::npos);
    EXPECT_EQ(map::svgText(map::readMap(*manager)), svg);
}

} // namespace
