// The text of edits and combos for assistive technology. Offsets are UTF-16 code units.
#include <algorithm>

#include "platform/qt/QtAccessible.h"

namespace platform::qt {

void QtAccessibleNode::selection(int /*index*/, int* start, int* end) const {
    *start = 0;
    *end = 0;
}

// The selection belongs to the person; listeners can read and replace the text without it.
void QtAccessibleNode::addSelection(int /*start*/, int /*end*/) {}
void QtAccessibleNode::removeSelection(int /*index*/) {}
void QtAccessibleNode::setSelection(int /*index*/, int /*start*/, int /*end*/) {}
void QtAccessibleNode::setCursorPosition(int /*position*/) {}
void QtAccessibleNode::scrollToSubstring(int /*start*/, int /*end*/) {}

int QtAccessibleNode::cursorPosition() const {
    const Accessible* self = node();
    return self != nullptr ? std::max(self->accessibleCaret(), 0) : 0;
}

QString QtAccessibleNode::text(int start, int end) const {
    const QString all = value();
    const int from = std::clamp(start, 0, static_cast<int>(all.size()));
    const int to = end < 0 ? static_cast<int>(all.size()) : end;
    return all.mid(from, std::max(to - from, 0));
}

int QtAccessibleNode::characterCount() const {
    return static_cast<int>(value().size());
}

QRect QtAccessibleNode::characterRect(int /*offset*/) const {
    return rect();
}

int QtAccessibleNode::offsetAtPoint(const QPoint& /*point*/) const {
    return -1;
}

QString QtAccessibleNode::attributes(int /*offset*/, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

void QtAccessibleNode::deleteText(int start, int end) {
    replaceText(start, end, {});
}

void QtAccessibleNode::insertText(int offset, const QString& text) {
    replaceText(offset, offset, text);
}

void QtAccessibleNode::replaceText(int start, int end, const QString& text) {
    QString all = value();
    const int from = std::clamp(start, 0, static_cast<int>(all.size()));
    all.replace(from, std::clamp(end - from, 0, static_cast<int>(all.size()) - from), text);
    replaceValue(all);
}

} // namespace platform::qt
