// The ordered list of a scene's branches: names new ones and checks every index. Owned by the
// SceneManager, which forwards calls to it. One thread at a time, as that.
//
// An index outside 0 .. count-1 is logged as "..\BranchManager.cpp:LINE Invalid branch index" with
// the operation's own fixed number; nothing changes and the result is empty.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "scene/Branch.h"

namespace scene {

class BranchManager {
public:
    /// Empty only when out of memory.
    [[nodiscard]] static std::shared_ptr<BranchManager> create();

    /// Appends a new branch called "New Branch N". N starts at 2 in a new manager and only grows;
    /// the name may already belong to a loaded branch. Both are intended.
    bool AddBranch();
    /// The same without appending it; empty only when out of memory.
    [[nodiscard]] std::shared_ptr<Branch> makeBranch();
    /// Appends an existing branch; an empty pointer is ignored.
    void append(const std::shared_ptr<Branch>& branch);

    [[nodiscard]] int branchCount() const { return static_cast<int>(m_branches.size()); }
    /// Empty if out of range; logs nothing.
    [[nodiscard]] std::shared_ptr<const Branch> branch(int index) const { return at(index); }
    [[nodiscard]] std::shared_ptr<Branch> branch(int index) { return at(index); }
    /// Inserts at `index`, which may be the end. An empty pointer or other index is ignored.
    void insertBranch(int index, const std::shared_ptr<Branch>& branch);
    void swapBranches(std::vector<std::shared_ptr<Branch>>& branches) noexcept {
        m_branches.swap(branches);
    }
    // An index out of range is ignored and not logged.
    void removeBranch(int index);
    /// Moves the branch at `from` so that it ends up at `to`.
    void moveBranch(int from, int to);

    /// Appends every branch's ID, in list order.
    void branchIDs(std::vector<std::string>& ids) const;

    [[nodiscard]] std::string branchID(int index) const;
    void setBranchID(int index, const std::string& id);
    [[nodiscard]] std::string branchFilename(int index) const;
    void setBranchFilename(int index, const std::string& filename);
    /// Replaces what `actions` held.
    void branchActions(int index, std::vector<std::shared_ptr<Action>>& actions);
    void addAction(int index, const std::shared_ptr<Action>& action);
    void removeAction(int index, int actionIndex);
    [[nodiscard]] std::shared_ptr<Action> action(int index, int actionIndex);

    /// Writes every branch in list order. Stops with false at the first failed write.
    [[nodiscard]] bool Write(core::File& file) const;
    [[nodiscard]] bool writeTo(LineSink& sink) const;

private:
    [[nodiscard]] std::shared_ptr<Branch> at(int index) const;
    /// Empty, and logged with `line`, if there is no such branch.
    [[nodiscard]] std::shared_ptr<Branch> checkedBranch(int index, int line) const;
    /// The same if the branch has no such action.
    [[nodiscard]] std::shared_ptr<Branch> checkedBranch(int index, int actionIndex, int line) const;

    std::vector<std::shared_ptr<Branch>> m_branches;
    int m_newBranchCounter = 0;
};

} // namespace scene
