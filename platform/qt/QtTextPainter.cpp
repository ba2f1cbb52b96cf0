#include "platform/qt/QtTextPainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <memory>

#include "platform/Geometry.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtFontSet.h"
#include "platform/qt/ShapedText.h"

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
    const std::shared_ptr<const ShapedText> shaped = m_fonts.shaped(text, font);
    const int top = box.top + (box.height() - m_fonts.lineHeight(font)) / 2;
    const int baseline =
        top + static_cast<int>(std::ceil(QFontMetricsF(m_fonts.font(font)).ascent()));
    QImage image = imageOver(target);
    QPainter painter(&image);
    painter.setClipRect(toQt(clip));
    painter.setPen(QColor::fromRgba(color));
    painter.translate(scale.x(leftOf(box, shaped->width(), align)), scale.y(baseline));
    painter.scale(scale.factor(), scale.factor());
    shaped->draw(painter);
}

} // namespace platform::qt
