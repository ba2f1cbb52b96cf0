#include "ui/OpenScene.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "core/Text.h"
#include "platform/Gui.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CTextUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/StartCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kSceneList = u"SceneList";
constexpr std::u16string_view kLoadButton = u"ButtonLoadScene";
constexpr std::u16string_view kEmptyIcon = u"EmptyIcon";
constexpr std::u16string_view kEmptyHeading = u"EmptyHeading";
constexpr std::u16string_view kEmptyLine = u"EmptyLine";
constexpr std::u16string_view kHint = u"LabelHint";
constexpr int kRowHeight = 16;
constexpr int kListFont = 2;

} // namespace

std::shared_ptr<OpenScene> OpenScene::create(const WindowContext& context) {
    auto window = std::make_shared<OpenScene>(context);
    return window->m_components.initialized() ? window : nullptr;
}

OpenScene::OpenScene(const WindowContext& context)
    : EditorWindow(context, kOpenSceneCommands), m_components(context.gui.components()),
      m_scenes(scene::listScenes()) {
    commands().bind(command::kOpenScene, [this] { loadScene(); });
    commands().bind(command::kNewScene, [this] { newScene(); });
    commands().bind(command::kMenu, [this] { showMenu(kOpenSceneMenu); });
    commands().bind(command::kExit, [this] { exitProgram(); });
    commands().bind(command::kRestoreDraft, [this] { restoreDraft(); });
    commands().bind(command::kDropDraft, [this] { m_drafts->hide(); });
}

void OpenScene::InitWindow() {
    fillList();
    showFailedLoad();
    m_drafts.emplace(controls(), context().state);
    m_drafts->show(chosenScene());
    const bool empty = m_scenes.empty();
    setEnabledOf(kLoadButton, !empty);
    if (!empty) {
        GetPaintManager().SetFocus(findControl(kSceneList));
    }
    for (const std::u16string_view name : {kEmptyIcon, kEmptyHeading, kEmptyLine}) {
        setVisibleOf(name, empty);
    }
}

void OpenScene::fillList() {
    auto* list = find<toolkit::CListUI>(kSceneList);
    if (list == nullptr) {
        return;
    }
    list->RemoveAll();
    for (const std::string& name : m_scenes) {
        addRow(*list, name);
    }
    if (list->GetCount() > 0) {
        list->SelectItem(0);
    }
}

void OpenScene::showFailedLoad() {
    const auto& manager = context().services.sceneManager;
    if (!context().state.unreadableDraft.empty()) {
        showProblem(u"The unsaved work cannot be read.", kHint);
        return;
    }
    if (!manager || !manager->loadFailed()) {
        return;
    }
    if (manager->Name().empty()) {
        // The system's close request chose no scene; it does not end the program either.
        setTextOf(kHint, u"Open a scene, start a new one, or press Exit to leave.");
    } else {
        showProblem(core::displayText("\"" + manager->Name() + "\"") +
                        u" cannot be opened: its Scene.xml is not readable.",
                    kHint);
    }
}

void OpenScene::addRow(toolkit::CContainerUI& list, const std::string& name) {
    auto text = std::make_unique<toolkit::CTextUI>();
    GetPaintManager().look().ApplyDefaults(*text);
    text->SetName(u"ListItem");
    text->SetFont(kListFont);
    text->SetText(core::displayText(name));
    text->SetToolTip(core::displayText("Open " + name + " scenario"));
    auto layout = std::make_unique<toolkit::CHorizontalLayoutUI>();
    layout->Add(std::move(text));
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetName(u"Row");
    row->SetFixedHeight(kRowHeight);
    row->Add(std::move(layout));
    list.Add(std::move(row));
}

void OpenScene::OnItemActivate(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kSceneList) {
        loadScene();
    }
}

void OpenScene::OnItemSelect(toolkit::TNotifyUI& message) {
    if (m_drafts && message.pSender->GetName() == kSceneList) {
        m_drafts->show(chosenScene());
    }
}

std::string OpenScene::chosenScene() {
    const auto* list = find<toolkit::CListUI>(kSceneList);
    const int index = list != nullptr ? list->GetCurSel() : -1;
    const bool isChosen = index >= 0 && static_cast<std::size_t>(index) < m_scenes.size();
    return isChosen ? m_scenes[static_cast<std::size_t>(index)] : std::string();
}

void OpenScene::loadScene() {
    const auto& manager = context().services.sceneManager;
    const std::string name = chosenScene();
    if (manager && !name.empty()) {
        manager->SetName(name);
        Close(1);
    }
}

void OpenScene::restoreDraft() {
    const recovery::KeptDraft* draft = m_drafts ? m_drafts->offered() : nullptr;
    const auto& manager = context().services.sceneManager;
    if (manager && draft != nullptr) {
        context().state.draftToRestore = draft->folder;
        manager->SetName(draft->info.listedAs);
        Close(1);
    }
}

void OpenScene::newScene() {
    context().state.newSceneRequest = true;
    Close(1);
}

void OpenScene::exitProgram() {
    context().state.quit = true;
    Close(1);
}

std::span<const ContextMenu> OpenScene::contextMenus() const {
    return kOpenSceneContexts;
}

std::span<const std::u16string_view> OpenScene::panes() const {
    return kOpenScenePanes;
}

} // namespace ui
