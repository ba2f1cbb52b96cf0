// The first screen: lists the scenes twice, as the folder does and the last ones first, and lets
// the author open one, copy one, start a new one or leave. A choice in one list is one in the
// other. UI thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "scene/SceneFolders.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/Notification.h"
#include "ui/ComponentScope.h"
#include "ui/DraftBar.h"
#include "ui/DuplicateBar.h"
#include "ui/EditorWindow.h"
#include "ui/SceneCards.h"

namespace ui {

class OpenScene final : public EditorWindow {
public:
    /// Collects the scenes. Empty when the system's components cannot be initialised.
    [[nodiscard]] static std::shared_ptr<OpenScene> create(const WindowContext& context);
    explicit OpenScene(const WindowContext& context);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"OpenSceneWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "OpenScene.xml"; }
    void InitWindow() override;
    void OnItemActivate(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void Notify(toolkit::TNotifyUI& message) override;
    bool MessageHandler(const platform::Event& event) override;

private:
    void bindCommands();
    /// Whether no scene is being copied.
    [[nodiscard]] bool isFree() const;
    /// Closes the window, to be shown again, where another language is chosen and it is free.
    bool takeNewLanguage();
    /// Lists what the folder has now.
    void fillLists();
    /// Why this window is back although a scene or unsaved work was chosen.
    void showFailedLoad();
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int row);
    [[nodiscard]] int chosenRow();
    /// As stored; empty for none.
    [[nodiscard]] std::string chosenScene();
    void choose(int row);
    /// Whether the scene of the row has `wanted` in its name.
    [[nodiscard]] bool matches(int row, const std::u16string& wanted) const;
    /// Chooses a scene whose name has what was typed: the one that is chosen, else the next one.
    void findScene();
    /// The next one down or up the list.
    void findBeside(int step);
    void stop();
    void loadScene();
    void restoreDraft();
    void newScene();
    void openFolder();
    void showDuplicate(const std::string& name);
    void exitProgram();

    ComponentScope m_components;
    std::vector<scene::ListedScene> m_scenes; ///< in the order of the rows
    std::u16string m_usualHint;
    bool m_isChoosing = false; ///< the program chooses in a list
    // From InitWindow on.
    std::optional<DraftBar> m_drafts;
    std::optional<DuplicateBar> m_duplicate;
    std::unique_ptr<SceneCards> m_cards;
};

} // namespace ui
