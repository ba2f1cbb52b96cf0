#include "toolkit/layout/CHorizontalLayoutUI.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "platform/Geometry.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/layout/BoxLayout.h"

namespace toolkit {

void* CHorizontalLayoutUI::GetInterface(std::u16string_view name) {
    return name == u"HorizontalLayout" ? this : CContainerUI::GetInterface(name);
}

bool CHorizontalLayoutUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (name == u"childpadding") {
        assignIf(m_childPadding, parseInt(value));
    } else if (name == u"fit") {
        assignIf(m_fits, parseBool(value));
    } else {
        return CContainerUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

BoxPart CHorizontalLayoutUI::partOf(const CControlUI& child, Size content) {
    const Rect& padding = child.GetPadding();
    return {child.EstimateSize(content).width, padding.left + padding.right,
            child.limited({}).width, child.limited({kMaxLayoutNumber, 0}).width};
}

int CHorizontalLayoutUI::leastWidth() const {
    int width = GetInset().left + GetInset().right;
    int gap = 0;
    for (const std::unique_ptr<CControlUI>& child : items()) {
        if (child->isShown() && !child->GetPlace()) {
            const BoxPart part = partOf(*child, {});
            width = advanced(width, {gap, part.padding, shareLength({part}, part.padding, 0)[0]});
            gap = m_childPadding;
        }
    }
    return width;
}

platform::Size CHorizontalLayoutUI::EstimateSize(Size available) const {
    const Size size = CContainerUI::EstimateSize(available);
    return {m_fits ? std::max(size.width, leastWidth()) : size.width, size.height};
}

void CHorizontalLayoutUI::layoutChildren(const Rect& content) {
    std::vector<CControlUI*> row;
    std::vector<BoxPart> parts;
    for (const std::unique_ptr<CControlUI>& child : items()) {
        child->beforeLayout(content.size());
    }
    for (const std::unique_ptr<CControlUI>& child : items()) {
        if (!child->isShown() || placeFixed(*child, content)) {
            continue;
        }
        row.push_back(child.get());
        parts.push_back(partOf(*child, content.size()));
    }
    const std::vector<int> widths = shareLength(parts, content.width(), m_childPadding);
    int x = content.left;
    for (std::size_t i = 0; i < row.size(); ++i) {
        CControlUI& child = *row[i];
        const Rect& padding = child.GetPadding();
        const int space = content.height() - padding.top - padding.bottom;
        const int wanted = child.EstimateSize({widths[i], space}).height;
        const int height = child.limited({0, wanted > 0 ? wanted : space}).height;
        const int y =
            centredStart(content.top, content.bottom, padding.top, padding.bottom, height);
        child.SetPos(Rect::at(x + padding.left, y, widths[i], height));
        x = advanced(x, {padding.left, widths[i], padding.right, m_childPadding});
    }
}

} // namespace toolkit
