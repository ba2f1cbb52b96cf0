#include "app/EditorScreens.h"

#include <string_view>

#include "ZoneEdit/ZoneEdit.h"
#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace app {
namespace {

template <class Window>
bool show(const ui::WindowContext& context, std::u16string_view title) {
    const std::shared_ptr<Window> window = Window::create(context);
    return window && window->runScreen(title);
}

} // namespace

EditorScreens::EditorScreens(const ui::WindowContext& context) : m_context(context) {}

EditorScreens::~EditorScreens() = default;

bool EditorScreens::showOpenScene() {
    return show<ui::OpenScene>(m_context, u"Open or Create Scene");
}

bool EditorScreens::showNewScene() {
    return show<ui::NewScene>(m_context, u"New Scene");
}

bool EditorScreens::showBranchEditor() {
    return show<ui::BranchList>(m_context, u"Quorvel");
}

bool EditorScreens::showZoneEditor() {
    m_zoneEdit = zoneedit::ZoneEdit::create(m_context);
    const bool shown = m_zoneEdit && m_zoneEdit->run();
    m_zoneEdit.reset();
    return shown;
}

bool EditorScreens::loadChosenScene() {
    return m_context.services.sceneSession && m_context.services.sceneSession->load("");
}

} // namespace app
