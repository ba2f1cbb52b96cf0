// 32 columns at a time with AVX2, bit-exact to the tables, without table lookups.
//
// Same arithmetic as ColorFactor.h and the portable loops.
#include <cstddef>

#include "src/TheoraUtil/ColorRows.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include "src/TheoraUtil/ColorFactor.h"
#include "src/TheoraUtil/ColorTables.h"

#define QUORVEL_AVX2 __attribute__((target("avx2")))

namespace theora {
namespace {

constexpr int kColumns = 32;
constexpr short kLowMask = (1 << kColorShift) - 1;

/// 16 table entries: high * 8192 + low; low may leave 0 to 8191.
struct Terms {
    __m256i high;
    __m256i low;
};

QUORVEL_AVX2 inline Terms termsOf(__m256i difference, ColorFactor factor) {
    const __m256i whole = _mm256_set1_epi16(factor.whole);
    const __m256i below = _mm256_mulhi_epi16(difference, _mm256_set1_epi16(factor.fraction));
    const __m256i minusOne = _mm256_cmpgt_epi16(difference, _mm256_setzero_si256());
    const __m256i low =
        _mm256_and_si256(_mm256_mullo_epi16(difference, whole), _mm256_set1_epi16(kLowMask));
    return {_mm256_mulhi_epi16(_mm256_slli_epi16(difference, 3), whole),
            _mm256_sub_epi16(_mm256_add_epi16(low, minusOne), below)};
}

QUORVEL_AVX2 inline __m256i sumOf(const Terms& a, const Terms& b) {
    const __m256i carry = _mm256_srai_epi16(_mm256_add_epi16(a.low, b.low), kColorShift);
    return _mm256_add_epi16(_mm256_add_epi16(a.high, b.high), carry);
}

/// What chroma adds to the three colours, for 16 pixels.
struct ChromaTerms {
    Terms red, green, blue;
};

QUORVEL_AVX2 inline ChromaTerms chromaTermsOf(__m256i u, __m256i v) {
    const __m256i zero = _mm256_set1_epi16(kChromaZero);
    const __m256i du = _mm256_sub_epi16(u, zero);
    const __m256i dv = _mm256_sub_epi16(v, zero);
    const Terms greenU = termsOf(du, kGreenUFactor);
    const Terms greenV = termsOf(dv, kGreenVFactor);
    const __m256i none = _mm256_setzero_si256();
    return {termsOf(dv, kRedFactor),
            {_mm256_sub_epi16(none, _mm256_add_epi16(greenU.high, greenV.high)),
             _mm256_sub_epi16(none, _mm256_add_epi16(greenU.low, greenV.low))},
            termsOf(du, kBlueFactor)};
}

QUORVEL_AVX2 inline Terms doubledLow(const Terms& t) {
    return {_mm256_unpacklo_epi16(t.high, t.high), _mm256_unpacklo_epi16(t.low, t.low)};
}
QUORVEL_AVX2 inline Terms doubledHigh(const Terms& t) {
    return {_mm256_unpackhi_epi16(t.high, t.high), _mm256_unpackhi_epi16(t.low, t.low)};
}

/// Chroma of 32 pixels. `first` belongs to pixels 0-7 and 16-23, `second` to 8-15 and 24-31: the
/// halves that byte unpacking produces and packing restores.
struct ChromaBlock {
    ChromaTerms first, second;
};

QUORVEL_AVX2 inline __m256i load(const std::uint8_t* from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}
QUORVEL_AVX2 inline __m256i widenLow(__m256i bytes) {
    return _mm256_unpacklo_epi8(bytes, _mm256_setzero_si256());
}
QUORVEL_AVX2 inline __m256i widenHigh(__m256i bytes) {
    return _mm256_unpackhi_epi8(bytes, _mm256_setzero_si256());
}
QUORVEL_AVX2 inline __m256i widen16(const std::uint8_t* from) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
}

QUORVEL_AVX2 inline ChromaBlock chromaBlock(const ColorRows& rows, int x) {
    if (rows.chromaShiftX == 0) {
        const __m256i u = load(rows.u + x);
        const __m256i v = load(rows.v + x);
        return {chromaTermsOf(widenLow(u), widenLow(v)), chromaTermsOf(widenHigh(u), widenHigh(v))};
    }
    const ChromaTerms half = chromaTermsOf(widen16(rows.u + x / 2), widen16(rows.v + x / 2));
    return {{doubledLow(half.red), doubledLow(half.green), doubledLow(half.blue)},
            {doubledHigh(half.red), doubledHigh(half.green), doubledHigh(half.blue)}};
}

/// Three bytes of 32 pixels, in memory order.
struct Colors {
    __m256i a, b, c;
};

QUORVEL_AVX2 inline Colors rgbColors(const ChromaBlock& chroma, const std::uint8_t* luma) {
    const __m256i bytes = load(luma);
    const __m256i zero = _mm256_set1_epi16(kLumaZero);
    const Terms first = termsOf(_mm256_sub_epi16(widenLow(bytes), zero), kLumaFactor);
    const Terms second = termsOf(_mm256_sub_epi16(widenHigh(bytes), zero), kLumaFactor);
    return {
        _mm256_packus_epi16(sumOf(first, chroma.first.red), sumOf(second, chroma.second.red)),
        _mm256_packus_epi16(sumOf(first, chroma.first.green), sumOf(second, chroma.second.green)),
        _mm256_packus_epi16(sumOf(first, chroma.first.blue), sumOf(second, chroma.second.blue))};
}

QUORVEL_AVX2 inline __m256i chromaBytes(const std::uint8_t* plane, int shift, int x) {
    if (shift == 0) {
        return load(plane + x);
    }
    const __m256i half = widen16(plane + x / 2);
    return _mm256_or_si256(half, _mm256_slli_epi16(half, 8));
}

QUORVEL_AVX2 inline __m256i alphaBytes(const std::uint8_t* luma) {
    if (luma == nullptr) {
        return _mm256_set1_epi8(-1);
    }
    const __m256i bytes = load(luma);
    // Snapped at both ends: saturation does the comparisons.
    const __m256i opaque =
        _mm256_cmpeq_epi8(_mm256_max_epu8(bytes, _mm256_set1_epi8(static_cast<char>(225))), bytes);
    const __m256i visible = _mm256_cmpeq_epi8(_mm256_max_epu8(bytes, _mm256_set1_epi8(32)), bytes);
    return _mm256_or_si256(_mm256_and_si256(bytes, visible), opaque);
}

QUORVEL_AVX2 inline __m256i inBothHalves(__m128i bytes) {
    return _mm256_broadcastsi128_si256(bytes);
}

QUORVEL_AVX2 inline void storeHalves(std::uint8_t* out, __m256i bytes) {
    constexpr int kHalfBlock = 48;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(bytes));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + kHalfBlock),
                     _mm256_extracti128_si256(bytes, 1));
}

/// 32 pixels of 3 bytes, 16 from each half. Each colour is first spread to its positions in the
/// three output vectors; then each vector needs only blends.
QUORVEL_AVX2 inline void store96(std::uint8_t* out, const Colors& colors) {
    const __m256i spreadA =
        inBothHalves(_mm_setr_epi8(0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10, 5));
    const __m256i spreadB =
        inBothHalves(_mm_setr_epi8(5, 0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15, 10));
    const __m256i spreadC =
        inBothHalves(_mm_setr_epi8(10, 5, 0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15));
    const __m256i second =
        inBothHalves(_mm_setr_epi8(0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0));
    const __m256i third =
        inBothHalves(_mm_setr_epi8(0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0));
    const __m256i a = _mm256_shuffle_epi8(colors.a, spreadA);
    const __m256i b = _mm256_shuffle_epi8(colors.b, spreadB);
    const __m256i c = _mm256_shuffle_epi8(colors.c, spreadC);
    constexpr int kVector = 16;
    storeHalves(out, _mm256_blendv_epi8(_mm256_blendv_epi8(a, b, second), c, third));
    storeHalves(out + kVector, _mm256_blendv_epi8(_mm256_blendv_epi8(b, c, second), a, third));
    storeHalves(out + 2 * kVector, _mm256_blendv_epi8(_mm256_blendv_epi8(c, a, second), b, third));
}

/// 32 pixels of 4 bytes.
QUORVEL_AVX2 inline void store128(std::uint8_t* out, __m256i a, __m256i b, __m256i c, __m256i d) {
    const __m256i abLow = _mm256_unpacklo_epi8(a, b);
    const __m256i abHigh = _mm256_unpackhi_epi8(a, b);
    const __m256i cdLow = _mm256_unpacklo_epi8(c, d);
    const __m256i cdHigh = _mm256_unpackhi_epi8(c, d);
    const __m256i p0 = _mm256_unpacklo_epi16(abLow, cdLow);   // pixels 0-3 and 16-19
    const __m256i p1 = _mm256_unpackhi_epi16(abLow, cdLow);   // 4-7 and 20-23
    const __m256i p2 = _mm256_unpacklo_epi16(abHigh, cdHigh); // 8-11 and 24-27
    const __m256i p3 = _mm256_unpackhi_epi16(abHigh, cdHigh); // 12-15 and 28-31
    auto* to = reinterpret_cast<__m256i*>(out);
    _mm256_storeu_si256(to, _mm256_permute2x128_si256(p0, p1, 0x20));
    _mm256_storeu_si256(to + 1, _mm256_permute2x128_si256(p2, p3, 0x20));
    _mm256_storeu_si256(to + 2, _mm256_permute2x128_si256(p0, p1, 0x31));
    _mm256_storeu_si256(to + 3, _mm256_permute2x128_si256(p2, p3, 0x31));
}

template <PixelOrder order>
QUORVEL_AVX2 inline void storePixels(std::uint8_t* out, const Colors& colors,
                                     const std::uint8_t* alpha) {
    if constexpr (order == PixelOrder::plain) {
        store96(out, colors);
    } else if constexpr (order == PixelOrder::extraBehind) {
        store128(out, colors.a, colors.b, colors.c, alphaBytes(alpha));
    } else {
        store128(out, alphaBytes(alpha), colors.a, colors.b, colors.c);
    }
}

template <ColorKind kind, bool reversed, PixelOrder order>
struct Avx2Rows {
    static constexpr int kBytes = order == PixelOrder::plain ? 3 : 4;

    QUORVEL_AVX2 static void block(const ColorRows& rows, int x) {
        ChromaBlock chroma;
        Colors colors;
        if constexpr (kind == ColorKind::rgb) {
            chroma = chromaBlock(rows, x);
        }
        if constexpr (kind == ColorKind::yuv) {
            colors.b = chromaBytes(rows.u, rows.chromaShiftX, x);
            colors.c = chromaBytes(rows.v, rows.chromaShiftX, x);
        }
        for (std::size_t row = 0; row < static_cast<std::size_t>(rows.rowCount); ++row) {
            const std::uint8_t* luma = rows.luma[row] + x;
            if constexpr (kind == ColorKind::rgb) {
                colors = rgbColors(chroma, luma);
                if constexpr (reversed) {
                    colors = {colors.c, colors.b, colors.a};
                }
            } else {
                colors.a = load(luma);
            }
            if constexpr (kind == ColorKind::grey) {
                colors.b = colors.c = colors.a;
            }
            storePixels<order>(rows.out[row] + x * kBytes, colors,
                               rows.alpha[row] == nullptr ? nullptr : rows.alpha[row] + x);
        }
    }

    QUORVEL_AVX2 static void run(const ColorRows& rows) {
        int x = 0;
        for (; x + kColumns <= rows.width; x += kColumns) {
            block(rows, x);
        }
        if (x == rows.width) {
            return;
        }
        // The last columns, overlapping the block before, unless that would split a chroma sample.
        if (rows.width >= kColumns && rows.width % 2 == 0) {
            block(rows, rows.width - kColumns);
        } else {
            tail(rows, x);
        }
    }

    static void tail(const ColorRows& rows, int x);
};

PixelLayout layoutFor(ColorKind kind, bool reversed, PixelOrder order) {
    const int first = order == PixelOrder::extraInFront ? 1 : 0;
    PixelLayout layout;
    layout.kind = kind;
    layout.bytes = order == PixelOrder::plain ? 3 : 4;
    layout.colors = reversed ? std::array{first + 2, first + 1, first}
                             : std::array{first, first + 1, first + 2};
    layout.extra = order == PixelOrder::plain ? -1 : order == PixelOrder::extraInFront ? 0 : 3;
    return layout;
}

template <ColorKind kind, bool reversed, PixelOrder order>
void Avx2Rows<kind, reversed, order>::tail(const ColorRows& rows, int x) {
    portableColorRows(layoutFor(kind, reversed, order))(skipColumns(rows, x, kBytes));
}

} // namespace

ColorRowFunction avx2ColorRows(const PixelLayout& layout) {
    static const bool supported = __builtin_cpu_supports("avx2") != 0;
    if (!supported) {
        return nullptr;
    }
    return layout.bytes == 1 ? portableColorRows(layout) : chooseColorRows<Avx2Rows>(layout);
}

} // namespace theora

#else

namespace theora {

ColorRowFunction avx2ColorRows(const PixelLayout&) {
    return nullptr;
}

} // namespace theora

#endif
