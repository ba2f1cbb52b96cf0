// Ends the program, as libFuzzer wants it, when what a fuzz target promises does not hold.
#pragma once

#include <cstdlib>

namespace fuzz {

inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace fuzz
