// Written for auto-vectorisation of the loops over columns: 16-bit numbers, no branches.
//
// A table entry t is split into t >> 13 and t & 8191. Of two entries a and b,
// (a + b) >> 13 = (a >> 13) + (b >> 13) + (((a & 8191) + (b & 8191)) >> 13), and every part of that
// fits 16 bits.
#include <algorithm>
#include <bit>
#include <cstring>

#include "src/TheoraUtil/ColorFactor.h"
#include "src/TheoraUtil/ColorRows.h"
#include "src/TheoraUtil/ColorTables.h"

namespace theora {
namespace {

// Columns at a time: all work arrays fit the L1 cache, and common video widths are multiples of it.
constexpr int kBlock = 320;
constexpr int kHalf = kBlock / 2;
constexpr int kLowMask = (1 << kColorShift) - 1;

using Lane = std::array<std::int16_t, kBlock>;
using Bytes = std::array<std::uint8_t, kBlock>;

/// Table entries of a block: high * 8192 + low; low may leave 0 to 8191.
struct Terms {
    Lane high;
    Lane low;
};

/// The same of half a block.
struct HalfTerms {
    std::array<std::int16_t, kHalf> high;
    std::array<std::int16_t, kHalf> low;
};

constexpr std::int16_t lane(int value) {
    return static_cast<std::int16_t>(value);
}

struct Factor {
    ColorFactor of;
    std::int16_t zero;
};

// Volatile: compilers replace multiplications by known factors with chains of shifts, which are
// four times slower than vector multiplications.
const volatile Factor kLuma = {kLumaFactor, kLumaZero};
const volatile Factor kRed = {kRedFactor, kChromaZero};
const volatile Factor kGreenU = {kGreenUFactor, kChromaZero};
const volatile Factor kGreenV = {kGreenVFactor, kChromaZero};
const volatile Factor kBlue = {kBlueFactor, kChromaZero};

/// The table entries of the samples, by ColorFactor.h.
/// samples: kHalf of them.
void findTerms(const std::uint8_t* samples, const volatile Factor& factor, std::int16_t* high,
               std::int16_t* low) {
    const std::int16_t whole = factor.of.whole;
    const std::int16_t fraction = factor.of.fraction;
    const std::int16_t zero = factor.zero;
    for (int x = 0; x < kHalf; ++x) {
        const std::int16_t d = lane(samples[x] - zero);
        const std::int16_t below = lane((d * fraction) >> 16);
        const std::int16_t above = d > 0 ? std::int16_t{1} : std::int16_t{0};
        const std::int16_t remainder = lane(lane(d * whole) & kLowMask);
        high[x] = lane((lane(d * 8) * whole) >> 16);
        low[x] = lane(remainder - below - above);
    }
}

/// What the chroma of a block of columns adds to each colour.
struct ChromaTerms {
    Terms red, green, blue;
};

/// One value a pixel, whatever the chroma format.
void spreadChroma(const std::uint8_t* from, int shift, int count, Bytes& to) {
    if (shift == 0) {
        std::copy_n(from, count, to.begin());
        return;
    }
    const auto pairs = static_cast<std::size_t>((count + 1) / 2);
    for (std::size_t x = 0; x < pairs; ++x) {
        to[2 * x] = to[2 * x + 1] = from[x];
    }
}

/// Two pixels for each value.
void spreadTerms(const HalfTerms& half, Terms& terms) {
    for (std::size_t x = 0; x < kHalf; ++x) {
        terms.high[2 * x] = half.high[x];
        terms.high[2 * x + 1] = half.high[x];
    }
    for (std::size_t x = 0; x < kHalf; ++x) {
        terms.low[2 * x] = half.low[x];
        terms.low[2 * x + 1] = half.low[x];
    }
}

struct HalfChroma {
    HalfTerms red, green, blue;
};

/// u, v: kHalf samples.
void findChromaTerms(const std::uint8_t* u, const std::uint8_t* v, HalfChroma& terms) {
    HalfTerms greenU;
    HalfTerms greenV;
    findTerms(v, kRed, terms.red.high.data(), terms.red.low.data());
    findTerms(u, kBlue, terms.blue.high.data(), terms.blue.low.data());
    findTerms(u, kGreenU, greenU.high.data(), greenU.low.data());
    findTerms(v, kGreenV, greenV.high.data(), greenV.low.data());
    for (std::size_t x = 0; x < kHalf; ++x) {
        terms.green.high[x] = lane(-(greenU.high[x] + greenV.high[x]));
        terms.green.low[x] = lane(-(greenU.low[x] + greenV.low[x]));
    }
}

void storeHalf(const HalfTerms& half, int at, Terms& terms) {
    std::copy(half.high.begin(), half.high.end(), terms.high.begin() + at);
    std::copy(half.low.begin(), half.low.end(), terms.low.begin() + at);
}

/// u, v: chroma samples from the block's first column on, in arrays with room for kBlock of them.
void findChromaTerms(const Bytes& u, const Bytes& v, int shift, ChromaTerms& terms) {
    HalfChroma half;
    findChromaTerms(u.data(), v.data(), half);
    if (shift == 1) {
        spreadTerms(half.red, terms.red);
        spreadTerms(half.green, terms.green);
        spreadTerms(half.blue, terms.blue);
        return;
    }
    for (const int at : {0, kHalf}) {
        findChromaTerms(u.data() + at, v.data() + at, half);
        storeHalf(half.red, at, terms.red);
        storeHalf(half.green, at, terms.green);
        storeHalf(half.blue, at, terms.blue);
    }
}

void addTerms(const Terms& luma, const Terms& chroma, Bytes& result) {
    for (std::size_t x = 0; x < kBlock; ++x) {
        const std::int16_t carry = lane(lane(luma.low[x] + chroma.low[x]) >> kColorShift);
        std::int16_t sum = lane(luma.high[x] + chroma.high[x] + carry);
        sum = sum < 0 ? std::int16_t{0} : sum;
        sum = sum > 255 ? std::int16_t{255} : sum;
        result[x] = static_cast<std::uint8_t>(sum);
    }
}

using Pixels = std::array<std::uint8_t, std::size_t{4} * kBlock>;

void interleave(const Bytes& a, const Bytes& b, const Bytes& c, const Bytes& d, Pixels& pixels) {
    for (std::size_t x = 0; x < kBlock; ++x) {
        pixels[4 * x] = a[x];
        pixels[4 * x + 1] = b[x];
        pixels[4 * x + 2] = c[x];
        pixels[4 * x + 3] = d[x];
    }
}

std::uint64_t loadPixel(const std::uint8_t* from) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, from, sizeof pixel);
    return pixel;
}

/// Drops every fourth byte, which is 0. Two pixels at a time; the last two bytes stored are
/// overwritten by the next two pixels, so the last pixels of a row go alone.
void storePlain(const Pixels& pixels, int count, std::uint8_t* out) {
    constexpr int kStep = 4;
    constexpr unsigned kPixelBits = 24;
    const std::uint8_t* from = pixels.data();
    int x = 0;
    if constexpr (std::endian::native == std::endian::little) {
        for (; x + kStep < count; x += kStep, from += 4 * kStep, out += 3 * kStep) {
            const std::uint64_t first = loadPixel(from) | loadPixel(from + 4) << kPixelBits;
            const std::uint64_t second = loadPixel(from + 8) | loadPixel(from + 12) << kPixelBits;
            std::memcpy(out, &first, sizeof first);
            std::memcpy(out + 6, &second, sizeof second);
        }
    }
    for (; x < count; ++x, from += 4, out += 3) {
        std::memcpy(out, from, 3);
    }
}

/// Zero-initialised where a short block is read past its columns; the rest is written before it is
/// read.
struct BlockWork {
    Bytes u{}, v{};
    ChromaTerms chroma;
    Bytes luma{};
    Terms lumaTerms;
    std::array<Bytes, 3> colors;
    Bytes extra{};
    Pixels pixels;
};

void findAlpha(const std::uint8_t* alpha, int count, Bytes& extra) {
    if (alpha == nullptr) {
        extra.fill(255);
    } else {
        std::transform(alpha, alpha + count, extra.begin(), alphaByte);
    }
}

template <ColorKind kind, bool reversed, PixelOrder order>
struct PortableRows {
    static constexpr int kBytes = order == PixelOrder::plain ? 3 : 4;

    /// `count` columns from column `from` of one row; the block's chroma is computed.
    static void convert(const ColorRows& rows, std::size_t row, int from, int count,
                        BlockWork& work) {
        std::copy_n(rows.luma[row] + from, count, work.luma.begin());
        const Bytes* a = &work.luma;
        const Bytes* b = kind == ColorKind::yuv ? &work.u : &work.luma;
        const Bytes* c = kind == ColorKind::yuv ? &work.v : &work.luma;
        if constexpr (kind == ColorKind::rgb) {
            for (const int at : {0, kHalf}) {
                findTerms(work.luma.data() + at, kLuma, work.lumaTerms.high.data() + at,
                          work.lumaTerms.low.data() + at);
            }
            addTerms(work.lumaTerms, work.chroma.red, work.colors[0]);
            addTerms(work.lumaTerms, work.chroma.green, work.colors[1]);
            addTerms(work.lumaTerms, work.chroma.blue, work.colors[2]);
            a = &work.colors[reversed ? 2 : 0];
            b = &work.colors[1];
            c = &work.colors[reversed ? 0 : 2];
        }
        std::uint8_t* out = rows.out[row] + from * kBytes;
        if constexpr (order == PixelOrder::plain) {
            interleave(*a, *b, *c, work.extra, work.pixels);
            storePlain(work.pixels, count, out);
            return;
        }
        findAlpha(rows.alpha[row] == nullptr ? nullptr : rows.alpha[row] + from, count, work.extra);
        if constexpr (order == PixelOrder::extraInFront) {
            interleave(work.extra, *a, *b, *c, work.pixels);
        } else {
            interleave(*a, *b, *c, work.extra, work.pixels);
        }
        std::copy_n(work.pixels.begin(), count * kBytes, out);
    }

    static void run(const ColorRows& rows) {
        BlockWork work;
        for (int from = 0; from < rows.width; from += kBlock) {
            const int count = std::min(kBlock, rows.width - from);
            if constexpr (kind == ColorKind::yuv) {
                spreadChroma(rows.u + (from >> rows.chromaShiftX), rows.chromaShiftX, count,
                             work.u);
                spreadChroma(rows.v + (from >> rows.chromaShiftX), rows.chromaShiftX, count,
                             work.v);
            }
            if constexpr (kind == ColorKind::rgb) {
                const int samples = (count + rows.chromaShiftX) >> rows.chromaShiftX;
                std::copy_n(rows.u + (from >> rows.chromaShiftX), samples, work.u.begin());
                std::copy_n(rows.v + (from >> rows.chromaShiftX), samples, work.v.begin());
                findChromaTerms(work.u, work.v, rows.chromaShiftX, work.chroma);
            }
            for (std::size_t row = 0; row < static_cast<std::size_t>(rows.rowCount); ++row) {
                convert(rows, row, from, count, work);
            }
        }
    }
};

void copyLuma(const ColorRows& rows) {
    for (int row = 0; row < rows.rowCount; ++row) {
        std::memcpy(rows.out[static_cast<std::size_t>(row)],
                    rows.luma[static_cast<std::size_t>(row)], static_cast<std::size_t>(rows.width));
    }
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
        if (rest.alpha[row] != nullptr) {
            rest.alpha[row] += columns;
        }
    }
    return rest;
}

ColorRowFunction portableColorRows(const PixelLayout& layout) {
    return layout.bytes == 1 ? copyLuma : chooseColorRows<PortableRows>(layout);
}

} // namespace theora
