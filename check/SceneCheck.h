// Checks a scene while it is edited. After an edit, only what the edit changed is read again; the
// ways between branches are followed again, by numbers instead of names, and only those findings
// are made again that may differ. No window, no files: what matters about files is passed in.
//
//   check.checkAll(session.scene());
//   check.setFacts(facts);  // whenever files have been read
//   check.update(session.scene(), {});
//   session.observe([&](const auto& changes) { check.update(session.scene(), changes); });
//
// Neither the scene nor the facts are changed. One thread.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "check/BranchFindings.h"
#include "check/Facts.h"
#include "check/Finding.h"
#include "check/NameTable.h"
#include "scene/SceneChange.h"

namespace scene {
class SceneManager;
}

namespace check {

struct Ways;

struct Counts {
    int errors = 0;
    int warnings = 0;
    int notes = 0;

    [[nodiscard]] int all() const { return errors + warnings + notes; }
    friend bool operator==(const Counts&, const Counts&) = default;
};

class SceneCheck {
public:
    /// Counts from the next check on. Until facts are set, nothing is known of any file.
    void setFacts(FolderFacts facts) {
        m_facts = std::move(facts);
        m_hasNewFacts = true;
    }

    void checkAll(const scene::SceneManager& scene);
    /// After exactly these changes since the last check of this scene, and perhaps with new facts.
    void update(const scene::SceneManager& scene, std::span<const scene::SceneChange> changes);

    /// By branch (those of none first), then action (the branch's own first), then video. Valid
    /// until the next check. None for a scene without branches.
    [[nodiscard]] const std::vector<const Finding*>& findings() const { return m_all; }
    [[nodiscard]] const Counts& counts() const { return m_counts; }

private:
    struct BranchRecord {
        std::shared_ptr<const scene::Branch> branch; ///< kept so that no other gets its address
        BranchContent content{};
        BranchSituation situation{};
        std::vector<Finding> findings{};
        bool isStale = true; ///< the findings are not those of the content
    };
    struct VideoRecord {
        const std::string* name = nullptr; ///< in the facts
        std::shared_ptr<const VideoFacts> facts{};
        std::map<int, std::vector<std::size_t>> zones{}; ///< by the number of the name
        std::vector<bool> isZoneUsed{};                  ///< as the findings say
        std::vector<bool> isZoneUsedNow{};               ///< as the branches do
        int firstBranch = -1;                            ///< that has the video
        std::vector<Finding> findings{};
        bool isStale = true;
    };

    void readFacts();
    void readOrder(const scene::SceneManager& scene);
    void readBranch(std::size_t branch);
    void evaluate(const scene::SceneManager& scene);
    [[nodiscard]] Ways followWays(const std::string& firstBranch);
    void readSituation(std::size_t branch, const Ways& ways, BranchSituation& situation) const;
    [[nodiscard]] BranchSituation::Reference zoneOf(const BranchContent& branch,
                                                    const BranchContent::Action& action) const;
    void evaluateVideos();
    void checkScene(const scene::SceneManager& scene, bool hasFirstBranch);
    void checkUnused();
    void collect();
    void take(Finding& found, int branch);

    FolderFacts m_facts;
    bool m_hasNewFacts = false;
    NameTable m_names;
    std::vector<BranchRecord> m_branches;
    std::unordered_map<int, VideoRecord> m_videos; ///< known ones, by the number of the name
    std::size_t m_namesAtFirst = 0;                ///< when everything was read
    std::vector<Finding> m_sceneFindings;
    std::vector<const Finding*> m_all;
    Counts m_counts;
};

} // namespace check
