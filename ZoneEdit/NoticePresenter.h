// The bar over the upper edge of the picture, which shows while there is something to say: an offer
// with its buttons, a refusal, or what the caption has no room for. The buttons take the mouse; a
// press beside them goes to the picture. Part of the zone editor. UI thread only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ZoneEdit/WindowTimer.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "ui/NoticeLook.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class NoticePresenter {
public:
    /// Both outlive it.
    NoticePresenter(ui::Controls controls, zone::ZoneSession& session);

    /// Stays until it is answered or closed, or until the next step. `buttons` are names of buttons
    /// on the bar; what they do is bound to their commands, which close the notice where they make
    /// no step. In place of what was offered before.
    void offer(std::u16string_view text, std::vector<std::u16string_view> buttons);
    /// Stays for three seconds, in front of everything else.
    void refuse(std::u16string_view text);
    /// What the caption has no room for; empty: it has. Behind an offer, unless it is a problem:
    /// only an offer that is made later stands in front of that. What is behind comes back
    /// afterwards, unless the author has closed it.
    void showCaption(std::u16string_view text, bool isProblem);

    [[nodiscard]] bool isShown() const { return !m_shown.empty(); }
    void close();
    /// What was said for a time only goes. For a timer of the window; false when it is not its own.
    bool timeIsUp(unsigned timer);

private:
    struct Line {
        std::u16string text;
        std::vector<std::u16string_view> buttons;
        bool isProblem = false;
    };

    void changed();
    void say(Line line);
    void endRefusal();
    [[nodiscard]] Line& front();
    void show();

    ui::Controls m_controls;
    WindowTimer m_timer{m_controls, kNoticeTimer};
    zone::ZoneSession& m_session;
    Line m_refusal;
    Line m_offer;
    Line m_caption;                ///< of the caption
    std::u16string m_captionText;  ///< the latest, closed or not
    bool m_isCaptionFirst = false; ///< a problem that is newer than the offer
    std::u16string m_shown;
    const ui::NoticeLook* m_look = &ui::kNoteLook;
    edit::Subscription m_changes;
};

} // namespace zoneedit
