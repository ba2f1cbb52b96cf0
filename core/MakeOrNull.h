// Making an object where a lack of memory is no more than another failure.
#pragma once

#include <memory>
#include <new>
#include <utility>

namespace core {

/// Null when there is no memory.
template <class T, class... Arguments>
[[nodiscard]] std::shared_ptr<T> makeOrNull(Arguments&&... arguments) {
    try {
        return std::make_shared<T>(std::forward<Arguments>(arguments)...);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace core
