#include "map/MapText.h"

#include <array>
#include <cstddef>
#include <vector>

#include "core/Text.h"
#include "core/Texts.h"
#include "map/MapLayout.h"

namespace map {
namespace {

constexpr int kEdge = 24;
constexpr std::array<const char*, 4> kColors{"#465362", "#1D63AD", "#0B6B60", "#6A3D9E"};

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : core::storedText(core::displayText(text))) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            if (byte < 0x20) {
                result += "\xEF\xBF\xBD";
            } else {
                result += c;
            }
        }
    }
    return result;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : core::storedText(core::displayText(text))) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return result + '"';
}

std::string attribute(const char* name, int value) {
    return std::string(" ") + name + "=\"" + std::to_string(value) + "\"";
}

const char* colorOf(const MapAction& action) {
    const bool isKnown = action.type >= 0 && static_cast<std::size_t>(action.type) < kColors.size();
    return kColors.at(isKnown ? static_cast<std::size_t>(action.type) : 0);
}

std::string box(int x, int y, int width, int height, const char* fill) {
    return "<rect" + attribute("x", x) + attribute("y", y) + attribute("width", width) +
           attribute("height", height) + " rx=\"3\" fill=\"" + fill + "\" stroke=\"#7C8A9A\"/>\n";
}

std::string text(int x, int y, const std::string& content, const char* fill) {
    return "<text" + attribute("x", x) + attribute("y", y) + " fill=\"" + fill + "\">" +
           escaped(content) + "</text>\n";
}

std::string point(MapPoint point) {
    return std::to_string(point.x + kEdge) + " " + std::to_string(point.y + kEdge);
}

std::string drawnLine(const MapLine& line, const MapAction& action) {
    std::string way = "M" + point(line.points.front());
    for (std::size_t i = 1; i < line.points.size(); ++i) {
        const MapPoint from = line.points[i - 1];
        const MapPoint to = line.points[i];
        const int half = (to.x - from.x) / 2;
        way += i % 2 == 0 ? " L" + point(to)
                          : " C" + point({from.x + half, from.y}) + " " +
                                point({to.x - half, to.y}) + " " + point(to);
    }
    return "<path d=\"" + way + "\" fill=\"none\" stroke=\"" + colorOf(action) +
           "\" marker-end=\"url(#arrow)\"" + (action.type == 3 ? " stroke-dasharray=\"5 3\"" : "") +
           "/>\n";
}

/// Where an action leads that no line shows, as a line of text.
std::string rowText(const MapAction& action, bool hasLine) {
    return hasLine || action.target.empty() ? action.text
                                            : action.text + " \xE2\x86\x92 " + action.target;
}

std::string drawnNode(const MapBranch& branch, const MapNode& node,
                      const std::vector<bool>& hasLine, bool isFirst) {
    std::string result = "<g>\n<title>" + escaped(branch.name) + "</title>\n";
    const int x = node.x + kEdge;
    int y = node.y + kEdge;
    result += box(x, y, node.width, node.height, isFirst ? "#C1E3FF" : "#FFFFFF");
    result += text(x + 6, y + kStillHeight / 2, branch.video, "#596675");
    y += kStillHeight + 15;
    result += text(x + 6, y, branch.name, "#1C2733");
    for (std::size_t i = 0; i < branch.actions.size(); ++i) {
        y += 17;
        const MapAction& action = branch.actions[i];
        result +=
            text(x + 22, y, rowText(action, hasLine[i]), action.isBroken() ? "#A8221B" : "#465362");
    }
    return result + "</g>\n";
}

} // namespace

std::string svgText(const MapScene& scene) {
    const MapLayout layout = layOut(scene, NodeForm::unfolded);
    const int width = layout.width + 2 * kEdge;
    const int height = layout.height + 2 * kEdge;
    std::string result = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<svg xmlns=\"http://www.w3.org/2000/svg\"" +
                         attribute("width", width) + attribute("height", height) +
                         " font-family=\"sans-serif\" font-size=\"11\">\n"
                         "<defs><marker id=\"arrow\" markerWidth=\"8\" markerHeight=\"8\" "
                         "refX=\"8\" refY=\"4\" orient=\"auto\">"
                         "<path d=\"M0 0L8 4L0 8z\"/></marker></defs>\n";
    std::vector<std::vector<bool>> hasLine(scene.branches.size());
    for (std::size_t i = 0; i < hasLine.size(); ++i) {
        hasLine[i].resize(scene.branches[i].actions.size());
    }
    for (const MapLine& line : layout.lines) {
        const auto branch = static_cast<std::size_t>(line.branch);
        const auto action = static_cast<std::size_t>(line.action);
        hasLine[branch][action] = true;
        result += drawnLine(line, scene.branches[branch].actions[action]);
    }
    if (layout.unreachedTop >= 0) {
        result += text(kEdge, layout.unreachedTop + kEdge + 16,
                       core::trStored("Not reached from the first branch"_tr), "#596675");
    }
    for (std::size_t i = 0; i < scene.branches.size(); ++i) {
        result += drawnNode(scene.branches[i], layout.nodes[i], hasLine[i],
                            static_cast<int>(i) == scene.first);
    }
    return result + "</svg>\n";
}

std::string dotText(const MapScene& scene) {
    std::string result = "digraph scene {\nrankdir=LR;\nnode [shape=box];\n";
    for (std::size_t i = 0; i < scene.branches.size(); ++i) {
        result += "b" + std::to_string(i) + " [label=" + quoted(scene.branches[i].name) +
                  (static_cast<int>(i) == scene.first ? ", peripheries=2" : "") + "];\n";
    }
    int missing = 0;
    for (std::size_t i = 0; i < scene.branches.size(); ++i) {
        for (const MapAction& action : scene.branches[i].actions) {
            if (action.target.empty() && action.branch < 0) {
                continue;
            }
            std::string target = "b" + std::to_string(action.branch);
            if (action.branch < 0) {
                target = "m" + std::to_string(missing++);
                result += target + " [label=" + quoted(action.target) + ", style=dashed];\n";
            }
            result += "b" + std::to_string(i) + " -> " + target + " [label=" + quoted(action.text) +
                      (action.type == 3 ? ", style=dashed" : "") + "];\n";
        }
    }
    return result + "}\n";
}

} // namespace map
