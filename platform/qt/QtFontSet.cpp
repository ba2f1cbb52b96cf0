#include "platform/qt/QtFontSet.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <cstddef>

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
    m_fonts.push_back({description, makeFont(description), {}});
    return static_cast<FontHandle>(m_fonts.size() - 1);
}

std::size_t QtFontSet::indexOf(FontHandle handle) const {
    const auto index = static_cast<std::size_t>(handle);
    return handle >= 0 && index < m_fonts.size() ? index : 0;
}

const QFont& QtFontSet::font(FontHandle handle) const {
    return m_fonts[indexOf(handle)].font;
}

int QtFontSet::lineHeight(FontHandle handle) const {
    const QFontMetricsF metrics(font(handle));
    return static_cast<int>(std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
}

Size QtFontSet::measure(std::u16string_view text, FontHandle handle) const {
    return {shaped(text, handle)->width(), lineHeight(handle)};
}

std::vector<int> QtFontSet::caretPositions(std::u16string_view text, FontHandle handle) const {
    return shaped(text, handle)->caretPositions();
}

std::shared_ptr<const ShapedText> QtFontSet::shaped(std::u16string_view text,
                                                    FontHandle handle) const {
    constexpr std::size_t kMostKept = 1000; // of all fonts; each takes a few kilobytes
    constexpr std::size_t kLongestKept = 200;
    const Entry& entry = m_fonts[indexOf(handle)];
    if (const auto known = entry.texts.find(text); known != entry.texts.end()) {
        return known->second;
    }
    auto made = std::make_shared<const ShapedText>(text, entry.font);
    if (text.size() <= kLongestKept) {
        if (m_kept >= kMostKept) {
            for (const Entry& any : m_fonts) {
                any.texts.clear();
            }
            m_kept = 0;
        }
        entry.texts.emplace(text, made);
        ++m_kept;
    }
    return made;
}

} // namespace platform::qt
