// Everything a window program needs of its system, made once by the entry point and passed down.
// Exactly one back end is built; platform/qt and platform/win32 define createGui.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/FileDialog.h"
#include "platform/FontSet.h"
#include "platform/Sound.h"
#include "platform/Window.h"

namespace platform {

/// Component initialisation of the UI thread (COM on Windows; a counted success elsewhere).
class ComponentLibrary {
public:
    virtual ~ComponentLibrary() = default;
    /// Each success needs one uninitialize. `errorCode` receives the native error on failure.
    [[nodiscard]] virtual bool initialize(std::uint32_t& errorCode) = 0;
    virtual void uninitialize() = 0;
};

/// The parts are not owned by callers and live as long as the Gui. UI thread only.
class Gui {
public:
    virtual ~Gui() = default;
    virtual WindowHost& windows() = 0;
    virtual EventLoop& loop() = 0;
    virtual FontSet& fonts() = 0;
    virtual FileDialog& fileDialog() = 0;
    virtual Desktop& desktop() = 0;
    virtual ComponentLibrary& components() = 0;
    virtual SoundSystem& sound() = 0;
    /// True once the system asked the program to end (SIGTERM, SIGINT, end of the session): running
    /// loops end, new ones return at once, and the program should leave as by its own Exit.
    [[nodiscard]] virtual bool isEnding() const = 0;
};

/// One Gui in a process, made on the UI thread; empty when there is no display.
[[nodiscard]] std::unique_ptr<Gui> createGui();

} // namespace platform
