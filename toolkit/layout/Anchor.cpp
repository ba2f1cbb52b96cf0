#include "toolkit/layout/Anchor.h"

#include <algorithm>
#include <cstddef>

#include "toolkit/layout/AttributeText.h"

namespace toolkit {
namespace {

struct Span {
    int begin;
    int end;
};

Span stretched(Span span, bool keepsBegin, bool keepsEnd, int growth) {
    if (keepsBegin && keepsEnd) {
        return {span.begin, std::max(span.begin, span.end + growth)};
    }
    const int shift = keepsEnd ? growth : keepsBegin ? 0 : growth / 2;
    return {span.begin + shift, span.end + shift};
}

} // namespace

std::optional<Anchor> parseAnchor(std::u16string_view text) {
    Anchor anchor{.left = false, .top = false};
    while (!trimmed(text).empty()) {
        const std::size_t comma = std::min(text.find(u','), text.size());
        const std::u16string_view edge = trimmed(text.substr(0, comma));
        bool* kept = edge == u"left"     ? &anchor.left
                     : edge == u"top"    ? &anchor.top
                     : edge == u"right"  ? &anchor.right
                     : edge == u"bottom" ? &anchor.bottom
                                         : nullptr;
        if (kept == nullptr) {
            return std::nullopt;
        }
        *kept = true;
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return anchor;
}

platform::Rect anchored(const platform::Rect& place, const Anchor& anchor, platform::Size designed,
                        platform::Size now) {
    const Span x =
        stretched({place.left, place.right}, anchor.left, anchor.right, now.width - designed.width);
    const Span y = stretched({place.top, place.bottom}, anchor.top, anchor.bottom,
                             now.height - designed.height);
    return {x.begin, y.begin, x.end, y.end};
}

} // namespace toolkit
