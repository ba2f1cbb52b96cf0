#include "ui/branch_editor/LeadsPresenter.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "core/Text.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

namespace {

/// As many rows as fit into the smallest window.
constexpr std::size_t kMostRows = 18;

} // namespace

LeadsPresenter::LeadsPresenter(Controls controls, scene::SceneSession& session,
                               std::function<void(const Place&)> go)
    : m_controls(controls), m_session(session), m_go(std::move(go)),
      m_subscription(session.observe([this](const auto&) { read(); })) {}

void LeadsPresenter::show(int branch) {
    m_branch = branch;
    read();
}

void LeadsPresenter::read() {
    const bool isThere = m_branch >= 0 && m_branch < m_session.branchCount();
    m_places =
        isThere ? m_session.actionsLeadingTo(m_session.branchName(m_branch)) : std::vector<Place>();
    const char* const text = m_places.size() == 1 ? " leads here" : " lead here";
    m_controls.setText(kLeadsHereButton, core::displayText(std::to_string(m_places.size()) + text));
}

void LeadsPresenter::open() {
    toolkit::CControlUI* button = m_controls.find(kLeadsHereButton);
    if (button == nullptr) {
        return;
    }
    std::vector<toolkit::MenuEntry> entries;
    for (std::size_t i = 0; i < std::min(m_places.size(), kMostRows); ++i) {
        const Place place = m_places[i];
        entries.push_back(
            {.text = core::displayText(m_session.branchName(place.branch) + ", action " +
                                       std::to_string(place.action + 1)),
             .run = [go = m_go, place] { go(place); }});
    }
    if (m_places.size() > kMostRows) {
        const std::size_t more = m_places.size() - kMostRows;
        entries.push_back(
            {.text = core::displayText("and " + std::to_string(more) + " more"), .enabled = false});
    }
    toolkit::MenuPopup::of(m_controls.manager()).open(*button, entries);
}

} // namespace ui
