// A check box or, with a group, one of several exclusive choices. A change by the user sends
// "selectchanged", then "click"; in a group only the newly chosen one sends it.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class COptionUI : public CButtonUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"Option"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    [[nodiscard]] bool IsSelected() const { return m_selected; }
    /// Checks or clears, silently. Checking one of a group clears the others of the window.
    void Selected(bool selected);
    /// Empty: a check box.
    void SetGroup(std::u16string_view group) { m_group = group; }
    [[nodiscard]] const std::u16string& GetGroup() const { return m_group; }

    bool Activate() override;
    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    void attach(CPaintManagerUI* manager, CControlUI* parent) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;

protected:
    void paintStatus(platform::Canvas& canvas) override;
    [[nodiscard]] SkinColor currentTextColor() const override;
    [[nodiscard]] IconState iconState() const override;

private:
    struct Attributes;
    void clearOthers();
    bool moveInGroup(bool backward);

    std::u16string m_group;
    std::u16string m_selectedImage;
    std::u16string m_selectedHotImage;
    std::u16string m_selectedPushedImage;
    std::u16string m_selectedDisabledImage;
    SkinColor m_selectedTextColor;
    bool m_selected = false;
};

} // namespace toolkit
