#include "ui/branch_editor/BranchFind.h"

#include <algorithm>
#include <cstddef>

#include "core/Text.h"
#include "core/Texts.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/NameList.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/StripPresenter.h"

namespace ui {

using namespace branch_list;

std::vector<int> namesWith(const std::vector<std::u16string>& names, std::u16string_view text) {
    const std::u16string wanted = core::foldCase(text);
    std::vector<int> found;
    for (std::size_t i = 0; i < names.size() && !wanted.empty(); ++i) {
        if (core::foldCase(names[i]).find(wanted) != std::u16string::npos) {
            found.push_back(static_cast<int>(i));
        }
    }
    return found;
}

BranchFind::BranchFind(Controls controls, scene::SceneSession& session, BranchPresenter& branches,
                       LeftPane& pane, StripPresenter& strip)
    : m_controls(controls), m_branches(branches), m_pane(pane), m_strip(strip),
      m_subscription(session.observe([this](const auto& /*changes*/) {
          if (m_isNoted && !found().empty()) {
              typed();
          }
      })) {}

std::u16string BranchFind::text() const {
    const toolkit::CControlUI* edit = m_controls.find(kFindEdit);
    return edit != nullptr ? edit->GetText() : std::u16string();
}

std::vector<int> BranchFind::found() const {
    return namesWith(*m_branches.names().shown, text());
}

bool BranchFind::isActive() const {
    return m_pane.isShown(LeftPane::Page::map) &&
           (m_controls.hasFocus(kFindEdit) || !text().empty());
}

void BranchFind::begin() {
    m_pane.showPage(LeftPane::Page::map);
    m_controls.startTyping(kFindEdit);
}

void BranchFind::typed() {
    const std::u16string wanted = text();
    m_controls.setVisible(kFindHint, wanted.empty());
    const bool isNone = !wanted.empty() && found().empty();
    if (isNone || m_isNoted) { // an action may have taken the note away
        m_isNoted = isNone;
        m_strip.showNote(isNone ? core::tr("No branch has this name."_tr) : std::u16string());
    }
}

void BranchFind::go(int by) {
    const std::vector<int> found = this->found();
    if (found.empty()) {
        return;
    }
    const int shown = m_branches.shown();
    if (by > 0) {
        const auto next = std::upper_bound(found.begin(), found.end(), shown);
        m_branches.show(next != found.end() ? *next : found.front());
    } else {
        const auto next = std::lower_bound(found.begin(), found.end(), shown);
        m_branches.show(next != found.begin() ? *(next - 1) : found.back());
    }
}

void BranchFind::end() {
    m_controls.setText(kFindEdit, {});
    typed();
    if (m_controls.hasFocus(kFindEdit)) {
        m_controls.setFocus(m_pane.isInPlace() ? kSceneMap : kBranchCombo);
    }
}

} // namespace ui
