#include "platform/win32/Win32Window.h"

#include <cstddef>
#include <string>
#include <utility>

#include "platform/Event.h"
#include "platform/Guard.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32WindowHost.h"

namespace platform::win32 {

namespace {

DWORD styleOf(const WindowOptions& options) {
    if (options.kind == WindowKind::popup || options.style == 0) {
        return WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    }
    // Shown once it is centred and painted, not when it is made.
    return options.style & ~static_cast<DWORD>(WS_VISIBLE);
}

DWORD extendedStyleOf(const WindowOptions& options) {
    if (options.kind == WindowKind::popup) {
        return WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;
    }
    return options.extendedStyle;
}

Rect fromNative(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

Rect rectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return fromNative(rect);
}

MONITORINFO monitorOf(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
    return info;
}

/// Where a minimised window will be when it is restored.
Rect restoredRectOf(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    const MONITORINFO monitor = monitorOf(window); // the placement is relative to its work area
    return fromNative(placement.rcNormalPosition)
        .translated(monitor.rcWork.left - monitor.rcMonitor.left,
                    monitor.rcWork.top - monitor.rcMonitor.top);
}

} // namespace

Win32Window::Win32Window(const WindowServices& services, const WindowOptions& options,
                         WindowEvents& events)
    : m_services(services), m_events(events), m_kind(options.kind), m_leastSize(options.leastSize),
      m_cornerRadius(options.cornerRadius), m_content{options.size, {}} {
    if (const auto* owner = static_cast<const Win32Window*>(options.owner)) {
        m_owner = owner->handle();
    }
    const wchar_t* windowClass =
        registerClass(options.className.empty() ? L"QuorvelWindow" : toWide(options.className));
    m_handle.reset(CreateWindowExW(extendedStyleOf(options), windowClass,
                                   toWide(options.title).c_str(), styleOf(options), CW_USEDEFAULT,
                                   CW_USEDEFAULT, options.size.width, options.size.height, m_owner,
                                   nullptr, GetModuleHandleW(nullptr), this));
    if (!m_handle) {
        m_destroyedSent = true; // there was nothing to destroy
        return;
    }
    m_dpi = GetDpiForWindow(m_handle.get());
    allowStates();
    m_fit = fitOn(monitorOf(m_owner)); // without an owner: the primary one
    // The style bits asked for a frame: have it computed again, now that this object answers.
    const Size size = toSystem(options.size, scale());
    SetWindowPos(m_handle.get(), nullptr, 0, 0, size.width, size.height,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_input.setTextInput(false, {});
}

/// Lets a window with a system menu be minimised, and sized and maximised if it can be; a click on
/// the task bar looks at the style. Otherwise the menu offers no other size.
void Win32Window::allowStates() {
    HWND window = m_handle.get();
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    if ((style & WS_SYSMENU) == 0) {
        return;
    }
    const LONG_PTR sizing = isSizable() ? WS_THICKFRAME | WS_MAXIMIZEBOX : 0;
    SetWindowLongPtrW(window, GWL_STYLE, style | WS_MINIMIZEBOX | sizing);
    if (isSizable()) {
        return;
    }
    HMENU menu = GetSystemMenu(window, FALSE); // the window's own copy from here on
    for (const UINT command : {SC_SIZE, SC_MAXIMIZE}) {
        DeleteMenu(menu, command, MF_BYCOMMAND);
    }
}

Win32Window::~Win32Window() {
    if (m_handle) {
        m_input.releaseCapture();
        SetWindowLongPtrW(m_handle.get(), GWLP_USERDATA, 0);
    }
    finish();
}

Win32Window* Win32Window::fromHandle(HWND handle) {
    if (handle == nullptr || IsWindow(handle) == 0 ||
        reinterpret_cast<WNDPROC>(GetWindowLongPtrW(handle, GWLP_WNDPROC)) != &receive) {
        return nullptr;
    }
    return reinterpret_cast<Win32Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
}

bool Win32Window::send(const Event& event) {
    if (m_closing) {
        return true;
    }
    WindowEvents& events = m_events;
    return guarded("window event", true, [&] { return events.onEvent(event); });
}

void Win32Window::show(bool visible) {
    if (m_closing) {
        return;
    }
    if (!visible) {
        ShowWindow(m_handle.get(), SW_HIDE);
        m_input.loseCapture();
        return;
    }
    const bool maximizes = std::exchange(m_showsMaximized, false);
    ShowWindow(m_handle.get(), m_kind == WindowKind::popup ? SW_SHOWNOACTIVATE
                               : maximizes                 ? SW_SHOWMAXIMIZED
                                                           : SW_SHOW);
    UpdateWindow(m_handle.get());
}

void Win32Window::center() {
    const Rect area = fromNative(monitorOf(m_owner).rcWork); // without an owner: the primary one's
    const Rect around = m_owner != nullptr ? rectOf(m_owner) : area;
    const Rect place = around.centred(screenGeometry().size()).movedInto(area);
    SetWindowPos(m_handle.get(), nullptr, place.left, place.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

double Win32Window::scale() const {
    if (const Win32Window* owner = m_kind == WindowKind::popup ? fromHandle(m_owner) : nullptr) {
        return owner->scale();
    }
    return usualScale() * m_fit;
}

double Win32Window::usualScale() const {
    return Win32WindowHost::scaleOf(m_dpi) * *m_services.zoom;
}

double Win32Window::fitOn(const MONITORINFO& monitor) const {
    return m_kind == WindowKind::popup ? 1
                                       : fitInto(isSizable() ? m_leastSize : m_content.layout,
                                                 usualScale(), fromNative(monitor.rcWork).size());
}

void Win32Window::refit() {
    if (fitOn(monitorOf(m_handle.get())) != m_fit) {
        rescale(screenGeometry().topLeft());
    }
}

Point Win32Window::toLayout(POINT at) const {
    return layoutPixel({at.x, at.y}, scale());
}

Size Win32Window::contentSize() const {
    return m_content.at(screenGeometry().size(), scale());
}

/// A new size in the normal state.
void Win32Window::noteSize() {
    m_content.note(screenGeometry().size(), scale());
}

void Win32Window::rescale(Point corner) {
    HWND window = m_handle.get();
    if (m_closing || window == nullptr) {
        return;
    }
    const MONITORINFO monitor = monitorOf(window);
    m_fit = fitOn(monitor);
    const Rect area = fromNative(monitor.rcWork);
    const Size size = isSizable() ? m_content.fit(scale(), leastSize(), area.size())
                                  : toSystem(m_content.layout, scale());
    if (IsIconic(window) == 0 && IsZoomed(window) == 0) {
        const Rect place = Rect::at(corner.x, corner.y, size.width, size.height).movedInto(area);
        SetWindowPos(window, nullptr, place.left, place.top, size.width, size.height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    followWithFrame();
    m_picture.invalidateAll();
    if (isSizable() && fromHandle(window) == this) {
        Event event; // its layout pixels are others even if its size is not
        event.kind = EventKind::resized;
        send(event);
    }
}

void Win32Window::setGeometry(const Rect& screenRect) {
    const Size size = toSystem(screenRect.size(), scale());
    m_content = {screenRect.size(), size};
    const Point corner = toSystem(screenRect.topLeft(), scale());
    SetWindowPos(m_handle.get(), nullptr, corner.x, corner.y, size.width, size.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    if (m_cornerRadius > 0) {
        const int across = nearestPixel(2 * m_cornerRadius * scale());
        // A region excludes its right and bottom edges. A window that has one owns it.
        UniqueRegion shape(
            CreateRoundRectRgn(0, 0, size.width + 1, size.height + 1, across, across));
        if (SetWindowRgn(m_handle.get(), shape.get(), TRUE) != 0) {
            shape.release();
        }
    }
}

Rect Win32Window::geometry() const {
    const Point corner = platform::toLayout(screenGeometry(), scale()).topLeft();
    const Size size = contentSize();
    return Rect::at(corner.x, corner.y, size.width, size.height);
}

Rect Win32Window::workArea(Point point) const {
    return Win32WindowHost::workArea(point, scale());
}

Rect Win32Window::screenGeometry() const {
    HWND window = m_handle.get();
    return IsIconic(window) != 0 ? restoredRectOf(window) : rectOf(window);
}

void Win32Window::setState(WindowState state) {
    HWND window = m_handle.get();
    if (state == WindowState::maximized && !isSizable()) {
        return;
    }
    if (IsWindowVisible(window) == 0) {
        m_showsMaximized = state == WindowState::maximized;
        return;
    }
    ShowWindow(window, state == WindowState::maximized   ? SW_MAXIMIZE
                       : state == WindowState::minimized ? SW_MINIMIZE
                                                         : SW_RESTORE);
}

WindowState Win32Window::state() const {
    HWND window = m_handle.get();
    return IsIconic(window) != 0                       ? WindowState::minimized
           : IsZoomed(window) != 0 || m_showsMaximized ? WindowState::maximized
                                                       : WindowState::normal;
}

Rect Win32Window::normalGeometry() const {
    HWND window = m_handle.get();
    const bool isNormal = IsIconic(window) == 0 && IsZoomed(window) == 0;
    return isNormal ? geometry() : platform::toLayout(restoredRectOf(window), scale());
}

void Win32Window::followWithFrame() {
    if (isSizable()) {
        m_sizingFrame.follow(m_handle.get(), nearestPixel(kSizingBorder * scale()));
    }
}

/// Without a frame of the system's, a maximised window would cover the task bar.
void Win32Window::limitSize(MINMAXINFO& limits) const {
    const MONITORINFO monitor = monitorOf(m_handle.get());
    const RECT& area = monitor.rcWork;
    limits.ptMaxPosition = {area.left - monitor.rcMonitor.left, area.top - monitor.rcMonitor.top};
    limits.ptMaxSize = {area.right - area.left, area.bottom - area.top};
    const Size least = leastSize();
    limits.ptMinTrackSize = {least.width, least.height};
}

void Win32Window::setTitle(const std::u16string& title) {
    SetWindowTextW(m_handle.get(), toWide(title).c_str());
}

void Win32Window::setEnabled(bool enabled) {
    m_enabled = enabled;
    EnableWindow(m_handle.get(), enabled ? TRUE : FALSE);
    if (!enabled) {
        m_input.loseCapture();
    }
}

void Win32Window::activate() {
    SetForegroundWindow(m_handle.get());
    SetActiveWindow(m_handle.get());
}

void Win32Window::setTakesFiles(bool takes) {
    DragAcceptFiles(m_handle.get(), takes ? TRUE : FALSE);
}

void Win32Window::close() {
    if (m_closing) {
        return;
    }
    m_input.releaseCapture();
    m_closing = true;
    m_timers.stopAll();
    // Before this window is hidden, or the system would activate another one in between.
    if (m_kind == WindowKind::normal && m_owner != nullptr && IsWindowVisible(m_owner) != 0) {
        SetActiveWindow(m_owner);
    }
    ShowWindow(m_handle.get(), SW_HIDE);
    PostMessageW(m_handle.get(), kFinishMessage, 0, 0);
}

void Win32Window::finish() {
    if (m_destroyedSent) {
        return;
    }
    m_destroyedSent = true;
    Event last;
    last.kind = EventKind::destroyed;
    WindowEvents& events = m_events;
    guardedRun("destroyed event", [&] { events.onEvent(last); });
}

void Win32Window::handleDrop(HDROP drop) {
    const UniqueDrop owner(drop);
    Event event;
    event.kind = EventKind::filesDropped;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring name(DragQueryFileW(drop, i, nullptr, 0) + std::size_t{1}, L'\0');
        name.resize(DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size())));
        event.files.push_back(narrow(name));
    }
    if (takesInput() && count > 0) {
        send(event);
    }
}

void Win32Window::handleCloseRequest() {
    // A disabled window waits for its dialog.
    if (!m_enabled || m_closing) {
        return;
    }
    HWND window = m_handle.get();
    Event request;
    request.kind = EventKind::closeRequest;
    const bool handled = send(request);
    if (!handled && fromHandle(window) == this) {
        close();
    }
}

void Win32Window::handleActivation(bool active) {
    HWND window = m_handle.get();
    if (!active) {
        m_input.loseCapture();
        if (fromHandle(window) != this) {
            return;
        }
    }
    Event event;
    event.kind = active ? EventKind::activated : EventKind::deactivated;
    send(event);
}

void Win32Window::changed(Accessible& node, AccessibleChange change) {
    guardedRun("accessible change", [&] { tellAccessibility(m_handle.get(), node, change); });
}

Accessible* Win32Window::accessibleRoot() const {
    return guarded("accessible root", static_cast<Accessible*>(nullptr),
                   [this] { return m_events.accessibleRoot(); });
}

} // namespace platform::win32
