// The texts about videos being imported, made of what the import module knows. Used by the Import
// window and the branch editor's strip.
#pragma once

#include <string>

#include "import/ImportTypes.h"

namespace ui {

/// "0:42.10, 1920 × 1080"; empty before the file was looked at.
[[nodiscard]] std::u16string importFactsText(const imports::ImportItem& item);

/// What has become of a file, in one line or two.
struct ImportStateText {
    std::u16string first;
    std::u16string second; ///< the reason of a failure; else empty
    /// Both in one line, as a screen reader says it.
    [[nodiscard]] std::u16string whole() const {
        return second.empty() ? first : first + u" " + second;
    }
};
[[nodiscard]] ImportStateText importStateText(const imports::ImportItem& item);

/// What the author can do about a failure: "Keep Both"; empty for nothing.
[[nodiscard]] std::u16string importRemedyText(const imports::ImportFailure& failure);
[[nodiscard]] std::u16string importRemedyToolTip(const imports::ImportFailure& failure);

/// "About 12 MB a minute, 1280 × 720 at most".
[[nodiscard]] std::u16string qualityText(imports::Quality quality);

/// 'Importing reception.mov: 46 %.'
[[nodiscard]] std::u16string importingText(const imports::ImportItem& item);
/// What the strip says of a file that is done or has failed.
[[nodiscard]] std::u16string importEndText(const imports::ImportItem& item);

} // namespace ui
