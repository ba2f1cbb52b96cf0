// The first screen: lists the scenes and lets the author open one, start a new one or leave.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/ComponentScope.h"
#include "ui/DraftBar.h"
#include "ui/EditorWindow.h"

namespace toolkit {
class CContainerUI;
}

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

protected:
    [[nodiscard]] std::span<const ContextMenu> contextMenus() const override;
    [[nodiscard]] std::span<const std::u16string_view> panes() const override;

private:
    void fillList();
    /// Why this window is back although a scene or unsaved work was chosen.
    void showFailedLoad();
    void addRow(toolkit::CContainerUI& list, const std::string& name);
    /// As stored; empty for none.
    [[nodiscard]] std::string chosenScene();
    void loadScene();
    void restoreDraft();
    void newScene();
    void exitProgram();

    ComponentScope m_components;
    /// As stored, in the order of the rows.
    std::vector<std::string> m_scenes;
    std::optional<DraftBar> m_drafts; ///< from InitWindow on
};

} // namespace ui
