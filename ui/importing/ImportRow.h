// A row of the Import window's list: a file, what it is, and what becomes of it. Used by that
// window alone. UI thread only.
#pragma once

#include <memory>
#include <string_view>

#include "import/ImportTypes.h"
#include "toolkit/controls/CControlUI.h"

namespace ui {

/// The buttons of a row.
inline constexpr std::u16string_view kRowRemedy = u"ButtonRowRemedy";
inline constexpr std::u16string_view kRowEnd = u"ButtonRowEnd";

[[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeImportRow(const imports::ImportItem& item);

/// Has a row of makeImportRow show what its file is now.
void showImport(toolkit::CControlUI& row, const imports::ImportItem& item);

} // namespace ui
