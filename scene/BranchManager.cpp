#include "scene/BranchManager.h"

#include <algorithm>
#include <cstddef>

#include "core/Log.h"
#include "core/MakeOrNull.h"
#include "scene/MoveEntry.h"
#include "scene/SceneXml.h"

namespace scene {
namespace {

// Support looks messages up by these numbers; they are not the lines of this file.
constexpr const char* kSource = "..\\BranchManager.cpp";
constexpr int kBranchIDLine = 337;
constexpr int kSetBranchIDLine = 344;
constexpr int kBranchFilenameLine = 351;
constexpr int kSetBranchFilenameLine = 358;
constexpr int kBranchActionsLine = 365;
constexpr int kAddActionLine = 372;
constexpr int kRemoveActionLine = 379;
constexpr int kActionLine = 386;

void reportInvalidIndex(int line) {
    core::Log::get()->Error("%s:%d Invalid branch index", kSource, line);
}

} // namespace

std::shared_ptr<BranchManager> BranchManager::create() {
    return core::makeOrNull<BranchManager>();
}

bool BranchManager::AddBranch() {
    const std::shared_ptr<Branch> branch = makeBranch();
    append(branch);
    return branch != nullptr;
}

std::shared_ptr<Branch> BranchManager::makeBranch() {
    std::shared_ptr<Branch> branch = Branch::create();
    if (branch) {
        ++m_newBranchCounter;
        branch->SetID("New Branch " + std::to_string(m_newBranchCounter + 1));
    }
    return branch;
}

void BranchManager::append(const std::shared_ptr<Branch>& branch) {
    insertBranch(branchCount(), branch);
}

std::shared_ptr<Branch> BranchManager::at(int index) const {
    return index >= 0 && index < branchCount() ? m_branches[static_cast<std::size_t>(index)]
                                               : nullptr;
}

void BranchManager::insertBranch(int index, const std::shared_ptr<Branch>& branch) {
    if (branch && index >= 0 && index <= branchCount()) {
        m_branches.insert(m_branches.begin() + index, branch);
    }
}

void BranchManager::removeBranch(int index) {
    if (index >= 0 && index < branchCount()) {
        m_branches.erase(m_branches.begin() + index);
    }
}

void BranchManager::moveBranch(int from, int to) {
    moveEntry(m_branches, from, to);
}

void BranchManager::branchIDs(std::vector<std::string>& ids) const {
    for (const std::shared_ptr<Branch>& branch : m_branches) {
        ids.push_back(branch->ID());
    }
}

std::shared_ptr<Branch> BranchManager::checkedBranch(int index, int line) const {
    std::shared_ptr<Branch> found = at(index);
    if (!found) {
        reportInvalidIndex(line);
    }
    return found;
}

std::shared_ptr<Branch> BranchManager::checkedBranch(int index, int actionIndex, int line) const {
    std::shared_ptr<Branch> branch = checkedBranch(index, line);
    if (!branch || (actionIndex >= 0 && actionIndex < branch->actionCount())) {
        return branch;
    }
    reportInvalidIndex(line);
    return nullptr;
}

std::string BranchManager::branchID(int index) const {
    const std::shared_ptr<Branch> branch = checkedBranch(index, kBranchIDLine);
    return branch ? branch->ID() : std::string();
}

void BranchManager::setBranchID(int index, const std::string& id) {
    if (const std::shared_ptr<Branch> branch = checkedBranch(index, kSetBranchIDLine)) {
        branch->SetID(id);
    }
}

std::string BranchManager::branchFilename(int index) const {
    const std::shared_ptr<Branch> branch = checkedBranch(index, kBranchFilenameLine);
    return branch ? branch->Filename() : std::string();
}

void BranchManager::setBranchFilename(int index, const std::string& filename) {
    if (const std::shared_ptr<Branch> branch = checkedBranch(index, kSetBranchFilenameLine)) {
        branch->SetFilename(filename);
    }
}

void BranchManager::branchActions(int index, std::vector<std::shared_ptr<Action>>& actions) {
    actions.clear();
    if (const std::shared_ptr<Branch> branch = checkedBranch(index, kBranchActionsLine)) {
        actions = branch->actions();
    }
}

void BranchManager::addAction(int index, const std::shared_ptr<Action>& action) {
    if (const std::shared_ptr<Branch> branch = checkedBranch(index, kAddActionLine)) {
        branch->addAction(action);
    }
}

void BranchManager::removeAction(int index, int actionIndex) {
    if (const auto branch = checkedBranch(index, actionIndex, kRemoveActionLine)) {
        branch->removeAction(actionIndex);
    }
}

std::shared_ptr<Action> BranchManager::action(int index, int actionIndex) {
    const auto branch = checkedBranch(index, actionIndex, kActionLine);
    return branch ? branch->action(actionIndex) : nullptr;
}

bool BranchManager::Write(core::File& file) const {
    FileSink sink(file);
    return writeTo(sink);
}

bool BranchManager::writeTo(LineSink& sink) const {
    return std::all_of(m_branches.begin(), m_branches.end(),
                       [&](const auto& branch) { return branch->writeTo(sink); });
}

} // namespace scene
