// Resources of this process, for tests that watch for growth.
#pragma once

#include <cstddef>

namespace support {

struct ProcessFigures {
    std::size_t heapBytes = 0; ///< allocated and not freed
    int threads = 0;
    int handles = 0; ///< open files; on Windows all handles that it counts, windows, GDI objects
};
[[nodiscard]] ProcessFigures processFigures();

/// How far two equal states differ in heapBytes at most: caches, and what the system keeps.
extern const std::size_t kHeapTolerance;

} // namespace support
