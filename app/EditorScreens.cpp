#include "app/EditorScreens.h"

#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/ZoneEdit.h"
#include "app/state/SharedServices.h"
#include "core/Texts.h"
#include "recovery/RecentScenes.h"
#include "recovery/SceneDraft.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/ChosenLanguage.h"
#include "ui/EditorWindow.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace app {
namespace {

using app_state::Screen;
using app_state::ScreenResult;

std::optional<ScreenResult> shown(const std::shared_ptr<ui::EditorWindow>& window,
                                  std::u16string_view title) {
    return window && window->runScreen(title) ? std::optional<ScreenResult>(std::in_place)
                                              : std::nullopt;
}

} // namespace

EditorScreens::EditorScreens(const ui::WindowContext& context) : m_context(context) {
    const app_state::SharedServices& services = context.services;
    if (services.sceneSession && services.drafts) {
        m_sceneDraft =
            std::make_unique<recovery::SceneDraft>(*services.sceneSession, *services.drafts);
    }
}

EditorScreens::~EditorScreens() = default;

std::optional<ScreenResult> EditorScreens::show(Screen screen, const ScreenResult& returned) {
    ui::speakChosenLanguage(m_context.services);
    switch (screen) {
    case Screen::openScene:
        return shown(ui::OpenScene::create(m_context), core::tr("Open or Create Scene"_tr));
    case Screen::newScene:
        return shown(ui::NewScene::create(m_context), core::tr("New Scene"_tr));
    case Screen::branchEditor:
        return showBranchEditor(returned);
    case Screen::zoneEditor:
        return showZoneEditor();
    }
    return std::nullopt;
}

std::optional<ScreenResult> EditorScreens::showBranchEditor(const ScreenResult& returned) {
    auto result = shown(ui::BranchList::create(m_context, returned), u"Quorvel");
    if (m_context.state.openSceneRequest) {
        leaveScene();
    } else if (m_sceneDraft) {
        m_sceneDraft->flush();
    }
    return result;
}

void EditorScreens::leaveScene() {
    if (m_sceneDraft) {
        m_context.state.draftsHidden &= !m_sceneDraft->leave();
    }
    if (const auto& manager = m_context.services.sceneManager) {
        manager->SetName({}); // an open scene window that is left without a choice loads nothing
    }
}

std::optional<ScreenResult> EditorScreens::showZoneEditor() {
    m_zoneEdit = zoneedit::ZoneEdit::create(m_context);
    std::optional<ScreenResult> result;
    if (m_zoneEdit && m_zoneEdit->run()) {
        result = m_zoneEdit->result();
    }
    m_zoneEdit.reset();
    return result;
}

bool EditorScreens::loadChosenScene() {
    const auto& session = m_context.services.sceneSession;
    const std::string chosen = session ? session->scene().Name() : std::string();
    const std::string draft = std::exchange(m_context.state.draftToRestore, {});
    if (!session || !m_sceneDraft) {
        return session && session->load("");
    }
    const bool good =
        draft.empty() ? m_sceneDraft->load(session->scene().Name()) : m_sceneDraft->restore(draft);
    m_context.state.unreadableDraft = good ? std::string() : draft;
    if (good) {
        recovery::noteOpenedScene(chosen);
    }
    return good;
}

} // namespace app
