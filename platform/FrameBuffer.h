// The back buffer of a video picture: a bottom-up bitmap of 24 bits a pixel in native memory that a
// canvas can stretch onto a window. On Windows a DIB section with its memory device context.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/Geometry.h"

namespace platform {

/// UI thread only. Frees its native objects when destroyed.
class FrameBuffer {
public:
    virtual ~FrameBuffer() = default;
    [[nodiscard]] virtual Size size() const = 0;
    /// Pixel memory: height rows of rowBytes(), bottom row first, each pixel blue, green, red.
    [[nodiscard]] virtual std::uint8_t* bits() = 0;
    [[nodiscard]] virtual const std::uint8_t* bits() const = 0;
    /// Row length in bytes as the display reads it: width * 3 rounded up to a multiple of 4.
    [[nodiscard]] int rowBytes() const { return (size().width * 3 + 3) & ~3; }
    [[nodiscard]] std::size_t byteCount() const {
        return static_cast<std::size_t>(rowBytes()) * static_cast<std::size_t>(size().height);
    }
};

/// How the creation of a frame buffer went. It continues without a window context.
struct FrameBufferResult {
    bool windowContextFailed = false;
    bool memoryContextFailed = false;
    bool bitmapFailed = false;
    std::uint32_t windowContextError = 0; ///< native error codes, valid where the flag is set
    std::uint32_t memoryContextError = 0;
    std::uint32_t bitmapError = 0;
    std::unique_ptr<FrameBuffer> buffer; ///< empty when the memory context or the bitmap failed
};

} // namespace platform
