// Whether the desktop asks for dark windows. Qt's own colours know that on some desktops only, so
// its portal is asked: "color-scheme" of "org.freedesktop.appearance", described in
// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html
#pragma once

#include <QTimer>
#include <functional>
#include <optional>

class QDBusMessage;

namespace platform::qt {

class QtColorScheme {
public:
    /// Waits a moment for the desktop's answer. `changed` is called whenever a later one differs.
    explicit QtColorScheme(std::function<void()> changed);

    /// None without a portal, and where it has no preference.
    [[nodiscard]] std::optional<bool> isDark() const { return m_isDark; }

private:
    void askAgain();
    void take(const QDBusMessage& answer);

    std::function<void()> m_changed;
    std::optional<bool> m_isDark;
    QTimer m_signal; ///< its slot receives the portal's signal
};

} // namespace platform::qt
