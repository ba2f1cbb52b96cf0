#include "bench/ReportTable.h"

#include <array>
#include <cstdio>

namespace bench {

void row(const char* what, const std::string& value, const std::string& floor, const char* target) {
    std::printf("| %s | %s | %s | %s |\n", what, value.c_str(), floor.c_str(), target);
    std::fflush(stdout);
}

std::string number(double value, const char* unit) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.2f %s", value, unit);
    return text.data();
}

std::string ratio(double value, double floor) {
    return number(floor > 0 ? value / floor : 0, "x floor");
}

std::string spread(const Samples& samples) {
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "p50 %.2f, p95 %.2f, max %.2f ms", samples.median(),
                  samples.p95(), samples.most());
    return text.data();
}

} // namespace bench
