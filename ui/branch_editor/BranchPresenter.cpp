#include "ui/branch_editor/BranchPresenter.h"

#include <algorithm>
#include <initializer_list>

#include "core/Text.h"
#include "scene/SceneChange.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

BranchPresenter::BranchPresenter(Controls controls, scene::SceneSession& session,
                                 Listener& listener)
    : m_controls(controls), m_session(session), m_listener(listener),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {}

void BranchPresenter::fill() {
    listAgain(0);
}

int BranchPresenter::shown() const {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kBranchCombo);
    const int index = combo != nullptr ? combo->GetCurSel() : -1;
    return index < m_session.branchCount() ? index : -1;
}

void BranchPresenter::changed(const scene::SceneSession::Changes& changes) {
    using Part = scene::SceneChange::Part;
    const auto concerns = [&](std::initializer_list<Part> parts) {
        return std::any_of(changes.begin(), changes.end(), [&](const scene::SceneChange& change) {
            return std::find(parts.begin(), parts.end(), change.part) != parts.end();
        });
    };
    if (concerns({Part::scene, Part::branches, Part::branchName})) {
        const int where = m_session.find(m_token);
        listAgain(m_next >= 0 ? m_next : where >= 0 ? where : m_place);
    } else if (concerns({Part::firstBranch})) {
        showFirst();
    }
}

void BranchPresenter::listAgain(int branch) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kBranchCombo);
    if (combo == nullptr) {
        return;
    }
    m_names = NameList(m_session.branchNames());
    combo->SetItemTexts(m_names.shown);
    const int index = std::min(std::max(branch, 0), combo->GetCount() - 1);
    if (index < 0) {
        showSelected();
        return;
    }
    m_again = index == m_session.find(m_token);
    combo->SelectItem(index); // which shows it
    m_again = false;
}

void BranchPresenter::showSelected() {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kBranchCombo);
    if (toolkit::CControlUI* edit = m_controls.find(kNameEdit)) {
        edit->SetText(combo != nullptr ? combo->GetText() : std::u16string());
        m_shownName = edit->GetText();
    }
    showFirst();
    m_place = shown();
    m_token = m_session.token(m_place);
    m_listener.branchShown(m_place, m_again);
}

void BranchPresenter::show(int branch) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kBranchCombo);
    if (combo != nullptr) {
        combo->SelectItem(std::min(branch, combo->GetCount() - 1)); // which shows it
    }
}

void BranchPresenter::showFirst() {
    auto* check = m_controls.find<toolkit::COptionUI>(kFirstCheck);
    if (check == nullptr) {
        return;
    }
    const int branch = shown();
    check->Selected(branch >= 0 && m_session.branchName(branch) == m_session.firstBranch());
    check->Invalidate();
}

void BranchPresenter::add() {
    m_next = m_session.branchCount();
    m_session.addBranch();
    m_next = -1;
}

void BranchPresenter::duplicate() {
    m_next = shown() + 1;
    m_session.duplicateBranch(shown());
    m_next = -1;
}

void BranchPresenter::remove() {
    m_session.removeBranch(shown());
}

bool BranchPresenter::canMove(int by) const {
    const int branch = shown();
    return branch >= 0 && branch + by >= 0 && branch + by < m_session.branchCount();
}

void BranchPresenter::move(int by) {
    m_session.moveBranch(shown(), shown() + by);
}

void BranchPresenter::takeName() {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kBranchCombo);
    toolkit::CControlUI* edit = m_controls.find(kNameEdit);
    const int branch = shown();
    if (combo == nullptr || edit == nullptr || branch < 0 || edit->GetText() == m_shownName) {
        // An edit cannot hold every name that a file can: a text nobody touched is no new name.
        return;
    }
    const std::u16string name = edit->GetText();
    if (combo->FindItemText(name) >= 0) {
        edit->SetText(core::displayText(m_session.branchName(branch)));
        m_listener.nameRefused(name);
        return;
    }
    const std::string oldName = m_session.branchName(branch);
    m_session.renameBranch(branch, core::storedText(name));
    m_listener.branchRenamed(branch, oldName);
}

bool BranchPresenter::isNameTyped() const {
    const toolkit::CControlUI* edit = m_controls.find(kNameEdit);
    return m_controls.hasFocus(kNameEdit) && edit->GetText() != m_shownName;
}

void BranchPresenter::dropTypedName() {
    m_controls.setText(kNameEdit, m_shownName);
}

void BranchPresenter::chooseFirst() {
    auto* check = m_controls.find<toolkit::COptionUI>(kFirstCheck);
    const int branch = shown();
    if (check == nullptr) {
        return;
    }
    if (check->IsSelected() && branch >= 0) {
        m_session.setFirstBranch(m_session.branchName(branch));
        return;
    }
    // Unchecking never clears the first branch: another one has to be checked instead. Intended.
    check->Selected(false);
    check->Invalidate();
}

} // namespace ui
