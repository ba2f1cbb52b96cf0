#include "platform/win32/Win32FontSet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/win32/WideText.h"

namespace platform::win32 {

namespace {

constexpr int kMinPixelSize = 1;
constexpr int kMaxPixelSize = 200;

int CALLBACK noteFamily(const LOGFONTW* /*font*/, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                        LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0; // one is enough
}

LOGFONTW description(const std::wstring& family) {
    LOGFONTW font{};
    font.lfCharSet = DEFAULT_CHARSET;
    family.copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

bool isInstalled(HDC context, const std::wstring& family) {
    LOGFONTW font = description(family);
    bool found = false;
    EnumFontFamiliesExW(context, &font, noteFamily, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}

int heightOf(const FontDescription& font, double scale) {
    const int size = std::clamp(font.pixelSize, kMinPixelSize, kMaxPixelSize);
    return std::max(static_cast<int>(std::lround(size * scale)), 1);
}

bool isInsidePair(std::u16string_view text, std::size_t position) {
    return position > 0 && position < text.size() && (text[position - 1] & 0xFC00U) == 0xD800U &&
           (text[position] & 0xFC00U) == 0xDC00U;
}

} // namespace

Win32FontSet::Win32FontSet() : m_context(CreateCompatibleDC(nullptr)) {
    m_defaultFamily = isInstalled(m_context.get(), L"Segoe UI") ? L"Segoe UI" : L"DejaVu Sans";
    open(FontDescription{});
}

FontHandle Win32FontSet::open(const FontDescription& asked) {
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(),
                                    [&](const Entry& entry) { return entry.description == asked; });
    if (known != m_fonts.end()) {
        return static_cast<FontHandle>(known - m_fonts.begin());
    }
    m_fonts.push_back({asked, create(asked, heightOf(asked, 1))});
    return static_cast<FontHandle>(m_fonts.size() - 1);
}

UniqueFont Win32FontSet::create(const FontDescription& asked, int height) const {
    LOGFONTW font = description(asked.family.empty() ? m_defaultFamily : wide(asked.family));
    font.lfHeight = -height; // negative: the em size, not the height of a line
    font.lfWeight = asked.bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = asked.italic ? TRUE : FALSE;
    font.lfQuality = ANTIALIASED_QUALITY;
    return UniqueFont(CreateFontIndirectW(&font));
}

std::size_t Win32FontSet::indexOf(FontHandle handle) const {
    const auto index = static_cast<std::size_t>(handle);
    return handle >= 0 && index < m_fonts.size() ? index : 0;
}

HFONT Win32FontSet::font(FontHandle handle) const {
    return m_fonts[indexOf(handle)].font.get();
}

HFONT Win32FontSet::font(FontHandle handle, double scale) {
    Entry& entry = m_fonts[indexOf(handle)];
    const int height = heightOf(entry.description, scale);
    if (height == heightOf(entry.description, 1)) {
        return entry.font.get();
    }
    if (entry.scaledHeight != height) {
        entry.scaled = create(entry.description, height);
        entry.scaledHeight = height;
    }
    return entry.scaled.get();
}

int Win32FontSet::lineHeight(FontHandle handle) const {
    const Selection selection(m_context.get(), font(handle));
    TEXTMETRICW metrics{};
    GetTextMetricsW(m_context.get(), &metrics);
    return metrics.tmHeight;
}

Size Win32FontSet::measure(std::u16string_view text, FontHandle handle) const {
    const Selection selection(m_context.get(), font(handle));
    const std::wstring wideText = toWide(text);
    SIZE size{};
    GetTextExtentPoint32W(m_context.get(), wideText.c_str(), static_cast<int>(wideText.size()),
                          &size);
    return {size.cx, lineHeight(handle)};
}

std::vector<int> Win32FontSet::caretPositions(std::u16string_view text, FontHandle handle) const {
    std::vector<int> positions(text.size() + 1, 0);
    if (text.empty()) {
        return positions;
    }
    const Selection selection(m_context.get(), font(handle));
    const std::wstring wideText = toWide(text);
    SIZE size{};
    GetTextExtentExPointW(m_context.get(), wideText.c_str(), static_cast<int>(wideText.size()), 0,
                          nullptr, positions.data() + 1, &size);
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (isInsidePair(text, i)) {
            positions[i] = positions[i - 1];
        }
        positions[i] = std::max(positions[i], positions[i - 1]);
    }
    return positions;
}

} // namespace platform::win32
