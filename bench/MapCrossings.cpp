#include "bench/MapCrossings.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bench {
namespace {

using map::MapScene;

int pick(std::mt19937& random, int count) {
    return static_cast<int>(random() % static_cast<unsigned>(count));
}

MapScene namedBranches(int count) {
    MapScene scene;
    for (int i = 0; i < count; ++i) {
        scene.branches.push_back({"Branch " + std::to_string(i), "clip.ogv", {}});
    }
    scene.first = 0;
    return scene;
}

void lead(MapScene& scene, int from, int to) {
    scene.branches[static_cast<std::size_t>(from)].actions.push_back(
        {0, "Default", scene.branches[static_cast<std::size_t>(to)].name, to});
}

int targetOf(const MapScene& scene, const map::MapLine& line) {
    return scene.branches[static_cast<std::size_t>(line.branch)]
        .actions[static_cast<std::size_t>(line.action)]
        .branch;
}

} // namespace

MapScene storyScene(unsigned seed, int branches, int actions) {
    std::mt19937 random(seed);
    MapScene scene = namedBranches(branches);
    for (int i = 0; i + 1 < branches; ++i) {
        lead(scene, std::max(0, i - pick(random, 3)), i + 1);
    }
    for (int i = branches - 1; i < actions; ++i) {
        const int from = pick(random, branches);
        const int kind = pick(random, 100);
        const int far = std::max(4, branches / 12);
        const int to = kind < 65   ? from + 1 + pick(random, 5)
                       : kind < 85 ? from - pick(random, 8)
                       : kind < 95 ? from + pick(random, 2 * far) - far
                                   : branches - 1 - pick(random, 3);
        lead(scene, from, std::clamp(to, 0, branches - 1));
    }
    return scene;
}

MapScene wildScene(unsigned seed, int branches, int actions) {
    std::mt19937 random(seed);
    MapScene scene = namedBranches(branches);
    for (int i = 0; i < actions; ++i) {
        lead(scene, pick(random, branches), pick(random, branches));
    }
    return scene;
}

std::int64_t crossingsOf(const MapScene& scene, const map::MapLayout& layout) {
    struct Piece {
        int left;
        int right;
    };
    std::map<int, std::vector<Piece>> gaps; // by the x at which they begin
    std::set<std::pair<int, int>> seen;
    for (const map::MapLine& line : layout.lines) {
        const int target = targetOf(scene, line);
        if (!seen.emplace(line.branch, target).second) {
            continue;
        }
        std::vector<map::MapPoint> points = line.points;
        points.front().y = layout.nodes[static_cast<std::size_t>(line.branch)].y;
        points.back().y = layout.nodes[static_cast<std::size_t>(target)].y;
        for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
            gaps[points[i].x].push_back({points[i].y, points[i + 1].y});
        }
    }
    std::int64_t crossings = 0;
    for (const auto& [x, pieces] : gaps) {
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                const auto left = std::int64_t{pieces[i].left} - pieces[j].left;
                const auto right = std::int64_t{pieces[i].right} - pieces[j].right;
                crossings += (left < 0 && right > 0) || (left > 0 && right < 0) ? 1 : 0;
            }
        }
    }
    return crossings;
}

std::optional<std::int64_t> crossingsOfDot(const MapScene& scene, const map::MapLayout& layout) {
    const std::string input = "map_bench.dot";
    const std::string output = "map_bench.txt";
    {
        std::ofstream file(input);
        file << "strict digraph {\nrankdir=LR;\nnode [shape=box, width=1, height=1, "
                "fixedsize=true];\n";
        for (std::size_t i = 0; i < scene.branches.size(); ++i) {
            file << 'b' << i << ";\n";
        }
        for (const map::MapLine& line : layout.lines) {
            file << 'b' << line.branch << " -> b" << targetOf(scene, line) << ";\n";
        }
        file << "}\n";
    }
    const int result =
        std::system(("dot -v -Tplain -o /dev/null " + input + " 2> " + output).c_str());
    std::optional<std::int64_t> crossings;
    std::ifstream file(output);
    for (std::string line; result == 0 && std::getline(file, line);) {
        // "mincross G: 123 crossings, 0.01 secs."
        const std::size_t end = line.find(" crossings,");
        if (line.starts_with("mincross ") && end != std::string::npos) {
            crossings = std::stoll(line.substr(line.rfind(' ', end - 1) + 1));
        }
    }
    file.close();
    std::filesystem::remove(input);
    std::filesystem::remove(output);
    return crossings;
}

} // namespace bench
