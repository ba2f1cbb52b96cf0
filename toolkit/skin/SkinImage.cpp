#include "toolkit/skin/SkinImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/IconSet.h"

namespace toolkit {
namespace {

/// Cuts the next  key='value'  off the front of `text`. False at the end or where it is malformed.
bool nextPair(std::u16string_view& text, std::u16string_view& key, std::u16string_view& value) {
    const std::size_t equals = text.find(u'=');
    if (equals == std::u16string_view::npos) {
        return false;
    }
    key = trimmed(text.substr(0, equals));
    const std::u16string_view rest = trimmed(text.substr(equals + 1));
    if (rest.empty() || (rest.front() != u'\'' && rest.front() != u'"')) {
        return false;
    }
    const std::size_t close = rest.find(rest.front(), 1);
    if (close == std::u16string_view::npos) {
        return false;
    }
    value = rest.substr(1, close - 1);
    text = rest.substr(close + 1);
    return true;
}

platform::Rect positive(const platform::Rect& r) {
    return {std::max(r.left, 0), std::max(r.top, 0), std::max(r.right, 0), std::max(r.bottom, 0)};
}

/// Where the two edges of one side end and begin.
struct Cuts {
    int first = 0;
    int second = 0;
};

/// `begin` and `end` keep `before` and `after` pixels for the edges, in proportion where both do
/// not fit.
Cuts cut(int begin, int end, int before, int after) {
    const int length = end - begin;
    const int both = before + after;
    if (both > length && both > 0) {
        before = before * length / both;
        after = length - before;
    }
    return {begin + before, end - after};
}

} // namespace

ImageAttribute ImageAttribute::parse(std::u16string_view text) {
    ImageAttribute attribute;
    text = trimmed(text);
    if (text.find(u'=') == std::u16string_view::npos) {
        attribute.file = text;
        return attribute;
    }
    std::u16string_view key;
    std::u16string_view value;
    while (nextPair(text, key, value)) {
        if (key == u"file") {
            attribute.file = trimmed(value);
        } else if (key == u"corner") {
            attribute.corner = positive(parseRect(value).value_or(platform::Rect{}));
        } else if (key == u"dest") {
            attribute.dest = parseRect(value);
        }
    }
    return attribute;
}

platform::Rect SkinImage::placeIn(const platform::Rect& pos) const {
    return dest ? dest->translated(pos.left, pos.top) : pos;
}

void SkinImage::draw(platform::Canvas& canvas, const platform::Rect& rect) const {
    const platform::Rect clip = canvas.clip();
    if (rect.isEmpty() || rect.intersected(clip).isEmpty()) {
        return;
    }
    const platform::Size size = bitmap->size();
    ScaledImage from;
    if (scales != nullptr && canvas.scale() != 1) {
        from = scales->image(file, canvas.scale());
    }
    if (from.sheet == nullptr) {
        from = {bitmap, {0, 0, size.width, size.height}, 1};
    }
    const auto scaled = [&from](int length) {
        return static_cast<int>(std::lround(length * from.scale));
    };
    const Cuts sx = cut(0, size.width, corner.left, corner.right);
    const Cuts sy = cut(0, size.height, corner.top, corner.bottom);
    const Cuts tx = cut(rect.left, rect.right, sx.first, size.width - sx.second);
    const Cuts ty = cut(rect.top, rect.bottom, sy.first, size.height - sy.second);
    const platform::Rect& part = from.part;
    const std::array<int, 4> fromX{part.left, part.left + scaled(sx.first),
                                   part.right - scaled(size.width - sx.second), part.right};
    const std::array<int, 4> fromY{part.top, part.top + scaled(sy.first),
                                   part.bottom - scaled(size.height - sy.second), part.bottom};
    const std::array<int, 4> toX{rect.left, tx.first, tx.second, rect.right};
    const std::array<int, 4> toY{rect.top, ty.first, ty.second, rect.bottom};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const platform::Rect source{fromX[column], fromY[row], fromX[column + 1],
                                        fromY[row + 1]};
            const platform::Rect target{toX[column], toY[row], toX[column + 1], toY[row + 1]};
            if (!source.isEmpty() && !target.intersected(clip).isEmpty()) {
                canvas.drawBitmap(*from.sheet, source, target);
            }
        }
    }
}

} // namespace toolkit
