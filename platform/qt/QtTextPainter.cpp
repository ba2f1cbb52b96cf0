#include "platform/qt/QtTextPainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "platform/Geometry.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtFontSet.h"
#include "platform/qt/QtText.h"

namespace platform::qt {

namespace {

int leftOf(const Rect& box, int width, TextAlign align) {
    switch (align) {
    case TextAlign::center:
        return box.left + (box.width() - width) / 2;
    case TextAlign::right:
        return box.right - width;
    case TextAlign::left:
        break;
    }
    return box.left;
}

} // namespace

void QtTextPainter::drawText(raster::PixelView target, const raster::PixelScale& scale,
                             const Rect& clip, std::u16string_view text, const Rect& box,
                             FontHandle font, Color color, TextAlign align) {
    const Size size = m_fonts.measure(text, font);
    const QFont& face = m_fonts.font(font);
    const int top = box.top + (box.height() - size.height) / 2;
    const int baseline = top + static_cast<int>(std::ceil(QFontMetricsF(face).ascent()));
    QImage image = imageOver(target);
    QPainter painter(&image);
    painter.setClipRect(toQt(clip));
    painter.setFont(face);
    painter.setPen(QColor::fromRgba(color));
    painter.translate(scale.x(leftOf(box, size.width, align)), scale.y(baseline));
    painter.scale(scale.factor(), scale.factor());
    painter.drawText(QPointF(), toQt(text));
}

} // namespace platform::qt
