// How the scene file's elements are read and written; shared by this module's sources only.
#pragma once

#include <initializer_list>
#include <string>

namespace core {
class File;
}
namespace tinyxml2 {
class XMLElement;
}

namespace scene {

/// The first text inside `element`, white space kept; empty when it holds none.
[[nodiscard]] std::string elementText(const tinyxml2::XMLElement& element);
/// Logs an element that nothing here knows.
void reportUnknownNode(const tinyxml2::XMLElement& element);
/// Writes the lines in order; false at the first write that fails.
[[nodiscard]] bool writeLines(core::File& file, std::initializer_list<std::string> lines);

} // namespace scene
