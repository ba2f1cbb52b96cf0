#include "ZoneEdit/NoticePresenter.h"

#include <algorithm>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "toolkit/controls/CControlUI.h"
#include "zone/StepReach.h"

namespace zoneedit {
namespace {

constexpr int kRefusalMs = 3000;

} // namespace

NoticePresenter::NoticePresenter(ui::Controls controls, zone::ZoneSession& session)
    : m_controls(controls), m_session(session),
      m_changes(session.observe([this](const auto&) { changed(); })) {}

void NoticePresenter::offer(std::u16string_view text, std::vector<std::u16string_view> buttons) {
    say({std::u16string(text), std::move(buttons)});
}

void NoticePresenter::refuse(std::u16string_view text) {
    m_refusal = {std::u16string(text), {}};
    show();
    m_timer.start(kRefusalMs);
}

void NoticePresenter::showCaption(std::u16string_view text, bool isProblem) {
    if (m_captionText == text) {
        return;
    }
    m_captionText = text;
    m_caption = {m_captionText, {}, isProblem};
    m_isCaptionFirst = isProblem && !text.empty();
    if (m_isCaptionFirst) {
        endRefusal();
    }
    show();
}

void NoticePresenter::close() {
    front() = {};
    show();
}

bool NoticePresenter::timeIsUp(unsigned timer) {
    const bool isUp = m_timer.isUp(timer);
    if (isUp) {
        endRefusal();
        show();
    }
    return isUp;
}

void NoticePresenter::changed() {
    const zone::StepReach reach = m_session.reach();
    if (reach.kind == zone::StepReach::Kind::plain) {
        say({});
        return;
    }
    std::vector<std::u16string_view> buttons{kNoticeUndoButton};
    if (reach.kind == zone::StepReach::Kind::overOwn) {
        buttons.push_back(kOnlyThisFrameButton);
    } else if (m_session.canExtend()) {
        buttons.push_back(kOnAllFramesButton);
    }
    say({reachText(reach), std::move(buttons)});
}

void NoticePresenter::say(Line line) {
    endRefusal();
    m_offer = std::move(line);
    m_isCaptionFirst = false;
    show();
}

NoticePresenter::Line& NoticePresenter::front() {
    if (!m_refusal.text.empty()) {
        return m_refusal;
    }
    const bool isCaption = m_offer.text.empty() || (m_isCaptionFirst && !m_caption.text.empty());
    return isCaption ? m_caption : m_offer;
}

void NoticePresenter::show() {
    const Line& line = front();
    toolkit::CControlUI* panel = m_controls.find(kNoticePanel);
    if (panel == nullptr || (line.text.empty() && m_shown.empty())) {
        return;
    }
    const bool isNews = m_shown != line.text;
    m_shown = line.text;
    for (const std::u16string_view name : kNoticeButtons) {
        m_controls.setVisible(name, std::find(line.buttons.begin(), line.buttons.end(), name) !=
                                        line.buttons.end());
    }
    toolkit::CControlUI* label = m_controls.find(kNoticeText);
    const ui::NoticeLook& look = line.isProblem ? ui::kWarningLook : ui::kNoteLook;
    if (std::exchange(m_look, &look) != &look) {
        ui::apply(panel, m_controls.find(kNoticeSign), look);
        if (label != nullptr) {
            label->SetAttribute(u"textcolor", look.text);
        }
    }
    panel->SetVisible(isShown());
    if (label != nullptr) {
        label->SetText(m_shown);
        if (isNews && isShown()) {
            label->announce(line.isProblem);
        }
    }
}

void NoticePresenter::endRefusal() {
    m_refusal = {};
    m_timer.stop();
}

} // namespace zoneedit
