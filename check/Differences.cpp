#include "check/Differences.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace check {
namespace {

/// Which items of two lists have the same name, the first with the first of that name.
struct Matches {
    std::vector<std::pair<int, int>> both; ///< in the order of the first list
    std::vector<int> onlyFirst;
    std::vector<int> onlySecond;

    [[nodiscard]] bool areInOtherOrder() const {
        return !std::is_sorted(both.begin(), both.end(),
                               [](const auto& a, const auto& b) { return a.second < b.second; });
    }
};

Matches matched(const std::vector<std::string>& first, const std::vector<std::string>& second) {
    std::map<std::string, std::vector<int>> places; // the last of a name first
    for (int i = static_cast<int>(second.size()) - 1; i >= 0; --i) {
        places[second[static_cast<std::size_t>(i)]].push_back(i);
    }
    Matches matches;
    std::set<int> taken;
    for (int i = 0; i < static_cast<int>(first.size()); ++i) {
        const auto found = places.find(first[static_cast<std::size_t>(i)]);
        if (found == places.end() || found->second.empty()) {
            matches.onlyFirst.push_back(i);
            continue;
        }
        matches.both.emplace_back(i, found->second.back());
        taken.insert(found->second.back());
        found->second.pop_back();
    }
    for (int i = 0; i < static_cast<int>(second.size()); ++i) {
        if (!taken.contains(i)) {
            matches.onlySecond.push_back(i);
        }
    }
    return matches;
}

std::vector<std::string> namesAt(const std::vector<std::string>& names,
                                 const std::vector<int>& indexes) {
    std::vector<std::string> result;
    for (const int index : indexes) {
        result.push_back(names[static_cast<std::size_t>(index)]);
    }
    return result;
}

using Branches = std::vector<std::shared_ptr<const scene::Branch>>;

Branches branchesOf(const scene::SceneManager& scene) {
    Branches branches;
    for (int i = 0; scene.branches() != nullptr && i < scene.branches()->branchCount(); ++i) {
        branches.push_back(scene.branches()->branch(i));
    }
    return branches;
}

std::vector<std::string> namesOf(const Branches& branches) {
    std::vector<std::string> names;
    for (const auto& branch : branches) {
        names.push_back(branch->ID());
    }
    return names;
}

std::set<std::string> videosOf(const Branches& branches) {
    std::set<std::string> videos;
    for (const auto& branch : branches) {
        if (!branch->Filename().empty()) {
            videos.insert(branch->Filename());
        }
    }
    return videos;
}

bool isSameAction(const scene::Branch& a, int numberA, const scene::Branch& b, int numberB) {
    return *a.action(numberA) == *b.action(numberB);
}

/// What equal actions at the start and at the end enclose, without those that are equal there.
std::vector<int> changedActions(const scene::Branch& a, const scene::Branch& b) {
    const int shorter = std::min(a.actionCount(), b.actionCount());
    const int longer = std::max(a.actionCount(), b.actionCount());
    int start = 0;
    while (start < shorter && isSameAction(a, start, b, start)) {
        ++start;
    }
    int tail = 0;
    while (tail < shorter - start &&
           isSameAction(a, a.actionCount() - 1 - tail, b, b.actionCount() - 1 - tail)) {
        ++tail;
    }
    std::vector<int> numbers;
    for (int number = start; number < longer - tail; ++number) {
        if (number >= shorter - tail || !isSameAction(a, number, b, number)) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

int countMissing(const std::set<std::string>& from, const std::set<std::string>& in) {
    return static_cast<int>(std::count_if(
        from.begin(), from.end(), [&](const std::string& name) { return !in.contains(name); }));
}

std::vector<std::string> namesOf(const zone::ZoneManager& zones) {
    std::vector<std::string> names;
    for (int i = 0; i < zones.zoneCount(); ++i) {
        names.push_back(zones.zone(i)->name());
    }
    return names;
}

/// From the first to the last frame that differs in the files.
std::optional<FrameRange> framesOf(const zone::Zone& version, const zone::Zone& now,
                                   zone::Scale scale) {
    const int common = std::min(version.frameCount(), now.frameCount());
    const int all = std::max(version.frameCount(), now.frameCount());
    std::optional<int> next = version.firstDifference(now, scale, 0);
    if (!next && common == all) {
        return std::nullopt;
    }
    FrameRange range{next.value_or(common), all - 1};
    if (common == all) {
        for (; next; next = version.firstDifference(now, scale, *next + 1)) {
            range.last = *next;
        }
    }
    return range;
}

} // namespace

SceneDifferences differencesOf(const scene::SceneManager& version, const scene::SceneManager& now) {
    const Branches then = branchesOf(version);
    const Branches current = branchesOf(now);
    const std::vector<std::string> namesThen = namesOf(then);
    const std::vector<std::string> namesNow = namesOf(current);
    const Matches matches = matched(namesThen, namesNow);
    SceneDifferences result;
    result.with = namesAt(namesThen, matches.onlyFirst);
    result.without = namesAt(namesNow, matches.onlySecond);
    result.videosMore = countMissing(videosOf(then), videosOf(current));
    result.videosFewer = countMissing(videosOf(current), videosOf(then));
    for (const auto& [indexThen, indexNow] : matches.both) {
        const scene::Branch& a = *then[static_cast<std::size_t>(indexThen)];
        const scene::Branch& b = *current[static_cast<std::size_t>(indexNow)];
        if (std::vector<int> numbers = changedActions(a, b); !numbers.empty()) {
            result.actions.push_back({a.ID(), std::move(numbers)});
        }
        if (a.Filename() != b.Filename()) {
            result.otherVideos.push_back(a.ID());
        }
    }
    if (version.FirstBranch() != now.FirstBranch()) {
        result.firstBranch = version.FirstBranch();
    }
    result.isOtherOrder = matches.areInOtherOrder();
    return result;
}

ZoneDifferences differencesOf(const zone::ZoneManager& version, const zone::ZoneManager& now) {
    const std::vector<std::string> namesThen = namesOf(version);
    const std::vector<std::string> namesNow = namesOf(now);
    const Matches matches = matched(namesThen, namesNow);
    ZoneDifferences result;
    result.with = namesAt(namesThen, matches.onlyFirst);
    result.without = namesAt(namesNow, matches.onlySecond);
    for (const auto& [indexThen, indexNow] : matches.both) {
        const auto frames = framesOf(*version.zone(indexThen), *now.zone(indexNow),
                                     now.scale.value_or(zone::Scale{}));
        if (frames) {
            result.frames.push_back({version.zone(indexThen)->name(), *frames});
        }
    }
    result.isOtherOrder = matches.areInOtherOrder();
    return result;
}

} // namespace check
