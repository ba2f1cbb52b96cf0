// One owner type for each kind of native handle, with its own invalid value and its own way to
// close. Included by sources of this folder only.
#pragma once

#include <utility>

#include <windows.h>

#include <shellapi.h>

namespace platform::win32 {

/// Move-only owner of a handle; `Traits` gives the invalid value and closes handles.
template <typename Traits>
class Unique {
public:
    using Type = typename Traits::Type;

    explicit Unique(Type handle = Traits::none()) : m_handle(handle) {}
    Unique(Unique&& other) noexcept : m_handle(other.release()) {}
    Unique& operator=(Unique&& other) noexcept {
        reset(other.release());
        return *this;
    }
    Unique(const Unique&) = delete;
    Unique& operator=(const Unique&) = delete;
    ~Unique() { reset(); }

    [[nodiscard]] Type get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Traits::none(); }
    Type release() { return std::exchange(m_handle, Traits::none()); }
    void reset(Type handle = Traits::none()) {
        const Type former = std::exchange(m_handle, handle);
        if (former != Traits::none() && former != handle) {
            Traits::close(former);
        }
    }

private:
    Type m_handle;
};

struct FileTraits {
    using Type = HANDLE;
    static Type none() { return INVALID_HANDLE_VALUE; }
    static void close(Type handle) { CloseHandle(handle); }
};
/// From CreateFile.
using UniqueFile = Unique<FileTraits>;

struct KernelTraits {
    using Type = HANDLE;
    static Type none() { return nullptr; }
    static void close(Type handle) { CloseHandle(handle); }
};
/// A process, a thread, an event.
using UniqueKernelObject = Unique<KernelTraits>;

struct FindTraits {
    using Type = HANDLE;
    static Type none() { return INVALID_HANDLE_VALUE; }
    static void close(Type handle) { FindClose(handle); }
};
using UniqueFind = Unique<FindTraits>;

struct LocalMemoryTraits {
    using Type = HLOCAL;
    static Type none() { return nullptr; }
    static void close(Type handle) { LocalFree(handle); }
};
/// Text that the system allocated.
using UniqueLocalMemory = Unique<LocalMemoryTraits>;

struct CursorTraits {
    using Type = HCURSOR;
    static Type none() { return nullptr; }
    static void close(Type handle) { DestroyCursor(handle); }
};
/// That was made, and is not the system's.
using UniqueCursor = Unique<CursorTraits>;

struct WindowTraits {
    using Type = HWND;
    static Type none() { return nullptr; }
    static void close(Type handle) { DestroyWindow(handle); }
};
using UniqueWindow = Unique<WindowTraits>;

struct MemoryContextTraits {
    using Type = HDC;
    static Type none() { return nullptr; }
    static void close(Type handle) { DeleteDC(handle); }
};
/// From CreateCompatibleDC. Objects selected into it must be deselected before it is deleted.
using UniqueMemoryContext = Unique<MemoryContextTraits>;

struct DropTraits {
    using Type = HDROP;
    static Type none() { return nullptr; }
    static void close(Type handle) { DragFinish(handle); }
};
/// The names of dropped files.
using UniqueDrop = Unique<DropTraits>;

template <typename Object>
struct ObjectTraits {
    using Type = Object;
    static Type none() { return nullptr; }
    static void close(Type handle) { DeleteObject(handle); }
};
using UniqueBitmap = Unique<ObjectTraits<HBITMAP>>;
using UniqueFont = Unique<ObjectTraits<HFONT>>;
using UniqueRegion = Unique<ObjectTraits<HRGN>>;

/// A window's device context for one scope.
class WindowContext {
public:
    explicit WindowContext(HWND window) : m_window(window), m_context(GetDC(window)) {}
    ~WindowContext() {
        if (m_context != nullptr) {
            ReleaseDC(m_window, m_context);
        }
    }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    /// Null when the system had none to give.
    [[nodiscard]] HDC get() const { return m_context; }

private:
    HWND m_window;
    HDC m_context;
};

/// Selects an object into a context, and the previous one again at the end of the scope.
class Selection {
public:
    Selection(HDC context, HGDIOBJ object)
        : m_context(context), m_former(SelectObject(context, object)) {}
    ~Selection() { SelectObject(m_context, m_former); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC m_context;
    HGDIOBJ m_former;
};

} // namespace platform::win32
