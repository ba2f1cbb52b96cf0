// Fonts by handle on GDI fonts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

class Win32FontSet final : public FontSet {
public:
    Win32FontSet();

    FontHandle open(const FontDescription& description) override;
    [[nodiscard]] int lineHeight(FontHandle font) const override;
    [[nodiscard]] Size measure(std::u16string_view text, FontHandle font) const override;
    [[nodiscard]] std::vector<int> caretPositions(std::u16string_view text,
                                                  FontHandle font) const override;

    /// The default font for a handle that was never given out.
    [[nodiscard]] HFONT font(FontHandle handle) const;
    /// The same for drawing `scale` times as large.
    [[nodiscard]] HFONT font(FontHandle handle, double scale);

private:
    struct Entry {
        FontDescription description;
        UniqueFont font;
        int scaledHeight = 0; ///< of the one drawn last at another scale
        UniqueFont scaled{};
    };

    [[nodiscard]] UniqueFont create(const FontDescription& asked, int height) const;
    [[nodiscard]] std::size_t indexOf(FontHandle handle) const;

    UniqueMemoryContext m_context; ///< for measuring
    std::wstring m_defaultFamily;
    std::vector<Entry> m_fonts;
};

} // namespace platform::win32
