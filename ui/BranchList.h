// The branch editor, the main screen: one scene with its branches, the chosen branch's name, video
// and actions. Edits the scene model in place; Save writes it. UI thread only.
//
// Its code is split by subject: BranchList.cpp (window, branches), BranchListVideos.cpp (videos,
// zones), BranchListActions.cpp (the action list), BranchListState.cpp (what is enabled, hints).
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "jobs/BackgroundImport.h"
#include "ui/ComponentScope.h"
#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "ui/NameList.h"
#include "ui/SceneHints.h"

namespace scene {
class Action;
class SceneManager;
} // namespace scene
namespace toolkit {
class CComboUI;
class CListUI;
class COptionUI;
} // namespace toolkit
namespace zone {
class ZoneManager;
}

namespace ui {

class BranchList final : public ConfirmCallback, public EditorWindow {
public:
    /// Empty when the system's components cannot be initialised. `returned` is what the zone editor
    /// has left.
    [[nodiscard]] static std::shared_ptr<BranchList>
    create(const WindowContext& context, const app_state::ScreenResult& returned = {});
    BranchList(const WindowContext& context, const app_state::ScreenResult& returned);
    ~BranchList() override;

    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return GetNative(); }
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"QuorvelWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "BranchList.xml"; }
    void InitWindow() override;
    void Notify(toolkit::TNotifyUI& message) override;
    void OnClick(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnKillFocus(toolkit::TNotifyUI& message) override;
    bool HandleMessage(const platform::Event& event) override;

private:
    using Control = toolkit::CControlUI;

    // Branches.
    [[nodiscard]] scene::SceneManager* scene() const;
    /// The selected branch of the model, -1 when there is none.
    [[nodiscard]] int selectedBranch();
    void fillBranchNames();
    void selectBranch(Control& sender);
    void showBranch(int branch);
    void showFirstBranch();
    void renameBranch(Control& sender);
    /// Cancels the import; without one, brings the typed name's old text back.
    void stop();
    void chooseFirstBranch(Control& sender);
    void addBranch();
    void saveScene();
    void exitProgram();

    // Videos and zones.
    void listSceneVideos();
    void addVideoItem(const std::string& name);
    void chooseVideo(Control& sender);
    void addVideos();
    void importNextVideo();
    void videoImported(const std::string& name, const jobs::ImportReport& report);
    /// Says what came of the last Add Video.
    void showImportOutcome();
    void removeVideoItem(const std::string& name);
    void cancelImport();
    [[nodiscard]] bool isImporting() const;
    void editZones();
    void readShownZones();

    // The action list.
    void rebuildActions();
    /// How far the list is scrolled, in pixels. A rebuild brings it to its top; whoever works in
    /// the middle of a long list is brought back there.
    [[nodiscard]] int actionsOffset();
    void scrollActions(int offset);
    /// Scrolls to an action, the last one for a number beyond.
    void revealAction(int number);
    [[nodiscard]] std::unique_ptr<Control> makeRow(int number, const scene::Action& action);
    [[nodiscard]] std::unique_ptr<Control> makeConditions(const scene::Action& action) const;
    [[nodiscard]] std::unique_ptr<Control> makeParameters(const scene::Action& action);
    [[nodiscard]] std::unique_ptr<Control> makeTargets(const scene::Action& action) const;
    void fillParameters(toolkit::CComboUI& combo, int condition);
    /// What a parameter combo lists for a condition.
    [[nodiscard]] const NameList& parametersOf(int condition);
    /// The action that the row of `control` shows; empty when there is none.
    [[nodiscard]] std::shared_ptr<scene::Action> actionOf(const Control& control);
    void refreshTargets();
    void refreshZoneParameters();
    void chooseCondition(Control& sender);
    void chooseParameter(Control& sender);
    void chooseTarget(Control& sender);
    void changeImmediate(Control& sender);
    void addAction();
    void removeAction();

    // State and hints.
    void updateState();
    void updateEnabled();
    void updateEmptyText();
    void updateOwnVideo();
    void updateStatus();
    /// What the last action of the user brought up goes with the next one.
    void forgetNote();
    /// The scene is no longer as it was saved.
    void changed();
    /// The quiet text of the strip while no video is being copied.
    [[nodiscard]] std::u16string statusText();
    /// Whether an action of the branch on show waits for a zone of a video that has none.
    [[nodiscard]] bool lacksZones();
    [[nodiscard]] jobs::CopyStatus importStatus() const; ///< only while one is under way

    ComponentScope m_components;
    app_state::ScreenResult m_returned;
    /// Ends in "\"; empty when the working directory is unknown.
    std::string m_folder;
    std::map<std::string, std::shared_ptr<zone::ZoneManager>> m_zones; ///< by stored video name
    std::vector<std::string> m_videos; ///< stored names, in the order of the video list
    NameList m_branches;
    NameList m_conditions;
    NameList m_letters;
    NameList m_shownZones;      ///< of the video on show; none when they were never loaded
    std::u16string m_shownName; ///< what the program last put into the name edit
    std::u16string m_usualStatus;
    std::u16string m_saved;     ///< in front of the status, from a good save to the next change
    std::u16string m_note;      ///< in the usual status's place: what the last action did
    std::u16string m_problem;   ///< what went wrong with it
    bool m_noteIsFresh = false; ///< it came up in the press or key that is still being handled

    jobs::BackgroundImport m_import;
    std::deque<std::string> m_importNames; ///< still to come, the one under way in front
    std::string m_importFolder;
    int m_importCount = 0;
    jobs::ImportOutcome m_importOutcome;
};

} // namespace ui
