#include "ZoneEdit/PlayPresenter.h"

#include <cstdint>

#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"

namespace zoneedit {
namespace {

constexpr int kTickMs = 8;

} // namespace

PlayPresenter::PlayPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                             FramesPresenter& frames, platform::Gui& gui, const std::string& path)
    : m_controls(controls), m_video(video), m_frames(frames), m_path(path),
      m_transport(gui.sound(), *core::services().clock),
      m_changes(session.observe([this](const auto&) { pause(); })) {}

PlayPresenter::~PlayPresenter() {
    m_run.end();
}

void PlayPresenter::toggle() {
    if (m_isPlaying) {
        pause();
    } else if (m_video.frameCount() > 1) {
        const int frame = m_video.frame();
        play(frame < m_video.frameCount() - 1 ? frame : 0);
    }
}

void PlayPresenter::play(int from) {
    if (!m_clip) {
        m_clip = playback::OpenClip::open(m_path, *core::services().fileSystem,
                                          playback::OpenClip::Zones::left);
    }
    if (!m_clip) {
        return;
    }
    m_clip->seek(from);
    m_run.begin(*m_clip, from);
    m_timer.start(kTickMs);
    m_isPlaying = true;
    showButton();
}

void PlayPresenter::stop() {
    m_run.end();
    m_timer.stop();
    m_isPlaying = false;
    showButton();
}

void PlayPresenter::pause() {
    if (m_isPlaying) {
        stop();
        m_video.endPlayed();
    }
}

void PlayPresenter::tick() {
    if (!m_isPlaying) {
        return;
    }
    const bool isNew = m_run.tick([this](const std::uint8_t* pixels, platform::Size size) {
        m_video.showPlayed(m_run.frame(), pixels, size);
    });
    if (isNew) {
        m_frames.followPlaying();
    }
    if (m_run.isAtEnd()) {
        stop();
        m_frames.show(m_video.frameCount() - 1);
    }
}

void PlayPresenter::showButton() {
    if (toolkit::CControlUI* button = m_controls.find(kPlayButton)) {
        button->SetIcon(m_isPlaying ? u"Pause" : u"Play");
        button->SetLabel(core::tr(m_isPlaying ? "Pause"_tr : "Play"_tr));
    }
}

} // namespace zoneedit
