// Fonts by handle on QFont, with metrics that do not depend on the system's hinting settings.
#pragma once

#include <QFont>
#include <string_view>
#include <vector>

#include "platform/FontSet.h"
#include "platform/Geometry.h"

namespace platform::qt {

class QtFontSet final : public FontSet {
public:
    QtFontSet();

    FontHandle open(const FontDescription& description) override;
    [[nodiscard]] int lineHeight(FontHandle font) const override;
    [[nodiscard]] Size measure(std::u16string_view text, FontHandle font) const override;
    [[nodiscard]] std::vector<int> caretPositions(std::u16string_view text,
                                                  FontHandle font) const override;

    /// The default font for a handle that was never given out.
    [[nodiscard]] const QFont& font(FontHandle handle) const;

private:
    struct Entry {
        FontDescription description;
        QFont font;
    };
    std::vector<Entry> m_fonts;
};

} // namespace platform::qt
