#include "platform/Composition.h"

#include <utility>

namespace platform {

void sendComposition(const Composition& report, Modifiers modifiers, bool& hasPreedit,
                     const std::function<bool(const Event&)>& send) {
    const auto tell = [&](EventKind kind, const std::u16string& text) {
        Event event;
        event.kind = kind;
        event.modifiers = modifiers;
        event.text = text;
        return send(event);
    };
    const bool preedits = !report.preedit.empty();
    const bool had = std::exchange(hasPreedit, preedits);
    if (report.committed.empty()) {
        if (had || preedits) {
            tell(EventKind::textPreedit, report.preedit);
        }
        return;
    }
    const bool lives = !(had || preedits) || tell(EventKind::textPreedit, {});
    if (lives && tell(EventKind::textInput, report.committed) && preedits) {
        tell(EventKind::textPreedit, report.preedit);
    }
}

} // namespace platform
