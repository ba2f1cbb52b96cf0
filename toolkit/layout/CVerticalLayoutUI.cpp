#include "toolkit/layout/CVerticalLayoutUI.h"

#include <cstddef>
#include <memory>
#include <vector>

#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/layout/BoxLayout.h"

namespace toolkit {

void* CVerticalLayoutUI::GetInterface(std::u16string_view name) {
    return name == u"VerticalLayout" ? this : CContainerUI::GetInterface(name);
}

bool CVerticalLayoutUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (name != u"childpadding") {
        return CContainerUI::SetAttribute(name, value);
    }
    assignIf(m_childPadding, parseInt(value));
    NeedUpdate();
    return true;
}

void CVerticalLayoutUI::layoutChildren(const Rect& content) {
    std::vector<CControlUI*> column;
    std::vector<BoxPart> parts;
    for (const std::unique_ptr<CControlUI>& child : items()) {
        child->beforeLayout(content.size());
    }
    for (const std::unique_ptr<CControlUI>& child : items()) {
        if (!child->isShown() || placeFixed(*child, content)) {
            continue;
        }
        const Rect& padding = child->GetPadding();
        column.push_back(child.get());
        parts.push_back({child->EstimateSize(content.size()).height, padding.top + padding.bottom,
                         child->limited({}).height, child->limited({0, kMaxLayoutNumber}).height});
    }
    const std::vector<int> heights = shareLength(parts, content.height(), m_childPadding);
    int y = content.top;
    for (std::size_t i = 0; i < column.size(); ++i) {
        CControlUI& child = *column[i];
        const Rect& padding = child.GetPadding();
        const int space = content.width() - padding.left - padding.right;
        const int wanted = child.EstimateSize({space, heights[i]}).width;
        const int width = child.limited({wanted > 0 ? wanted : space, 0}).width;
        child.SetPos(Rect::at(content.left + padding.left, y + padding.top, width, heights[i]));
        y = advanced(y, {padding.top, heights[i], padding.bottom, m_childPadding});
    }
}

} // namespace toolkit
