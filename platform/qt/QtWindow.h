// A native window on Qt: lifetime and geometry. Its parts do the rest.
#pragma once

#include <string>

#include "platform/Accessible.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "platform/WindowScale.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtWindowInput.h"
#include "platform/qt/QtWindowPicture.h"
#include "platform/qt/QtWindowTimers.h"

class QScreen;

namespace platform::qt {

class QtWindowHost;

class QtWindow final : public NativeWindow, private WindowAccessibility {
public:
    /// `host` and `events` are not owned and must outlive the window.
    QtWindow(QtWindowHost& host, const WindowOptions& options, WindowEvents& events);
    ~QtWindow() override;

    void show(bool visible) override;
    void center() override;
    void setGeometry(const Rect& screenRect) override;
    [[nodiscard]] Rect geometry() const override;
    [[nodiscard]] Rect workArea(Point point) const override;
    [[nodiscard]] double scale() const override;
    void setState(WindowState state) override;
    [[nodiscard]] WindowState state() const override;
    [[nodiscard]] Rect normalGeometry() const override;
    void setTitle(const std::u16string& title) override;
    void setEnabled(bool enabled) override;
    void activate() override;
    void setTakesFiles(bool takes) override { m_takesFiles = takes; }
    void close() override;
    QtWindowPicture& picture() override { return m_picture; }
    QtWindowInput& input() override { return m_input; }
    QtWindowTimers& timers() override { return m_timers; }
    WindowAccessibility& accessibility() override { return *this; }

    /// True when Qt need not see the event any more. May destroy this object.
    bool handleQtEvent(QEvent& event);

    /// What the owner answers; true when the window is closing. May destroy this object.
    bool send(const Event& event);
    /// Whether the owner's content takes a press at a layout pixel.
    [[nodiscard]] bool takesPress(Point at);
    /// Asks the owner whether the window may close, and closes it when the owner has no objection.
    void requestClose();
    [[nodiscard]] bool isSizable() const { return m_leastSize != Size{}; }
    /// In Qt's pixels.
    [[nodiscard]] Size leastSize() const { return toSystem(m_leastSize, unit()); }
    /// How many of Qt's pixels one layout pixel is wide.
    [[nodiscard]] double unit() const;
    [[nodiscard]] Rect qtGeometry() const;
    /// In layout pixels.
    [[nodiscard]] Size contentSize() const { return m_content.at(qtGeometry().size(), unit()); }
    /// After the zoom or the screen has changed.
    void rescale();
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    [[nodiscard]] bool isClosing() const { return m_closing; }
    /// Not while it waits for a dialog of its own, nor when it is closing.
    [[nodiscard]] bool takesInput() const { return m_enabled && !m_closing; }
    [[nodiscard]] bool takesFiles() const { return m_takesFiles && takesInput(); }
    [[nodiscard]] QtWindowHost& host() const { return m_host; }
    [[nodiscard]] QtSurface& surface() const { return *m_surface; }
    [[nodiscard]] WindowEvents& events() const { return m_events; }

private:
    void changed(Accessible& node, AccessibleChange change) override;
    /// Where it opens: the owner's screen, else the primary one.
    [[nodiscard]] const QScreen& homeScreen() const;
    /// By how much the window has to be smaller on a screen.
    [[nodiscard]] double fitOn(const QScreen& screen) const;
    /// It is on another screen, or that has changed.
    void changeScreen();
    /// Gives it the size there of the content that it had before.
    void refit(const KeptSize& content);
    /// What a popup belongs to; null for others.
    [[nodiscard]] const QtWindow* popupOwner() const;
    /// Puts it on the screen where `place` of its owner begins; where that is, in Qt's pixels.
    Point placePopup(const QtWindow& owner, const Rect& place);
    void fixSize(Size size);
    void noteGeometry();
    void noteState();
    void handleSize(bool ofState);
    void handleFocus(bool focused);
    void finish();

    QtWindowHost& m_host;
    WindowEvents& m_events;
    SurfaceOwner m_surface;
    WindowKind m_kind;
    Size m_leastSize;
    int m_cornerRadius;
    KeptSize m_content;
    double m_fit = 1;
    double m_toOwner = 1; ///< a popup's pixels for one of its owner's
    double m_ratio = 1;   ///< the screen's pixels for one of Qt's, where it is or is to be
    Rect m_normal;        ///< in Qt's pixels
    Rect m_formerNormal;  ///< before the last change of m_normal
    KeptSize m_formerContent;
    bool m_enabled = true;
    bool m_takesFiles = false;
    bool m_closing = false;
    bool m_destroyedSent = false;
    QtWindowPicture m_picture{*this};
    QtWindowInput m_input{*this};
    QtWindowTimers m_timers{*this};
};

} // namespace platform::qt
