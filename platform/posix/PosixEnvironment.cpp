#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace platform {

std::vector<std::string> searchPath() {
    const char* const path = std::getenv("PATH");
    std::istringstream text(path != nullptr ? path : "");
    std::vector<std::string> folders;
    for (std::string folder; std::getline(text, folder, ':');) {
        folders.push_back(folder);
    }
    return folders;
}

const char* programSuffix() {
    return "";
}

UserFolders userFolders() {
    return {}; // here a start script knows them
}

std::string expandVariables(const std::string& text) {
    return text;
}

} // namespace platform
