#include "scene/SceneManager.h"

#include <utility>

#include "core/Log.h"
#include "core/MakeOrNull.h"

namespace scene {
namespace {

// Support looks messages up by these numbers; they are not the lines of this file.
constexpr const char* kSource = "..\\SceneManager.cpp";
constexpr int kAddBranchLine = 216;
constexpr int kBranchIDsLine = 228;
constexpr int kBranchCountLine = 235;
constexpr int kBranchIDLine = 242;
constexpr int kRenameBranchLine = 249;
constexpr int kBranchFilenameLine = 263;
constexpr int kSetBranchFilenameLine = 270;
constexpr int kBranchActionsLine = 277;
constexpr int kAddActionLine = 284;
constexpr int kRemoveActionLine = 291;
constexpr int kActionLine = 298;

} // namespace

std::shared_ptr<SceneManager> SceneManager::create() {
    std::shared_ptr<BranchManager> branches = BranchManager::create();
    return branches ? core::makeOrNull<SceneManager>(std::move(branches)) : nullptr;
}

SceneManager::SceneManager(std::shared_ptr<BranchManager> branchManager)
    : m_branchManager(std::move(branchManager)) {}

BranchManager* SceneManager::checkedManager(int line) const {
    if (!m_branchManager) {
        core::Log::get()->Error("%s:%d Branch Manager is invalid", kSource, line);
    }
    return m_branchManager.get();
}

bool SceneManager::newScene(const std::string& name) {
    std::shared_ptr<BranchManager> branches = BranchManager::create();
    if (!branches) {
        return false;
    }
    m_branchManager = std::move(branches);
    m_firstBranch.clear();
    m_addedVideos.clear();
    m_saveFailure = {};
    m_name = name;
    m_loadFailed = false;
    return true;
}

bool SceneManager::AddBranch() {
    BranchManager* branches = checkedManager(kAddBranchLine);
    if (!branches || !branches->AddBranch()) {
        return false;
    }
    if (branches->branchCount() == 1) {
        m_firstBranch = branches->branchID(0);
    }
    return true;
}

void SceneManager::branchIDs(std::vector<std::string>& ids) const {
    if (const BranchManager* branches = checkedManager(kBranchIDsLine)) {
        branches->branchIDs(ids);
    }
}

int SceneManager::branchCount() const {
    const BranchManager* branches = checkedManager(kBranchCountLine);
    return branches ? branches->branchCount() : 0;
}

std::string SceneManager::branchID(int index) const {
    const BranchManager* branches = checkedManager(kBranchIDLine);
    return branches ? branches->branchID(index) : std::string();
}

void SceneManager::renameBranch(int index, const std::string& id) {
    BranchManager* branches = checkedManager(kRenameBranchLine);
    if (!branches) {
        return;
    }
    const std::string old = branches->branchID(index);
    branches->setBranchID(index, id);
    // The empty ID of a branch that does not exist must not match an empty FirstBranch.
    if (index >= 0 && index < branches->branchCount() && m_firstBranch == old) {
        m_firstBranch = id;
    }
}

std::string SceneManager::branchFilename(int index) const {
    const BranchManager* branches = checkedManager(kBranchFilenameLine);
    return branches ? branches->branchFilename(index) : std::string();
}

void SceneManager::setBranchFilename(int index, const std::string& filename) {
    if (BranchManager* branches = checkedManager(kSetBranchFilenameLine)) {
        branches->setBranchFilename(index, filename);
    }
}

void SceneManager::branchActions(int index, std::vector<std::shared_ptr<Action>>& actions) {
    actions.clear();
    if (BranchManager* branches = checkedManager(kBranchActionsLine)) {
        branches->branchActions(index, actions);
    }
}

void SceneManager::addAction(int index, const std::shared_ptr<Action>& action) {
    if (BranchManager* branches = checkedManager(kAddActionLine)) {
        branches->addAction(index, action);
    }
}

void SceneManager::removeAction(int index, int actionIndex) {
    if (BranchManager* branches = checkedManager(kRemoveActionLine)) {
        branches->removeAction(index, actionIndex);
    }
}

std::shared_ptr<Action> SceneManager::action(int index, int actionIndex) {
    BranchManager* branches = checkedManager(kActionLine);
    return branches ? branches->action(index, actionIndex) : nullptr;
}

} // namespace scene
