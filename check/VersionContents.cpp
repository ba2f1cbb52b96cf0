// What a version holds, as lines for the author.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "check/Differences.h"
#include "core/Texts.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace check {
namespace {

/// A list of more lines helps nobody, and a damaged file may hold any number.
constexpr std::size_t kMaxLines = 5000;
constexpr std::size_t kMaxRanges = 3;

std::string actionText(const scene::Action& action, int number,
                       const std::vector<std::string>& conditions,
                       const std::set<std::string>& branches) {
    const auto type = static_cast<std::size_t>(action.Type());
    std::string text = std::to_string(number + 1) + "  ";
    text += type < conditions.size() ? conditions[type] : std::string();
    if (!action.Parameter().empty()) {
        text += " " + action.Parameter();
    }
    const core::Text target = action.BranchID().empty() ? "LineToNone|to no branch"_tr
                              : branches.contains(action.BranchID())
                                  ? "MapTo|to {0}"_tr
                                  : "LineToMissing|to {0}, which is missing"_tr;
    text += ", " + core::trStored(target, {action.BranchID()});
    return action.Immediate() ? text + ", " + core::trStored("MapImmediate|immediate"_tr) : text;
}

/// "0 to 49, 60 and 2 more": the frames on which the zone has an active shape.
std::string activeFrames(const zone::Zone& zone) {
    std::string text;
    std::size_t ranges = 0;
    const auto isActive = [&zone](int frame) {
        return zone.points(frame).has_value() && zone.isActive(frame);
    };
    for (int frame = 0; frame < zone.frameCount(); ++frame) {
        if (!isActive(frame)) {
            continue;
        }
        const int first = frame;
        while (frame + 1 < zone.frameCount() && isActive(frame + 1)) {
            ++frame;
        }
        if (++ranges > kMaxRanges) {
            continue;
        }
        text += ranges == 1 ? "" : ", ";
        text += first == frame ? std::to_string(first)
                               : core::trStored("FromTo|{0} to {1}"_tr, {first, frame});
    }
    return ranges <= kMaxRanges
               ? text
               : core::trStored("NamesAndMore|{1} and {0} more|{1} and {0} more"_trn,
                                ranges - kMaxRanges, {text});
}

void cut(std::vector<Line>& lines, std::size_t all) {
    if (all > lines.size()) {
        lines.push_back(
            {Line::Kind::plain,
             core::trStored("AndMoreRows|and {0} more|and {0} more"_trn, all - lines.size())});
    }
}

} // namespace

std::vector<Line> contentsOf(const scene::SceneManager& scene,
                             const std::vector<std::string>& conditions) {
    std::vector<std::string> ids;
    scene.branchIDs(ids);
    const std::set<std::string> names(ids.begin(), ids.end());
    std::vector<Line> lines;
    std::size_t all = 0;
    for (int i = 0; i < static_cast<int>(ids.size()); ++i) {
        const std::shared_ptr<const scene::Branch> branch = scene.branches()->branch(i);
        all += 1 + static_cast<std::size_t>(branch->actionCount());
        if (lines.size() >= kMaxLines) {
            continue;
        }
        lines.push_back({Line::Kind::heading,
                         branch->ID() +
                             (branch->Filename().empty() ? "" : ", " + branch->Filename()) +
                             (branch->ID() == scene.FirstBranch()
                                  ? ", " + core::trStored("MapFirst|first branch"_tr)
                                  : std::string())});
        for (int number = 0; number < branch->actionCount() && lines.size() < kMaxLines; ++number) {
            lines.push_back({Line::Kind::plain,
                             actionText(*branch->action(number), number, conditions, names)});
        }
    }
    cut(lines, all);
    return lines;
}

std::vector<Line> contentsOf(const zone::ZoneManager& zones) {
    std::vector<Line> lines;
    for (int i = 0; i < zones.zoneCount() && lines.size() < kMaxLines; ++i) {
        const zone::Zone& zone = *zones.zone(i);
        const std::string active = activeFrames(zone);
        lines.push_back({Line::Kind::heading, zone.name()});
        lines.push_back({Line::Kind::plain,
                         core::trStored("{0} frame|{0} frames"_trn,
                                        static_cast<std::size_t>(zone.frameCount())) +
                             ", " +
                             (active.empty() ? core::trStored("never active"_tr)
                                             : core::trStored("active on {0}"_tr, {active}))});
    }
    cut(lines, static_cast<std::size_t>(zones.zoneCount()) * 2);
    return lines;
}

} // namespace check
