#include "src/TheoraUtil/ColorConvert.h"

#include <algorithm>

#include "src/TheoraUtil/ColorTables.h"
#include "src/TheoraUtil/PixelLayout.h"

namespace theora {
namespace {

struct Row {
    const std::uint8_t* y;
    const std::uint8_t* u;
    const std::uint8_t* v;
    int chromaShift;
};

void convertRow(const Row& row, const PixelLayout& layout, std::uint8_t* out, int width) {
    const ColorTables& tables = kColorTables;
    for (int x = 0; x < width; ++x, out += layout.bytes) {
        const std::uint8_t luma = row.y[x];
        const std::uint8_t u = row.u[x >> row.chromaShift];
        const std::uint8_t v = row.v[x >> row.chromaShift];
        std::uint8_t* colors[3] = {out + layout.colors[0], out + layout.colors[1],
                                   out + layout.colors[2]};
        switch (layout.kind) {
        case ColorKind::rgb:
            *colors[0] = colorByte(tables.y[luma] + tables.rv[v]);
            *colors[1] = colorByte(tables.y[luma] - (tables.gu[u] + tables.gv[v]));
            *colors[2] = colorByte(tables.y[luma] + tables.bu[u]);
            break;
        case ColorKind::grey:
            *colors[0] = *colors[1] = *colors[2] = luma;
            break;
        case ColorKind::yuv:
            *colors[0] = luma;
            *colors[1] = u;
            *colors[2] = v;
            break;
        }
        if (layout.extra >= 0)
            out[layout.extra] = 255;
    }
}

void writeAlpha(const std::uint8_t* luma, const PixelLayout& layout, std::uint8_t* out, int width) {
    out += layout.extra;
    for (int x = 0; x < width; ++x, out += layout.bytes)
        *out = alphaByte(luma[x]);
}

// Columns of the output that every plane has samples for.
int coveredWidth(const TheoraPicture& picture, int width) {
    const int chroma = std::min(picture.planes[1].width, picture.planes[2].width);
    return std::min({width, picture.planes[0].width, chroma << picture.chromaShiftX});
}

int coveredHeight(const TheoraPicture& picture, int height) {
    const int chroma = std::min(picture.planes[1].height, picture.planes[2].height);
    return std::min({height, picture.planes[0].height, chroma << picture.chromaShiftY});
}

} // namespace

void convertPicture(const TheoraPicture& picture, TheoraOutputMode mode, std::uint8_t* out,
                    int width, int height) {
    if (bytesPerPixel(mode) == 0)
        return;
    const PixelLayout layout = pixelLayout(mode);
    const auto& [luma, u, v] = picture.planes;
    const int columns = coveredWidth(picture, width);
    const int alphaColumns = std::min(width, luma.width - width);
    const int rows = coveredHeight(picture, height);
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{width} * layout.bytes;
    for (int y = 0; y < rows; ++y) {
        const std::ptrdiff_t chromaRow = y >> picture.chromaShiftY;
        const Row row{luma.data + y * luma.rowBytes, u.data + chromaRow * u.rowBytes,
                      v.data + chromaRow * v.rowBytes, picture.chromaShiftX};
        convertRow(row, layout, out + y * rowBytes, columns);
        if (layout.alpha)
            writeAlpha(row.y + width, layout, out + y * rowBytes, alphaColumns);
    }
}

} // namespace theora
