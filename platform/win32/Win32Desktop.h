// The user's desktop through the shell.
#pragma once

#include <string>

#include "platform/Desktop.h"

namespace platform::win32 {

class Win32Desktop final : public Desktop {
public:
    [[nodiscard]] bool openFile(const std::string& path) override;
    void showError(const std::string& title, const std::string& text) override;
};

} // namespace platform::win32
