// Creates windows and offers what they share: monitors and the clipboard.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

class Win32WindowHost final : public WindowHost {
public:
    explicit Win32WindowHost(WindowServices services);

    [[nodiscard]] std::unique_ptr<NativeWindow> createWindow(const WindowOptions& options,
                                                             WindowEvents& events) override;
    void setZoom(double zoom) override;
    [[nodiscard]] double zoom() const override { return m_zoom; }
    void setAppearance(Appearance appearance) override;
    [[nodiscard]] bool isDark() const override { return m_isDark; }
    [[nodiscard]] int primaryScreenHeight() const override;
    [[nodiscard]] Rect workArea(Point point) const override;
    /// The same in layout pixels of which each is `scale` of the screen's.
    [[nodiscard]] static Rect workArea(Point point, double scale);
    [[nodiscard]] static double scaleOf(UINT dpi);
    [[nodiscard]] std::u16string clipboardText() const override;
    void setClipboardText(const std::u16string& text) override;
    [[nodiscard]] std::u16string foldedCase(std::u16string_view text) const override;

private:
    /// The user or the system may want another.
    void updateAppearance();
    [[nodiscard]] double primaryScale() const;

    double m_zoom = 1;
    Appearance m_appearance = Appearance::light;
    bool m_isDark = false;
    WindowServices m_services;
};

} // namespace platform::win32
