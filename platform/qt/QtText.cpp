#include "platform/qt/QtText.h"

namespace platform::qt {

QString toQt(std::u16string_view text) {
    // Not fromUtf16: it would take a first U+FEFF for a byte order mark and drop it.
    QString result(reinterpret_cast<const QChar*>(text.data()),
                   static_cast<qsizetype>(text.size()));
    for (qsizetype i = 0; i < result.size(); ++i) {
        const bool paired =
            result[i].isHighSurrogate() && i + 1 < result.size() && result[i + 1].isLowSurrogate();
        if (paired) {
            ++i;
        } else if (result[i].isSurrogate()) {
            result[i] = QChar::ReplacementCharacter;
        }
    }
    return result;
}

std::u16string fromQt(const QString& text) {
    return text.toStdU16String();
}

} // namespace platform::qt
