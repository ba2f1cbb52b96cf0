// A column: children are placed below each other from top to bottom. Children with a height keep
// it, the others share what is left; a child with "pos" is not part of the column.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"

namespace toolkit {

class CVerticalLayoutUI : public CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"VerticalLayout"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;

protected:
    void layoutChildren(const Rect& content) override;

private:
    int m_childPadding = 0; ///< pixels between neighbours
};

} // namespace toolkit
