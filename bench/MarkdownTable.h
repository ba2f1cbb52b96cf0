// The tables of bench/REPORT.md: one row per measurement, with its floor or peer and its target.
#pragma once

#include <cstdio>
#include <string>

#include "bench/Samples.h"

namespace bench {

inline void tableHead(const std::string& title) {
    std::printf("\n## %s\n\n| what | measured | floor or peer | target |\n|---|---|---|---|\n",
                title.c_str());
}

inline void tableRow(const std::string& what, const std::string& measured, const std::string& floor,
                     const std::string& target) {
    std::printf("| %s | %s | %s | %s |\n", what.c_str(), measured.c_str(), floor.c_str(),
                target.c_str());
}

inline std::string timesText(const Samples& samples) {
    char text[96];
    std::snprintf(text, sizeof text, "p50 %.2f, p95 %.2f, max %.2f ms", samples.median(),
                  samples.p95(), samples.most());
    return text;
}

} // namespace bench
