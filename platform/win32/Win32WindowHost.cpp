#include "platform/win32/Win32WindowHost.h"

#include <cstring>
#include <functional>
#include <utility>
#include <vector>

#include "platform/Event.h"
#include "platform/Guard.h"
#include "platform/WindowScale.h"
#include "platform/win32/Handles.h"
#include "platform/win32/WideText.h"

namespace platform::win32 {

namespace {

/// The clipboard, open for one scope. For a window of ours: the system may refuse to take what no
/// window owns.
class Clipboard {
public:
    Clipboard() : m_open(OpenClipboard(GetActiveWindow()) != 0) {}
    ~Clipboard() {
        if (m_open) {
            CloseClipboard();
        }
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    explicit operator bool() const { return m_open; }

private:
    bool m_open;
};

struct GlobalTraits {
    using Type = HGLOBAL;
    static Type none() { return nullptr; }
    static void close(Type handle) { GlobalFree(handle); }
};
using UniqueGlobal = Unique<GlobalTraits>;

/// Memory of the clipboard's kind, reachable for one scope.
class GlobalPointer {
public:
    explicit GlobalPointer(HGLOBAL memory) : m_memory(memory), m_pointer(GlobalLock(memory)) {}
    ~GlobalPointer() {
        if (m_pointer != nullptr) {
            GlobalUnlock(m_memory);
        }
    }
    GlobalPointer(const GlobalPointer&) = delete;
    GlobalPointer& operator=(const GlobalPointer&) = delete;
    [[nodiscard]] void* get() const { return m_pointer; }

private:
    HGLOBAL m_memory;
    void* m_pointer;
};

BOOL CALLBACK noteWindow(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

void forEachWindow(const std::function<void(Win32Window&)>& act) {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), noteWindow, reinterpret_cast<LPARAM>(&windows));
    for (HWND handle : windows) {
        if (Win32Window* window = Win32Window::fromHandle(handle)) { // the one before may close it
            act(*window);
        }
    }
}

/// As the user has chosen for programs, since Windows 10.
bool isSystemDark() {
    DWORD isLight = 1;
    DWORD size = sizeof isLight;
    const LSTATUS status = RegGetValueW(
        HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size);
    return status == ERROR_SUCCESS && isLight == 0;
}

} // namespace

Win32WindowHost::Win32WindowHost(WindowServices services) : m_services(std::move(services)) {
    m_services.zoom = &m_zoom;
    m_services.settingsChanged = [this] { updateAppearance(); };
}

std::unique_ptr<NativeWindow> Win32WindowHost::createWindow(const WindowOptions& options,
                                                            WindowEvents& events) {
    return guarded("window creation", std::unique_ptr<NativeWindow>(),
                   [&]() -> std::unique_ptr<NativeWindow> {
                       auto window = std::make_unique<Win32Window>(m_services, options, events);
                       if (window->handle() == nullptr) {
                           return nullptr;
                       }
                       return window;
                   });
}

int Win32WindowHost::primaryScreenHeight() const {
    return static_cast<int>(GetSystemMetrics(SM_CYSCREEN) / primaryScale());
}

double Win32WindowHost::primaryScale() const {
    return scaleOf(GetDpiForSystem()) * m_zoom;
}

double Win32WindowHost::scaleOf(UINT dpi) {
    constexpr double kUsualDpi = 96;
    return dpi > 0 ? dpi / kUsualDpi : 1;
}

Rect Win32WindowHost::workArea(Point point) const {
    return workArea(point, primaryScale());
}

Rect Win32WindowHost::workArea(Point point, double scale) {
    const Point at = toSystem(point, scale);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromPoint({at.x, at.y}, MONITOR_DEFAULTTONEAREST), &info);
    const RECT& area = info.rcWork;
    return toLayout({area.left, area.top, area.right, area.bottom}, scale);
}

void Win32WindowHost::setZoom(double zoom) {
    if (m_zoom == zoom) {
        return;
    }
    m_zoom = zoom;
    forEachWindow([](Win32Window& window) { window.rescale(window.screenGeometry().topLeft()); });
}

void Win32WindowHost::setAppearance(Appearance appearance) {
    m_appearance = appearance;
    updateAppearance();
}

void Win32WindowHost::updateAppearance() {
    const bool isDark = m_appearance == Appearance::dark ||
                        (m_appearance == Appearance::asSystem && isSystemDark());
    if (m_isDark == isDark) {
        return;
    }
    m_isDark = isDark;
    Event event;
    event.kind = EventKind::appearanceChanged;
    forEachWindow([&](Win32Window& window) { window.send(event); });
}

std::u16string Win32WindowHost::clipboardText() const {
    const Clipboard clipboard;
    HANDLE memory = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    if (memory == nullptr) {
        return {};
    }
    const GlobalPointer pointer(memory);
    const auto* text = static_cast<const wchar_t*>(pointer.get());
    if (text == nullptr) {
        return {};
    }
    // Others' memory: it need not end in a zero.
    return fromWide({text, wcsnlen(text, GlobalSize(memory) / sizeof(wchar_t))});
}

void Win32WindowHost::setClipboardText(const std::u16string& text) {
    UniqueGlobal memory(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)));
    if (!memory) {
        return;
    }
    {
        const GlobalPointer pointer(memory.get());
        std::memcpy(pointer.get(), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }
    const Clipboard clipboard;
    if (clipboard && EmptyClipboard() != 0 &&
        SetClipboardData(CF_UNICODETEXT, memory.get()) != nullptr) {
        memory.release(); // the clipboard's from here on
    }
}

std::u16string Win32WindowHost::foldedCase(std::u16string_view text) const {
    std::wstring folded = toWide(text);
    CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return fromWide(folded);
}

} // namespace platform::win32
