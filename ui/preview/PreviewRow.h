// A row of the preview's lists: a badge or a number, a name, a line below it, and a time. A choice
// looks like a button.
#pragma once

#include <string>
#include <string_view>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/skin/Palette.h"

namespace ui {

struct PreviewRowLook {
    std::u16string badge{}; ///< a letter or two; or
    std::u16string icon{};  ///< one of the skin's
    toolkit::Tone badgeTone = toolkit::Tone::defaultKind;
    std::u16string number{};
    std::u16string name{};
    std::u16string detail{};
    std::u16string time{};
    bool isButton = false;
    bool isChosen = false;
    bool isProblem = false;

    friend bool operator==(const PreviewRowLook&, const PreviewRowLook&) = default;
};

/// What fills a row of a list. UI thread only.
class PreviewRow final : public toolkit::CControlUI {
public:
    explicit PreviewRow(PreviewRowLook look);

    /// Repaints if it has another look now.
    void show(PreviewRowLook look);
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;

private:
    void paintBadge(platform::Canvas& canvas, const Rect& box);
    void paintLine(platform::Canvas& canvas, std::u16string_view text, const Rect& box, int font,
                   platform::Color color, platform::TextAlign align) const;

    PreviewRowLook m_look;
};

} // namespace ui
