// All editing of the open scene goes through here: each edit is a step that can be undone, and its
// changes are reported to listeners. Windows also read the scene here and keep no pointers into it.
// There is one for the whole run, next to the SceneManager that it edits. Main thread only.
//
//   edit::Subscription token = session.observe([this](const auto& changes) { ... });
//   session.setTarget(branch, action, name);        // announces {actions, branch}
//
//   auto gesture = session.begin({SceneStep::target, branch});   // several edits as one step
//   for (...) session.setTarget(...);
//   gesture.commit();                               // otherwise everything is undone
//
// An edit that would change nothing adds no step and returns false. So does an edit of a branch or
// action that does not exist; where BranchManager logs that, it is logged here too.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "edit/Announcements.h"
#include "edit/History.h"
#include "edit/Observers.h"
#include "scene/Action.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"
#include "scene/SceneOperations.h"
#include "scene/SceneTemplate.h"

namespace scene {

struct SceneEdits {
    using Model = SceneManager;
    using Change = SceneChange;
    using Label = SceneLabel;
    using Operation = SceneOperation;
};

class SceneSession {
public:
    using History = edit::History<SceneEdits>;
    using Changes = History::Changes;

    /// Empty if `scene` is, or when out of memory.
    [[nodiscard]] static std::shared_ptr<SceneSession> create(std::shared_ptr<SceneManager> scene);
    /// Edits the current contents of `scene`, which is not empty.
    explicit SceneSession(std::shared_ptr<SceneManager> scene, edit::Limits limits = {});

    // Opening and saving, by the SceneManager's operations. Opening starts a new history and
    // reports {scene}, even if it fails. No gesture may be open.
    bool load(const std::string& name);
    /// The branches of the template are part of the opening: undo leaves them.
    bool newScene(const std::string& name, const SceneTemplate& start = {});
    /// Saving a scene without a FirstBranch sets it, as a step of its own.
    bool save(const std::string& folder);
    /// Called after each opening, before its report.
    [[nodiscard]] edit::Subscription observeOpenings(std::function<void()> listener) {
        return m_openings.add(std::move(listener));
    }
    /// Called after each save, with whether it succeeded; `scene().saveFailure()` says why not.
    [[nodiscard]] edit::Subscription observeSaves(std::function<void(bool good)> listener) {
        return m_saves.add(std::move(listener));
    }
    /// Whether saving now would write a different file than saving right after opening, or the last
    /// successful save. Compares contents; cheap enough to call after each edit.
    [[nodiscard]] bool isModified() const;
    /// Whether this is a new scene that has not been saved yet.
    [[nodiscard]] bool isNew() const { return m_isNew; }

    /// The bytes of Scene.xml that a save would write now.
    [[nodiscard]] std::string savedForm() const { return m_scene->fileBytes(); }
    /// The scene as a text from which restore() brings back every name exactly as it is. A saved
    /// file does not when names hold mark-up: one with "<" is unreadable. For drafts.
    [[nodiscard]] std::string draftForm() const { return m_scene->escapedText(); }
    /// Reads the contents of a scene file, a saved one or a draft, in place of the scene's, as one
    /// step. The scene keeps its name. False, with nothing changed, if it cannot be read, which is
    /// logged. No step if the contents are the same.
    bool restore(const std::string& sceneXml);
    /// Grows with every edit, undo, redo and opening.
    [[nodiscard]] std::uint64_t revision() const { return m_history.revision(); }

    // Reading. An index out of range is logged as in BranchManager.h and gives an empty result.
    [[nodiscard]] int branchCount() const { return m_scene->branchCount(); }
    [[nodiscard]] const std::string& firstBranch() const { return m_scene->FirstBranch(); }
    [[nodiscard]] std::string branchName(int branch) const { return m_scene->branchID(branch); }
    [[nodiscard]] std::vector<std::string> branchNames() const;
    [[nodiscard]] bool hasBranch(const std::string& name) const;
    [[nodiscard]] std::string video(int branch) const { return m_scene->branchFilename(branch); }
    [[nodiscard]] int actionCount(int branch) const;
    [[nodiscard]] std::vector<Action> actions(int branch) const;
    [[nodiscard]] Action action(int branch, int action) const;
    struct ActionPlace {
        int branch;
        int action;

        friend bool operator==(const ActionPlace&, const ActionPlace&) = default;
    };
    // In the order of the scene. None for an empty name: it stands for nothing chosen.
    /// The actions that have this branch as their target.
    [[nodiscard]] std::vector<ActionPlace> actionsLeadingTo(const std::string& name) const;
    /// The actions that wait for this zone, in all branches with the video.
    [[nodiscard]] std::vector<ActionPlace> actionsWaitingFor(const std::string& video,
                                                             const std::string& zone) const;
    /// Identifies a branch for find(), wherever edits and undo put it.
    using BranchToken = std::weak_ptr<const void>;
    [[nodiscard]] BranchToken token(int branch) const { return branchAt(branch); }
    /// Where the branch is now; -1 if it is not in the scene.
    [[nodiscard]] int find(const BranchToken& token) const;
    /// For reading alone: name, load and save failures.
    [[nodiscard]] const SceneManager& scene() const { return *m_scene; }

    // Branches.
    /// Appends "New Branch N" as SceneManager::AddBranch does. N keeps growing: a branch added
    /// after an undo gets the next number; redo restores the original one.
    bool addBranch();
    /// Inserts a copy with all actions after the branch. Its name is the original's with " 2"
    /// added, or the next number that is free.
    bool duplicateBranch(int branch);
    /// If it is the first branch, the one that takes its place becomes first, or else the last one.
    bool removeBranch(int branch);
    bool moveBranch(int from, int to);
    /// Updates FirstBranch, but not the targets of actions. Intended.
    bool renameBranch(int branch, const std::string& name);
    bool setFirstBranch(const std::string& name);
    bool setVideo(int branch, const std::string& name);
    /// Notes videos that were copied into the scene's folder; those noted before are passed over.
    bool addVideos(const std::vector<std::string>& names);

    // Actions.
    /// Appends a default action.
    bool addAction(int branch);
    bool removeAction(int branch, int action);
    bool moveAction(int branch, int from, int to);
    // Several actions of a branch as one step; nothing happens unless all of them exist.
    /// The copies stand together behind the last of the originals.
    bool duplicateActions(int branch, std::vector<int> actions);
    bool removeActions(int branch, std::vector<int> actions);
    /// Moves each `by` places; false when one would leave the list.
    bool shiftActions(int branch, std::vector<int> actions, int by);
    bool setType(int branch, int action, int type);
    bool setParameter(int branch, int action, const std::string& parameter);
    bool setTarget(int branch, int action, const std::string& branchName);
    bool setImmediate(int branch, int action, bool immediate);
    /// Has all actions that lead to the branch `from` lead to the branch `to`, as one step.
    bool retarget(const std::string& from, const std::string& to);
    /// Has the actions that wait for the zone `from` of this video wait for `to`, as one step.
    bool renameZone(const std::string& video, const std::string& from, const std::string& to);

    // Steps; see edit/History.h.
    [[nodiscard]] History::Gesture begin(const SceneLabel& label) { return m_history.begin(label); }
    /// The step that was undone or redone, with where its branch and actions are now, or were if it
    /// removed them; none if there is no such step or a gesture is open.
    std::optional<SceneLabel> undo();
    std::optional<SceneLabel> redo();
    [[nodiscard]] const History& history() const { return m_history; }
    [[nodiscard]] edit::Subscription observe(History::Listener listener) {
        return m_history.observe(std::move(listener));
    }

private:
    [[nodiscard]] std::shared_ptr<Branch> branchAt(int index) const;
    [[nodiscard]] std::shared_ptr<Action> actionAt(int branch, int action) const;
    /// Sorts the numbers, each once; none if one of the actions does not exist.
    [[nodiscard]] std::vector<std::shared_ptr<Action>> actionsAt(int branch,
                                                                 std::vector<int>& actions) const;
    [[nodiscard]] std::vector<ActionPlace>
    actionsThat(const std::function<bool(const Branch&, const Action&)>& holds) const;
    [[nodiscard]] std::string nameOfCopy(const std::string& original) const;
    bool insertBranch(SceneStep step, int index, std::shared_ptr<Branch> branch);
    bool change(SceneStep step, int branch, int action, Action contents);
    /// As one step.
    bool changeAll(SceneStep step, const std::vector<ActionPlace>& places,
                   const std::function<void(Action&)>& edit);
    void opened(bool isNew);

    std::shared_ptr<SceneManager> m_scene;
    History m_history;
    edit::Observers<> m_openings;
    edit::Observers<bool> m_saves;
    std::string m_savedText; ///< what saving wrote last, or would have written at opening
    bool m_isNew = false;
};

} // namespace scene
