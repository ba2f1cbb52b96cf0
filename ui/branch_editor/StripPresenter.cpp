#include "ui/branch_editor/StripPresenter.h"

#include <algorithm>
#include <utility>

#include "check/Names.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/SceneHints.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

StripPresenter::StripPresenter(Controls controls, scene::SceneSession& session)
    : m_controls(controls), m_session(session),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {
    if (const toolkit::CControlUI* status = m_controls.find(kStatus)) {
        m_usual = status->GetText();
    }
    checkNames();
    update();
}

void StripPresenter::changed(const scene::SceneSession::Changes& changes) {
    if (!changes.empty()) {
        m_saved.clear();
        if (mayChangeHint(changes)) {
            checkNames();
        }
        update();
    }
}

bool StripPresenter::mayChangeHint(const scene::SceneSession::Changes& changes) const {
    return !m_nameHint.empty() || std::any_of(changes.begin(), changes.end(), [&](const auto& one) {
        return one.part != scene::SceneChange::Part::actions || one.branch < 0 ||
               check::hasUnreadableName(m_session.scene(), one.branch);
    });
}

void StripPresenter::checkNames() {
    m_nameHint = findingHint(check::firstUnreadableName(m_session.scene()));
    if (m_nameHint.empty()) {
        m_nameHint = unlistedHint(m_session.scene().Name());
    }
}

void StripPresenter::showCopy(const std::u16string& text) {
    m_copy = text;
    update();
}

void StripPresenter::showNote(const std::u16string& note, const std::u16string& problem) {
    m_note = note;
    m_problem = problem;
    if (!problem.empty() && m_offer && m_offer->coversProblem) {
        m_offer.reset(); // it was about the problem before
    }
    update();
}

void StripPresenter::showLastingNote(const std::u16string& note) {
    m_noteIsFresh = true;
    showNote(note);
}

void StripPresenter::showSaved(bool good) {
    m_saved = good ? savedText() : std::u16string();
    update();
}

void StripPresenter::showZonesHint(const std::u16string& hint) {
    if (hint != m_zonesHint) {
        m_zonesHint = hint;
        update();
    }
}

void StripPresenter::offer(StripOffer offer) {
    std::optional<StripOffer> shown(std::move(offer));
    if (!textOfNextTrue(shown).empty()) {
        m_offer = std::move(shown);
    }
    update();
}

void StripPresenter::forgetRemedy() {
    if (m_offer && m_offer->isRemedy) {
        m_offer.reset();
        update();
    }
}

std::u16string StripPresenter::textOfNextTrue(std::optional<StripOffer>& offer) {
    std::u16string text;
    while (offer && (text = offer->text()).empty()) {
        offer = offer->next ? std::optional(offer->next()) : std::nullopt;
    }
    return text;
}

void StripPresenter::endOffer(std::optional<StripOffer> offer) {
    if (!m_offer && offer && offer->next) {
        m_offer = offer->next();
    }
    update();
    keepFocus();
}

void StripPresenter::setStanding(StripOffer offer) {
    m_standing = std::move(offer);
    m_isStandingSaid = false;
    update();
}

const StripOffer* StripPresenter::offerOnTop() const {
    return m_offer ? &*m_offer : m_standing ? &*m_standing : nullptr;
}

bool StripPresenter::offers(std::u16string_view button) const {
    const StripOffer* offer = offerOnTop();
    return offer != nullptr && std::any_of(offer->answers.begin(), offer->answers.end(),
                                           [&](const auto& one) { return one.first == button; });
}

void StripPresenter::answer(std::u16string_view button) {
    const std::optional<StripOffer> offer = std::exchange(m_offer ? m_offer : m_standing, {});
    update();
    for (const auto& [name, act] : offer ? offer->answers : decltype(offer->answers){}) {
        if (name == button) {
            act();
            break;
        }
    }
    endOffer(offer);
}

void StripPresenter::closeOffer() {
    endOffer(std::exchange(m_offer ? m_offer : m_standing, {}));
}

void StripPresenter::inputBegins() {
    m_noteIsFresh = false;
    toolkit::CControlUI* const focus = m_controls.manager().GetFocus();
    if (focus != nullptr && !hasFocus()) {
        m_focus = focus;
        m_focusLife = focus->accessibleLife();
    }
}

bool StripPresenter::hasFocus() const {
    const toolkit::CControlUI* const focus = m_controls.manager().GetFocus();
    const toolkit::CControlUI* const panel = m_controls.find(kNoticePanel);
    return focus != nullptr && panel != nullptr && focus->isInside(panel);
}

void StripPresenter::keepFocus() {
    toolkit::CPaintManagerUI& manager = m_controls.manager();
    const bool isThere = !m_focusLife.expired() && m_focus->GetManager() == &manager;
    if (manager.GetFocus() == nullptr && isThere) {
        manager.SetFocus(m_focus);
    }
    if (manager.GetFocus() == nullptr) {
        m_controls.setFocus(kBranchCombo);
    }
}

void StripPresenter::actionBegins() {
    if (!m_noteIsFresh && (!m_note.empty() || !m_problem.empty())) {
        showNote({});
    }
}

void StripPresenter::update() {
    std::u16string problem;
    if (m_copy.empty()) {
        const std::u16string notSaved = notSavedText(m_session.scene().saveFailure());
        if (!m_problem.empty() || !notSaved.empty()) {
            // The note's own place is taken while a problem is shown.
            problem = joinSentences({m_problem, m_note, notSaved});
        }
    }
    const std::u16string text = m_copy.empty() ? statusText() : m_copy;
    m_controls.setText(kStatus, problem.empty() ? text : problem);
    m_controls.showProblem(problem, kStatus);
    const bool covers = m_offer && m_offer->coversProblem && !m_problem.empty();
    showOffer(m_copy.empty() && (covers || (problem.empty() && m_note.empty())));
}

void StripPresenter::showOffer(bool hasRoom) {
    const bool hadFocus = hasFocus();
    std::u16string text = textOfNextTrue(m_offer);
    const bool isStanding = text.empty();
    if (isStanding) {
        text = textOfNextTrue(m_standing);
    }
    const StripOffer* offer = offerOnTop();
    toolkit::CControlUI* label = m_controls.find(kNoticeText);
    if (label != nullptr && label->GetText() != text) {
        label->SetText(text);
        if (!isStanding || !std::exchange(m_isStandingSaid, true)) {
            label->announce(false);
        }
    }
    for (const std::u16string_view button : {kNoticeUndoButton, kRetargetButton, kFixButton,
                                             kFixOtherButton, kShowImportButton, kConvertButton}) {
        m_controls.setVisible(button, offers(button));
    }
    if (offer != nullptr) {
        styleOffer(*offer);
    }
    m_isOfferShown = hasRoom && offer != nullptr;
    m_controls.setVisible(kNoticePanel, m_isOfferShown);
    if (m_isOfferShown) {
        m_controls.setVisible(kStatus, false);
    }
    if (hadFocus) {
        keepFocus();
    }
}

void StripPresenter::styleOffer(const StripOffer& offer) {
    if (!offer.fix.empty()) {
        m_controls.setText(offer.answers.front().first, offer.fix);
    }
    const NoticeLook& look = offer.isFault ? kErrorLook : kNoteLook;
    if (std::exchange(m_look, &look) != &look) {
        apply(m_controls.find(kNoticePanel), m_controls.find(kNoteSign), look);
    }
}

std::u16string StripPresenter::statusText() const {
    if (!m_note.empty()) {
        return joinSentences({m_saved, m_note});
    }
    if (!m_nameHint.empty()) {
        return joinSentences({m_saved, m_nameHint});
    }
    return joinSentences({m_saved, m_zonesHint.empty() ? m_usual : m_zonesHint});
}

} // namespace ui
