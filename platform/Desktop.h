// What the program asks of the user's desktop beyond its own windows.
#pragma once

#include <string>

namespace platform {

/// UI thread only. All texts and paths are UTF-8.
class Desktop {
public:
    virtual ~Desktop() = default;
    /// Opens a local file in the program that the user has for its kind: a page in the browser.
    /// Does not wait for that program. `path` is absolute. False when nothing opens it.
    [[nodiscard]] virtual bool openFile(const std::string& path) = 0;
    /// Shows an error in a message box of the system's own and returns once it is closed. Needs no
    /// window and no skin.
    virtual void showError(const std::string& title, const std::string& text) = 0;
};

} // namespace platform
