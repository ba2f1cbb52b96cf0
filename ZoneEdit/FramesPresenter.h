// Stepping through the frames of the video: the step commands and the number that is shown and
// typed. Part of the zone editor.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "ZoneEdit/EditedVideo.h"
#include "ui/Controls.h"
#include "video/CVideoUI.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class HeaderPresenter;

class FramesPresenter {
public:
    /// All outlive it. `shown` is called whenever another frame is on show.
    FramesPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                    HeaderPresenter& header, std::function<void()> shown);

    void showAll();
    // Each stops at the first and the last frame.
    void back() { step(&video::CVideoUI::PrevFrame); }
    void backTen() { step(&video::CVideoUI::PrevTenFrames); }
    void forward() { step(&video::CVideoUI::NextFrame); }
    void forwardTen() { step(&video::CVideoUI::NextTenFrames); }
    /// To the number in the edit; the header says when it holds none.
    void goToTyped();
    void show(int frame);
    /// As show(), once the picture that was asked for last is there; of several such frames only
    /// the last one counts.
    void want(int frame);
    /// Shows the frame that is still wanted without waiting.
    void showWanted();
    /// Another picture is on the screen.
    void pictureShown();
    /// Playing has shown another frame.
    void followPlaying();
    /// What is called before the author goes to a frame. Empty: nothing.
    void setMoveListener(std::function<void()> moves) { m_moves = std::move(moves); }
    /// Cut to the clip.
    void stepBy(int frames);
    /// Gives the edit the number of the frame on show back. False when it has it.
    bool restoreText();

private:
    void step(void (video::CVideoUI::*move)());
    /// `keepsText`: of the edit, as a typed one is kept.
    void showFrame(bool keepsText = false);
    void beginMove();
    /// What the edit shows; none without it.
    [[nodiscard]] std::u16string editText() const;
    void showNumber();

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    HeaderPresenter& m_header;
    std::function<void()> m_shown;
    std::function<void()> m_moves;
    std::u16string m_shownText; ///< in the edit, unless the author types
    std::optional<int> m_wanted;
    std::int64_t m_askedAt = 0; ///< when m_wanted's predecessor was asked for, in ticks
};

} // namespace zoneedit
