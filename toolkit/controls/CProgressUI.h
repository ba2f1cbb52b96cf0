// A bar that shows how far some work has come. It takes no input.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CProgressUI : public CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"Progress"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// 0 to 100; others are brought into these bounds.
    void SetPercent(int percent);

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::progressBar;
    }
    [[nodiscard]] std::u16string accessibleValue() const override;

protected:
    void paintStatus(platform::Canvas& canvas) override;

private:
    int m_percent = 0;
    SkinColor m_trackColor;
    SkinColor m_barColor;
};

} // namespace toolkit
