#include "platform/raster/FrameScaler.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Geometry.h"
#include "platform/raster/FramePixels.h"

namespace platform::raster {

namespace {

/// Byte offsets into a source row, one for each visible target column.
std::vector<int> columnOffsets(int sourceWidth, const Rect& target, const Rect& visible) {
    std::vector<int> offsets;
    offsets.reserve(static_cast<std::size_t>(visible.width()));
    for (int x = visible.left; x < visible.right; ++x) {
        offsets.push_back(kFrameBytesPerPixel *
                          nearestIndex(x - target.left, sourceWidth, target.width()));
    }
    return offsets;
}

} // namespace

void scaleFrame(const FrameBuffer& frame, PixelView pixels, const Rect& target, const Rect& clip) {
    const Size source = frame.size();
    const Rect visible = target.intersected(clip);
    if (visible.isEmpty() || source.width < 1 || source.height < 1) {
        return;
    }
    const std::vector<int> offsets = columnOffsets(source.width, target, visible);
    // The last pixel of a row may be the last of the memory: it must not be read by a longer load.
    const int lastOffset = kFrameBytesPerPixel * (source.width - 1);
    std::size_t fastCount = offsets.size();
    while (fastCount > 0 && offsets[fastCount - 1] == lastOffset) {
        --fastCount;
    }
    const std::size_t rowBytes = static_cast<std::size_t>(frame.rowBytes());
    for (int y = visible.top; y < visible.bottom; ++y) {
        const int fromTop = nearestRow(y - target.top, source.height, target.height());
        const std::uint8_t* from =
            frame.bits() + static_cast<std::size_t>(source.height - 1 - fromTop) * rowBytes;
        std::uint32_t* to = pixels.row(y) + visible.left;
        for (std::size_t i = 0; i < fastCount; ++i) {
            to[i] = readPixelFast(from + offsets[i]);
        }
        for (std::size_t i = fastCount; i < offsets.size(); ++i) {
            to[i] = readPixel(from + lastOffset);
        }
    }
}

} // namespace platform::raster
