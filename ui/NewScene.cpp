#include "ui/NewScene.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <system_error>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "check/Names.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/Controls.h"
#include "ui/Fonts.h"
#include "ui/SceneHints.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/StartCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kNameEdit = u"EditSceneName";
constexpr std::u16string_view kHint = u"LabelHint";
constexpr std::u16string_view kCountEdit = u"EditTemplateCount";
constexpr std::u16string_view kCountLabel = u"LabelTemplateCount";

using Kind = scene::SceneTemplate::Kind;

struct Tile {
    std::u16string_view name;
    Kind kind;
    core::Text count; ///< what is counted
};
constexpr Tile kTiles[] = {
    {u"OptionTemplateEmpty", Kind::empty, "Steps"_tr},
    {u"OptionTemplateLinear", Kind::linear, "Steps"_tr},
    {u"OptionTemplateQuiz", Kind::question, "Answers"_tr},
};

} // namespace

std::shared_ptr<NewScene> NewScene::create(const WindowContext& context) {
    auto window = std::make_shared<NewScene>(context);
    return window->m_components.initialized() ? window : nullptr;
}

NewScene::NewScene(const WindowContext& context)
    : EditorWindow(context, {kNewSceneCommands}), m_components(context.gui.components()) {
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
    showKind();
}

void NewScene::Notify(toolkit::TNotifyUI& message) {
    // Typing changes nothing but the hint below the edit.
    if (message.sType == toolkit::kTextChanged) {
        showHint();
    }
    EditorWindow::Notify(message);
}

void NewScene::OnSelectChanged(toolkit::TNotifyUI& /*message*/) {
    showKind();
}

void NewScene::OnKillFocus(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kCountEdit) {
        takeCount();
    }
}

scene::SceneTemplate::Kind NewScene::chosenKind() {
    for (const Tile& tile : kTiles) {
        const auto* option = find<toolkit::COptionUI>(tile.name);
        if (option != nullptr && option->IsSelected()) {
            return tile.kind;
        }
    }
    return Kind::empty;
}

void NewScene::showKind() {
    const Kind chosen = chosenKind();
    for (const Tile& tile : kTiles) {
        if (auto* option = find<toolkit::COptionUI>(tile.name)) {
            option->SetFont(tile.kind == chosen ? font::kBold : font::kBody);
        }
        if (tile.kind == chosen) {
            setTextOf(kCountLabel, core::tr(tile.count));
        }
    }
    for (const std::u16string_view name : {kCountLabel, kCountEdit}) {
        setEnabledOf(name, chosen != Kind::empty);
    }
}

void NewScene::takeCount() {
    using scene::SceneTemplate;
    if (const toolkit::CControlUI* edit = findControl(kCountEdit)) {
        const std::string typed = core::storedText(edit->GetText());
        int number = 0;
        const auto [end, error] =
            std::from_chars(typed.data(), typed.data() + typed.size(), number);
        if (error == std::errc::result_out_of_range) {
            m_count = SceneTemplate::kMost;
        } else if (error == std::errc() && end == typed.data() + typed.size()) {
            m_count = std::clamp(number, SceneTemplate::kLeast, SceneTemplate::kMost);
        }
        setTextOf(kCountEdit, core::displayText(std::to_string(m_count)));
    }
}

void NewScene::showHint() {
    const toolkit::CControlUI* edit = findControl(kNameEdit);
    if (edit == nullptr) {
        return;
    }
    const std::string name = core::storedText(edit->GetText());
    const std::u16string unlisted = unlistedHint(name);
    if (check::breaksFile(name)) {
        setTextOf(kHint, core::tr(kUnreadableSceneHint));
    } else {
        setTextOf(kHint, unlisted.empty() ? m_usualHint : unlisted);
    }
}

bool NewScene::MessageHandler(const platform::Event& event) {
    if (event.kind == platform::EventKind::keyDown && event.key == platform::Key::enter &&
        (controls().hasFocus(kNameEdit) || controls().hasFocus(kCountEdit))) {
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
    takeCount();
    session->newScene(core::storedText(edit->GetText()), {chosenKind(), m_count});
    context().state.sceneCreated = true;
    Close(1);
}

void NewScene::goBack() {
    Close(1);
}

} // namespace ui
