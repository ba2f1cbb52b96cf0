// Fonts by handle on GDI fonts.
#pragma once

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

private:
    struct Entry {
        FontDescription description;
        UniqueFont font;
    };

    UniqueMemoryContext m_context; ///< for measuring
    std::wstring m_defaultFamily;
    std::vector<Entry> m_fonts;
};

} // namespace platform::win32
