// The ordered list of a scenario's branches: names new ones and gives index-checked access. Owned
// by the SceneManager, which forwards the windows' calls. Main thread only.
//
// An index outside 0 .. count-1 is logged as "..\BranchManager.cpp:LINE Invalid branch index" with
// the operation's own fixed number; nothing changes then and the result is empty.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "scene/Branch.h"

namespace scene {

class BranchManager {
public:
    /// Empty only when there is no memory.
    [[nodiscard]] static std::shared_ptr<BranchManager> create();

    /// Appends a new branch called "New Branch N". N starts at 2 in a new manager and only grows;
    /// it can meet the name of a loaded branch. Both are intended.
    bool AddBranch();
    /// The same branch without appending it; empty only when there is no memory.
    [[nodiscard]] std::shared_ptr<Branch> makeBranch();
    /// Appends an existing branch; an empty pointer is not taken.
    void append(const std::shared_ptr<Branch>& branch);

    [[nodiscard]] int branchCount() const { return static_cast<int>(m_branches.size()); }
    /// Empty for an index out of range; logs nothing.
    [[nodiscard]] std::shared_ptr<Branch> branch(int index) const;
    /// Inserts so that it stands at `index`, which may be the end; nothing happens beyond that.
    void insertBranch(int index, const std::shared_ptr<Branch>& branch);
    // Nothing happens for an index out of range; nothing is logged.
    void removeBranch(int index);
    /// Takes the branch at `from` out and puts it in so that it stands at `to`.
    void moveBranch(int from, int to);

    /// Appends every branch's ID, in list order.
    void branchIDs(std::vector<std::string>& ids) const;

    [[nodiscard]] std::string branchID(int index) const;
    void setBranchID(int index, const std::string& id);
    [[nodiscard]] std::string branchFilename(int index) const;
    void setBranchFilename(int index, const std::string& filename);
    /// Replaces what `actions` held.
    void branchActions(int index, std::vector<std::shared_ptr<Action>>& actions) const;
    void addAction(int index, const std::shared_ptr<Action>& action);
    void removeAction(int index, int actionIndex);
    [[nodiscard]] std::shared_ptr<Action> action(int index, int actionIndex) const;

    /// Every branch in list order; false at the first write that fails.
    [[nodiscard]] bool Write(core::File& file) const;
    [[nodiscard]] bool writeTo(LineSink& sink) const;

private:
    /// Empty after a log line with `line` when there is no such branch.
    [[nodiscard]] std::shared_ptr<Branch> checkedBranch(int index, int line) const;
    /// The same when the branch has no such action.
    [[nodiscard]] std::shared_ptr<Branch> checkedBranch(int index, int actionIndex, int line) const;

    std::vector<std::shared_ptr<Branch>> m_branches;
    int m_newBranchCounter = 0;
};

} // namespace scene
