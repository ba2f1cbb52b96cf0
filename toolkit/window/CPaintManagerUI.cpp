#include "toolkit/window/CPaintManagerUI.h"

#include <algorithm>
#include <utility>

#include "platform/Guard.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/window/Notification.h"
#include "toolkit/window/ToolTipWindow.h"

namespace toolkit {

CPaintManagerUI::Busy::Busy(CPaintManagerUI* manager) : m_manager(manager) {
    if (m_manager != nullptr) {
        ++m_manager->m_busy;
    }
}

CPaintManagerUI::Busy::~Busy() {
    if (m_manager != nullptr) {
        m_manager->leaveBusy();
    }
}

CPaintManagerUI::CPaintManagerUI(platform::Gui& gui)
    : m_gui(gui), m_look(gui.fonts()), m_toolTip(std::make_unique<ToolTipWindow>(*this)) {}

CPaintManagerUI::~CPaintManagerUI() {
    m_closing = true;
    m_root.reset();
    m_retired.clear();
}

void CPaintManagerUI::Init(platform::NativeWindow* window) {
    m_window = window;
    m_closing = false;
    m_mouse.windowChanged();
    m_look.Clear();
    m_look.SetDark(m_gui.windows().isDark());
    m_ranges.clear();
    m_caption = {};
    // Their windows were destroyed with the former one, which owned them.
    m_popup.reset();
    m_toolTip = std::make_unique<ToolTipWindow>(*this);
}

void CPaintManagerUI::leaveBusy() noexcept {
    if (m_busy == 1) {
        // What fails for want of memory is made up for in the next event.
        platform::guardedRun("layout", [this] { UpdateLayout(); });
        // Ending controls may retire others.
        while (!m_retired.empty()) {
            const std::vector<std::unique_ptr<CControlUI>> ending = std::move(m_retired);
            m_retired.clear();
        }
    }
    --m_busy;
}

void CPaintManagerUI::Retire(std::unique_ptr<CControlUI> control) {
    control->attach(nullptr, nullptr);
    if (m_busy > 0) {
        m_retired.push_back(std::move(control));
    }
}

void CPaintManagerUI::forget(CControlUI& control) {
    if (const Popup* open = popup(); open != nullptr && open->owner() == &control) {
        closePopup(); // may give the focus back to it
    }
    m_ranges.forget(control);
    m_focus.forget(control);
    m_mouse.forget(control);
    m_toolTip->leave(control);
    m_timers.stopAll(nativeTimers(), control);
}

void CPaintManagerUI::leaveInput(CControlUI& control) {
    const CControlUI* focused = GetFocus();
    if (focused != nullptr && focused->isInside(&control)) {
        m_focus.drop();
    }
    if (m_mouse.pressed() != nullptr && m_mouse.pressed()->isInside(&control)) {
        m_mouse.cancelPress();
        ReleaseCapture();
    }
    m_mouse.clearHot(control);
    if (!control.isShown()) {
        m_toolTip->leave(control);
    }
    forgetInputIn(control);
}

void CPaintManagerUI::forgetInputIn(CControlUI& control) {
    control.forgetInput();
    for (int i = 0; i < control.childCount(); ++i) {
        forgetInputIn(*control.childAt(i));
    }
}

void CPaintManagerUI::windowDestroyed() {
    m_closing = true;
    closePopup();
    m_toolTip->hide();
    m_focus.clear();
    m_mouse.cancelPress();
    m_timers.forgetAll();
    m_window = nullptr;
}

void CPaintManagerUI::AttachRoot(std::unique_ptr<CControlUI> root) {
    m_root = std::move(root);
    m_root->attach(this, nullptr);
    NeedUpdate();
}

void CPaintManagerUI::SetWindowSize(Size size) {
    m_windowSize = size;
    NeedUpdate();
}

platform::Rect CPaintManagerUI::captionRect() const {
    return {m_caption.left, m_caption.top, m_windowSize.width - m_caption.right, m_caption.bottom};
}

CControlUI* CPaintManagerUI::FindControl(std::u16string_view name) const {
    if (m_root == nullptr || name.empty()) {
        return nullptr;
    }
    return m_root->GetName() == name ? m_root.get() : m_root->FindSubControl(name);
}

CControlUI* CPaintManagerUI::FindControl(Point at, Meeting kind) const {
    return m_root != nullptr ? m_root->controlAt(at, kind) : nullptr;
}

const std::u16string& CPaintManagerUI::focusedImageFor(const CControlUI& control) const {
    if (!control.focusedImage().empty()) {
        return control.focusedImage();
    }
    // The layout's defaults are not applied to controls that a program made.
    for (const auto& [name, value] : m_look.GetDefaults(control.GetClass())) {
        if (name == u"focusedimage") {
            return value;
        }
    }
    return m_root->focusedImage();
}

void CPaintManagerUI::Invalidate(const Rect& rect) {
    const Rect visible = rect.intersected(Rect::at(0, 0, m_windowSize.width, m_windowSize.height));
    if (m_window != nullptr && !visible.isEmpty()) {
        m_window->picture().invalidate(visible);
    }
}

void CPaintManagerUI::UpdateLayout() {
    if (m_needsLayout && m_root != nullptr) {
        const Busy busy(this);
        m_ranges.apply(m_windowSize);
        m_needsLayout = false;
        try {
            m_root->SetPos(Rect::at(0, 0, m_windowSize.width, m_windowSize.height));
        } catch (...) {
            m_needsLayout = true;
            throw;
        }
    }
}

void CPaintManagerUI::SetCapture() {
    if (m_window != nullptr) {
        m_window->input().setCapture();
    }
}

void CPaintManagerUI::ReleaseCapture() {
    if (m_window != nullptr) {
        m_window->input().releaseCapture();
    }
}

Popup* CPaintManagerUI::popup() const {
    return m_popup != nullptr && m_popup->owner() != nullptr ? m_popup.get() : nullptr;
}

void CPaintManagerUI::closePopup() {
    if (m_popup != nullptr) {
        m_popup->close();
    }
}

bool CPaintManagerUI::SetTimer(CControlUI& control, unsigned id, int intervalMs) {
    return m_window != nullptr && m_timers.start(m_window->timers(), control, id, intervalMs);
}

platform::WindowTimers* CPaintManagerUI::nativeTimers() const {
    return m_window != nullptr ? &m_window->timers() : nullptr;
}

bool CPaintManagerUI::KillTimer(CControlUI& control, unsigned id) {
    return m_timers.stop(nativeTimers(), control, id);
}

void CPaintManagerUI::SendNotify(CControlUI& control, std::u16string_view type, int wParam,
                                 int lParam) {
    if (control.GetManager() != this || m_window == nullptr) {
        return;
    }
    const Busy busy(this);
    TNotifyUI message{std::u16string(type), &control, wParam, lParam};
    const std::vector<INotifyUI*> notifiers = m_notifiers; // a handler may add one
    for (INotifyUI* notifier : notifiers) {
        notifier->Notify(message);
    }
}

bool CPaintManagerUI::filter(const platform::Event& event) {
    const std::vector<IMessageFilterUI*> filters = m_filters; // a handler may add one
    return std::any_of(filters.begin(), filters.end(),
                       [&](IMessageFilterUI* filter) { return filter->MessageHandler(event); });
}

platform::Point CPaintManagerUI::toScreen(Point at) const {
    const Rect window = m_window != nullptr ? m_window->geometry() : Rect{};
    return {window.left + at.x, window.top + at.y};
}

void CPaintManagerUI::Paint(platform::Canvas& canvas, const Rect& dirty) {
    const Busy busy(this);
    UpdateLayout();
    if (m_root == nullptr) {
        return;
    }
    m_root->DoPaint(canvas, dirty);
    if (m_focus.showsRing()) {
        paintFocusRing(canvas);
    }
}

void CPaintManagerUI::paintFocusRing(platform::Canvas& canvas) {
    const CControlUI& focused = *m_focus.focused();
    const SkinImage* image = m_look.GetImage(focusedImageFor(focused));
    if (image == nullptr) {
        return;
    }
    const Rect ring = m_focus.ringRect();
    {
        const platform::ClipScope scope(canvas, focused.visibleArea(ring));
        image->draw(canvas, ring);
    }
    paintAbove(canvas, focused, ring);
}

// What lies over the focused control, as the panel of a tour, lies over its ring too.
void CPaintManagerUI::paintAbove(platform::Canvas& canvas, const CControlUI& control,
                                 const Rect& area) {
    const CControlUI* inner = &control;
    for (const CControlUI* around = inner->GetParent(); around != nullptr;
         around = inner->GetParent()) {
        bool isAbove = false;
        for (int i = 0; i < around->childCount(); ++i) {
            CControlUI& child = *around->childAt(i);
            const Rect place = child.GetPos();
            if (isAbove && child.isShown() && !place.intersected(control.GetPos()).isEmpty()) {
                const Rect part = place.intersected(area);
                const platform::ClipScope scope(canvas, child.visibleArea(part));
                child.DoPaint(canvas, child.PaintsWhole() ? place : part);
            }
            isAbove = isAbove || &child == inner;
        }
        inner = around;
    }
}

} // namespace toolkit
