#include "ui/branch_editor/PaneHead.h"

#include <algorithm>
#include <string>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/preview/PreviewNames.h"

namespace ui {

namespace {

constexpr int kEdge = 8;
constexpr int kGap = 4;
constexpr int kBesideBox = 12;
constexpr int kTabHeight = 32;
constexpr int kToolHeight = 25;
constexpr int kWidePane = 520;
constexpr int kLeastText = 30;
constexpr int kBareTab = 40;
constexpr int kLeastBox = 72;
constexpr int kMostBox = 180;
constexpr int kLeastWithHint = 126;

bool isTab(const toolkit::CControlUI& control) {
    return control.GetClass() == u"Option" &&
           !static_cast<const toolkit::COptionUI&>(control).GetGroup().empty();
}

bool isBox(const toolkit::CControlUI& control) {
    return control.GetName() == branch_list::kFindPane;
}

bool isZoom(const toolkit::CControlUI& control) {
    return control.GetName() == branch_list::kZoomLabel;
}

bool isNote(const toolkit::CControlUI& control) {
    return control.GetName() == branch_list::kPreviewNote;
}

/// Without its text, a control still has it as its user data.
const std::u16string& textOf(toolkit::CControlUI& control) {
    if (!control.GetText().empty()) {
        control.SetUserData(control.GetText());
    }
    return control.GetUserData();
}

void showText(toolkit::CControlUI& control, bool shown) {
    const std::u16string& text = textOf(control);
    control.SetText(shown ? text : std::u16string());
}

} // namespace

int PaneHead::textWidth(toolkit::CControlUI& tab) const {
    toolkit::CPaintManagerUI* manager = GetManager();
    return manager != nullptr
               ? manager->fonts().measure(textOf(tab), manager->look().GetFont(font::kBody)).width
               : 0;
}

int PaneHead::placeTabs(const Rect& content, bool withTexts) {
    int x = content.left + kEdge;
    for (const auto& child : items()) {
        if (isTab(*child) && child->isShown()) {
            const int text = textWidth(*child);
            const int width = !withTexts                     ? kBareTab
                              : content.width() >= kWidePane ? 60 + text
                                                             : 48 + std::max(text, kLeastText);
            showText(*child, withTexts);
            child->SetPos(Rect::at(x, content.bottom - kTabHeight, width, kTabHeight));
            x += width + kGap;
        }
    }
    return x - kGap;
}

int PaneHead::placeTools(const Rect& content, int left, bool withZoom) {
    int right = content.right - kEdge;
    for (auto item = items().rbegin(); item != items().rend(); ++item) {
        const auto& child = *item;
        if (isTab(*child) || isBox(*child) || !(isZoom(*child) ? withZoom : child->isShown())) {
            continue;
        }
        const int wanted = child->EstimateSize({}).width;
        const bool hasRoom = !isNote(*child) || right - wanted >= left + kBesideBox;
        const int width = hasRoom ? wanted : 0;
        child->SetPos(Rect::at(right - width, content.top + kEdge, width, kToolHeight));
        right -= width > 0 ? width + kGap : 0;
    }
    return right + kGap;
}

void PaneHead::showZoom(bool shown) {
    for (const auto& child : items()) {
        if (isZoom(*child)) {
            child->SetVisible(shown);
        }
    }
}

void PaneHead::layoutChildren(const Rect& content) {
    const auto box =
        std::find_if(items().begin(), items().end(), [](const auto& one) { return isBox(*one); });
    const bool isMap = box != items().end() && (*box)->isShown();
    bool hasZoom = isMap;
    int left = placeTabs(content, true);
    int right = placeTools(content, left, hasZoom);
    const auto room = [&] { return right - left - 2 * kBesideBox; };
    if (isMap && room() < kLeastBox) {
        hasZoom = false;
        right = placeTools(content, left, hasZoom);
    }
    if (isMap && room() < kLeastBox) {
        left = placeTabs(content, false);
        right = placeTools(content, left, true);
        hasZoom = room() >= kLeastBox;
        right = placeTools(content, left, hasZoom);
    }
    showZoom(hasZoom);
    if (!isMap) {
        return;
    }
    const int width = std::clamp(room(), 0, kMostBox);
    if (toolkit::CControlUI* hint = (*box)->FindSubControl(branch_list::kFindHint)) {
        showText(*hint, width >= kLeastWithHint);
    }
    (*box)->SetPos(Rect::at(right - kBesideBox - width, content.top + kEdge, width, kToolHeight));
}

} // namespace ui
