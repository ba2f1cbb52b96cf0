// The bar between two neighbours in a row or column. It sizes the one behind it, which has a width
// (in a column, a height) of its own: by dragging, by the arrow keys, and by double-click or Enter,
// which change between the least size and the last one. Neither neighbour gets smaller than its
// minimum.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CSplitterUI : public CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"Splitter"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// The length that the neighbour behind is to have, as far as there is room; 0 before anybody
    /// chose one. Sends nothing.
    void SetLength(int length);
    [[nodiscard]] int GetLength() const { return m_wanted; }

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    void beforeLayout(Size content) override;
    void forgetInput() override { m_isDragged = m_isHot = false; }
    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point point) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::separator;
    }
    [[nodiscard]] std::u16string accessibleValue() const override;

protected:
    void paintStatus(platform::Canvas& canvas) override;

private:
    /// Between neighbours in a row, not in a column.
    [[nodiscard]] bool isUpright() const;
    [[nodiscard]] int along(Size size) const;
    [[nodiscard]] int along(Point point) const;
    /// The shown neighbour at the side; null when there is none.
    [[nodiscard]] CControlUI* neighbour(bool behind) const;
    /// How long the neighbour behind is now, and the least that it can be.
    [[nodiscard]] int length() const;
    [[nodiscard]] int least() const;
    /// The user's choice.
    void choose(int length);
    void toggle();
    bool key(const platform::Event& event);

    SkinColor m_gripColor;
    SkinColor m_hotGripColor;
    int m_usual = 0; ///< the neighbour's length in the layout; 0: not known yet
    int m_wanted = 0;
    int m_last = 0;    ///< before it was made as short as possible
    int m_grabbed = 0; ///< length and pointer together, at the press
    bool m_isDragged = false;
    bool m_isHot = false;
};

} // namespace toolkit
