// The user's desktop through Qt.
#pragma once

#include <string>

#include "platform/Desktop.h"

namespace platform::qt {

class QtDesktop final : public Desktop {
public:
    [[nodiscard]] bool openFile(const std::string& path) override;
    void showError(const std::string& title, const std::string& text) override;
};

} // namespace platform::qt
