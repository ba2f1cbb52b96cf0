// A row of a list that holds controls. A press anywhere in it, including its controls, selects it.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "toolkit/controls/CContainerUI.h"

namespace toolkit {

class CListContainerElementUI : public CContainerUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"ListContainerElement"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    [[nodiscard]] bool IsSelected() const { return m_selected; }
    /// Called by the owning list; a program selects through the list.
    void setSelected(bool selected);

    bool DoEvent(const TEventUI& event) override;
    bool notePress(const TEventUI& event) override;
    void forgetInput() override { m_hot = false; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    /// The row's own text, else the texts inside it.
    [[nodiscard]] std::u16string accessibleName() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    void accessiblePress() override;
    void accessibleSelect(bool selected) override;

protected:
    void paintBackground(platform::Canvas& canvas) override;

private:
    bool m_selected = false;
    bool m_hot = false;
};

} // namespace toolkit
