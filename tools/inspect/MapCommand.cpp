#include <iostream>
#include <memory>
#include <string>

#include "core/File.h"
#include "core/SafeSave.h"
#include "map/MapScene.h"
#include "map/MapText.h"
#include "scene/SceneManager.h"
#include "tools/inspect/Command.h"

namespace inspect {
namespace {

bool write(const std::string& path, const std::string& text) {
    core::SafeSave save(core::SafeSave::Failures::silent);
    if (save.open(path, "wb") && save.file().writeString(text) && save.prepare() && save.commit()) {
        return true;
    }
    std::cerr << "quorvel-inspect: cannot write " << path << '\n';
    return false;
}

} // namespace

int runMap(const Arguments& arguments, std::ostream& /*out*/) {
    Arguments rest = arguments;
    std::string svg;
    std::string dot;
    if (!takeOption(rest, "--svg", svg) || !takeOption(rest, "--dot", dot) || rest.size() != 1 ||
        rest.front().empty() || (svg.empty() && dot.empty())) {
        static_cast<void>(badUsage("map", "one folder and a file to write are needed"));
        return kFindings;
    }
    const std::shared_ptr<scene::SceneManager> scene = readScene(rest.front());
    if (!scene) {
        return kFindings;
    }
    const map::MapScene content = map::readMap(*scene);
    const bool isWritten = (svg.empty() || write(svg, map::svgText(content))) &&
                           (dot.empty() || write(dot, map::dotText(content)));
    return isWritten ? kSuccess : kFindings;
}

} // namespace inspect
