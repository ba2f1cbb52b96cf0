#include "ui/branch_editor/HistoryPresenter.h"

#include <vector>

#include "core/FileError.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/Clock.h"
#include "scene/SceneChange.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/ChosenActions.h"

namespace ui {

HistoryPresenter::HistoryPresenter(Controls controls, scene::SceneSession& session,
                                   const std::string& folder, BranchPresenter& branches,
                                   ChosenActions& actions)
    : m_session(session), m_branches(branches), m_actions(actions), m_state(controls),
      m_changes(session.observe([this](const auto&) { showState(); })),
      m_saves(session.observeSaves([this](bool good) {
          m_savedAt = good ? core::services().clock->now() : m_savedAt;
          showState();
      })) {
    if (!session.isNew() && !folder.empty()) {
        m_savedAt = fileTime(folder + scene::kSceneFileName);
    }
    showState();
}

void HistoryPresenter::showState() {
    m_state.show({.isModified = m_session.isModified(),
                  .saveFailed = !m_session.scene().saveFailure().empty(),
                  .savedAt = m_savedAt});
}

void HistoryPresenter::show(const std::optional<scene::SceneLabel>& place) {
    if (place && place->branch >= 0) {
        m_branches.show(place->branch);
        m_actions.go(place->actions.empty() ? std::vector{place->action} : place->actions);
    }
}

std::u16string HistoryPresenter::nameOf(const scene::SceneLabel* label) {
    return label != nullptr ? core::displayText(scene::stepName(label->step)) : std::u16string();
}

} // namespace ui
