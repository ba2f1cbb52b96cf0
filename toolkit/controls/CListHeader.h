// The header above a list's rows: a container that does not scroll with them. Its labels are placed
// by their "pos".
#pragma once

#include <string>
#include <string_view>

#include "toolkit/controls/CContainerUI.h"

namespace toolkit {

class CListHeader : public CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"ListHeader"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
};

} // namespace toolkit
