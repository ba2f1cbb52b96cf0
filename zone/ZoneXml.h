// Reading the zone information file. This module's sources only.
#pragma once

#include <string>

namespace tinyxml2 {
class XMLElement;
}

namespace zone {

/// The text that `element` starts with; empty when it starts with anything else.
[[nodiscard]] std::string firstText(const tinyxml2::XMLElement& element);

} // namespace zone
