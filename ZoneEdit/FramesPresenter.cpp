#include "ZoneEdit/FramesPresenter.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Clock.h"
#include "toolkit/controls/CControlUI.h"

namespace zoneedit {
namespace {

/// A picture that never comes, of a damaged file, must not hold up the others.
constexpr std::int64_t kLongestWaitMs = 500;

std::u16string numberText(int number) {
    return core::displayText(std::to_string(std::max(number, 0)));
}

} // namespace

FramesPresenter::FramesPresenter(ui::Controls controls, EditedVideo& video,
                                 zone::ZoneSession& session, HeaderPresenter& header,
                                 std::function<void()> shown)
    : m_controls(controls), m_video(video), m_session(session), m_header(header),
      m_shown(std::move(shown)) {}

void FramesPresenter::showAll() {
    m_controls.setText(kTotalEdit, numberText(m_video.frameCount() - 1));
    showFrame();
}

void FramesPresenter::step(void (video::CVideoUI::*move)()) {
    if (video::CVideoUI* control = m_video.checkedControl(kStepLine)) {
        beginMove();
        (control->*move)();
        showFrame();
        m_video.repaintDueFrame();
    }
}

void FramesPresenter::goToTyped() {
    const video::CVideoUI* control = m_video.checkedControl(kTypedFrameLine);
    const toolkit::CControlUI* edit = m_controls.find(kFrameEdit);
    if (control == nullptr || !control->video() || edit == nullptr) {
        return;
    }
    if (edit->GetText() == m_shownText) { // nobody typed it: a clip that plays goes on
        showNumber();
        return;
    }
    const std::optional<int> target =
        frameFrom(edit->GetText(), std::max(m_video.frameCount() - 1, 0));
    show(target.value_or(m_video.frame()));
    showNumber();
    if (!target) {
        m_header.showNotice(core::tr(kNoFrameNumber));
    }
}

void FramesPresenter::beginMove() {
    m_wanted.reset();
    if (m_moves) {
        m_moves();
    }
}

void FramesPresenter::followPlaying() {
    showFrame(m_controls.hasFocus(kFrameEdit)); // its caret and selection would go each time
    m_video.paintNow();
}

void FramesPresenter::show(int frame) {
    beginMove();
    if (frame != m_video.frame() && m_video.control() != nullptr) {
        m_video.control()->GoToFrame(frame);
    }
    showFrame();
    m_video.repaintDueFrame();
}

void FramesPresenter::want(int frame) {
    const std::int64_t now = core::services().clock->ticks();
    if (m_video.isWaiting() && now - m_askedAt < kLongestWaitMs) {
        m_wanted = frame;
    } else {
        m_askedAt = now;
        show(frame);
    }
}

void FramesPresenter::showWanted() {
    if (m_wanted) {
        show(*m_wanted);
    }
}

void FramesPresenter::pictureShown() {
    if (m_wanted && !m_video.isWaiting()) {
        want(*m_wanted);
    }
}

void FramesPresenter::stepBy(int frames) {
    if (m_video.hasFrames() && frames != 0) {
        const int last = m_video.frameCount() - 1;
        const int room = frames > 0 ? last - m_video.frame() : m_video.frame();
        show(m_video.frame() + std::clamp(frames, -room, room));
    }
}

bool FramesPresenter::restoreText() {
    const bool wasTyped = editText() != m_shownText;
    showNumber();
    return wasTyped;
}

void FramesPresenter::showFrame(bool keepsText) {
    const bool isTyped = m_controls.hasFocus(kFrameEdit) && editText() != m_shownText;
    if (!isTyped && !keepsText) {
        showNumber();
    }
    m_header.showNotice({});
    m_session.showFrame(m_video.frame());
    m_shown();
}

std::u16string FramesPresenter::editText() const {
    const toolkit::CControlUI* edit = m_controls.find(kFrameEdit);
    return edit != nullptr ? edit->GetText() : std::u16string();
}

void FramesPresenter::showNumber() {
    m_shownText = numberText(m_video.frame());
    m_controls.setText(kFrameEdit, m_shownText);
}

} // namespace zoneedit
