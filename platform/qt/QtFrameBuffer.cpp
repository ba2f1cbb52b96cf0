#include "platform/qt/QtFrameBuffer.h"

#include <cerrno>
#include <memory>
#include <new>

namespace platform::qt {

namespace {

constexpr int kMaxSide = 32767;

} // namespace

FrameBufferResult makeFrameBuffer(Size size) {
    FrameBufferResult result;
    const bool valid =
        size.width >= 1 && size.height >= 1 && size.width <= kMaxSide && size.height <= kMaxSide;
    try {
        if (valid) {
            result.buffer = std::make_unique<QtFrameBuffer>(size);
            return result;
        }
        result.bitmapError = EINVAL;
    } catch (const std::bad_alloc&) {
        result.bitmapError = ENOMEM;
    }
    result.bitmapFailed = true;
    return result;
}

} // namespace platform::qt
