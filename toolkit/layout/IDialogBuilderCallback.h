// Makes the controls that a layout names and the toolkit does not know.
#pragma once

#include <memory>
#include <string_view>

namespace toolkit {

class CControlUI;

class IDialogBuilderCallback {
public:
    virtual ~IDialogBuilderCallback() = default;
    /// `className`: the element's name. Empty when unknown here too; the element is skipped then.
    virtual std::unique_ptr<CControlUI> CreateControl(std::u16string_view className) = 0;
};

} // namespace toolkit
