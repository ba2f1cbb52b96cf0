// The editing of one scene: every change of it goes through here, is a step that can be taken back,
// and is announced. Windows read from here as well and keep no pointer into the scene. One for the
// whole run, beside the SceneManager that it edits. Main thread only.
//
//   edit::Subscription token = session.observe([this](const auto& changes) { ... });
//   session.setTarget(branch, action, name);        // announces {actions, branch}
//
//   auto gesture = session.begin({SceneStep::target, branch});   // several edits as one step
//   for (...) session.setTarget(...);
//   gesture.commit();                               // without it, all is taken back
//
// An edit that changes nothing is no step and gives false. So does one that names a branch or
// action that is not there; the operations that BranchManager.h knows log it as there.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/History.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"
#include "scene/SceneOperations.h"

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

    /// Empty when `scene` is, or when there is no memory.
    [[nodiscard]] static std::shared_ptr<SceneSession> create(std::shared_ptr<SceneManager> scene);
    /// Edits what `scene` holds now; not empty.
    explicit SceneSession(std::shared_ptr<SceneManager> scene, edit::Limits limits = {});

    // Opening and saving: the SceneManager's operations. Opening begins another history and
    // announces {scene}, also after a failure. No gesture may be open.
    bool load(const std::string& name);
    bool newScene(const std::string& name);
    /// A scene without a FirstBranch gets one by saving, as a step of its own.
    bool save(const std::string& folder);
    /// Whether the file of a save now would differ from that of a save right after opening, or of
    /// the last good one. Compares contents: cheap enough to ask after each edit.
    [[nodiscard]] bool isModified() const;
    /// A new scene that has not been saved yet.
    [[nodiscard]] bool isNew() const { return m_isNew; }

    // Reading. An index that is not there is logged likewise and gives nothing.
    [[nodiscard]] int branchCount() const { return m_scene->branchCount(); }
    [[nodiscard]] const std::string& firstBranch() const { return m_scene->FirstBranch(); }
    [[nodiscard]] std::string branchName(int branch) const { return m_scene->branchID(branch); }
    [[nodiscard]] std::vector<std::string> branchNames() const;
    [[nodiscard]] std::string video(int branch) const { return m_scene->branchFilename(branch); }
    [[nodiscard]] int actionCount(int branch) const;
    [[nodiscard]] std::vector<Action> actions(int branch) const;
    [[nodiscard]] Action action(int branch, int action) const;
    /// For what only reads: name, load and save failures. It knows nothing of steps.
    [[nodiscard]] const SceneManager& scene() const { return *m_scene; }

    // Branches.
    /// Appends "New Branch N" as SceneManager::AddBranch does. N keeps growing: a branch added
    /// after an undo gets the next number, one brought back by redo has its own.
    bool addBranch();
    /// Puts a copy with all actions behind the branch. It is called like it with " 2" added, or the
    /// first number from there that no branch has.
    bool duplicateBranch(int branch);
    /// When it is the first branch, the one that then stands at its place becomes it, or the last.
    bool removeBranch(int branch);
    bool moveBranch(int from, int to);
    /// FirstBranch follows; the targets of actions do not. Intended.
    bool renameBranch(int branch, const std::string& name);
    bool setFirstBranch(const std::string& name);
    bool setVideo(int branch, const std::string& name);

    // Actions.
    /// Appends a default action.
    bool addAction(int branch);
    bool duplicateAction(int branch, int action);
    bool removeAction(int branch, int action);
    bool moveAction(int branch, int from, int to);
    bool setType(int branch, int action, int type);
    bool setParameter(int branch, int action, const std::string& parameter);
    bool setTarget(int branch, int action, const std::string& branchName);
    bool setImmediate(int branch, int action, bool immediate);

    // Steps; see edit/History.h.
    [[nodiscard]] History::Gesture begin(const SceneLabel& label) { return m_history.begin(label); }
    bool undo() { return m_history.undo(); }
    bool redo() { return m_history.redo(); }
    [[nodiscard]] const History& history() const { return m_history; }
    [[nodiscard]] edit::Subscription observe(History::Listener listener) {
        return m_history.observe(std::move(listener));
    }

private:
    [[nodiscard]] std::shared_ptr<Branch> branchAt(int index) const;
    [[nodiscard]] std::shared_ptr<Action> actionAt(int branch, int action) const;
    [[nodiscard]] std::string nameOfCopy(const std::string& original) const;
    bool insertBranch(SceneStep step, int index, std::shared_ptr<Branch> branch);
    void insertAction(SceneStep step, int branch, int index, std::shared_ptr<Action> action);
    bool change(SceneStep step, int branch, int action, Action contents);
    void opened(bool isNew);

    std::shared_ptr<SceneManager> m_scene;
    History m_history;
    std::string m_savedText; ///< what a save at the last opening or good save wrote
    bool m_isNew = false;
};

} // namespace scene
