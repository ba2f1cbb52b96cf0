// The links of all vertices of a map on one side, one list behind the other. Used by the ordering.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace map {

class Links {
public:
    /// `pairs`: from a vertex to its neighbour; each list has the order of the pairs.
    Links(std::size_t vertices, std::span<const std::pair<int, int>> pairs);

    [[nodiscard]] std::span<const int> of(int vertex) const {
        const auto index = static_cast<std::size_t>(vertex);
        return std::span(m_ends).subspan(m_begin[index], m_begin[index + 1] - m_begin[index]);
    }

private:
    std::vector<std::size_t> m_begin;
    std::vector<int> m_ends;
};

/// The links of the vertices to the left and to the right.
struct BothLinks {
    Links left;
    Links right;
};

/// `pairs`: from left to right.
[[nodiscard]] BothLinks makeLinks(std::size_t vertices, std::vector<std::pair<int, int>> pairs);

} // namespace map
