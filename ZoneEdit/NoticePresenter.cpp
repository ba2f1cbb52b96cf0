#include "ZoneEdit/NoticePresenter.h"

#include <algorithm>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "zone/StepReach.h"

namespace zoneedit {
namespace {

constexpr int kRefusalMs = 3000;

struct Colors {
    std::u16string_view fill;
    std::u16string_view edge;
    std::u16string_view text;
};
constexpr Colors kNote{u"#FFE9F5FF", u"#FF1D63AD", u"#FF1C2733"};
constexpr Colors kProblem{u"#FFFFF0CF", u"#FFB97A0A", u"#FF7A4A00"};

} // namespace

NoticePresenter::NoticePresenter(ui::Controls controls, zone::ZoneSession& session)
    : m_controls(controls), m_session(session),
      m_changes(session.observe([this](const auto&) { changed(); })) {}

void NoticePresenter::offer(std::u16string_view text, std::vector<std::u16string_view> buttons) {
    say({std::u16string(text), std::move(buttons)});
}

void NoticePresenter::refuse(std::u16string_view text) {
    say({std::u16string(text), {}});
    if (platform::NativeWindow* window = m_controls.manager().GetWindow()) {
        window->timers().start(kTimer, kRefusalMs);
    }
}

void NoticePresenter::showCaption(std::u16string_view text, bool isProblem) {
    if (m_captionText == text) {
        return;
    }
    m_captionText = text;
    m_caption = {m_captionText, {}, isProblem};
    if (!text.empty()) {
        m_line = {};
    }
    show();
}

void NoticePresenter::close() {
    stopTimer();
    // The caption's comes back after another line, but not after itself.
    Line& closed = m_line.text.empty() ? m_caption : m_line;
    closed = {};
    show();
}

void NoticePresenter::timeIsUp() {
    stopTimer();
    m_line = {};
    show();
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
    stopTimer();
    m_line = std::move(line);
    show();
}

void NoticePresenter::show() {
    const Line& line = m_line.text.empty() ? m_caption : m_line;
    toolkit::CControlUI* panel = m_controls.find(kNoticePanel);
    if (panel == nullptr || (line.text.empty() && m_shown.empty())) {
        return;
    }
    m_shown = line.text;
    for (const std::u16string_view name : kNoticeButtons) {
        m_controls.setVisible(name, std::find(line.buttons.begin(), line.buttons.end(), name) !=
                                        line.buttons.end());
    }
    const Colors& colors = line.isProblem ? kProblem : kNote;
    panel->SetAttribute(u"bkcolor", colors.fill);
    panel->SetAttribute(u"bordercolor", colors.edge);
    if (toolkit::CControlUI* label = m_controls.find(kNoticeText)) {
        label->SetAttribute(u"textcolor", colors.text);
        label->SetText(m_shown);
    }
    panel->SetVisible(isShown());
}

void NoticePresenter::stopTimer() {
    if (platform::NativeWindow* window = m_controls.manager().GetWindow()) {
        window->timers().stop(kTimer);
    }
}

} // namespace zoneedit
