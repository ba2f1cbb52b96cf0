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

bool FileSink::line(std::initializer_list<std::string_view> parts) {
    m_line.clear();
    for (const std::string_view part : parts) {
        m_line += part;
    }
    m_line += '\n';
    return m_file.writeString(m_line);
}

bool TextSink::line(std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) {
        m_text += part;
    }
    m_text += '\n';
    return true;
}

bool ComparingSink::skip(std::string_view part) {
    if (!m_rest.starts_with(part)) {
        return false;
    }
    m_rest.remove_prefix(part.size());
    return true;
}

bool ComparingSink::line(std::initializer_list<std::string_view> parts) {
    return std::all_of(parts.begin(), parts.end(),
                       [this](std::string_view part) { return skip(part); }) &&
           skip("\n");
}

} // namespace scene
