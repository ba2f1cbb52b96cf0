// Where in its clip the preview is: a bar with a handle, drawn along or moved by keys. UI thread
// only.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/Event.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"

namespace ui {

class PreviewSlider final : public toolkit::CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"PreviewSlider"; }

    /// `choose` is called with the place that the author moves it to. Empty: for none.
    void setListener(std::function<void(int place)> choose) { m_choose = std::move(choose); }
    /// `count`: 0 for nothing to move in.
    void show(int place, int count);

    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] bool isFocusable() const override { return m_count > 0; }
    [[nodiscard]] bool isInteractive() const override { return true; }
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    void forgetInput() override { m_isDragged = false; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::slider;
    }
    [[nodiscard]] std::u16string accessibleValue() const override;

private:
    void choose(int place);
    void dragTo(int x);
    [[nodiscard]] Rect bar() const;
    [[nodiscard]] int handleAt() const;

    std::function<void(int)> m_choose;
    int m_place = 0;
    int m_count = 0;
    bool m_isDragged = false;
};

} // namespace ui
