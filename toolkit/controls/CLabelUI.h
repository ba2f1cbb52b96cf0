// A line of text, or several.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CLabelUI : public CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"Label"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
    void SetText(std::u16string_view text) override;
    [[nodiscard]] Size EstimateSize(Size available) const override;

    /// Of the whole text in one line; 0 outside of a window.
    [[nodiscard]] int textWidth() const;
    /// The number of a font of the layout; an unknown one means the default font.
    void SetFont(int font);
    [[nodiscard]] int GetFont() const { return m_font; }
    /// Space around the text inside the control: left, top, right, bottom.
    void SetTextPadding(const Rect& padding);

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    /// The tool tip, or the whole text where the box cuts it.
    [[nodiscard]] std::u16string toolTipAt(Point point) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] std::u16string accessibleName() const override;

protected:
    void paintText(platform::Canvas& canvas) override;
    /// The colour of the text in the control's present state.
    [[nodiscard]] virtual SkinColor currentTextColor() const;
    [[nodiscard]] Rect textRect() const;
    [[nodiscard]] platform::TextAlign align() const { return m_align; }

private:
    struct Attributes;

    /// As they stand below each other.
    [[nodiscard]] std::vector<std::u16string> textLines() const;

    int m_font = 0;
    int m_lines = 1;           ///< that it has room for
    bool m_isInMiddle = false; ///< fewer lines, of the box
    Rect m_textPadding;
    SkinColor m_textColor = Tone::value;
    SkinColor m_disabledTextColor = Tone::off;
    platform::TextAlign m_align = platform::TextAlign::left;
    bool m_endEllipsis = true;
    std::optional<int> m_besideText; ///< the least width is that of the text and this
};

} // namespace toolkit
