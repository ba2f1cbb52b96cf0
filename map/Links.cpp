#include "map/Links.h"

#include <numeric>

namespace map {

Links::Links(std::size_t vertices, std::span<const std::pair<int, int>> pairs)
    : m_begin(vertices + 1, 0), m_ends(pairs.size()) {
    for (const auto& [from, to] : pairs) {
        ++m_begin[static_cast<std::size_t>(from) + 1];
    }
    std::partial_sum(m_begin.begin(), m_begin.end(), m_begin.begin());
    std::vector<std::size_t> next(m_begin.begin(), m_begin.end() - 1);
    for (const auto& [from, to] : pairs) {
        m_ends[next[static_cast<std::size_t>(from)]++] = to;
    }
}

BothLinks makeLinks(std::size_t vertices, std::vector<std::pair<int, int>> pairs) {
    Links right(vertices, pairs);
    for (auto& [from, to] : pairs) {
        std::swap(from, to);
    }
    return {Links(vertices, pairs), std::move(right)};
}

} // namespace map
