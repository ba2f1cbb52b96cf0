// Where the bytes of a clip come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace theora {

/// A clip reads its source from several threads but never at the same time; no implementation needs
/// a lock. Offsets are 64 bits wide: clips beyond 2 GB are common.
class TheoraDataSource {
public:
    virtual ~TheoraDataSource() = default;
    /// Bytes read, fewer than `count` only at the end; 0 when there are no more. A failure throws
    /// TheoraGenericException.
    [[nodiscard]] virtual std::size_t read(void* buffer, std::size_t count) = 0;
    /// Names the source; becomes the clip's name.
    [[nodiscard]] virtual std::string repr() const = 0;
    /// Absolute offset in bytes. May throw TheoraGenericException.
    virtual void seek(std::int64_t offset) = 0;
    /// Total bytes. May throw TheoraGenericException.
    [[nodiscard]] virtual std::int64_t size() = 0;
    /// Current offset in bytes.
    [[nodiscard]] virtual std::int64_t tell() const = 0;
};

} // namespace theora
