// A row: children are placed side by side from left to right. Children with a width keep it, the
// others share what is left; a child with "pos" is not part of the row.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/layout/BoxLayout.h"

namespace toolkit {

class CHorizontalLayoutUI : public CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"HorizontalLayout"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    [[nodiscard]] Size EstimateSize(Size available) const override;

protected:
    void layoutChildren(const Rect& content) override;

private:
    /// Of the child in the row.
    [[nodiscard]] static BoxPart partOf(const CControlUI& child, Size content);
    /// That the row needs for what is shown in it.
    [[nodiscard]] int leastWidth() const;

    int m_childPadding = 0; ///< pixels between neighbours
    bool m_fits = false;    ///< is never narrower than what is shown in it
};

} // namespace toolkit
