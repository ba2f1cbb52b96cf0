// The Windows back end as a whole.
#include <cstdint>
#include <memory>

#include <windows.h>

#include <objbase.h>

#include "platform/Guard.h"
#include "platform/Gui.h"
#include "platform/Sound.h"
#include "platform/win32/Win32Desktop.h"
#include "platform/win32/Win32EventLoop.h"
#include "platform/win32/Win32FileDialog.h"
#include "platform/win32/Win32FontSet.h"
#include "platform/win32/Win32TextPainter.h"
#include "platform/win32/Win32WindowHost.h"

namespace platform {

namespace win32 {

namespace {

class Win32Components final : public ComponentLibrary {
public:
    [[nodiscard]] bool initialize(std::uint32_t& errorCode) override {
        // S_FALSE, "already initialised", is a success that needs its own end as well.
        const bool good = SUCCEEDED(CoInitialize(nullptr));
        errorCode = good ? 0 : GetLastError();
        return good;
    }
    void uninitialize() override { CoUninitialize(); }
};

class Win32Gui final : public Gui {
public:
    Win32Gui()
        : m_text(m_fonts), m_windows({&m_text, nullptr, [this] { m_loop.endAll(); }, nullptr}) {}

    WindowHost& windows() override { return m_windows; }
    EventLoop& loop() override { return m_loop; }
    FontSet& fonts() override { return m_fonts; }
    FileDialog& fileDialog() override { return m_fileDialog; }
    Desktop& desktop() override { return m_desktop; }
    ComponentLibrary& components() override { return m_components; }
    SoundSystem& sound() override { return nativeSound(); }
    [[nodiscard]] bool isEnding() const override { return m_loop.isEnding(); }

private:
    Win32EventLoop m_loop;
    Win32FontSet m_fonts;
    Win32TextPainter m_text;
    Win32WindowHost m_windows;
    Win32FileDialog m_fileDialog;
    Win32Desktop m_desktop;
    Win32Components m_components;
};

} // namespace

} // namespace win32

std::unique_ptr<Gui> createGui() {
    return guarded("start of the window system", std::unique_ptr<Gui>(),
                   [] { return std::unique_ptr<Gui>(std::make_unique<win32::Win32Gui>()); });
}

} // namespace platform
