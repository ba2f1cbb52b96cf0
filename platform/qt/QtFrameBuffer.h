// A video picture's back buffer in plain memory.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"

namespace platform::qt {

class QtFrameBuffer final : public FrameBuffer {
public:
    /// All bytes 0. `size` has no side below 1.
    explicit QtFrameBuffer(Size size) : m_size(size), m_bytes(byteCount()) {}

    [[nodiscard]] Size size() const override { return m_size; }
    [[nodiscard]] std::uint8_t* bits() override { return m_bytes.data(); }
    [[nodiscard]] const std::uint8_t* bits() const override { return m_bytes.data(); }

private:
    Size m_size;
    std::vector<std::uint8_t> m_bytes;
};

/// Fails as a bitmap when a side is below 1, above 32767, or there is no memory.
[[nodiscard]] FrameBufferResult makeFrameBuffer(Size size);

} // namespace platform::qt
