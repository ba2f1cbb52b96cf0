#include "scene/SceneXml.h"

#include <algorithm>

#include <tinyxml2.h>

#include "core/File.h"
#include "core/Log.h"
#include "core/XmlTags.h"
#include "scene/SceneSummary.h"

namespace scene {

const tinyxml2::XMLElement* parseScene(std::string_view text, tinyxml2::XMLDocument& document,
                                       const char*& problem) {
    if (text.size() > kMaxSceneFileBytes || !core::areTagsModest(text) ||
        document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
        problem = kSceneNotLoaded;
        return nullptr;
    }
    const tinyxml2::XMLNode* first = document.FirstChild();
    if (!first) {
        problem = "Scene file is corrupt";
        return nullptr;
    }
    // A declaration or comment at the start has no children either and is rejected with this text.
    problem = "Scene file has extraneous xml header";
    return first->NoChildren() ? nullptr : first->ToElement();
}

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

namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        // Blanks alone would not be read as a text, nor would line ends stay as they are.
        const bool isBlank = letter == '\n' || letter == '\r' ||
                             (letter == ' ' && result.empty()) ||
                             (letter >= '\t' && letter <= '\f');
        if (isBlank || letter == '<' || letter == '&') {
            result += "&#" + std::to_string(static_cast<int>(letter)) + ";";
        } else {
            result += letter;
        }
    }
    return result;
}

} // namespace

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

bool EscapingSink::line(std::initializer_list<std::string_view> parts) {
    if (parts.size() != 3) {
        return TextSink::line(parts);
    }
    const std::string_view* part = parts.begin();
    return TextSink::line({part[0], escaped(part[1]), part[2]});
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
