// The open list of a combo: a native popup that never takes the focus. One per window, kept
// for the next opening. It paints from the combo's items and makes no item controls.
#pragma once

#include <memory>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/controls/ScrollStyle.h"
#include "toolkit/window/Popup.h"

namespace toolkit {

class CComboUI;
class CPaintManagerUI;

class DropListWindow : public Popup, private platform::WindowEvents {
public:
    explicit DropListWindow(CPaintManagerUI& manager);
    ~DropListWindow() override;
    /// The list of a window.
    [[nodiscard]] static DropListWindow& of(CPaintManagerUI& manager);

    /// False when the system refuses a popup. Closes the list of another combo first.
    bool open(CComboUI& combo);
    [[nodiscard]] CControlUI* owner() const override;
    /// The combo's.
    bool key(const TEventUI& event) override;
    [[nodiscard]] bool holds(const CControlUI* /*control*/) const override { return false; }
    void close() override;

    /// The highlighted item, -1 when none.
    [[nodiscard]] int highlighted() const { return m_highlighted; }
    void highlight(int index);
    /// Rows that fit, for PageUp and PageDown; at least 1.
    [[nodiscard]] int pageRows() const;
    void wheel(int delta) override;
    /// Screen rectangle of the popup; empty when closed.
    [[nodiscard]] platform::Rect geometry() const;
    /// The item's rectangle inside the popup (may lie outside of what is scrolled into view).
    [[nodiscard]] platform::Rect itemRect(int index) const;
    void dragOver(platform::Point screen) override;
    void dropAt(platform::Point screen) override;
    /// Null before the first opening. Not owned.
    [[nodiscard]] platform::NativeWindow* native() const { return m_native.get(); }

private:
    bool onEvent(const platform::Event& event) override;
    void onPaint(platform::Canvas& canvas, const platform::Rect& dirty) override;

    bool createNative();
    bool handle(const platform::Event& event);
    void follow(platform::Point at);
    void pressTrack(platform::Point at);
    void pickHighlighted(platform::Point at);
    [[nodiscard]] int itemAt(platform::Point at) const;
    [[nodiscard]] platform::Rect rowsRect() const;
    [[nodiscard]] platform::Rect trackRect() const;
    void invalidate();

    CPaintManagerUI& m_manager;
    std::unique_ptr<platform::NativeWindow> m_native;
    CComboUI* m_combo = nullptr;
    ScrollModel m_scroll;
    ScrollStyle m_scrollStyle;
    platform::Size m_size;
    int m_rowHeight = 25;
    int m_highlighted = -1;
    int m_grabOffset = 0;
    bool m_dragging = false;
    bool m_thumbHot = false;
    bool m_pressedInside = false;
};

} // namespace toolkit
