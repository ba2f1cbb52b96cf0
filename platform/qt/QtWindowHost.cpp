#include "platform/qt/QtWindowHost.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>
#include <algorithm>
#include <optional>

#include "platform/Event.h"
#include "platform/Guard.h"
#include "platform/WindowScale.h"
#include "platform/qt/QtScreens.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"
#include "platform/qt/QtWindowInput.h"

namespace platform::qt {

std::unique_ptr<NativeWindow> QtWindowHost::createWindow(const WindowOptions& options,
                                                         WindowEvents& events) {
    return guarded("window creation", std::unique_ptr<NativeWindow>(), [&] {
        return std::unique_ptr<NativeWindow>(std::make_unique<QtWindow>(*this, options, events));
    });
}

int QtWindowHost::primaryScreenHeight() const {
    return static_cast<int>(QGuiApplication::primaryScreen()->size().height() / m_zoom);
}

Rect QtWindowHost::workArea(Point point, double unit, const QScreen& from) {
    return toLayout(workAreaOf(screenAt(toSystem(point, unit), from), from), unit);
}

Rect QtWindowHost::workArea(Point point) const {
    return workArea(point, m_zoom, *QGuiApplication::primaryScreen());
}

void QtWindowHost::setZoom(double zoom) {
    if (m_zoom == zoom) {
        return;
    }
    m_zoom = zoom;
    forEachWindow([](QtWindow& window) { window.rescale(); });
}

void QtWindowHost::forEachWindow(const std::function<void(QtWindow&)>& act) {
    const std::vector<QtWindow*> windows = m_windows; // an event may close one
    for (QtWindow* window : windows) {
        if (std::find(m_windows.begin(), m_windows.end(), window) != m_windows.end()) {
            act(*window);
        }
    }
}

void QtWindowHost::setAppearance(Appearance appearance) {
    m_appearance = appearance;
    if (m_appearance == Appearance::asSystem && !m_colorScheme) {
        m_colorScheme.emplace([this] { systemColorsChanged(); });
    }
    systemColorsChanged();
}

void QtWindowHost::systemColorsChanged() {
    constexpr int kHalf = 128;
    const auto isSystemDark = [this] {
        const std::optional<bool> preference =
            m_colorScheme ? m_colorScheme->isDark() : std::nullopt;
        return preference.value_or(QGuiApplication::palette().color(QPalette::Window).lightness() <
                                   kHalf);
    };
    const bool isDark = m_appearance == Appearance::dark ||
                        (m_appearance == Appearance::asSystem && isSystemDark());
    if (m_isDark == isDark) {
        return;
    }
    m_isDark = isDark;
    Event event;
    event.kind = EventKind::appearanceChanged;
    forEachWindow([&](QtWindow& window) { window.send(event); });
}

std::u16string QtWindowHost::clipboardText() const {
    return fromQt(QGuiApplication::clipboard()->text());
}

void QtWindowHost::setClipboardText(const std::u16string& text) {
    QGuiApplication::clipboard()->setText(toQt(text));
}

std::u16string QtWindowHost::foldedCase(std::u16string_view text) const {
    return fromQt(toQt(text).toCaseFolded());
}

void QtWindowHost::remove(QtWindow& window) {
    std::erase(m_windows, &window);
}

void QtWindowHost::setCapture(QtWindowInput& input) {
    if (m_capture == &input) {
        return;
    }
    if (m_capture != nullptr) {
        m_capture->loseCapture();
    }
    m_capture = &input;
}

bool QtWindowHost::releaseCapture(const QtWindowInput& input) {
    if (m_capture != &input) {
        return false;
    }
    m_capture = nullptr;
    return true;
}

QtWindowInput& QtWindowHost::mouseTarget(QtWindowInput& hit) const {
    return m_capture != nullptr ? *m_capture : hit;
}

void QtWindowHost::activateDialogOf(const QtWindow& owner) const {
    const auto owned = std::find_if(m_windows.rbegin(), m_windows.rend(), [&](QtWindow* window) {
        return window->surface().transientParent() == &owner.surface() &&
               window->surface().isVisible();
    });
    if (owned != m_windows.rend()) {
        (*owned)->activate();
    }
}

} // namespace platform::qt
