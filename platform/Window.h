// Native windows. A window neither draws nor decides anything by itself: it sends events and paint
// requests to the WindowEvents that it was created with, and does what its owner calls for.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"

namespace platform {

/// Receives what a native window reports. All calls come on the UI thread; the back end catches
/// what they throw and writes a line to stderr. The object must outlive its native window's
/// `destroyed` event.
class WindowEvents {
public:
    virtual ~WindowEvents() = default;
    /// True when the event was handled; false leaves it to the system, which closes the window on a
    /// closeRequest.
    virtual bool onEvent(const Event& event) = 0;
    /// Draws everything that touches `dirty`; the canvas is already clipped to it.
    virtual void onPaint(Canvas& canvas, const Rect& dirty) = 0;
    /// Whether the content does something with a press at `at`. Where it does, the window is not
    /// sized at a border that lies inside it.
    [[nodiscard]] virtual bool takesPress(Point /*at*/) { return false; }
    /// The root of the window's accessibility tree, or null when it offers none. Not owned.
    virtual Accessible* accessibleRoot() { return nullptr; }
};

enum class WindowKind {
    normal, ///< a screen or dialog; frameless whatever its style bits say
    popup,  ///< drop list or tool tip: above its owner, never takes the keyboard
};

enum class WindowState { normal, maximized, minimized };

/// How deep the border is at which the user sizes a window. It lies outside the window; where a
/// system has no such place, inside it, where the content takes no presses.
inline constexpr int kSizingBorder = 6;

/// How all windows are to look.
enum class Appearance { light, dark, asSystem };

class NativeWindow;

struct WindowOptions {
    std::u16string className;
    std::u16string title;
    WindowKind kind = WindowKind::normal;
    std::uint32_t style = 0;         ///< Win32 style bits; other systems take what they can
    std::uint32_t extendedStyle = 0; ///< Win32 extended style bits
    Size size{1, 1};                 ///< client size in layout pixels
    /// The user may size the window, down to this, and maximise it; empty: its size is fixed. With
    /// the style of a system menu only.
    Size leastSize;
    int cornerRadius = 0;          ///< of the corners that are cut off; 0: a plain rectangle
    NativeWindow* owner = nullptr; ///< stays above it; not owned
};

/// UI thread only. Destroying the object destroys the native window (`destroyed` is sent first).
class NativeWindow {
public:
    virtual ~NativeWindow() = default;

    virtual void show(bool visible) = 0;
    /// Centred on the owner, else on the primary monitor's work area; in the work area in any case,
    /// at its top left where the window is larger.
    virtual void center() = 0;
    /// Position and size in layout pixels of this window, counted from the screen's origin.
    virtual void setGeometry(const Rect& screenRect) = 0;
    [[nodiscard]] virtual Rect geometry() const = 0;
    /// The work area of the monitor that holds `point`, both in the same pixels.
    [[nodiscard]] virtual Rect workArea(Point point) const = 0;
    /// How many pixels of the screen one layout pixel is wide: the scale of its monitor by the
    /// system, times WindowHost::zoom(); less where the work area has no room for the window's
    /// least size. Popups have that of their owner. When it changes, the window keeps its layout
    /// size as far as the work area allows.
    [[nodiscard]] virtual double scale() const = 0;
    /// A hidden window can be maximised, from when it is shown. A window of a fixed size cannot.
    virtual void setState(WindowState state) = 0;
    [[nodiscard]] virtual WindowState state() const = 0;
    /// The geometry in the normal state, whichever it is in.
    [[nodiscard]] virtual Rect normalGeometry() const = 0;
    virtual void setTitle(const std::u16string& title) = 0;
    /// A disabled window takes no mouse or keyboard input.
    virtual void setEnabled(bool enabled) = 0;
    virtual void activate() = 0;
    /// Files that are dragged over the window may be dropped into it; they may not at first.
    virtual void setTakesFiles(bool takes) = 0;
    /// Hides the window at once and destroys it later: the event loop sends `destroyed`, once,
    /// after the handler that called this has returned. No other event is sent.
    virtual void close() = 0;

    /// The parts live as long as this object.
    virtual WindowPicture& picture() = 0;
    virtual WindowInput& input() = 0;
    virtual WindowTimers& timers() = 0;
    virtual WindowAccessibility& accessibility() = 0;
};

class WindowHost {
public:
    virtual ~WindowHost() = default;
    /// An invisible window, or empty when the system refuses. `events` is not owned.
    [[nodiscard]] virtual std::unique_ptr<NativeWindow> createWindow(const WindowOptions& options,
                                                                     WindowEvents& events) = 0;
    /// By how much the user wants all windows larger than by the system's scale; 1 at first.
    /// Counts at once in those that are open.
    virtual void setZoom(double zoom) = 0;
    [[nodiscard]] virtual double zoom() const = 0;
    /// Light at first. Where it makes a difference, counts at once in windows that are open.
    virtual void setAppearance(Appearance appearance) = 0;
    /// Whether windows are to be dark. Each open one gets an event when that changes.
    [[nodiscard]] virtual bool isDark() const = 0;
    /// Height of the primary monitor in layout pixels.
    [[nodiscard]] virtual int primaryScreenHeight() const = 0;
    /// The work area of the monitor that holds `point`, both in layout pixels of a window on the
    /// primary monitor; a window knows it in its own.
    [[nodiscard]] virtual Rect workArea(Point point) const = 0;
    [[nodiscard]] virtual std::u16string clipboardText() const = 0;
    virtual void setClipboardText(const std::u16string& text) = 0;
    /// `text` case-folded, in any script, for comparing.
    [[nodiscard]] virtual std::u16string foldedCase(std::u16string_view text) const = 0;
};

} // namespace platform
