#include "ui/OpenScene.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Desktop.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CTextUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/ChosenLanguage.h"
#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/FlagScope.h"
#include "ui/Fonts.h"
#include "ui/SettingsWindow.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/StartCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kSceneList = u"SceneList";
constexpr std::u16string_view kCardList = u"ListScenes";
constexpr std::u16string_view kFind = u"EditFindScene";
constexpr std::u16string_view kFindHint = u"LabelFindScene";
constexpr std::u16string_view kDuplicateName = u"EditDuplicateName";
constexpr std::u16string_view kEmptyIcon = u"EmptyIcon";
constexpr std::u16string_view kEmptyHeading = u"EmptyHeading";
constexpr std::u16string_view kEmptyLine = u"EmptyLine";
constexpr std::u16string_view kHint = u"LabelHint";
constexpr std::u16string_view kNewButton = u"ButtonNewScene";
constexpr ContextMenu kContextMenus[] = {{kSceneList, kSceneRows}, {kCardList, kSceneRows}};
constexpr std::u16string_view kPanes[] = {kSceneList, kCardList, kNewButton};
constexpr int kRowHeight = 16;

} // namespace

std::shared_ptr<OpenScene> OpenScene::create(const WindowContext& context) {
    auto window = std::make_shared<OpenScene>(context);
    return window->m_components.initialized() ? window : nullptr;
}

OpenScene::OpenScene(const WindowContext& context)
    : EditorWindow(context, {kOpenSceneCommands, kContextMenus, kPanes}),
      m_components(context.gui.components()), m_scenes(scene::listScenesAndTimes()) {
    bindCommands();
}

void OpenScene::bindCommands() {
    const auto free = [this] { return isFree(); };
    const auto hasScene = [this] { return isFree() && chosenRow() >= 0; };
    CommandSet& commands = this->commands();
    commands.bind(
        command::kOpenScene, [this] { loadScene(); },
        [this] { return isFree() && !m_scenes.empty(); });
    commands.bind(
        command::kNewScene, [this] { newScene(); }, free);
    commands.bind(command::kMenu, [this] { showMenu(kOpenSceneMenu); });
    commands.bind(command::kExit, [this] { exitProgram(); });
    commands.bind(
        command::kRestoreDraft, [this] { restoreDraft(); }, free);
    commands.bind(command::kDropDraft, [this] { m_drafts->hide(); });
    commands.bind(
        command::kDuplicateScene, [this] { m_duplicate->ask(chosenScene()); }, hasScene);
    commands.bind(
        command::kOpenFolder, [this] { openFolder(); }, hasScene);
    commands.bind(command::kMakeDuplicate, [this] { m_duplicate->make(); });
    commands.bind(command::kDropDuplicate, [this] { stop(); });
    commands.bind(
        command::kStop, [this] { stop(); },
        [this] { return m_duplicate->isShown() || controls().hasFocus(kFind); });
    bindFind(kFind);
}

bool OpenScene::isFree() const {
    return !m_duplicate || !m_duplicate->isCopying();
}

bool OpenScene::takeNewLanguage() {
    if (!isLanguageNew(context().services) || !isFree() || companions().has<SettingsWindow>()) {
        return false;
    }
    context().state.openSceneRequest = true;
    Close(1);
    return true;
}

void OpenScene::InitWindow() {
    if (const toolkit::CControlUI* hint = findControl(kHint)) {
        m_usualHint = hint->GetText();
    }
    m_duplicate.emplace(
        controls(), context().gui.loop(), *core::services().fileSystem,
        [this](const std::string& name) { showDuplicate(name); },
        [this] { commands().showEnabled(); });
    fillLists();
    showFailedLoad();
    m_drafts.emplace(controls(), context().state);
    choose(0);
    if (!m_scenes.empty()) {
        GetPaintManager().SetFocus(findControl(kSceneList));
    }
}

void OpenScene::fillLists() {
    auto* list = find<toolkit::CListUI>(kSceneList);
    if (list == nullptr) {
        return;
    }
    list->SetRows(static_cast<int>(m_scenes.size()),
                  {.make = [this](int row) { return makeRow(row); }, .height = kRowHeight});
    m_cards.reset(); // before the next ones take its list
    m_cards =
        std::make_unique<SceneCards>(controls(), context().gui.loop(), *core::services().fileSystem,
                                     context().services.stills.get(), m_scenes);
    for (const std::u16string_view name : {kEmptyIcon, kEmptyHeading, kEmptyLine}) {
        setVisibleOf(name, m_scenes.empty());
    }
    commands().showEnabled();
}

void OpenScene::showFailedLoad() {
    const auto& manager = context().services.sceneManager;
    if (!context().state.unreadableDraft.empty()) {
        showProblem(core::tr("The unsaved work cannot be read."_tr), kHint);
        return;
    }
    if (!manager || !manager->loadFailed()) {
        return;
    }
    if (manager->Name().empty()) {
        // The system's close request chose no scene; it does not end the program either.
        setTextOf(kHint, core::tr("Open a scene, start a new one, or press Exit to leave."_tr));
    } else {
        showProblem(core::tr("\"{0}\" cannot be opened: its Scene.xml is not readable."_tr,
                             manager->Name()),
                    kHint);
    }
}

std::unique_ptr<toolkit::CControlUI> OpenScene::makeRow(int row) {
    const std::string& name = m_scenes[static_cast<std::size_t>(row)].name;
    auto text = std::make_unique<toolkit::CTextUI>();
    GetPaintManager().look().ApplyDefaults(*text);
    text->SetName(u"ListItem");
    text->SetFont(font::kList);
    text->SetText(core::displayText(name));
    text->SetToolTip(core::tr("Open {0} scenario"_tr, name));
    auto layout = std::make_unique<toolkit::CHorizontalLayoutUI>();
    layout->Add(std::move(text));
    auto made = std::make_unique<toolkit::CListContainerElementUI>();
    made->SetName(u"Row");
    made->SetFixedHeight(kRowHeight);
    made->Add(std::move(layout));
    return made;
}

void OpenScene::OnItemActivate(toolkit::TNotifyUI& message) {
    const std::u16string& name = message.pSender->GetName();
    if (name == kSceneList || name == kCardList) {
        commands().run(command::kOpenScene);
    }
}

void OpenScene::OnItemSelect(toolkit::TNotifyUI& message) {
    const std::u16string& name = message.pSender->GetName();
    if (!m_drafts || m_isChoosing || (name != kSceneList && name != kCardList)) {
        return;
    }
    {
        const FlagScope choosing(m_isChoosing);
        if (name == kSceneList) {
            m_cards->choose(chosenRow(), true);
        } else if (auto* list = find<toolkit::CListUI>(kSceneList)) {
            list->SelectItem(m_cards->chosen());
        }
    }
    m_drafts->show(chosenScene());
}

void OpenScene::choose(int row) {
    auto* list = find<toolkit::CListUI>(kSceneList);
    if (list == nullptr || row >= list->GetCount()) {
        m_drafts->show({});
        return;
    }
    {
        const FlagScope choosing(m_isChoosing);
        const bool isFirst = list->GetCurSel() < 0; // the newest ones stay in sight
        list->SelectItem(row);
        m_cards->choose(row, !isFirst);
    }
    m_drafts->show(chosenScene());
}

void OpenScene::Notify(toolkit::TNotifyUI& message) {
    if (message.sType == toolkit::kTextChanged && message.pSender->GetName() == kFind) {
        findScene();
    }
    EditorWindow::Notify(message);
}

bool OpenScene::MessageHandler(const platform::Event& event) {
    using platform::Key;
    if (event.kind == platform::EventKind::activated && takeNewLanguage()) {
        return true;
    }
    const bool isDown = event.kind == platform::EventKind::keyDown;
    if (isDown && event.key == Key::enter && controls().hasFocus(kDuplicateName)) {
        return event.repeat || commands().run(command::kMakeDuplicate) || true;
    }
    if (isDown && controls().hasFocus(kFind)) {
        if (event.key == Key::enter) {
            return event.repeat || commands().run(command::kOpenScene) || true;
        }
        if (event.key == Key::down || event.key == Key::up) {
            findBeside(event.key == Key::down ? 1 : -1);
            return true;
        }
    }
    return EditorWindow::MessageHandler(event);
}

bool OpenScene::matches(int row, const std::u16string& wanted) const {
    const std::string& name = m_scenes[static_cast<std::size_t>(row)].name;
    return core::foldCase(core::displayText(name)).find(wanted) != std::u16string::npos;
}

void OpenScene::findScene() {
    const toolkit::CControlUI* edit = findControl(kFind);
    const std::u16string wanted = core::foldCase(edit->GetText());
    setVisibleOf(kFindHint, wanted.empty());
    const int count = static_cast<int>(m_scenes.size());
    const int chosen = std::max(chosenRow(), 0);
    int step = 0;
    while (step < count && !matches((chosen + step) % count, wanted)) {
        ++step;
    }
    setTextOf(kHint, step < count || wanted.empty() ? m_usualHint
                                                    : core::tr("No scene has this name."_tr));
    if (step > 0 && step < count) {
        choose((chosen + step) % count);
    }
}

void OpenScene::findBeside(int step) {
    const std::u16string wanted = core::foldCase(findControl(kFind)->GetText());
    for (int row = chosenRow() + step; row >= 0 && row < static_cast<int>(m_scenes.size());
         row += step) {
        if (matches(row, wanted)) {
            choose(row);
            return;
        }
    }
}

void OpenScene::stop() {
    if (m_duplicate->isShown()) {
        m_duplicate->hide();
    } else {
        setTextOf(kFind, {});
        findScene();
    }
    controls().setFocus(kSceneList);
}

int OpenScene::chosenRow() {
    const auto* list = find<toolkit::CListUI>(kSceneList);
    const int row = list != nullptr ? list->GetCurSel() : -1;
    return row < static_cast<int>(m_scenes.size()) ? row : -1;
}

std::string OpenScene::chosenScene() {
    const int row = chosenRow();
    return row >= 0 ? m_scenes[static_cast<std::size_t>(row)].name : std::string();
}

void OpenScene::showDuplicate(const std::string& name) {
    m_scenes = scene::listScenesAndTimes();
    fillLists();
    const auto made = std::find_if(m_scenes.begin(), m_scenes.end(),
                                   [&](const auto& scene) { return scene.name == name; });
    choose(made != m_scenes.end() ? static_cast<int>(made - m_scenes.begin()) : 0);
    controls().setFocus(kSceneList);
    (void)takeNewLanguage(); // chosen while the copy was made
}

void OpenScene::openFolder() {
    const std::string folder = scene::scenesFolderPath() + chosenScene();
    const bool isOpen = context().gui.desktop().openFile(folder);
    showProblem(isOpen ? std::u16string() : core::tr("The folder cannot be shown."_tr), kHint);
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

} // namespace ui
