#include "app/EditorScreens.h"

#include <string_view>
#include <utility>

#include "ZoneEdit/ZoneEdit.h"
#include "app/state/SharedServices.h"
#include "scene/SceneSession.h"
#include "ui/BranchList.h"
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

EditorScreens::EditorScreens(const ui::WindowContext& context) : m_context(context) {}

EditorScreens::~EditorScreens() = default;

std::optional<ScreenResult> EditorScreens::show(Screen screen, const ScreenResult& returned) {
    switch (screen) {
    case Screen::openScene:
        return shown(ui::OpenScene::create(m_context), u"Open or Create Scene");
    case Screen::newScene:
        return shown(ui::NewScene::create(m_context), u"New Scene");
    case Screen::branchEditor:
        return shown(ui::BranchList::create(m_context, returned), u"Quorvel");
    case Screen::zoneEditor:
        return showZoneEditor();
    }
    return std::nullopt;
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
    return m_context.services.sceneSession && m_context.services.sceneSession->load("");
}

} // namespace app
