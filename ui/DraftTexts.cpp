#include "ui/DraftTexts.h"

#include "core/Text.h"
#include "ui/TimeTexts.h"

namespace ui {

std::u16string draftText(const std::string& name, std::int64_t time, bool isSavedSince) {
    const std::u16string day = isToday(time) ? u"today" : dateText(time);
    const std::u16string end =
        isSavedSince ? u", was kept; the scene was saved after it." : u", was kept.";
    return core::displayText("Unsaved work of \"" + name + "\" from ") + day + u", " +
           timeText(time) + end;
}

std::u16string draftProblemText(const std::string& reason) {
    return reason.empty() ? std::u16string()
                          : core::displayText("Unsaved work cannot be kept as a draft: " + reason);
}

} // namespace ui
