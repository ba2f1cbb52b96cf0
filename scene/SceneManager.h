// The open scene: its name, the branch that plays first and its branches. Loads and saves
// "Scene.xml" in the scene's folder under "Scenes". One for the whole run, shared by all
// windows; other threads may load ones of their own, under a LogCollector. One thread at a time.
//
// Without a branch manager, the forwarding operations log "..\SceneManager.cpp:LINE Branch Manager
// is invalid" and do nothing. The branch manager itself checks indexes.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/FileError.h"
#include "core/ReplacedFiles.h"
#include "scene/BranchManager.h"

namespace scene {

class SceneManager {
public:
    /// With an empty branch manager. Empty when out of memory.
    [[nodiscard]] static std::shared_ptr<SceneManager> create();
    explicit SceneManager(std::shared_ptr<BranchManager> branchManager);

    /// Also the name of the scene's folder.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    void SetName(const std::string& name) { m_name = name; }
    /// The ID of the branch that plays first.
    [[nodiscard]] const std::string& FirstBranch() const { return m_firstBranch; }
    void SetFirstBranch(const std::string& id) { m_firstBranch = id; }

    /// Starts an empty scene. False, with nothing changed, when out of memory.
    bool newScene(const std::string& name);
    /// Loads the scene `name`, or the current Name() if that is empty. The previous scene is
    /// dropped first and not restored: after a failure (false, logged) the branches read so far
    /// remain. A "Name" in the file replaces the folder's name. Both are intended.
    bool Load(const std::string& name);
    /// The same for any folder, which ends in a separator; Name() stays unless the file has one.
    bool loadFolder(const std::string& folder);
    /// The same for a text that is a whole "Scene.xml". One that cannot be read is logged.
    bool loadText(std::string_view text);
    /// Whether the last load failed.
    [[nodiscard]] bool loadFailed() const { return m_loadFailed; }
    /// Writes into `folder`, which ends in a separator and is created if missing. False if the file
    /// did not reach the disk; the old file is intact in that case.
    bool Save(const std::string& folder);
    /// The same for a folder that exists.
    bool saveInto(const std::string& folder);
    /// Is handed the file that a save replaces. Empty for none.
    void setKeeper(std::shared_ptr<core::ReplacedFiles> keeper) { m_keeper = std::move(keeper); }
    /// Why the last save failed; empty if it succeeded.
    [[nodiscard]] const core::FileError& saveFailure() const { return m_saveFailure; }

    /// What a save would write now, before line feeds become CR LF; empty without a branch manager.
    [[nodiscard]] std::string fileText() const;
    /// The bytes of the file that a save would write now.
    [[nodiscard]] std::string fileBytes() const;
    /// The same scene as a text from which loadText reads every name exactly as it is: a saved file
    /// is unreadable, or reads otherwise, when names hold mark-up.
    [[nodiscard]] std::string escapedText() const;
    /// fileText() == text, without building that text.
    [[nodiscard]] bool hasFileText(std::string_view text) const;

    /// Videos that were copied into the scene's folder since it was opened, in that order. The
    /// file names only those that branches have.
    [[nodiscard]] const std::vector<std::string>& addedVideos() const { return m_addedVideos; }

    /// The first branch of a scene becomes its FirstBranch.
    bool AddBranch();
    /// Appends every branch's ID, in list order.
    void branchIDs(std::vector<std::string>& ids) const;
    [[nodiscard]] int branchCount() const;
    [[nodiscard]] std::string branchID(int index) const;
    /// Updates FirstBranch, but not the BranchID of actions. Intended.
    void renameBranch(int index, const std::string& id);
    [[nodiscard]] std::string branchFilename(int index) const;
    void setBranchFilename(int index, const std::string& filename);
    /// Replaces what `actions` held.
    void branchActions(int index, std::vector<std::shared_ptr<Action>>& actions);
    void addAction(int index, const std::shared_ptr<Action>& action);
    void removeAction(int index, int actionIndex);
    [[nodiscard]] std::shared_ptr<Action> action(int index, int actionIndex);

    /// Null if there is none.
    [[nodiscard]] const BranchManager* branches() const { return m_branchManager.get(); }

    // For SceneSession.
    void swapFirstBranch(std::string& id) noexcept { m_firstBranch.swap(id); }
    void swapAddedVideos(std::vector<std::string>& names) noexcept { m_addedVideos.swap(names); }
    [[nodiscard]] BranchManager* branches() { return m_branchManager.get(); }

private:
    /// Null, and logged with `line`, if there is none.
    [[nodiscard]] BranchManager* checkedManager(int line) const;
    [[nodiscard]] bool dropBranches();
    [[nodiscard]] bool readFile(const std::string& folder);
    [[nodiscard]] bool readText(std::string_view text);
    [[nodiscard]] bool loadRoot(const tinyxml2::XMLElement& root);
    [[nodiscard]] bool writeTo(LineSink& sink) const;

    std::shared_ptr<BranchManager> m_branchManager;
    std::string m_name;
    std::string m_firstBranch;
    std::vector<std::string> m_addedVideos;
    std::shared_ptr<core::ReplacedFiles> m_keeper;
    core::FileError m_saveFailure;
    bool m_loadFailed = false;
};

} // namespace scene
