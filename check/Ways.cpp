// What SceneCheck makes of the ways between branches.
#include "check/Ways.h"

#include <cstddef>
#include <string>
#include <vector>

#include "check/BranchFindings.h"
#include "check/Facts.h"
#include "check/NameTable.h"
#include "check/SceneCheck.h"
#include "scene/Action.h"

namespace check {

using Reach = BranchSituation::Reach;
using Reference = BranchSituation::Reference;

Ways SceneCheck::followWays(const std::string& firstBranch) {
    const int start =
        firstBranch.empty() ? m_branches.front().content.name : m_names.numberOf(firstBranch);
    Ways ways;
    ways.first.assign(m_names.size(), -1);
    ways.second = ways.first;
    ways.next.assign(m_branches.size(), -1);
    ways.isTarget.assign(m_names.size(), false);
    ways.isReached = ways.isTarget;
    ways.firstOfFolded.assign(m_names.foldedCount(), -1);
    for (std::size_t i = m_branches.size(); i-- > 0;) {
        const BranchContent& branch = m_branches[i].content;
        const std::size_t name = Ways::at(branch.name);
        ways.next[i] = ways.second[name] = ways.first[name];
        ways.first[name] = static_cast<int>(i);
        ways.firstOfFolded[Ways::at(m_names[branch.name].folded)] = branch.name;
        ways.ends += branch.actions.empty() ? 1 : 0;
        for (const BranchContent::Action& action : branch.actions) {
            ways.isTarget[Ways::at(action.target)] = true;
        }
    }
    ways.hasFirstBranch = ways.first[Ways::at(start)] >= 0;
    std::vector<int> open{start};
    ways.isReached[Ways::at(start)] = true;
    while (!open.empty()) {
        int branch = ways.first[Ways::at(open.back())];
        open.pop_back();
        for (; branch >= 0; branch = ways.next[Ways::at(branch)]) {
            for (const BranchContent::Action& action :
                 m_branches[Ways::at(branch)].content.actions) {
                if (!ways.isReached[Ways::at(action.target)]) {
                    ways.isReached[Ways::at(action.target)] = true;
                    open.push_back(action.target);
                }
            }
        }
    }
    return ways;
}

void SceneCheck::readSituation(std::size_t branch, const Ways& ways,
                               BranchSituation& situation) const {
    const BranchContent& content = m_branches[branch].content;
    const std::size_t name = Ways::at(content.name);
    situation.reach = Reach::reached;
    if (ways.hasFirstBranch && !ways.isReached[name]) {
        situation.reach = ways.isTarget[name] ? Reach::notFromFirst : Reach::byNoAction;
    }
    situation.isFirstOfName = ways.first[name] == static_cast<int>(branch);
    situation.isSecondOfName = ways.second[name] == static_cast<int>(branch);
    situation.similarName = -1;
    const int alike = ways.firstOfFolded[Ways::at(m_names[content.name].folded)];
    if (situation.isFirstOfName && alike != content.name) {
        situation.similarName = alike;
    }
    situation.isOnlyEnd = content.actions.empty() && ways.ends == 1;
    situation.targets.clear();
    situation.zones.clear();
    for (const BranchContent::Action& action : content.actions) {
        situation.targets.push_back(ways.first[Ways::at(action.target)] >= 0 ? Reference::good
                                                                             : Reference::missing);
        situation.zones.push_back(zoneOf(content, action));
    }
}

Reference SceneCheck::zoneOf(const BranchContent& branch,
                             const BranchContent::Action& action) const {
    if (action.type != scene::Action::kZoneAction) {
        return Reference::good;
    }
    const auto video = m_videos.find(branch.video);
    // A video that is lost together with its zones is missing once.
    if (video == m_videos.end() || (video->second.facts->state == VideoFacts::State::missing &&
                                    !video->second.facts->hasZoneFiles)) {
        return Reference::unknown;
    }
    return video->second.zones.contains(action.parameter) ? Reference::good : Reference::missing;
}

} // namespace check
