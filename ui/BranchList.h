// The branch editor, the main screen: one scene with its branches, the chosen branch's name, video
// and actions. Save writes the scene. UI thread only.
//
// The window only wires its parts, which stand in branch_editor/: each shows its share of the scene
// and hears of changes from the editing session, through which all edits go.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "app/state/ScreenState.h"
#include "platform/Window.h"
#include "ui/Companions.h"
#include "ui/ComponentScope.h"
#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/FindingsPresenter.h"
#include "ui/branch_editor/VideoAdder.h"
#include "ui/branch_editor/VideoPresenter.h"
#include "ui/preview/PreviewPresenter.h"

namespace check {
class FactsReader;
}

namespace ui {

class SceneImports;

class BranchList final : public ConfirmCallback,
                         public EditorWindow,
                         private BranchPresenter::Listener,
                         private FindingsPresenter::Listener,
                         private VideoPresenter::Listener,
                         private PreviewPresenter::Listener,
                         private VideoAdder::Listener {
public:
    /// Empty when the system's components cannot be initialised. `returned` is what the zone editor
    /// has left.
    [[nodiscard]] static std::shared_ptr<BranchList>
    create(const WindowContext& context, const app_state::ScreenResult& returned = {});
    BranchList(const WindowContext& context, const app_state::ScreenResult& returned);
    ~BranchList() override;

    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return GetNative(); }
    [[nodiscard]] Companions* askersCompanions() override { return &companions(); }
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"QuorvelWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "BranchList.xml"; }
    void InitWindow() override;
    void Notify(toolkit::TNotifyUI& message) override;
    void OnClick(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnItemActivate(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnSplit(toolkit::TNotifyUI& message) override;
    void OnKillFocus(toolkit::TNotifyUI& message) override;
    bool HandleMessage(const platform::Event& event) override;
    bool MessageHandler(const platform::Event& event) override;
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override;

protected:
    void windowSized() override;

private:
    struct Parts;
    struct Reaction;

    void bindCommands();
    void bindBranches();
    void bindActions();
    void bindHistory();
    void bindCheck();
    void bindPreview();
    void bindTour();
    /// What is known of the scene's files is kept for its next window.
    [[nodiscard]] std::shared_ptr<check::FactsReader> readerOfFiles();
    /// Null when the scene's folder is unknown.
    [[nodiscard]] std::shared_ptr<SceneImports> importsOfScene();
    void openImports();
    void importsChanged();
    /// Nothing is said about videos that are not whole yet.
    void noteUnfinished(const std::string& copying);
    /// Shows the list of findings, or takes it away.
    void toggleCheck();
    void toggleMap();
    /// On the map; -1 for one that is gone.
    void pickBranch(int branch);
    /// Plays the scene from its first branch (-1) or from this one.
    void play(int branch);
    void stopPreview();
    /// A narrow window shows the column again.
    void leavePane();
    bool save();
    void showVersions();
    void publish();
    /// Whether there is unsaved work that no draft keeps.
    [[nodiscard]] bool isWorkAtRisk() const;
    /// Back to the open scene window. Nothing is asked: only for work that a draft keeps.
    void openAnother();
    void exitProgram();
    [[nodiscard]] bool canStop() const;
    void stop();
    void editZones();
    void editBranchZones();
    void removeBranch();
    void removeActions();
    /// Runs the reaction to a change of `sender`.
    void react(std::span<const Reaction> reactions, toolkit::CControlUI& sender);

    // What the parts have to say to each other.
    void branchShown(int branch, bool again) override;
    void branchRenamed(int branch, const std::string& oldName) override;
    void nameRefused(const std::u16string& name) override;
    void showPlace(const check::Finding& finding, bool opens) override;
    void findingsChanged() override;
    void zonesShown(bool picked) override;
    void previewNotes(const std::u16string& text) override;
    void previewChanged() override;
    void copying(const jobs::CopyStatus& status) override;
    void copied(const jobs::ImportOutcome& outcome, bool copied) override;

    /// While a video is being copied, nothing may change under the copy; Esc ends it.
    [[nodiscard]] bool isFree() const;
    /// Shows the clip of the branch on show. `isNew`: its file may be another one now.
    void showClip(bool isNew);
    /// Enables what can be done now.
    void showEnabled();

    ComponentScope m_components;
    app_state::ScreenResult m_returned;
    /// The scene's, ending in "\"; empty when the working directory is unknown.
    std::string m_folder;
    std::string m_copying;          ///< the video being copied into the scene; empty for none
    bool m_wasActive = false;       ///< the window has been
    bool m_isPointerUsed = false;   ///< the author acts with the pointer, not with a key
    std::unique_ptr<Parts> m_parts; ///< from InitWindow on; none without a scene
};

} // namespace ui
