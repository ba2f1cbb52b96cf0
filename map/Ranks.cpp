#include "map/Ranks.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace map {
namespace {

constexpr int kMostPasses = 8;

/// Follows arcs depth first, without recursion: scenes can be chains of thousands.
class Search {
public:
    Search(int nodes, std::span<const Arc> arcs)
        : m_arcs(arcs), m_out(static_cast<std::size_t>(nodes)),
          m_state(static_cast<std::size_t>(nodes), State::open), m_isBack(arcs.size()) {
        for (std::size_t arc = 0; arc < arcs.size(); ++arc) {
            m_out[at(arcs[arc].from)].push_back(arc);
        }
    }

    void visit(int start) {
        if (m_state[at(start)] != State::open) {
            return;
        }
        std::vector<std::pair<int, std::size_t>> way{{start, 0}};
        m_state[at(start)] = State::entered;
        while (!way.empty()) {
            auto& [node, next] = way.back();
            if (next == m_out[at(node)].size()) {
                m_state[at(node)] = State::left;
                m_leftFirst.push_back(node);
                way.pop_back();
                continue;
            }
            const std::size_t arc = m_out[at(node)][next++];
            const int target = m_arcs[arc].to;
            if (m_state[at(target)] == State::entered) {
                m_isBack[arc] = true;
            } else if (m_state[at(target)] == State::open) {
                m_state[at(target)] = State::entered;
                way.emplace_back(target, 0);
            }
        }
    }

    [[nodiscard]] bool isVisited(int node) const { return m_state[at(node)] != State::open; }
    [[nodiscard]] bool isBack(std::size_t arc) const { return m_isBack[arc]; }
    /// Every node in front of those that lead to it.
    [[nodiscard]] const std::vector<int>& leftFirst() const { return m_leftFirst; }

private:
    enum class State : char { open, entered, left };

    static std::size_t at(int node) { return static_cast<std::size_t>(node); }

    std::span<const Arc> m_arcs;
    std::vector<std::vector<std::size_t>> m_out;
    std::vector<State> m_state;
    std::vector<bool> m_isBack;
    std::vector<int> m_leftFirst;
};

/// Moves nodes to where their arcs are shortest, one at a time.
class Tightening {
public:
    Tightening(std::vector<int>& column, std::span<const Arc> arcs, const std::vector<bool>& counts)
        : m_column(column), m_in(column.size()), m_out(column.size()) {
        for (std::size_t arc = 0; arc < arcs.size(); ++arc) {
            if (counts[arc]) {
                m_out[static_cast<std::size_t>(arcs[arc].from)].push_back(arcs[arc].to);
                m_in[static_cast<std::size_t>(arcs[arc].to)].push_back(arcs[arc].from);
            }
        }
    }

    bool move(int node) {
        const auto index = static_cast<std::size_t>(node);
        int lowest = 0;
        int highest = std::numeric_limits<int>::max();
        for (const int before : m_in[index]) {
            lowest = std::max(lowest, m_column[static_cast<std::size_t>(before)] + 1);
        }
        for (const int behind : m_out[index]) {
            highest = std::min(highest, m_column[static_cast<std::size_t>(behind)] - 1);
        }
        const bool pullsRight = m_out[index].size() > m_in[index].size();
        const bool isEven = m_out[index].size() == m_in[index].size();
        const int to = m_out[index].empty() || (!pullsRight && !isEven) ? lowest
                       : pullsRight                                     ? highest
                                                                        : m_column[index];
        return std::exchange(m_column[index], to) != to;
    }

private:
    std::vector<int>& m_column;
    std::vector<std::vector<int>> m_in;
    std::vector<std::vector<int>> m_out;
};

void tighten(Ranks& ranks, std::span<const Arc> arcs, const std::vector<int>& leftFirst,
             int first) {
    Tightening tightening(ranks.column, arcs, ranks.isForward);
    for (int pass = 0; pass < kMostPasses; ++pass) {
        bool hasMoved = false;
        for (std::size_t i = 0; i < leftFirst.size(); ++i) {
            const int node = leftFirst[pass % 2 == 0 ? i : leftFirst.size() - 1 - i];
            if (node != first) {
                hasMoved = tightening.move(node) || hasMoved;
            }
        }
        if (!hasMoved) {
            return;
        }
    }
}

} // namespace

Ranks rankNodes(int nodes, std::span<const Arc> arcs, int first) {
    Search search(nodes, arcs);
    Ranks ranks;
    ranks.isReached.resize(static_cast<std::size_t>(nodes), first < 0);
    if (first >= 0) {
        search.visit(first);
        for (int node = 0; node < nodes; ++node) {
            ranks.isReached[static_cast<std::size_t>(node)] = search.isVisited(node);
        }
    }
    for (int node = 0; node < nodes; ++node) {
        search.visit(node);
    }
    ranks.isForward.resize(arcs.size());
    std::vector<std::vector<int>> out(static_cast<std::size_t>(nodes));
    for (std::size_t arc = 0; arc < arcs.size(); ++arc) {
        const auto from = static_cast<std::size_t>(arcs[arc].from);
        const auto to = static_cast<std::size_t>(arcs[arc].to);
        ranks.isForward[arc] = !search.isBack(arc) && ranks.isReached[from] == ranks.isReached[to];
        if (ranks.isForward[arc]) {
            out[from].push_back(arcs[arc].to);
        }
    }
    ranks.column.resize(static_cast<std::size_t>(nodes), 0);
    const std::vector<int>& leftFirst = search.leftFirst();
    for (auto node = leftFirst.rbegin(); node != leftFirst.rend(); ++node) {
        const int next = ranks.column[static_cast<std::size_t>(*node)] + 1;
        for (const int target : out[static_cast<std::size_t>(*node)]) {
            int& column = ranks.column[static_cast<std::size_t>(target)];
            column = std::max(column, next);
        }
    }
    tighten(ranks, arcs, leftFirst, first);
    return ranks;
}

} // namespace map
