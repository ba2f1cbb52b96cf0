// A text on one line: its glyphs and their places, found once for measuring and drawing.
#pragma once

#include <QFont>
#include <QTextLayout>
#include <string_view>
#include <vector>

class QPainter;

namespace platform::qt {

class ShapedText {
public:
    ShapedText(std::u16string_view text, const QFont& font);

    [[nodiscard]] int width() const;
    /// As FontSet::caretPositions.
    [[nodiscard]] std::vector<int> caretPositions() const;
    /// With the baseline's left end at the painter's origin.
    void draw(QPainter& painter) const;

private:
    QTextLayout m_layout;
};

} // namespace platform::qt
