#include "ui/SavedState.h"

#include <string_view>

#include "core/Services.h"
#include "platform/FileSystem.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/TimeTexts.h"

namespace ui {
namespace {

constexpr std::u16string_view kLabel = u"LabelState";
constexpr std::u16string_view kNotSaved = u"Not saved";
constexpr std::u16string_view kModified = u"Modified";

std::u16string_view colorOf(std::u16string_view text) {
    return text == kNotSaved ? u"danger" : text == kModified ? u"warn" : u"hint";
}

} // namespace

std::u16string savedStateText(const SavedFacts& facts) {
    if (facts.saveFailed) {
        return std::u16string(kNotSaved);
    }
    if (!facts.savedAt) {
        return facts.hasContents ? u"Not saved yet" : u"";
    }
    if (facts.isModified) {
        return std::u16string(kModified);
    }
    const std::int64_t time = *facts.savedAt;
    return u"Saved " + (isToday(time) ? timeText(time) : dateText(time));
}

std::optional<std::int64_t> fileTime(const std::string& path) {
    const auto info = core::services().fileSystem->info(path);
    return info ? std::optional(info->modified) : std::nullopt;
}

void SavedState::show(const SavedFacts& facts) {
    toolkit::CControlUI* label = m_controls.find(kLabel);
    const std::u16string text = savedStateText(facts);
    if (label != nullptr && label->GetText() != text) {
        label->SetAttribute(u"textcolor", colorOf(text));
        const bool isNews = !label->GetText().empty(); // not while the window opens
        label->SetText(text);
        if (isNews) {
            label->announce(text == kNotSaved);
        }
    }
}

void SavedState::showDraftProblem(const std::u16string& text) {
    if (toolkit::CControlUI* label = m_controls.find(kLabel)) {
        label->SetToolTip(text);
    }
}

} // namespace ui
