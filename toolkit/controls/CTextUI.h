// A text inside a row. It differs from a label only in its name; layouts and programs use both.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/controls/CLabelUI.h"

namespace toolkit {

class CTextUI : public CLabelUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"Text"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
};

} // namespace toolkit
