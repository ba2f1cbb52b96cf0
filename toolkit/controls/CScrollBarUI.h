// A vertical scroll bar: drag its thumb, or press above or below it for a page.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/controls/ScrollStyle.h"

namespace toolkit {

class CScrollBarUI : public CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"ScrollBar"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    [[nodiscard]] ScrollModel& model() { return m_model; }
    [[nodiscard]] const ScrollModel& model() const { return m_model; }
    [[nodiscard]] int width() const { return m_style.width; }
    /// Called after the user moved the thumb.
    void setOnScroll(std::function<void()> onScroll) { m_onScroll = std::move(onScroll); }

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    void forgetInput() override { m_hot = false; }
    [[nodiscard]] bool isInteractive() const override { return true; }
    void attach(CPaintManagerUI* manager, CControlUI* parent) override;

private:
    void press(Point at);
    void drag(Point at);

    ScrollModel m_model;
    ScrollStyle m_style;
    std::function<void()> m_onScroll;
    int m_grabOffset = 0; ///< from the thumb's top to where it was taken
    bool m_dragging = false;
    bool m_hot = false;
    bool m_styled = false;
};

} // namespace toolkit
