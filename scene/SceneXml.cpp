#include "scene/SceneXml.h"

#include <algorithm>

#include <tinyxml2.h>

#include "core/File.h"
#include "core/Log.h"

namespace scene {

std::string elementText(const tinyxml2::XMLElement& element) {
    for (const tinyxml2::XMLNode* node = element.FirstChild(); node; node = node->NextSibling()) {
        if (node->ToText()) {
            return node->Value();
        }
    }
    return {};
}

void reportUnknownNode(const tinyxml2::XMLElement& element) {
    core::Log::get()->Error("Unknown node type: %s", element.Name());
}

bool writeLines(core::File& file, std::initializer_list<std::string> lines) {
    return std::all_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return file.writeString(line); });
}

} // namespace scene
