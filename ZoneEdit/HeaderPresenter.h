// What the zone editor says at its top: the video's name, what became of the last save, what could
// not be read, and hints about the zones' names. Part of the zone editor.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/WindowTimer.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class NoticePresenter;

class HeaderPresenter {
public:
    /// All but `videoPath` outlive it.
    HeaderPresenter(ui::Controls controls, const EditedVideo& video, zone::ZoneSession& session,
                    NoticePresenter& notice, std::string videoPath);

    /// Called with whether the hint may show, which is so while nothing else is said.
    void setHintUse(std::function<void(bool)> allow) { m_allowHint = std::move(allow); }
    void showAll();
    /// In place of what is said otherwise, in front of a failed save, for some seconds; empty: no
    /// longer.
    void showNotice(std::u16string_view text);
    /// For a timer of the window. False when it is not its own.
    bool timeIsUp(unsigned timer);
    /// Saves the zones and says what became of it, until the next change.
    void save();

private:
    void refresh(const zone::ZoneSession::History::Changes& changes);
    void readNames();
    void show();
    void showLabels(const std::u16string& notice);
    /// Whether the label on show has no room for its text, which then goes to the bar.
    [[nodiscard]] bool isCut() const;
    [[nodiscard]] std::u16string problemText(const std::u16string& notice) const;

    ui::Controls m_controls;
    WindowTimer m_timer{m_controls, kHeaderTimer};
    const EditedVideo& m_video;
    zone::ZoneSession& m_session;
    NoticePresenter& m_bar;
    std::string m_videoPath;
    toolkit::CControlUI* m_label = nullptr; ///< that says something, if any does
    std::u16string m_namesHint;
    std::u16string m_saved;  ///< about the last save; empty after a failed one and after a change
    std::u16string m_notice; ///< about what was typed last
    std::function<void(bool)> m_allowHint;
    edit::Subscription m_changes;
};

} // namespace zoneedit
