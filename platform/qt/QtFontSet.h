// Fonts by handle on QFont, with metrics that do not depend on the system's hinting settings.
#pragma once

#include <QFont>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/qt/ShapedText.h"

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

    /// Texts are shown again and again: the last ones are kept.
    [[nodiscard]] std::shared_ptr<const ShapedText> shaped(std::u16string_view text,
                                                           FontHandle handle) const;

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const {
            return std::hash<std::u16string_view>()(text);
        }
    };
    using Texts = std::unordered_map<std::u16string, std::shared_ptr<const ShapedText>, TextHash,
                                     std::equal_to<>>;
    struct Entry {
        FontDescription description;
        QFont font;
        mutable Texts texts; ///< shaped in it
    };
    [[nodiscard]] std::size_t indexOf(FontHandle handle) const;

    std::vector<Entry> m_fonts;
    mutable std::size_t m_kept = 0; ///< texts of all fonts
};

} // namespace platform::qt
