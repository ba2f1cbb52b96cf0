// Pixel formats of delivered frames. A mode with alpha takes the alpha of each pixel from the luma
// of the picture's right half, so such clips show only the left half.
#pragma once

namespace theora {

/// Named by the byte order of a pixel; X is an unused byte (255).
enum class TheoraOutputMode : int {
    TH_UNDEFINED = 0, ///< invalid
    TH_RGB = 1,
    TH_RGBA = 2,
    TH_RGBX = 3,
    TH_ARGB = 4,
    TH_XRGB = 5,
    TH_BGR = 6,
    TH_BGRA = 7,
    TH_BGRX = 8,
    TH_ABGR = 9,
    TH_XBGR = 10,
    TH_GREY = 11,
    TH_GREY3 = 12,
    TH_GREY3A = 13,
    TH_GREY3X = 14,
    TH_AGREY3 = 15,
    TH_XGREY3 = 16,
    TH_YUV = 17,
    TH_YUVA = 18,
    TH_YUVX = 19,
    TH_AYUV = 20,
    TH_XYUV = 21
};

inline constexpr int kOutputModeCount = 22;

/// 0 for TH_UNDEFINED and for values outside the enumeration.
[[nodiscard]] int bytesPerPixel(TheoraOutputMode mode);
[[nodiscard]] bool hasAlpha(TheoraOutputMode mode);

} // namespace theora
