// The screen where the author names a new scene and chooses what it begins with. UI thread
// only.
#pragma once

#include <memory>
#include <string>

#include "platform/Event.h"
#include "scene/SceneTemplate.h"
#include "toolkit/window/Notification.h"
#include "ui/ComponentScope.h"
#include "ui/EditorWindow.h"

namespace ui {

class NewScene final : public EditorWindow {
public:
    /// Empty when the system's components cannot be initialised.
    [[nodiscard]] static std::shared_ptr<NewScene> create(const WindowContext& context);
    explicit NewScene(const WindowContext& context);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"NewSceneWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "NewScene.xml"; }
    void InitWindow() override;
    void Notify(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnKillFocus(toolkit::TNotifyUI& message) override;
    bool MessageHandler(const platform::Event& event) override;

private:
    /// Creates the scene with the name in the edit.
    void createScene();
    void goBack();
    void showHint();
    [[nodiscard]] scene::SceneTemplate::Kind chosenKind();
    void showKind();
    /// Reads the number of branches; one that cannot be is brought to the nearest that can.
    void takeCount();

    ComponentScope m_components;
    std::u16string m_usualHint;
    int m_count = 3; ///< of steps or answers
};

} // namespace ui
