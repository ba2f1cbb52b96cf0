#include "ui/Companions.h"

#include <utility>

#include "platform/EventLoop.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "ui/EditorWindow.h"

namespace ui {

Companions::Companions(EditorWindow& screen)
    : m_screen(screen), m_windows(std::make_shared<Windows>()) {}

Companions::~Companions() = default;

bool Companions::open(std::shared_ptr<EditorWindow> window, std::u16string_view title) {
    if (!window) {
        return false;
    }
    // Called while its last event is being handled: it is released after that.
    const auto release = [loop = &window->Gui().loop(), windows = std::weak_ptr(m_windows),
                          ended = window.get()] {
        loop->post([windows, ended] {
            if (const auto left = windows.lock()) {
                std::erase_if(*left, [ended](const auto& kept) { return kept.get() == ended; });
            }
        });
    };
    window->joinCompanions(this);
    if (!window->showBeside(m_screen.GetNative(), title, release)) {
        return false;
    }
    m_windows->push_back(std::move(window));
    return true;
}

bool Companions::isEnding(const EditorWindow& window) {
    return window.GetNative() == nullptr || window.IsClosing();
}

bool Companions::bringToFront(EditorWindow& window) {
    if (isEnding(window)) {
        return false;
    }
    platform::NativeWindow* native = window.GetNative();
    native->setEnabled(true); // asked for, even while the screen asks a question
    native->activate();
    return true;
}

void Companions::close() {
    const Windows closing = *m_windows; // a handler may open or end one
    for (const std::shared_ptr<EditorWindow>& window : closing) {
        window->Close(1);
    }
}

void Companions::setEnabled(bool enabled) {
    for (const std::shared_ptr<EditorWindow>& window : *m_windows) {
        if (platform::NativeWindow* native = window->GetNative()) {
            native->setEnabled(enabled);
        }
    }
}

void Companions::Pause::set(bool enabled) {
    if (platform::NativeWindow* screen = m_companions.m_screen.GetNative()) {
        screen->setEnabled(enabled);
    }
    m_companions.setEnabled(enabled);
}

} // namespace ui
