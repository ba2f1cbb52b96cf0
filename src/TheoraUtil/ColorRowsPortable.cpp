// Written so that compilers turn the loops over columns into vector code: 16-bit numbers, no
// branches.
//
// A table entry t is split into t >> 13 and t & 8191. Of two entries a and b,
// (a + b) >> 13 = (a >> 13) + (b >> 13) + (((a & 8191) + (b & 8191)) >> 13), and every part of that
// fits 16 bits.
#include <algorithm>
#include <cstring>

#include "src/TheoraUtil/ColorRows.h"
#include "src/TheoraUtil/ColorTables.h"

namespace theora {
namespace {

constexpr int kBlock = 256; // columns at a time: all work arrays stay in the first-level cache
constexpr int kLowMask = (1 << kColorShift) - 1;

struct Split {
    std::int16_t high;
    std::int16_t low;
};
using SplitTable = std::array<Split, 256>;

constexpr Split split(std::int32_t value) {
    return {static_cast<std::int16_t>(value >> kColorShift),
            static_cast<std::int16_t>(value & kLowMask)};
}

constexpr SplitTable splitTable(const std::array<std::int32_t, 256>& table) {
    SplitTable result{};
    for (std::size_t i = 0; i < table.size(); ++i)
        result[i] = split(table[i]);
    return result;
}

constexpr SplitTable kLuma = splitTable(kColorTables.y);
constexpr SplitTable kRed = splitTable(kColorTables.rv);
constexpr SplitTable kBlue = splitTable(kColorTables.bu);
constexpr SplitTable kGreenU = splitTable(kColorTables.gu);
constexpr SplitTable kGreenV = splitTable(kColorTables.gv);

using Lane = std::array<std::int16_t, kBlock>;
using Channel = std::array<std::uint8_t, kBlock>;

/// What the chroma of a block of columns adds to each colour.
struct ChromaTerms {
    Lane redHigh, redLow, greenHigh, greenLow, blueHigh, blueLow;
};

void chromaTerms(const ColorRows& rows, int from, int count, ChromaTerms& terms) {
    const int step = 1 << rows.chromaShiftX;
    for (int x = 0; x < count; x += step) {
        const std::uint8_t u = rows.u[(from + x) >> rows.chromaShiftX];
        const std::uint8_t v = rows.v[(from + x) >> rows.chromaShiftX];
        const Split green = split(-(kColorTables.gu[u] + kColorTables.gv[v]));
        for (int copy = 0; copy < step; ++copy) {
            const auto at = static_cast<std::size_t>(x + copy);
            terms.redHigh[at] = kRed[v].high;
            terms.redLow[at] = kRed[v].low;
            terms.greenHigh[at] = green.high;
            terms.greenLow[at] = green.low;
            terms.blueHigh[at] = kBlue[u].high;
            terms.blueLow[at] = kBlue[u].low;
        }
    }
}

void addTerms(const Lane& lumaHigh, const Lane& lumaLow, const Lane& high, const Lane& low,
              Channel& result) {
    for (std::size_t x = 0; x < kBlock; ++x) {
        const auto carry = static_cast<std::int16_t>((lumaLow[x] + low[x]) >> kColorShift);
        const auto sum = static_cast<std::int16_t>(lumaHigh[x] + high[x] + carry);
        result[x] = static_cast<std::uint8_t>(
            std::clamp<std::int16_t>(sum, std::int16_t{0}, std::int16_t{255}));
    }
}

template <PixelOrder order>
void interleave(const Channel& a, const Channel& b, const Channel& c, const std::uint8_t* alpha,
                std::uint8_t* out, int count) {
    constexpr int kBytes = order == PixelOrder::plain ? 3 : 4;
    constexpr int kFirst = order == PixelOrder::extraInFront ? 1 : 0;
    constexpr int kExtra = order == PixelOrder::extraInFront ? 0 : 3;
    for (int x = 0; x < count; ++x) {
        const auto at = static_cast<std::size_t>(x);
        std::uint8_t* pixel = out + kBytes * x;
        pixel[kFirst] = a[at];
        pixel[kFirst + 1] = b[at];
        pixel[kFirst + 2] = c[at];
        if constexpr (order != PixelOrder::plain)
            pixel[kExtra] = alpha == nullptr ? std::uint8_t{255} : alphaByte(alpha[x]);
    }
}

struct BlockWork {
    ChromaTerms terms;
    Lane lumaHigh, lumaLow;
    Channel channels[3];
};

void rgbChannels(const std::uint8_t* luma, int count, BlockWork& work) {
    for (int x = 0; x < count; ++x) {
        const Split y = kLuma[luma[x]];
        work.lumaHigh[static_cast<std::size_t>(x)] = y.high;
        work.lumaLow[static_cast<std::size_t>(x)] = y.low;
    }
    const ChromaTerms& terms = work.terms;
    addTerms(work.lumaHigh, work.lumaLow, terms.redHigh, terms.redLow, work.channels[0]);
    addTerms(work.lumaHigh, work.lumaLow, terms.greenHigh, terms.greenLow, work.channels[1]);
    addTerms(work.lumaHigh, work.lumaLow, terms.blueHigh, terms.blueLow, work.channels[2]);
}

void yuvChannels(const ColorRows& rows, int row, int from, int count, BlockWork& work) {
    for (int x = 0; x < count; ++x) {
        const auto at = static_cast<std::size_t>(x);
        work.channels[0][at] = rows.luma[static_cast<std::size_t>(row)][from + x];
        work.channels[1][at] = rows.u[(from + x) >> rows.chromaShiftX];
        work.channels[2][at] = rows.v[(from + x) >> rows.chromaShiftX];
    }
}

template <ColorKind kind, bool reversed, PixelOrder order>
struct PortableRows {
    static void run(const ColorRows& rows) {
        static constexpr int kBytes = order == PixelOrder::plain ? 3 : 4;
        BlockWork work{};
        for (int from = 0; from < rows.width; from += kBlock) {
            const int count = std::min(kBlock, rows.width - from);
            if constexpr (kind == ColorKind::rgb)
                chromaTerms(rows, from, count, work.terms);
            for (int row = 0; row < rows.rowCount; ++row) {
                const auto at = static_cast<std::size_t>(row);
                if constexpr (kind == ColorKind::rgb)
                    rgbChannels(rows.luma[at] + from, count, work);
                else
                    yuvChannels(rows, row, from, count, work);
                constexpr std::size_t kA = kind == ColorKind::rgb && reversed ? 2 : 0;
                constexpr std::size_t kB = kind == ColorKind::grey ? 0 : 1;
                constexpr std::size_t kC = kind == ColorKind::grey ? 0 : 2 - kA;
                interleave<order>(work.channels[kA], work.channels[kB], work.channels[kC],
                                  rows.alpha[at] == nullptr ? nullptr : rows.alpha[at] + from,
                                  rows.out[at] + from * kBytes, count);
            }
        }
    }
};

void copyLuma(const ColorRows& rows) {
    for (int row = 0; row < rows.rowCount; ++row)
        std::memcpy(rows.out[static_cast<std::size_t>(row)],
                    rows.luma[static_cast<std::size_t>(row)], static_cast<std::size_t>(rows.width));
}

} // namespace

ColorRows skipColumns(const ColorRows& rows, int columns, int bytesPerPixel) {
    ColorRows rest = rows;
    rest.width -= columns;
    rest.u += columns >> rows.chromaShiftX;
    rest.v += columns >> rows.chromaShiftX;
    for (std::size_t row = 0; row < static_cast<std::size_t>(rows.rowCount); ++row) {
        rest.luma[row] += columns;
        rest.out[row] += columns * bytesPerPixel;
        if (rest.alpha[row] != nullptr)
            rest.alpha[row] += columns;
    }
    return rest;
}

ColorRowFunction portableColorRows(const PixelLayout& layout) {
    return layout.bytes == 1 ? copyLuma : chooseColorRows<PortableRows>(layout);
}

} // namespace theora
