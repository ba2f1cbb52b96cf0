// Random choices for tests that make random calls; the same ones in every run and on every system.
#pragma once

#include <cstddef>
#include <limits>
#include <random>

namespace support {

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}

    [[nodiscard]] int below(int limit) {
        return static_cast<int>(m_engine() % static_cast<unsigned>(limit));
    }
    template <std::size_t count, typename Value>
    [[nodiscard]] Value oneOf(const Value (&values)[count]) {
        return values[m_engine() % count];
    }
    /// Mostly an index below `count`, sometimes one out of range.
    [[nodiscard]] int nearly(int count) {
        constexpr int kLowest = std::numeric_limits<int>::min();
        constexpr int kHighest = std::numeric_limits<int>::max();
        return below(12) == 0 || count == 0 ? oneOf({-1, count, kLowest, kHighest}) : below(count);
    }

private:
    std::mt19937 m_engine;
};

} // namespace support
