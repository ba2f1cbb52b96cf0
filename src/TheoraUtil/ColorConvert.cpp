#include "src/TheoraUtil/ColorConvert.h"

#include <algorithm>
#include <cstddef>

#include "src/TheoraUtil/ColorRows.h"
#include "src/TheoraUtil/PixelLayout.h"

namespace theora {
namespace {

// Output columns for which every plane has samples.
int coveredWidth(const TheoraPicture& picture, int width) {
    const int chroma = std::min(picture.planes[1].width, picture.planes[2].width);
    return std::min({width, picture.planes[0].width, chroma << picture.chromaShiftX});
}

int coveredHeight(const TheoraPicture& picture, int height) {
    const int chroma = std::min(picture.planes[1].height, picture.planes[2].height);
    return std::min({height, picture.planes[0].height, chroma << picture.chromaShiftY});
}

ColorRowFunction rowFunction(const PixelLayout& layout, ColorPath path) {
    const ColorRowFunction fast =
        path == ColorPath::fastest ? avx2ColorRows(layout) : ColorRowFunction{};
    return fast != nullptr ? fast : portableColorRows(layout);
}

} // namespace

void convertPicture(const TheoraPicture& picture, TheoraOutputMode mode, std::uint8_t* out,
                    int width, int height, ColorPath path) {
    if (bytesPerPixel(mode) == 0) {
        return;
    }
    const PixelLayout layout = pixelLayout(mode);
    const ColorRowFunction convert = rowFunction(layout, path);
    const auto& [luma, u, v] = picture.planes;
    const bool hasAlphaHalf = layout.alpha && luma.width - width >= width;
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{width} * layout.bytes;
    const int rowCount = coveredHeight(picture, height);
    const int step = 1 << picture.chromaShiftY;
    ColorRows rows;
    rows.width = coveredWidth(picture, width);
    rows.chromaShiftX = picture.chromaShiftX;
    for (int top = 0; top < rowCount; top += step) {
        const std::ptrdiff_t chromaRow = top >> picture.chromaShiftY;
        rows.u = u.data + chromaRow * u.rowBytes;
        rows.v = v.data + chromaRow * v.rowBytes;
        rows.rowCount = std::min(step, rowCount - top);
        for (int row = 0; row < rows.rowCount; ++row) {
            const auto at = static_cast<std::size_t>(row);
            rows.luma[at] = luma.data + (top + row) * luma.rowBytes;
            rows.alpha[at] = hasAlphaHalf ? rows.luma[at] + width : nullptr;
            rows.out[at] = out + (top + row) * rowBytes;
        }
        convert(rows);
    }
}

} // namespace theora
