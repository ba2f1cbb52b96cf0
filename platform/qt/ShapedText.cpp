#include "platform/qt/ShapedText.h"

#include <QPainter>
#include <QPointF>
#include <QTextOption>
#include <cmath>
#include <cstddef>

#include "platform/qt/QtText.h"

namespace platform::qt {
namespace {

/// Separators of lines and paragraphs would end the only line.
QString onOneLine(std::u16string_view text) {
    constexpr QChar kNothing(0x200B);
    QString line = toQt(text);
    line.replace(QChar::LineSeparator, kNothing);
    line.replace(QChar::ParagraphSeparator, kNothing);
    return line;
}

} // namespace

ShapedText::ShapedText(std::u16string_view text, const QFont& font)
    : m_layout(onOneLine(text), font) {
    QTextOption option;
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    m_layout.setTextOption(option);
    m_layout.setCacheEnabled(true);
    m_layout.beginLayout();
    m_layout.createLine();
    m_layout.endLayout();
}

int ShapedText::width() const {
    return m_layout.lineCount() > 0
               ? static_cast<int>(std::ceil(m_layout.lineAt(0).horizontalAdvance()))
               : 0;
}

std::vector<int> ShapedText::caretPositions() const {
    const QString text = m_layout.text();
    const auto size = static_cast<std::size_t>(text.size());
    std::vector<int> positions(size + 1, 0);
    if (m_layout.lineCount() == 0) {
        return positions;
    }
    const QTextLine line = m_layout.lineAt(0);
    for (std::size_t i = 0; i <= size; ++i) {
        int at = static_cast<int>(i);
        positions[i] = static_cast<int>(std::lround(line.cursorToX(&at)));
    }
    for (std::size_t i = 1; i < size; ++i) {
        const auto at = static_cast<qsizetype>(i);
        if (text[at - 1].isHighSurrogate() && text[at].isLowSurrogate()) {
            positions[i] = positions[i - 1];
        }
    }
    return positions;
}

void ShapedText::draw(QPainter& painter) const {
    if (m_layout.lineCount() > 0) {
        const QTextLine line = m_layout.lineAt(0);
        line.draw(&painter, QPointF(0, -line.ascent()));
    }
}

} // namespace platform::qt
