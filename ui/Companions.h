// The modeless windows that a screen has opened beside itself. They work in the screen's message
// loop, stand above it, and end with it. UI thread only.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/WindowContext.h"

namespace ui {

class EditorWindow;

class Companions {
public:
    /// `screen` owns the object.
    explicit Companions(EditorWindow& screen);
    ~Companions();
    Companions(const Companions&) = delete;
    Companions& operator=(const Companions&) = delete;

    /// Shows a Window, made by Window::create(context), or brings the one that is open to the
    /// front. False when it cannot be made.
    template <class Window>
    bool show(const WindowContext& context, std::u16string_view title) {
        for (const std::shared_ptr<EditorWindow>& open : *m_windows) {
            if (dynamic_cast<Window*>(open.get()) != nullptr && bringToFront(*open)) {
                return true;
            }
        }
        return open(Window::create(context), title);
    }
    /// Whether a Window is open; one that is closing is not.
    template <class Window>
    [[nodiscard]] bool has() const {
        return std::any_of(m_windows->begin(), m_windows->end(), [](const auto& open) {
            return dynamic_cast<Window*>(open.get()) != nullptr && !isEnding(*open);
        });
    }
    /// The window that the list of keys was asked for in, as the manual names it.
    void setHelped(std::string window) { m_helped = std::move(window); }
    [[nodiscard]] const std::string& helped() const { return m_helped; }
    /// Closes them all; safe inside a handler of one of them.
    void close();
    /// Whether they take input; they do not while the screen asks a question.
    void setEnabled(bool enabled);

    /// While it lives, neither the screen nor its companions take input: a dialog of the system
    /// is on the screen.
    class Pause {
    public:
        explicit Pause(Companions& companions) : m_companions(companions) { set(false); }
        ~Pause() { set(true); }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        void set(bool enabled);

        Companions& m_companions;
    };

private:
    using Windows = std::vector<std::shared_ptr<EditorWindow>>;

    bool open(std::shared_ptr<EditorWindow> window, std::u16string_view title);
    static bool isEnding(const EditorWindow& window);
    /// False for one that is closing.
    static bool bringToFront(EditorWindow& window);

    EditorWindow& m_screen;
    std::string m_helped;
    std::shared_ptr<Windows> m_windows; ///< shared with what takes ended ones out, later
};

} // namespace ui
