#include "map/Chains.h"

#include <cstddef>
#include <utility>

namespace map {
namespace {

constexpr std::size_t kShortest = 3;
constexpr int kSeveral = -2; ///< in place of one branch

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

void note(int& known, int branch) {
    known = known == -1 || known == branch ? branch : kSeveral;
}

} // namespace

std::vector<std::vector<int>> findChains(const MapScene& scene) {
    const std::size_t count = scene.branches.size();
    std::vector<int> next(count, -1);
    std::vector<int> before(count, -1);
    for (std::size_t branch = 0; branch < count; ++branch) {
        for (const MapAction& action : scene.branches[branch].actions) {
            note(next[branch], action.branch >= 0 ? action.branch : kSeveral);
            if (action.branch >= 0) {
                note(before[at(action.branch)], static_cast<int>(branch));
            }
        }
    }
    const auto follower = [&](int branch) {
        const int to = next[at(branch)];
        return to >= 0 && to != scene.first && to != branch && before[at(to)] == branch ? to : -1;
    };
    std::vector<std::vector<int>> chains;
    for (std::size_t branch = 0; branch < count; ++branch) {
        const int start = static_cast<int>(branch);
        const bool isInside = before[branch] >= 0 && follower(before[branch]) == start;
        if (isInside) {
            continue; // also all branches of a ring that nothing leads into
        }
        std::vector<int> chain;
        for (int member = start; member >= 0; member = follower(member)) {
            chain.push_back(member);
        }
        if (chain.size() >= kShortest) {
            chains.push_back(std::move(chain));
        }
    }
    return chains;
}

FoldedScene fold(const MapScene& scene, const std::vector<std::vector<int>>& chains) {
    const std::size_t count = scene.branches.size();
    std::vector<int> head(count, -1); // of those behind it in its chain
    std::vector<int> tail(count, -1); // of the first in a chain
    for (const std::vector<int>& chain : chains) {
        tail[at(chain.front())] = chain.back();
        for (std::size_t i = 1; i < chain.size(); ++i) {
            head[at(chain[i])] = chain.front();
        }
    }
    FoldedScene folded;
    folded.numbers.resize(count);
    for (std::size_t branch = 0; branch < count; ++branch) {
        if (head[branch] < 0) {
            folded.numbers[branch] = static_cast<int>(folded.last.size());
            folded.last.push_back(tail[branch] >= 0 ? tail[branch] : static_cast<int>(branch));
        }
    }
    for (std::size_t branch = 0; branch < count; ++branch) {
        if (head[branch] >= 0) {
            folded.numbers[branch] = folded.numbers[at(head[branch])];
        }
    }
    for (const int last : folded.last) {
        MapBranch content = scene.branches[at(last)];
        for (MapAction& action : content.actions) {
            action.branch = action.branch >= 0 ? folded.numbers[at(action.branch)] : -1;
        }
        folded.scene.branches.push_back(std::move(content));
    }
    folded.scene.first = scene.first >= 0 ? folded.numbers[at(scene.first)] : -1;
    return folded;
}

} // namespace map
