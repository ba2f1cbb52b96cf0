// The strip along the bottom: what the last action did, what went wrong, and the quiet hints about
// the state of the scene. Used by the branch editor.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/NoticeLook.h"
#include "ui/branch_editor/StripOffer.h"

namespace toolkit {
class CControlUI;
}

namespace ui {

/// UI thread only.
class StripPresenter {
public:
    /// The session outlives it.
    StripPresenter(Controls controls, scene::SceneSession& session);

    /// A copy under way; in place of all else until an empty text ends it.
    void showCopy(const std::u16string& text);
    /// What an action did, and what went wrong with it. Gone with the next action.
    void showNote(const std::u16string& note, const std::u16string& problem = {});
    /// A note that comes up in the middle of an action, as when the author leaves a field: what
    /// else the same key or press does, does not take it away.
    void showLastingNote(const std::u16string& note);
    /// Whether such a note has come up by the input at hand; once for each note.
    [[nodiscard]] bool takeFreshNote() { return std::exchange(m_noteIsFresh, false); }
    /// A save ended; shown until the first change of the scene, or until the next save.
    void showSaved(bool good);
    /// What there is to know about the zones of the branch on show; empty for nothing.
    void showZonesHint(const std::u16string& hint);

    /// Shows an offer in place of the one before, and of everything but copies, notes and problems.
    /// One that is not true, nor any after it, changes nothing.
    void offer(StripOffer offer);
    /// Another finding is chosen: what would have mended the one before goes.
    void forgetRemedy();
    /// An offer that lies under all others: it comes back when they are gone.
    void setStanding(StripOffer offer);
    /// What the offers say may have changed, though the scene has not.
    void refreshOffers() { update(); }
    /// Whether an offer with this button is shown.
    [[nodiscard]] bool offers(std::u16string_view button) const;
    /// Runs what the offer's button does; the offer is answered.
    void answer(std::u16string_view button);
    /// Whether an offer is on show.
    [[nodiscard]] bool isOffering() const { return m_isOfferShown; }
    void closeOffer();

    /// The author presses a key or a button.
    void inputBegins();
    /// The author acts: the note of the last action goes.
    void actionBegins();

private:
    void changed(const scene::SceneSession::Changes& changes);
    /// False for changes of actions alone that leave all names as good as they were.
    [[nodiscard]] bool mayChangeHint(const scene::SceneSession::Changes& changes) const;
    /// Looks for names that break the scene's file or keep it out of the list.
    void checkNames();
    void update();
    /// Goes on to the next offer until one is true. The text of that one; empty for none.
    [[nodiscard]] static std::u16string textOfNextTrue(std::optional<StripOffer>& offer);
    /// The one on show is over.
    void endOffer(std::optional<StripOffer> offer);
    /// Shows the offer, or hides its bar.
    void showOffer(bool hasRoom);
    [[nodiscard]] bool hasFocus() const;
    /// When the strip's buttons went, and the focus with them: back to where the author was.
    void keepFocus();
    void styleOffer(const StripOffer& offer);
    /// The offer on top; null for none.
    [[nodiscard]] const StripOffer* offerOnTop() const;
    [[nodiscard]] std::u16string statusText() const;

    Controls m_controls;
    scene::SceneSession& m_session;
    std::u16string m_usual; ///< as the layout has it
    std::u16string m_copy;
    std::u16string m_saved;
    std::u16string m_note;
    std::u16string m_problem;
    std::u16string m_nameHint;
    std::u16string m_zonesHint;
    std::optional<StripOffer> m_offer;
    std::optional<StripOffer> m_standing;
    bool m_isStandingSaid = false; ///< read out: its numbers are not, again and again
    const NoticeLook* m_look = &kNoteLook;
    bool m_isOfferShown = false;
    bool m_noteIsFresh = false;
    toolkit::CControlUI* m_focus = nullptr; ///< outside the strip, at the last input
    std::weak_ptr<const void> m_focusLife;
    edit::Subscription m_subscription;
};

} // namespace ui
