#include "ui/branch_editor/LeadsPresenter.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

namespace {

/// As many rows as fit into the smallest window.
constexpr std::size_t kMostRows = 18;

std::u16string andMore(std::size_t count) {
    return core::tr("AndMoreRows|and {0} more|and {0} more"_trn, count);
}

} // namespace

LeadsPresenter::LeadsPresenter(Controls controls, scene::SceneSession& session,
                               std::function<void(const Place&)> go)
    : m_controls(controls), m_session(session), m_go(std::move(go)),
      m_subscription(session.observe([this](const auto&) { changed(); })) {}

void LeadsPresenter::changed() {
    if (m_read != m_session.revision()) { // not if the branch was shown because of the change
        read();
    }
}

void LeadsPresenter::show(int branch) {
    m_branch = branch;
    read();
}

void LeadsPresenter::read() {
    m_read = m_session.revision();
    const bool isThere = m_branch >= 0 && m_branch < m_session.branchCount();
    m_places =
        isThere ? m_session.actionsLeadingTo(m_session.branchName(m_branch)) : std::vector<Place>();
    m_controls.setText(kLeadsHereButton,
                       core::tr("{0} leads here|{0} lead here"_trn, m_places.size()));
    m_controls.setText(kLeadsNames, namesText());
}

std::u16string LeadsPresenter::namesText() const {
    const toolkit::CControlUI* label = m_controls.find(kLeadsNames);
    std::vector<int> branches; // in the order of the scene, as the places are
    for (const Place& place : m_places) {
        if (branches.empty() || branches.back() != place.branch) {
            branches.push_back(place.branch);
        }
    }
    std::u16string text = branches.empty() ? core::tr("No action leads here"_tr) : std::u16string();
    for (std::size_t i = 0; label != nullptr && i < branches.size(); ++i) {
        const std::u16string name = core::displayText(m_session.branchName(branches[i]));
        const std::u16string longer = text.empty() ? name : text + u", " + name;
        const std::u16string rest = andMore(branches.size() - i);
        toolkit::CPaintManagerUI& manager = m_controls.manager();
        const int width = manager.fonts()
                              .measure(longer + u", " + rest, manager.look().GetFont(font::kBody))
                              .width;
        if (!text.empty() && width > label->GetPos().width()) {
            return text + u", " + rest;
        }
        text = longer;
    }
    return text;
}

void LeadsPresenter::open(std::u16string_view control) {
    toolkit::CControlUI* button = m_controls.find(control);
    if (button == nullptr) {
        return;
    }
    std::vector<toolkit::MenuEntry> entries;
    for (std::size_t i = 0; i < std::min(m_places.size(), kMostRows); ++i) {
        const Place place = m_places[i];
        entries.push_back({.text = core::tr("PlaceAction|{0}, action {1}"_tr,
                                            m_session.branchName(place.branch), place.action + 1),
                           .run = [go = m_go, place] { go(place); }});
    }
    if (m_places.size() > kMostRows) {
        entries.push_back({.text = andMore(m_places.size() - kMostRows), .enabled = false});
    }
    toolkit::MenuPopup::of(m_controls.manager()).open(*button, entries);
}

} // namespace ui
