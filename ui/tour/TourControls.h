// What the tour is shown with: its panel, and the pointer from that to what it is about. UI thread
// only.
#pragma once

#include <string>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/tour/TourPlaces.h"

namespace ui {

/// A dialog to screen readers, although the window below works on.
class TourPanel final : public toolkit::CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"TourPanel"; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
};

/// Painted over the edge of the panel that its `side` names.
class TourPointer final : public toolkit::CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"TourPointer"; }
    void setSide(TourPlaces::Side side);

protected:
    void paintBackground(platform::Canvas& canvas) override;

private:
    TourPlaces::Side m_side = TourPlaces::Side::none;
};

} // namespace ui
