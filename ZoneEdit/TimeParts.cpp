#include "ZoneEdit/TimeParts.h"

#include "ZoneEdit/WindowTimer.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"

namespace zoneedit {

TimeParts::TimeParts(ui::CommandSet& commands, const Links& links)
    : m_controls(links.controls), m_video(links.video),
      m_frames(links.controls, links.video, links.session, links.header,
               [this, frameShown = links.frameShown] {
                   m_timeline.showFrame();
                   frameShown();
               }),
      m_selection(links.video.frameCount()),
      m_range(links.controls, links.video, m_selection, links.header),
      m_timeline(links.controls, links.video, links.session, links.keys, m_selection, m_frames) {
    if (m_video.control() != nullptr) {
        m_video.control()->setPictureListener([this] { m_frames.pictureShown(); });
        m_player = std::make_unique<PlayPresenter>(links.controls, m_video, links.session, m_frames,
                                                   links.gui, links.path);
        m_frames.setMoveListener([this] { m_player->pause(); });
    }
    bind(commands);
}

void TimeParts::bind(ui::CommandSet& commands) {
    namespace command = ui::command;
    commands.bind(command::kBackTen, [this] { m_frames.backTen(); });
    commands.bind(command::kBack, [this] { m_frames.back(); });
    commands.bind(command::kForward, [this] { m_frames.forward(); });
    commands.bind(command::kForwardTen, [this] { m_frames.forwardTen(); });
    commands.bind(
        command::kPlayVideo, [this] { m_player->toggle(); },
        [this] { return m_player && m_video.frameCount() > 1; });
    commands.bind(command::kFirstFrame, [this] { m_timeline.first(); });
    commands.bind(command::kLastFrame, [this] { m_timeline.last(); });
    commands.bind(command::kKeyBefore, [this] { m_timeline.keyBefore(); });
    commands.bind(command::kNextKey, [this] { m_timeline.nextKey(); });
    commands.bind(command::kTimelineFit, [this] { m_timeline.fit(); });
    commands.bind(command::kRangeBegin, [this] { m_range.begin(); });
    commands.bind(command::kRangeEnd, [this] { m_range.end(); });
}

void TimeParts::showAll() {
    m_frames.showAll();
    m_timeline.showAll();
}

void TimeParts::note(const platform::Event& event) {
    const bool isLeft = event.button == platform::MouseButton::left;
    if (m_player && event.kind == platform::EventKind::mouseDown && isLeft &&
        m_video.shows(event.position) &&
        m_controls.manager().FindControl(event.position) == m_video.control()) {
        m_player->pause();
    }
}

bool TimeParts::handle(const platform::Event& event) {
    const bool isTick =
        m_player && event.kind == platform::EventKind::timer && event.timerId == kPlayTimer;
    if (isTick) {
        m_player->tick();
    }
    return isTick;
}

bool TimeParts::typed(std::u16string_view field) {
    if (field == kFrameEdit) {
        m_frames.goToTyped();
        return true;
    }
    return m_range.typed(field);
}

bool TimeParts::stopPlaying() {
    const bool isPlaying = m_player && m_player->isPlaying();
    if (isPlaying) {
        m_player->pause();
    }
    return isPlaying;
}

bool TimeParts::restoreText() {
    return (m_controls.hasFocus(kFrameEdit) && m_frames.restoreText()) || m_range.restoreText();
}

} // namespace zoneedit
