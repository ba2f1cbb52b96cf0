// A push button: sends "click" when it is pressed and released inside itself, and by Space and
// Enter when it has the focus.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CButtonUI : public CLabelUI {
public:
    CButtonUI();

    [[nodiscard]] std::u16string GetClass() const override { return u"Button"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Does what a click by the user does. False when the control is disabled, hidden or in no
    /// window.
    virtual bool Activate();

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    [[nodiscard]] Size EstimateSize(Size available) const override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    void forgetInput() override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    /// What was being typed is taken first, as a click would have it.
    void accessiblePress() override;

protected:
    void paintStatus(platform::Canvas& canvas) override;
    [[nodiscard]] SkinColor currentTextColor() const override;
    [[nodiscard]] IconState iconState() const override;
    [[nodiscard]] Point iconPlace() const override;
    [[nodiscard]] bool takesPress() const;
    [[nodiscard]] bool isHot() const { return m_hot; }
    /// Pressed by mouse or Space and not released yet, or its menu is open.
    [[nodiscard]] bool isPushed() const { return m_mousePushed || m_keyPushed || hasMenu(); }

private:
    struct Attributes;
    [[nodiscard]] bool hasMenu() const;
    bool onMouse(const TEventUI& event);
    bool onKey(const TEventUI& event);

    std::u16string m_normalImage;
    std::u16string m_hotImage;
    std::u16string m_pushedImage;
    std::u16string m_disabledImage;
    SkinColor m_hotTextColor;
    SkinColor m_pushedTextColor;
    bool m_hot = false;
    bool m_mouseDown = false;   ///< the press began here
    bool m_mousePushed = false; ///< and the pointer is inside
    bool m_keyPushed = false;
};

} // namespace toolkit
