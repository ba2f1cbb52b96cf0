// The system's dialog for files, as windows use it: it opens where the author chose last, and what
// it does to the working directory is taken back.
#pragma once

#include <optional>
#include <string_view>

#include "platform/FileDialog.h"
#include "platform/Gui.h"

namespace core {
class EditorSettings;
}

namespace ui {

/// `settings` remembers the folder under `key`; null: nothing is remembered. The request's own
/// folder counts before the first time. UI thread only; other windows take input meanwhile.
[[nodiscard]] std::optional<platform::OpenFilesResult>
chooseFiles(platform::Gui& gui, core::EditorSettings* settings, std::string_view key,
            platform::OpenFilesRequest request);

} // namespace ui
