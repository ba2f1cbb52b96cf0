#include "scene/SceneSummary.h"

#include <set>

#include <tinyxml2.h>

#include "scene/SceneXml.h"

namespace scene {
namespace {

/// Of the last such child, as when the scene is loaded.
std::string childText(const tinyxml2::XMLElement& element, const char* name) {
    const auto* child = element.LastChildElement(name);
    return child != nullptr ? elementText(*child) : std::string();
}

} // namespace

std::optional<SceneSummary> summaryOf(std::string_view sceneXml) {
    tinyxml2::XMLDocument document;
    const char* problem = nullptr;
    const tinyxml2::XMLElement* root = parseScene(sceneXml, document, problem);
    if (root == nullptr) {
        return std::nullopt;
    }
    SceneSummary summary;
    const std::string first = childText(*root, "FirstBranch");
    std::string firstVideo;
    std::set<std::string> videos;
    for (const auto* branch = root->FirstChildElement("Branch"); branch != nullptr;
         branch = branch->NextSiblingElement("Branch")) {
        ++summary.branches;
        const std::string video = childText(*branch, "Filename");
        if (video.empty()) {
            continue;
        }
        videos.insert(video);
        if (summary.video.empty()) {
            summary.video = video;
        }
        if (firstVideo.empty() && childText(*branch, "ID") == first) {
            firstVideo = video;
        }
    }
    if (!firstVideo.empty()) {
        summary.video = firstVideo;
    }
    summary.videos = static_cast<int>(videos.size());
    return summary;
}

std::optional<std::string> renamedScene(std::string_view sceneXml, const std::string& name) {
    constexpr std::string_view kOpen = "<Name>";
    constexpr std::string_view kClose = "</Name>";
    tinyxml2::XMLDocument document;
    const char* problem = nullptr;
    const tinyxml2::XMLElement* root = parseScene(sceneXml, document, problem);
    if (root == nullptr) {
        return std::nullopt;
    }
    std::string renamed(sceneXml);
    if (root->FirstChildElement("Name") == nullptr) {
        return renamed; // such a scene is called as its folder
    }
    const std::size_t open = renamed.find(kOpen);
    const std::size_t close = renamed.find(kClose, open);
    if (open == std::string::npos || close == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t begin = open + kOpen.size();
    renamed.replace(begin, close - begin, name);
    // The last name in a file counts.
    tinyxml2::XMLDocument other;
    const tinyxml2::XMLElement* otherRoot = parseScene(renamed, other, problem);
    const tinyxml2::XMLElement* last =
        otherRoot != nullptr ? otherRoot->LastChildElement("Name") : nullptr;
    return last != nullptr && elementText(*last) == name ? std::optional(renamed) : std::nullopt;
}

} // namespace scene
