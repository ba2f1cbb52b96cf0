#include "tests/support/RefusedMemory.h"

#include <cstdlib>
#include <new>

using namespace support;

// None is inlined: the compiler would take malloc() or free() for the wrong end of an expression.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    lastBytes = bytes;
    const bool isRefused = (bytes > 0 && bytes == refusedBytes && allowedOfSize-- <= 0) ||
                           (allocationsLeft >= 0 && allocationsLeft-- == 0);
    void* memory = isRefused ? nullptr : std::malloc(bytes | 1);
    if (memory == nullptr) {
        refusedBytes = 0;
        allowedOfSize = 0;
        throw std::bad_alloc();
    }
    return memory;
}

// Its memory, too, goes to the delete below, and not every runtime asks the operator above for it.
[[gnu::noinline]] void* operator new(std::size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
    try {
        return ::operator new(bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}
