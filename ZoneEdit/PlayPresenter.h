// Plays the edited video in its place, with sound, from the frame on show. Whatever edits or goes
// to a frame ends playing on the frame that is on show then. Part of the zone editor.
#pragma once

#include <memory>
#include <string>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/WindowTimer.h"
#include "edit/Observers.h"
#include "platform/Gui.h"
#include "playback/ClipRun.h"
#include "playback/OpenClip.h"
#include "playback/Transport.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class FramesPresenter;

class PlayPresenter {
public:
    /// All outlive it.
    PlayPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                  FramesPresenter& frames, platform::Gui& gui, const std::string& path);
    ~PlayPresenter();
    PlayPresenter(const PlayPresenter&) = delete;
    PlayPresenter& operator=(const PlayPresenter&) = delete;

    /// From the first frame on when the last one is on show.
    void toggle();
    void pause();
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }
    /// For kPlayTimer.
    void tick();

private:
    void play(int from);
    void stop();
    void showButton();

    ui::Controls m_controls;
    WindowTimer m_timer{m_controls, kPlayTimer};
    EditedVideo& m_video;
    FramesPresenter& m_frames;
    std::string m_path;
    std::unique_ptr<playback::OpenClip> m_clip; ///< opened when it is played first
    playback::Transport m_transport;
    playback::ClipRun m_run{m_transport};
    bool m_isPlaying = false;
    edit::Subscription m_changes;
};

} // namespace zoneedit
