// Rows of a measured table in Markdown: what, measured, floor or peer, target.
#pragma once

#include <string>

#include "bench/Samples.h"

namespace bench {

void row(const char* what, const std::string& value, const std::string& floor, const char* target);
/// "12.34 unit".
[[nodiscard]] std::string number(double value, const char* unit);
/// "1.23 x floor".
[[nodiscard]] std::string ratio(double value, double floor);
/// "p50 1.00, p95 2.00, max 3.00 ms".
[[nodiscard]] std::string spread(const Samples& samples);

} // namespace bench
