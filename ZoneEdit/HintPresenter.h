// The line in the caption that tells what the chosen tool does, what holding Ctrl or Shift makes of
// a drag, and for some seconds why a click did nothing. In a narrow window it takes the place of
// the video's name, while there is something new to say. Part of the zone editor. UI thread only.
#pragma once

#include "ZoneEdit/WindowTimer.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/Controls.h"

namespace zoneedit {

inline constexpr core::Text kNoPointHere = "There is no point here"_tr;
inline constexpr core::Text kNoZoneYet = "Add a zone first: press +"_tr;
inline constexpr core::Text kNoPointChosen = "Choose a point first, with Move"_tr;

class NoticePresenter;

class HintPresenter {
public:
    /// Both outlive it.
    HintPresenter(ui::Controls controls, NoticePresenter& notice)
        : m_controls(controls), m_notice(notice) {}

    /// By its number.
    void showTool(int tool);
    /// As the author chose it.
    void chooseTool(int tool);
    void showHeld(platform::Modifiers held, bool isDragging);
    /// Why a click did nothing. On the bar where the caption has something more important to say.
    void explain(core::Text reason);
    /// Whether the caption has nothing more important to say.
    void allow(bool isAllowed);
    void windowSized() { place(); }
    /// For a timer of the window. False when it is not its own.
    bool timeIsUp(unsigned timer);

private:
    [[nodiscard]] core::Text usual() const;
    void show();
    void place();
    /// Where it is cut otherwise: the window's name goes, or the video's has no more than it needs.
    void makeRoom(bool isNarrow);
    /// For some seconds from now on it is new.
    void startNews();

    ui::Controls m_controls;
    WindowTimer m_timer{m_controls, kHintTimer};
    NoticePresenter& m_notice;
    int m_tool = 0;
    platform::Modifiers m_held;
    bool m_isDragging = false;
    core::Text m_reason;
    bool m_isNews = false;
    bool m_isAllowed = true;
};

} // namespace zoneedit
