#include "ui/DraftTexts.h"

#include "core/FileError.h"
#include "core/Reason.h"
#include "core/Texts.h"
#include "ui/TimeTexts.h"

namespace ui {

std::u16string draftText(const std::string& name, std::int64_t time, bool isSavedSince) {
    const std::u16string day = isToday(time) ? core::tr("DraftToday|today"_tr) : dateText(time);
    return core::tr(isSavedSince
                        ? "DraftSavedSince|Unsaved work of \"{0}\" from {1}, {2}, was kept; "
                          "the scene was saved after it."_tr
                        : "DraftKept|Unsaved work of \"{0}\" from {1}, {2}, was kept."_tr,
                    name, day, timeText(time));
}

std::u16string draftProblemText(const core::FileError& failure) {
    const core::FileError shown{failure.file, core::trReason(failure.reason)};
    return failure.empty()
               ? std::u16string()
               : core::tr("Unsaved work cannot be kept as a draft: {0}"_tr, shown.text());
}

} // namespace ui
