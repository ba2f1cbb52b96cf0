// Where everything of a map stands, in its own pixels. A function of the scene alone: the same
// scene always looks the same.
#pragma once

#include <span>
#include <vector>

#include "map/MapScene.h"

namespace map {

/// How much of a branch a map shows.
enum class NodeForm {
    unfolded, ///< with every action
    whole,
    still,
    name ///< alone; chains of branches without a choice are folded
};

struct FormSizes {
    int width;
    int height;  ///< without rows
    int row;     ///< of an action; 0: actions are not shown
    int gap;     ///< below a node
    int between; ///< columns
    int entry;   ///< where lines arrive: distance from the top
};
[[nodiscard]] FormSizes sizesOf(NodeForm form);

constexpr int kStillHeight = 76;
constexpr int kNameHeight = 22;
constexpr int kMostRows = 8; ///< one more says how many are left out

struct MapPoint {
    int x = 0;
    int y = 0;

    friend bool operator==(const MapPoint&, const MapPoint&) = default;
};

struct MapNode {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool isReached = true;
    int chain = -1; ///< that it is folded into: its branches have one place

    friend bool operator==(const MapNode&, const MapNode&) = default;
};

/// From an action to the branch that it leads to. Between the ends it passes columns: two points
/// for each, level with each other. A curve joins every second point with the next.
struct MapLine {
    int branch = 0;
    int action = 0;
    std::vector<MapPoint> points;

    friend bool operator==(const MapLine&, const MapLine&) = default;
};

struct MapLayout {
    std::vector<MapNode> nodes; ///< by branch
    /// By branch and action; without those that lead back, or from what is not reached, or inside a
    /// chain.
    std::vector<MapLine> lines;
    std::vector<std::vector<int>> chains; ///< branches of each, in their order
    int width = 0;
    int height = 0;
    int unreachedTop = -1; ///< of the part with branches that are not reached; -1: all are

    friend bool operator==(const MapLayout&, const MapLayout&) = default;
};

/// The lines of a branch.
[[nodiscard]] std::span<const MapLine> linesOf(const MapLayout& layout, int branch);
/// Where the line of an action begins, below the node's top. In forms without rows lines begin
/// about here, one below the other.
[[nodiscard]] int exitOf(NodeForm form, int action);
[[nodiscard]] MapLayout layOut(const MapScene& scene, NodeForm form);

} // namespace map
