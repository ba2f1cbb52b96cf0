#include "platform/qt/QtFontSet.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/qt/QtText.h"

namespace platform::qt {

namespace {

constexpr int kMinPixelSize = 1;
constexpr int kMaxPixelSize = 200;

QFont makeFont(const FontDescription& description) {
    QFont font(description.family.empty() ? QStringLiteral("DejaVu Sans")
                                          : QString::fromStdString(description.family));
    font.setPixelSize(std::clamp(description.pixelSize, kMinPixelSize, kMaxPixelSize));
    font.setBold(description.bold);
    font.setItalic(description.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    // Coloured edges of subpixel rendering would differ between screens and spoil screenshots.
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

} // namespace

QtFontSet::QtFontSet() {
    open(FontDescription{});
}

FontHandle QtFontSet::open(const FontDescription& description) {
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(), [&](const Entry& entry) {
        return entry.description == description;
    });
    if (known != m_fonts.end()) {
        return static_cast<FontHandle>(known - m_fonts.begin());
    }
    m_fonts.push_back({description, makeFont(description)});
    return static_cast<FontHandle>(m_fonts.size() - 1);
}

const QFont& QtFontSet::font(FontHandle handle) const {
    const bool known = handle >= 0 && static_cast<std::size_t>(handle) < m_fonts.size();
    return m_fonts[known ? static_cast<std::size_t>(handle) : 0].font;
}

int QtFontSet::lineHeight(FontHandle handle) const {
    const QFontMetricsF metrics(font(handle));
    return static_cast<int>(std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
}

Size QtFontSet::measure(std::u16string_view text, FontHandle handle) const {
    const QFontMetricsF metrics(font(handle));
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(toQt(text)))), lineHeight(handle)};
}

std::vector<int> QtFontSet::caretPositions(std::u16string_view text, FontHandle handle) const {
    std::vector<int> positions(text.size() + 1, 0);
    QTextLayout layout(toQt(text), font(handle));
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid()) {
        return positions;
    }
    for (std::size_t i = 0; i < positions.size(); ++i) {
        int at = static_cast<int>(i);
        positions[i] = static_cast<int>(std::lround(line.cursorToX(&at)));
    }
    for (std::size_t i = 1; i < text.size(); ++i) {
        const bool insidePair =
            (text[i - 1] & 0xFC00U) == 0xD800U && (text[i] & 0xFC00U) == 0xDC00U;
        if (insidePair) {
            positions[i] = positions[i - 1];
        }
    }
    return positions;
}

} // namespace platform::qt
