// The head of the left pane: tabs at the left, the tools of the page at the right, and between them
// the box that finds a branch. A narrow pane gives up the box's width, the number of the zoom and
// the texts of the tabs, in this order. UI thread only.
#pragma once

#include <string>

#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"

namespace ui {

class PaneHead final : public toolkit::CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"PaneHead"; }

protected:
    void layoutChildren(const Rect& content) override;

private:
    int placeTabs(const Rect& content, bool withTexts);
    /// Returns where the leftmost one begins. Without room the number of the zoom is hidden.
    int placeTools(const Rect& content, int left, bool withZoom);
    void showZoom(bool shown);
    [[nodiscard]] int textWidth(toolkit::CControlUI& tab) const;
};

} // namespace ui
