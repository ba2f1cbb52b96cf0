// How the test program starts another one that belongs to it.
#pragma once

#include <string>

namespace child {

/// Runs "PROGRAM hold FILE" beside this program, with this one's pipes where the system can.
void startHolding(const std::string& program, const std::string& file);

} // namespace child
