#include "ui/SavedState.h"

#include <string_view>

#include "core/Services.h"
#include "core/Texts.h"
#include "platform/FileSystem.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/TimeTexts.h"

namespace ui {
namespace {

constexpr std::u16string_view kLabel = u"LabelState";
constexpr core::Text kNotSaved = "Not saved"_tr;
constexpr core::Text kModified = "Modified"_tr;

std::u16string_view colorOf(const SavedFacts& facts) {
    const bool isModified = facts.savedAt && facts.isModified;
    return facts.saveFailed ? u"danger" : isModified ? u"warn" : u"hint";
}

} // namespace

std::u16string savedStateText(const SavedFacts& facts) {
    if (facts.saveFailed) {
        return core::tr(kNotSaved);
    }
    if (!facts.savedAt) {
        return facts.hasContents ? core::tr("Not saved yet"_tr) : std::u16string();
    }
    if (facts.isModified) {
        return core::tr(kModified);
    }
    const std::int64_t time = *facts.savedAt;
    return core::tr("SavedWhen|Saved {0}"_tr, isToday(time) ? timeText(time) : dateText(time));
}

std::optional<std::int64_t> fileTime(const std::string& path) {
    const auto info = core::services().fileSystem->info(path);
    return info ? std::optional(info->modified) : std::nullopt;
}

void SavedState::show(const SavedFacts& facts) {
    toolkit::CControlUI* label = m_controls.find(kLabel);
    const std::u16string text = savedStateText(facts);
    if (label != nullptr && label->GetText() != text) {
        label->SetAttribute(u"textcolor", colorOf(facts));
        const bool isNews = !label->GetText().empty(); // not while the window opens
        label->SetText(text);
        if (isNews) {
            label->announce(facts.saveFailed);
        }
    }
}

void SavedState::showDraftProblem(const std::u16string& text) {
    if (toolkit::CControlUI* label = m_controls.find(kLabel)) {
        label->SetToolTip(text);
    }
}

} // namespace ui
