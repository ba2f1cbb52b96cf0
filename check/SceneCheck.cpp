#include "check/SceneCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "check/Names.h"
#include "check/VideoFindings.h"
#include "check/Ways.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"

namespace check {
namespace {

/// Names that edits have brought are forgotten when there are more than that.
constexpr std::size_t kMaxOldNames = 10'000;

} // namespace

void SceneCheck::checkAll(const scene::SceneManager& scene) {
    m_names = {};
    m_branches.clear();
    readFacts();
    readOrder(scene);
    for (std::size_t branch = 0; branch < m_branches.size(); ++branch) {
        readBranch(branch);
    }
    m_namesAtFirst = m_names.size();
    evaluate(scene);
}

void SceneCheck::update(const scene::SceneManager& scene,
                        std::span<const scene::SceneChange> changes) {
    using Part = scene::SceneChange::Part;
    const auto has = [&](Part part) {
        return std::any_of(changes.begin(), changes.end(),
                           [part](const auto& change) { return change.part == part; });
    };
    if (has(Part::scene) || m_names.size() > m_namesAtFirst + kMaxOldNames) {
        checkAll(scene);
        return;
    }
    if (m_hasNewFacts) {
        readFacts();
    }
    const bool isMoved = has(Part::branches);
    if (isMoved) {
        readOrder(scene);
    }
    std::vector<bool> isChanged(m_branches.size(), false);
    for (const scene::SceneChange& change : changes) {
        const bool isOfBranches = change.part == Part::branchName || change.part == Part::video ||
                                  change.part == Part::actions;
        // Numbers are those at the time of each edit.
        if (isOfBranches && (isMoved || change.branch < 0)) {
            isChanged.assign(m_branches.size(), true);
        } else if (isOfBranches && change.branch < static_cast<int>(m_branches.size())) {
            isChanged[Ways::at(change.branch)] = true;
        }
    }
    for (std::size_t branch = 0; branch < m_branches.size(); ++branch) {
        if (isChanged[branch] || m_branches[branch].content.name < 0) {
            readBranch(branch);
        }
    }
    evaluate(scene);
}

void SceneCheck::readFacts() {
    m_hasNewFacts = false;
    m_videos.clear();
    for (const auto& [name, id] : m_facts.files) {
        (void)m_names.numberOf(name); // later checks add no names
    }
    for (const auto& [name, facts] : m_facts.videos) {
        if (name.empty() || !facts || facts->state == VideoFacts::State::unknown ||
            m_facts.copying.contains(name)) {
            continue;
        }
        VideoRecord& video = m_videos[m_names.numberOf(name)];
        video.name = &name;
        video.facts = facts;
        for (std::size_t zone = 0; zone < facts->zones.size(); ++zone) {
            video.zones[m_names.numberOf(facts->zones[zone].name)].push_back(zone);
        }
    }
}

void SceneCheck::readOrder(const scene::SceneManager& scene) {
    std::unordered_map<const scene::Branch*, BranchRecord> known;
    for (BranchRecord& record : m_branches) {
        const scene::Branch* const branch = record.branch.get();
        known.emplace(branch, std::move(record));
    }
    m_branches.clear();
    const scene::BranchManager* const branches = scene.branches();
    const int count = branches != nullptr ? branches->branchCount() : 0;
    m_branches.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number) {
        std::shared_ptr<const scene::Branch> branch = branches->branch(number);
        const auto found = known.find(branch.get());
        if (found != known.end()) {
            m_branches.push_back(std::move(found->second));
        } else {
            m_branches.push_back({std::move(branch)});
        }
    }
}

void SceneCheck::readBranch(std::size_t branch) {
    BranchRecord& record = m_branches[branch];
    BranchContent content = contentOf(*record.branch, m_names);
    record.isStale = record.isStale || content != record.content;
    record.content = std::move(content);
}

void SceneCheck::evaluate(const scene::SceneManager& scene) {
    m_sceneFindings.clear();
    if (!m_branches.empty()) {
        const Ways ways = followWays(scene.FirstBranch());
        BranchSituation situation; // one for all, as its lists need memory
        for (std::size_t branch = 0; branch < m_branches.size(); ++branch) {
            BranchRecord& record = m_branches[branch];
            readSituation(branch, ways, situation);
            if (record.isStale || situation != record.situation) {
                record.findings = findingsOf(record.content, situation, m_names);
                std::swap(record.situation, situation);
                record.isStale = false;
            }
        }
        evaluateVideos();
        checkScene(scene, ways.hasFirstBranch);
        checkUnused();
    }
    collect();
}

void SceneCheck::evaluateVideos() {
    for (auto& [number, video] : m_videos) {
        video.firstBranch = -1;
        video.isZoneUsedNow.assign(video.facts->zones.size(), false);
    }
    for (std::size_t i = m_branches.size(); i-- > 0;) {
        const BranchContent& branch = m_branches[i].content;
        const auto video = m_videos.find(branch.video);
        if (video == m_videos.end()) {
            continue;
        }
        VideoRecord& used = video->second;
        used.firstBranch = static_cast<int>(i);
        for (const BranchContent::Action& action : branch.actions) {
            if (action.type != scene::Action::kZoneAction) {
                continue;
            }
            if (const auto zones = used.zones.find(action.parameter); zones != used.zones.end()) {
                for (const std::size_t zone : zones->second) {
                    used.isZoneUsedNow[zone] = true;
                }
            }
        }
    }
    for (auto& [number, video] : m_videos) {
        if (video.isStale || video.isZoneUsed != video.isZoneUsedNow) {
            video.findings = findingsOf(*video.name, *video.facts, video.isZoneUsedNow);
            video.isZoneUsed.swap(video.isZoneUsedNow);
            video.isStale = false;
        }
    }
}

void SceneCheck::checkScene(const scene::SceneManager& scene, bool hasFirstBranch) {
    if (const auto fault = faultOf(scene.Name())) {
        m_sceneFindings.push_back(
            finding(Kind::unreadableName, {scene.Name()}, static_cast<int>(*fault)));
    }
    if (!hasFirstBranch) {
        const auto fault = faultOf(scene.FirstBranch());
        m_sceneFindings.push_back(
            fault ? finding(Kind::unreadableName, {scene.FirstBranch()}, static_cast<int>(*fault))
                  : finding(Kind::noFirstBranch, {}));
    }
}

void SceneCheck::checkUnused() {
    std::vector<bool> isUsed(m_names.size(), false);
    std::vector<FileId> used;
    for (const BranchRecord& record : m_branches) {
        isUsed[Ways::at(record.content.video)] = true;
    }
    for (const auto& [number, video] : m_videos) {
        if (video.firstBranch >= 0) {
            used.push_back(video.facts->id);
        }
    }
    std::sort(used.begin(), used.end());
    for (const auto& [name, file] : m_facts.files) {
        const FileId& id = file;
        if (!isUsed[Ways::at(m_names.numberOf(name))] && !m_facts.copying.contains(name) &&
            (id == FileId{} || !std::binary_search(used.begin(), used.end(), id))) {
            m_sceneFindings.push_back(finding(Kind::videoUnused, {name}));
            m_sceneFindings.back().video = name;
        }
    }
}

void SceneCheck::collect() {
    m_all.clear();
    m_counts = {};
    for (Finding& found : m_sceneFindings) {
        take(found, -1);
    }
    for (std::size_t i = 0; i < m_branches.size(); ++i) {
        const int number = static_cast<int>(i);
        std::vector<Finding>& own = m_branches[i].findings;
        auto next = own.begin();
        for (; next != own.end() && next->action < 0; ++next) {
            take(*next, number);
        }
        const auto video = m_videos.find(m_branches[i].content.video);
        if (video != m_videos.end() && video->second.firstBranch == number) {
            for (Finding& found : video->second.findings) {
                take(found, number);
            }
        }
        for (; next != own.end(); ++next) {
            take(*next, number);
        }
    }
}

void SceneCheck::take(Finding& found, int branch) {
    found.branch = branch;
    m_all.push_back(&found);
    int Counts::*const count[] = {&Counts::errors, &Counts::warnings, &Counts::notes};
    ++(m_counts.*count[static_cast<std::size_t>(found.severity)]);
}

} // namespace check
