// The steps of a history that can be undone and redone, within limits. Used by History alone.
#pragma once

#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

namespace edit {

/// How much a history keeps; the oldest steps are dropped first.
struct Limits {
    std::size_t steps = 1000;
    std::size_t bytes = std::size_t{64} * 1024 * 1024;
    /// Kept regardless of their size.
    std::size_t leastSteps = 10;
};

template <class Types>
struct Step {
    typename Types::Label label;
    std::vector<typename Types::Operation> operations;
    std::size_t bytes = 0;
};

template <class Types>
class Steps {
public:
    explicit Steps(Limits limits) : m_limits(limits) {}

    /// The step that was applied last, and the one that was reverted last; null for none.
    [[nodiscard]] Step<Types>* last() {
        return m_position > 0 ? &m_steps[m_position - 1] : nullptr;
    }
    [[nodiscard]] const Step<Types>* last() const {
        return m_position > 0 ? &m_steps[m_position - 1] : nullptr;
    }
    [[nodiscard]] Step<Types>* next() {
        return m_position < m_steps.size() ? &m_steps[m_position] : nullptr;
    }
    [[nodiscard]] const Step<Types>* next() const {
        return m_position < m_steps.size() ? &m_steps[m_position] : nullptr;
    }
    void reverted() { --m_position; }
    void applied() { ++m_position; }

    /// Has been applied. The reverted ones go, and the oldest ones where there are too many.
    /// Without memory for it, `step` stays as it is.
    void add(Step<Types>&& step) {
        for (const auto& operation : step.operations) {
            step.bytes += operation.bytes();
        }
        while (m_steps.size() > m_position) {
            m_bytes -= m_steps.back().bytes;
            m_steps.pop_back();
        }
        m_steps.push_back(std::move(step));
        m_bytes += m_steps.back().bytes;
        ++m_position;
        while (m_steps.size() > m_limits.leastSteps &&
               (m_steps.size() > m_limits.steps || m_bytes > m_limits.bytes)) {
            m_bytes -= m_steps.front().bytes;
            m_steps.pop_front();
            --m_position;
        }
    }
    void clear() {
        m_steps.clear();
        m_position = 0;
        m_bytes = 0;
    }

    /// How many of the steps are applied.
    [[nodiscard]] std::size_t position() const { return m_position; }
    [[nodiscard]] std::size_t size() const { return m_steps.size(); }
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }

private:
    Limits m_limits;
    std::deque<Step<Types>> m_steps;
    std::size_t m_position = 0;
    std::size_t m_bytes = 0;
};

} // namespace edit
