// What a skin has for several scales: icons, which are masks, with the colours that they take, and
// its images; and the palette beside them. UI thread only.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"

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

/// An image as it was drawn for another scale.
struct ScaledImage {
    std::shared_ptr<const platform::Bitmap> sheet; ///< null: there is none
    platform::Rect part{};                         ///< of the sheet
    double scale = 1;
};

class IconSet {
public:
    static constexpr std::size_t kMaxIcons = 1024;

    /// Reads "Icons.txt" of the skin, then the dark one if wanted; the set is empty if there is
    /// none, or no skin.
    explicit IconSet(std::shared_ptr<const Skin> skin, bool isDark = false);
    /// The set of a skin, shared for as long as anyone holds it.
    static std::shared_ptr<const IconSet> of(const std::shared_ptr<const Skin>& skin, bool isDark);

    /// Draws the icon over the control at `rect`, with the mask for the canvas's scale, at
    /// `usualPlace` unless the style has one. An unknown one draws nothing.
    void draw(platform::Canvas& canvas, const platform::Rect& rect, const IconStyle& style,
              IconState state, platform::Point usualPlace = {-1, -1}) const;

    [[nodiscard]] const Palette& palette() const { return m_palette; }

    /// The image of that file for a scale.
    [[nodiscard]] ScaledImage image(const std::u16string& file, double scale) const;

private:
    using Colors = std::array<platform::Color, 5>; ///< indexed by IconState

    void read(const std::string& file);
    void readLine(std::u16string_view line);
    void readPlace(const std::u16string& name, std::u16string_view line, bool isSquare);
    [[nodiscard]] const std::shared_ptr<const platform::Bitmap>& sheet(int percent) const;
    /// The least of the scales, in percent, that needs no enlarging; else the largest.
    [[nodiscard]] int scaleFor(double wanted) const;

    std::shared_ptr<const Skin> m_skin;
    bool m_isDark;
    std::vector<int> m_scales;                                               ///< ascending
    mutable std::map<int, std::shared_ptr<const platform::Bitmap>> m_sheets; ///< by scale
    /// By name, in the sheet of 100 percent. Images are named as their files.
    std::unordered_map<std::u16string, platform::Rect> m_places;
    std::unordered_map<std::u16string, Colors> m_tints;
    Palette m_palette;
};

} // namespace toolkit
