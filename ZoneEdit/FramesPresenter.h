// Stepping through the frames of the video: the step commands and the number that is shown and
// typed. Part of the zone editor.
#pragma once

#include <functional>
#include <string>

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
    /// Gives the edit the number of the frame on show back. False when it has it.
    bool restoreText();

private:
    void step(void (video::CVideoUI::*move)());
    void showFrame();
    [[nodiscard]] std::u16string frameText() const;

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    HeaderPresenter& m_header;
    std::function<void()> m_shown;
};

} // namespace zoneedit
