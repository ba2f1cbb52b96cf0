// A skin's icons: masks drawn for several scales, and the colours that they take. UI thread only.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

namespace toolkit {

class Skin;

enum class IconState { normal, hot, pushed, disabled, chosen };

/// Which icon a control has, and where.
struct IconStyle {
    std::u16string name{}; ///< one of the skin's icons; empty: none
    std::u16string tint = u"button";
    /// The distances of its top left corner from the control's; -1: in the middle.
    platform::Point place{-1, -1};
    int side = 0; ///< 0: as the icon is drawn
};

class IconSet {
public:
    static constexpr std::size_t kMaxIcons = 1024;

    /// Reads "Icons.txt" of the skin; the set is empty if there is none, or no skin.
    explicit IconSet(std::shared_ptr<const Skin> skin);

    /// Draws the icon over the control at `rect`, with the mask for the canvas's scale. An unknown
    /// one draws nothing.
    void draw(platform::Canvas& canvas, const platform::Rect& rect, const IconStyle& style,
              IconState state) const;

private:
    using Colors = std::array<platform::Color, 5>; ///< indexed by IconState

    void readLine(std::u16string_view line);
    /// The least of the scales, in percent, that needs no enlarging; else the largest.
    [[nodiscard]] int scaleFor(double wanted) const;

    std::shared_ptr<const Skin> m_skin;
    std::vector<int> m_scales;                                   ///< ascending
    std::unordered_map<std::u16string, platform::Rect> m_places; ///< in the sheet of 100 percent
    std::unordered_map<std::u16string, Colors> m_tints;
};

} // namespace toolkit
