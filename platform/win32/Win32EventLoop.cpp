#include "platform/win32/Win32EventLoop.h"

#include <cstddef>
#include <utility>

namespace platform::win32 {

namespace {

constexpr DWORD kLongestWaitMs = 20;
constexpr UINT kTaskMessage = WM_APP + 1;
constexpr const wchar_t* kClassName = L"QuorvelEventLoop";

} // namespace

Win32EventLoop::Win32EventLoop()
    : m_tasks([this] { return PostMessageW(m_window.get(), kTaskMessage, 0, 0) != 0; }) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = receive;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClassName;
    RegisterClassExW(&description); // fails harmlessly when the class exists already
    m_window.reset(CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                   description.hInstance, nullptr));
    SetWindowLongPtrW(m_window.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32EventLoop::~Win32EventLoop() = default;

LRESULT CALLBACK Win32EventLoop::receive(HWND window, UINT message, WPARAM wide, LPARAM wideLong) {
    auto* self = reinterpret_cast<Win32EventLoop*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == kTaskMessage) {
        self->m_tasks.runWaiting();
        return 0;
    }
    return DefWindowProcW(window, message, wide, wideLong);
}

void Win32EventLoop::post(std::function<void()> task) {
    m_tasks.add(std::move(task));
}

void Win32EventLoop::handle(const MSG& message) {
    if (message.message == WM_QUIT) {
        endAll();
        return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

int Win32EventLoop::run() {
    if (m_ending) {
        return 0;
    }
    if (m_pendingQuit) {
        return *std::exchange(m_pendingQuit, std::nullopt);
    }
    const std::size_t depth = m_running.size();
    m_running.push_back({++m_lastId, std::nullopt});
    MSG message{};
    while (!m_running[depth].code) {
        if (GetMessageW(&message, nullptr, 0, 0) < 0) {
            break;
        }
        handle(message);
    }
    const int code = m_running[depth].code.value_or(0);
    m_running.resize(depth);
    return code;
}

void Win32EventLoop::postQuit(int code) {
    if (m_running.empty()) {
        m_pendingQuit = code;
        return;
    }
    // The loop is chosen now: the quit is not for one that starts before it is handled.
    post([this, code, id = m_running.back().id] {
        for (Running& running : m_running) {
            if (running.id == id) {
                running.code = code;
            }
        }
    });
}

void Win32EventLoop::processEvents(bool wait) {
    if (wait) {
        MsgWaitForMultipleObjectsEx(0, nullptr, kLongestWaitMs, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        handle(message);
    }
}

void Win32EventLoop::endAll() {
    m_ending = true;
    for (Running& running : m_running) {
        running.code = running.code.value_or(0);
    }
    // A message makes a waiting loop check again.
    PostMessageW(m_window.get(), WM_NULL, 0, 0);
}

} // namespace platform::win32
