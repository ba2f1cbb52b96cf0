// The system's dialogs for files and folders, as windows use them: that for files opens where the
// author chose last, and what one does to the working directory is taken back.
#pragma once

#include <optional>
#include <string>
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
[[nodiscard]] std::optional<std::string> chooseFolder(platform::Gui& gui,
                                                      platform::FolderRequest request);

} // namespace ui
