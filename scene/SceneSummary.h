// What a list of scenes says about each of them, read from its file without loading it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scene {

/// A scene file that is larger is not read. About 200,000 actions, far more than any real scene;
/// parsing takes many times the file's size.
inline constexpr std::size_t kMaxSceneFileBytes = std::size_t{32} * 1024 * 1024;

struct SceneSummary {
    int branches = 0;
    int videos = 0;    ///< different ones
    std::string video; ///< of the first branch or, if it has none, of the next that has one
};

/// Empty for what SceneManager would not load. Any thread.
[[nodiscard]] std::optional<SceneSummary> summaryOf(std::string_view sceneXml);

/// The same file for a scene called `name`; all other bytes stay as they are. Empty for a file that
/// SceneManager would not load, or whose name stands in an unusual way.
[[nodiscard]] std::optional<std::string> renamedScene(std::string_view sceneXml,
                                                      const std::string& name);

} // namespace scene
