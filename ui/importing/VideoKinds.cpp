#include "ui/importing/VideoKinds.h"

#include <algorithm>
#include <cstddef>

#include "core/Paths.h"

namespace ui {

bool hasVideoName(const std::string& path) {
    const std::string name = core::fileName(path);
    const std::size_t dot = name.find_last_of('.');
    if (dot == std::string::npos) {
        return false;
    }
    std::string wanted = "*" + name.substr(dot) + ";";
    std::transform(wanted.begin(), wanted.end(), wanted.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return (std::string(kVideoPatterns) + ";").find(wanted) != std::string::npos;
}

} // namespace ui
