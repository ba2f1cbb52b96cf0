// Measured times and their statistics.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ratio>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class Samples {
public:
    void add(double value) { m_values.push_back(value); }
    [[nodiscard]] std::size_t count() const { return m_values.size(); }
    [[nodiscard]] double median() const { return at(0.5); }
    [[nodiscard]] double p95() const { return at(0.95); }
    [[nodiscard]] double most() const { return at(1.0); }

private:
    [[nodiscard]] double at(double share) const {
        if (m_values.empty()) {
            return 0;
        }
        std::vector<double> sorted = m_values;
        std::sort(sorted.begin(), sorted.end());
        const auto index = static_cast<std::size_t>(share * static_cast<double>(sorted.size()));
        return sorted[std::min(index, sorted.size() - 1)];
    }

    std::vector<double> m_values;
};

} // namespace bench
