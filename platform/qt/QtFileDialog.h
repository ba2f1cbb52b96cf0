// The dialogs for choosing files and folders, drawn by Qt itself, so that they are the same on
// every desktop and work without one.
#pragma once

#include <optional>
#include <string>

#include "platform/FileDialog.h"

namespace platform::qt {

class QtFileDialog final : public FileDialog {
public:
    [[nodiscard]] std::optional<OpenFilesResult>
    openFiles(const OpenFilesRequest& request) override;
    std::optional<std::string> chooseFolder(const FolderRequest& request) override;
};

} // namespace platform::qt
