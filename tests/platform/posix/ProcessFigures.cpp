#include "tests/support/ProcessFigures.h"

#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#ifdef QUORVEL_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#else
#include <malloc.h>
#endif

namespace support {
namespace {

int entriesOf(const std::string& folder) {
    std::error_code error;
    const std::filesystem::directory_iterator begin(folder, error);
    return static_cast<int>(std::distance(begin, std::filesystem::directory_iterator()));
}

std::size_t heapBytes() {
#ifdef QUORVEL_ADDRESS_SANITIZER
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

} // namespace

const std::size_t kHeapTolerance = std::size_t{256} * 1024;

ProcessFigures processFigures() {
    return {heapBytes(), entriesOf("/proc/self/task"), entriesOf("/proc/self/fd")};
}

} // namespace support
