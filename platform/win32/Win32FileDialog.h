// The system's dialogs for choosing files and folders.
#pragma once

#include <optional>
#include <string>

#include "platform/FileDialog.h"

namespace platform::win32 {

class Win32FileDialog final : public FileDialog {
public:
    [[nodiscard]] std::optional<OpenFilesResult>
    openFiles(const OpenFilesRequest& request) override;
    std::optional<std::string> chooseFolder(const FolderRequest& request) override;
};

} // namespace platform::win32
