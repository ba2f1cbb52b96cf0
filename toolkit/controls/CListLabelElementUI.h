// An item that is one line of text: of a combo, or a row of a list.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"

namespace toolkit {

class CListLabelElementUI : public CLabelUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"ListLabelElement"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    [[nodiscard]] bool IsSelected() const { return m_selected; }
    /// Called by the owning list; a program selects through the list.
    void setSelected(bool selected);

    bool DoEvent(const TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    bool notePress(const TEventUI& event) override;
    void forgetInput() override { m_hot = false; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    void accessiblePress() override;
    void accessibleSelect(bool selected) override;

private:
    bool m_selected = false;
    bool m_hot = false;
};

} // namespace toolkit
