// The system's dialogs for choosing files to open and folders.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

class NativeWindow;

struct OpenFilesRequest {
    NativeWindow* owner = nullptr; ///< not owned; takes no input meanwhile
    std::string title;             ///< UTF-8
    std::string filterName;        ///< "Theora Video Files"
    std::string filterPatterns;    ///< separated by ";", compared without case: "*.ogg;*.ogv"
    std::string initialFolder;
    /// "de": for the dialog's own words, where they are not the system's. Empty: English.
    std::string language;
};

struct OpenFilesResult {
    std::string folder;             ///< the folder of all chosen files, ending in a separator
    std::vector<std::string> names; ///< file names in it, at least one
};

struct FolderRequest {
    NativeWindow* owner = nullptr; ///< not owned; takes no input meanwhile
    std::string title;             ///< UTF-8
    std::string initialFolder;
    std::string language; ///< as above
};

class FileDialog {
public:
    virtual ~FileDialog() = default;
    /// Empty when cancelled. The current directory may differ afterwards: callers restore it.
    [[nodiscard]] virtual std::optional<OpenFilesResult>
    openFiles(const OpenFilesRequest& request) = 0;
    /// A folder that exists, made in the dialog perhaps; absolute. Otherwise as above.
    [[nodiscard]] virtual std::optional<std::string> chooseFolder(const FolderRequest& request) = 0;
};

} // namespace platform
