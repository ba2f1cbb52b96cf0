#include "ui/NewScene.h"

#include <string_view>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "check/SceneNames.h"
#include "core/Text.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/SceneHints.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/StartCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kNameEdit = u"EditSceneName";
constexpr std::u16string_view kHint = u"LabelHint";

} // namespace

std::shared_ptr<NewScene> NewScene::create(const WindowContext& context) {
    auto window = std::make_shared<NewScene>(context);
    return window->m_components.initialized() ? window : nullptr;
}

NewScene::NewScene(const WindowContext& context)
    : EditorWindow(context, kNewSceneCommands), m_components(context.gui.components()) {
    commands().bind(command::kCreate, [this] { createScene(); });
    commands().bind(command::kBackToStart, [this] { goBack(); });
}

void NewScene::InitWindow() {
    if (const toolkit::CControlUI* hint = findControl(kHint)) {
        m_usualHint = hint->GetText();
    }
    if (toolkit::CControlUI* edit = findControl(kNameEdit)) {
        GetPaintManager().SetFocus(edit);
    }
    showHint();
}

void NewScene::Notify(toolkit::TNotifyUI& message) {
    // Typing changes nothing but the hint below the edit.
    if (message.sType == toolkit::kTextChanged) {
        showHint();
    }
    EditorWindow::Notify(message);
}

void NewScene::showHint() {
    const toolkit::CControlUI* edit = findControl(kNameEdit);
    if (edit == nullptr) {
        return;
    }
    const std::string name = core::storedText(edit->GetText());
    const std::u16string unlisted = unlistedHint(name);
    if (check::breaksFile(name)) {
        setTextOf(kHint, kUnreadableSceneHint);
    } else {
        setTextOf(kHint, unlisted.empty() ? m_usualHint : unlisted);
    }
}

bool NewScene::MessageHandler(const platform::Event& event) {
    const toolkit::CControlUI* edit = findControl(kNameEdit);
    if (event.kind == platform::EventKind::keyDown && event.key == platform::Key::enter &&
        edit != nullptr && GetPaintManager().GetFocus() == edit) {
        if (!event.repeat) {
            createScene();
        }
        return true;
    }
    return EditorWindow::MessageHandler(event);
}

void NewScene::createScene() {
    const auto* edit = find<toolkit::CEditUI>(kNameEdit);
    const auto& session = context().services.sceneSession;
    if (edit == nullptr || !session) {
        return;
    }
    // Any name goes: empty, with path characters, or of an existing scene, which Save replaces.
    session->newScene(core::storedText(edit->GetText()));
    context().state.sceneCreated = true;
    Close(1);
}

void NewScene::goBack() {
    Close(1);
}

} // namespace ui
