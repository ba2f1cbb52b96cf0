#include "platform/win32/Win32TextPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/raster/Blend.h"
#include "platform/win32/Handles.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32FontSet.h"

namespace platform::win32 {

namespace {

UINT flagsOf(TextAlign align) {
    // Text is drawn literally: "&" is a character like any other.
    const UINT common = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
    switch (align) {
    case TextAlign::center:
        return common | DT_CENTER;
    case TextAlign::right:
        return common | DT_RIGHT;
    case TextAlign::left:
        break;
    }
    return common | DT_LEFT;
}

/// How much of a pixel is covered, indexed by its brightness in GDI's white text on black.
std::array<std::uint32_t, 256> coverageTable() {
    constexpr double kGamma = 2.3; // of smoothed letters, measured under Wine
    std::array<std::uint32_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double brightness = static_cast<double>(i) / 255.0;
        table[i] = static_cast<std::uint32_t>(std::lround(255.0 * std::pow(brightness, kGamma)));
    }
    return table;
}

/// Left to right, one letter after the other, and no marks above them.
bool isSimple(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t c) {
        return c < 0x300 || (c >= 0x370 && c < 0x483) || (c >= 0x2000 && c < 0x2BFF) ||
               (c >= 0x3000 && c < 0xD800);
    });
}

void layOn(raster::PixelView mask, Color color, raster::PixelView target, const Rect& place) {
    static const std::array<std::uint32_t, 256> kCoverage = coverageTable();
    const std::uint32_t pixel = raster::premultiply(color);
    for (int y = 0; y < place.height(); ++y) {
        const std::uint32_t* from = mask.row(y);
        std::uint32_t* to = target.row(place.top + y) + place.left;
        for (int x = 0; x < place.width(); ++x) {
            if (const std::uint32_t brightness = (from[x] >> 8U) & 0xFFU; brightness != 0) {
                to[x] = raster::blendPixel(raster::scalePixel(pixel, kCoverage[brightness]), to[x]);
            }
        }
    }
}

} // namespace

bool Win32TextPainter::prepareMask(Size size) {
    const Size had = m_mask.size();
    if (had.width < size.width || had.height < size.height) {
        return m_mask.resize({std::max(had.width, size.width), std::max(had.height, size.height)});
    }
    const raster::PixelView pixels = m_mask.pixels();
    for (int y = 0; y < size.height; ++y) {
        std::fill_n(pixels.row(y), size.width, 0U);
    }
    return true;
}

void Win32TextPainter::drawScaled(const raster::PixelScale& scale, Point origin,
                                  std::u16string_view text, const Rect& box, FontHandle font,
                                  TextAlign align) {
    HDC context = m_mask.context();
    const Selection selection(context, m_fonts.font(font, scale.factor()));
    const std::wstring wideText = toWide(text);
    const std::vector<int> carets = m_fonts.caretPositions(text, font);
    const int room = box.width() - carets.back();
    const int left = box.left + (align == TextAlign::center  ? room / 2
                                 : align == TextAlign::right ? room
                                                             : 0);
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    const int top = (scale.y(box.top) + scale.y(box.bottom) - metrics.tmHeight) / 2 - origin.y;
    if (!isSimple(text)) { // its letters join or run from right to left: the system places them
        ExtTextOutW(context, scale.x(left) - origin.x, top, 0, nullptr, wideText.c_str(),
                    static_cast<UINT>(wideText.size()), nullptr);
        return;
    }
    std::vector<INT> steps;
    for (std::size_t i = 0; i + 1 < carets.size(); ++i) {
        steps.push_back(scale.x(left + carets[i + 1]) - scale.x(left + carets[i]));
    }
    ExtTextOutW(context, scale.x(left) - origin.x, top, 0, nullptr, wideText.c_str(),
                static_cast<UINT>(wideText.size()), steps.data());
}

void Win32TextPainter::drawText(raster::PixelView target, const raster::PixelScale& scale,
                                const Rect& clip, std::u16string_view text, const Rect& box,
                                FontHandle font, Color color, TextAlign align) {
    if (!prepareMask(clip.size())) {
        return;
    }
    HDC context = m_mask.context();
    SelectClipRgn(context, nullptr);
    IntersectClipRect(context, 0, 0, clip.width(), clip.height());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, RGB(255, 255, 255));
    if (scale.isOne()) {
        const Selection selection(context, m_fonts.font(font));
        const std::wstring wideText = toWide(text);
        RECT place{box.left - clip.left, box.top - clip.top, box.right - clip.left,
                   box.bottom - clip.top};
        DrawTextW(context, wideText.c_str(), static_cast<int>(wideText.size()), &place,
                  flagsOf(align));
    } else {
        drawScaled(scale, clip.topLeft(), text, box, font, align);
    }
    layOn(m_mask.pixels(), color, target, clip); // which flushes what GDI collected for both
}

} // namespace platform::win32
