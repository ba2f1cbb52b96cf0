// Creates windows and offers what they share: screens, the clipboard and the mouse capture.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/qt/QtColorScheme.h"
#include "platform/qt/QtTextPainter.h"

class QScreen;

namespace platform::qt {

class QtFontSet;
class QtWindow;
class QtWindowInput;

class QtWindowHost final : public WindowHost {
public:
    /// `fonts` is not owned and must outlive the host.
    explicit QtWindowHost(const QtFontSet& fonts) : m_textPainter(fonts) {}

    [[nodiscard]] std::unique_ptr<NativeWindow> createWindow(const WindowOptions& options,
                                                             WindowEvents& events) override;
    void setZoom(double zoom) override;
    [[nodiscard]] double zoom() const override { return m_zoom; }
    void setAppearance(Appearance appearance) override;
    [[nodiscard]] bool isDark() const override { return m_isDark; }
    /// The system may have become dark or light.
    void systemColorsChanged();
    [[nodiscard]] int primaryScreenHeight() const override;
    [[nodiscard]] Rect workArea(Point point) const override;
    /// The same in layout pixels of a window on `from`, of which each is `unit` of Qt's there.
    [[nodiscard]] static Rect workArea(Point point, double unit, const QScreen& from);
    [[nodiscard]] std::u16string clipboardText() const override;
    void setClipboardText(const std::u16string& text) override;
    [[nodiscard]] std::u16string foldedCase(std::u16string_view text) const override;

    void add(QtWindow& window) { m_windows.push_back(&window); }
    void remove(QtWindow& window);
    /// Takes the capture from the window that has it, which gets a captureLost event.
    void setCapture(QtWindowInput& input);
    /// True when `input` had the capture.
    bool releaseCapture(const QtWindowInput& input);
    /// The input of the window that a mouse event over `hit` belongs to.
    [[nodiscard]] QtWindowInput& mouseTarget(QtWindowInput& hit) const;
    /// Brings up the newest visible window that `owner` owns: what a disabled window waits for.
    void activateDialogOf(const QtWindow& owner) const;
    [[nodiscard]] QtTextPainter& textPainter() { return m_textPainter; }

private:
    void forEachWindow(const std::function<void(QtWindow&)>& act);

    QtTextPainter m_textPainter;
    double m_zoom = 1;
    Appearance m_appearance = Appearance::light;
    std::optional<QtColorScheme> m_colorScheme; ///< from the first need of it on
    bool m_isDark = false;
    std::vector<QtWindow*> m_windows;   ///< living ones, oldest first; not owned
    QtWindowInput* m_capture = nullptr; ///< of one of m_windows
};

} // namespace platform::qt
