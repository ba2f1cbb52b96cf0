#include "toolkit/skin/IconSet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "core/Text.h"
#include "platform/Bitmap.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/skin/Skin.h"

namespace toolkit {
namespace {

constexpr int kMinScale = 25;
constexpr int kMaxScale = 800;
constexpr std::size_t kMaxScales = 8; ///< each is a bitmap that is kept

/// Cuts the next word off the front of `line`; empty at its end.
std::u16string_view nextWord(std::u16string_view& line) {
    line = trimmed(line);
    const std::size_t end = std::min(line.find(u' '), line.size());
    const std::u16string_view word = line.substr(0, end);
    line.remove_prefix(end);
    return word;
}

platform::Rect scaled(const platform::Rect& rect, int percent) {
    return {rect.left * percent / 100, rect.top * percent / 100, rect.right * percent / 100,
            rect.bottom * percent / 100};
}

} // namespace

IconSet::IconSet(std::shared_ptr<const Skin> skin, bool isDark)
    : m_skin(std::move(skin)), m_isDark(isDark) {
    if (m_skin == nullptr) {
        return;
    }
    const std::string table = "Icons.txt";
    read(table);
    if (const std::string dark = m_skin->darkFile(table); m_isDark && dark != table) {
        read(dark);
    }
    std::sort(m_scales.begin(), m_scales.end());
}

void IconSet::read(const std::string& file) {
    const auto bytes = m_skin->read(file);
    const std::u16string text =
        bytes ? core::displayText(std::string(bytes->begin(), bytes->end())) : std::u16string();
    for (std::u16string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find(u'\n'), rest.size());
        readLine(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

std::shared_ptr<const IconSet> IconSet::of(const std::shared_ptr<const Skin>& skin, bool isDark) {
    using Sets =
        std::map<std::weak_ptr<const Skin>, std::weak_ptr<const IconSet>, std::owner_less<>>;
    static std::array<Sets, 2> ofBoth;
    Sets& sets = ofBoth.at(isDark ? 1 : 0);
    std::erase_if(sets, [](const auto& entry) { return entry.second.expired(); });
    auto set = sets[skin].lock();
    if (set == nullptr) {
        set = std::make_shared<const IconSet>(skin, isDark);
        sets[skin] = set;
    }
    return set;
}

/// "scale 100 150", "tint NAME #RRGGBB" with a colour for each state, "color NAME #RRGGBB", "icon
/// NAME X Y SIDE", "image FILE X Y WIDTH HEIGHT".
void IconSet::readLine(std::u16string_view line) {
    const std::u16string_view kind = nextWord(line);
    if (kind == u"scale") {
        for (auto word = nextWord(line); !word.empty(); word = nextWord(line)) {
            const int percent = parseInt(word).value_or(0);
            const bool isNew =
                std::find(m_scales.begin(), m_scales.end(), percent) == m_scales.end();
            if (percent >= kMinScale && percent <= kMaxScale && m_scales.size() < kMaxScales &&
                isNew) {
                m_scales.push_back(percent);
            }
        }
        return;
    }
    const std::u16string name(nextWord(line));
    if (kind == u"tint" && m_tints.size() < kMaxIcons) {
        Colors& colors = m_tints[name];
        for (platform::Color& color : colors) {
            assignIf(color, parseColor(nextWord(line)));
        }
    } else if (kind == u"color") {
        const auto tone = toneNamed(name);
        const auto color = parseColor(nextWord(line));
        if (tone && color) {
            m_palette.set(*tone, *color);
        }
    } else if (kind == u"icon" || kind == u"image") {
        readPlace(name, line, kind == u"icon");
    }
}

void IconSet::readPlace(const std::u16string& name, std::u16string_view line, bool isSquare) {
    const auto x = parseInt(nextWord(line));
    const auto y = parseInt(nextWord(line));
    const auto width = parseInt(nextWord(line));
    const auto height = isSquare ? width : parseInt(nextWord(line));
    if (x && y && width && height && *x >= 0 && *y >= 0 && *width > 0 && *height > 0 &&
        m_places.size() < kMaxIcons) {
        m_places[name] = platform::Rect::at(*x, *y, *width, *height);
    }
}

int IconSet::scaleFor(double wanted) const {
    const auto enough = std::find_if(m_scales.begin(), m_scales.end(), [&](int percent) {
        return percent >= std::lround(wanted * 100);
    });
    return enough != m_scales.end() ? *enough : m_scales.back();
}

const std::shared_ptr<const platform::Bitmap>& IconSet::sheet(int percent) const {
    const auto [place, isNew] = m_sheets.try_emplace(percent);
    if (isNew) {
        const std::string file = "Icons" + std::to_string(percent) + ".png";
        ImageCache& cache = ImageCache::get();
        place->second = m_isDark ? cache.loadDark(*m_skin, file) : cache.load(*m_skin, file);
    }
    return place->second;
}

ScaledImage IconSet::image(const std::u16string& file, double scale) const {
    const auto place = m_places.find(file);
    if (place == m_places.end() || m_scales.empty()) {
        return {};
    }
    const int percent = scaleFor(scale);
    if (percent <= 100) {
        return {}; // the file itself
    }
    const auto rounded = [percent](int length) { return (length * percent + 50) / 100; };
    const platform::Rect& r = place->second;
    const platform::Point corner = scaled(r, percent).topLeft();
    const auto part =
        platform::Rect::at(corner.x, corner.y, rounded(r.width()), rounded(r.height()));
    const auto& bitmap = sheet(percent);
    const bool isInside = bitmap != nullptr && part.right <= bitmap->size().width &&
                          part.bottom <= bitmap->size().height;
    return isInside ? ScaledImage{bitmap, part, percent / 100.0} : ScaledImage{};
}

void IconSet::draw(platform::Canvas& canvas, const platform::Rect& rect, const IconStyle& style,
                   IconState state, platform::Point usualPlace) const {
    const auto place = m_places.find(style.name);
    const auto tint = m_tints.find(style.tint);
    if (place == m_places.end() || tint == m_tints.end() || m_scales.empty()) {
        return;
    }
    const int own = place->second.width();
    const int side = style.side > 0 ? style.side : own;
    // An odd pixel is above and on the left of what stands in the middle.
    const auto begin = [side](int at, int from, int length) {
        return from + (at >= 0 ? at : (length - side + 1) / 2);
    };
    const int percent = scaleFor(canvas.scale() * side / own);
    if (const auto& mask = sheet(percent)) {
        const platform::Point at =
            style.place == platform::Point{-1, -1} ? usualPlace : style.place;
        canvas.drawMask(*mask, scaled(place->second, percent),
                        platform::Rect::at(begin(at.x, rect.left, rect.width()),
                                           begin(at.y, rect.top, rect.height()), side, side),
                        tint->second[static_cast<std::size_t>(state)]);
    }
}

} // namespace toolkit
