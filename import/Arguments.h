// Pieces of the converter's arguments. This module's sources only.
#pragma once

#include <string>
#include <vector>

#include "import/Source.h"

namespace imports {

using Arguments = std::vector<std::string>;

inline void append(Arguments& arguments, const Arguments& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
}

/// "30000/1001".
[[nodiscard]] inline std::string ratioText(const Ratio& ratio) {
    return std::to_string(ratio.top) + '/' + std::to_string(ratio.bottom);
}

} // namespace imports
