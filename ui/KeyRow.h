// A line of the list of keys: caps, and what the key does. UI thread only.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/KeyList.h"

namespace ui {

class KeyRow final : public toolkit::CControlUI {
public:
    explicit KeyRow(const KeyLine& line);

    [[nodiscard]] std::u16string GetClass() const override { return u"KeyRow"; }
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::label;
    }
    /// "Ctrl+S: Save".
    [[nodiscard]] std::u16string accessibleName() const override;

private:
    /// Draws one cap at `left`; where it ends.
    int paintCap(platform::Canvas& canvas, std::u16string_view key, int left) const;
    /// Draws a text at `left`; where it ends.
    int paintWords(platform::Canvas& canvas, std::u16string_view text, int left,
                   platform::Color color) const;

    std::u16string m_keys; ///< joined by "+"
};

} // namespace ui
