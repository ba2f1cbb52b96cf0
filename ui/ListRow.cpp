#include "ui/ListRow.h"

#include <utility>

namespace ui {

std::unique_ptr<toolkit::CListContainerElementUI>
makeLinedRow(std::unique_ptr<toolkit::CControlUI> content, int height, std::u16string_view tone) {
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetFixedHeight(height);
    row->SetAttribute(u"bordercolor", tone);
    row->SetAttribute(u"bordersize", u"0,0,0,1");
    row->Add(std::move(content));
    return row;
}

} // namespace ui
