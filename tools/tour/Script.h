// Plays a list of steps while the program runs its own message loops: each step waits until the
// window it names is on top, then acts on it with real input events. UI thread only.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Event.h"
#include "platform/Gui.h"
#include "platform/testing/TestInput.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/WindowImplBase.h"
#include "tools/tour/Ticker.h"

namespace tour {

class Script {
public:
    /// Pictures are saved in `folder`, which must exist.
    explicit Script(std::string folder);
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // Building. Steps run in the order of the calls; `window` is a window class name.
    void on(std::u16string window, std::function<void()> action);
    void wait(std::chrono::milliseconds time);
    /// Waits until the window is on top and `ready` returns true.
    void until(std::u16string window, std::function<bool()> ready);
    /// For runs that nobody watches.
    void skipWaits() { m_skipsWaits = true; }

    // Actions, called inside a step.
    void click(std::u16string_view name);
    void clickAt(platform::Point at);
    void drag(const std::vector<platform::Point>& points);
    void type(const std::u16string& text);
    void press(platform::Key key, platform::Modifiers modifiers = {});
    /// In the open list of the last combo clicked.
    void pickItem(int index);
    /// The combo or check box `name` in row `row` of the action list.
    void clickInRow(int row, std::u16string_view name);
    /// Presses Tab unless the control has the focus, which is the answer: to be called until then,
    /// since the rows of a list are made on the way.
    bool tabTo(const toolkit::CControlUI& control);
    void picture(const std::string& name);
    /// The control `name` in row `row` of the action list.
    [[nodiscard]] toolkit::CControlUI& inRow(int row, std::u16string_view name) const;
    [[nodiscard]] toolkit::WindowImplBase& top() const;
    template <class T>
    [[nodiscard]] T& get(std::u16string_view name) const {
        auto* control = top().FindControl<T>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + std::string(name.begin(), name.end()));
        }
        return *control;
    }

    /// Starts playing in the event loops of `gui`.
    void play(platform::Gui& gui);
    /// Stops playing; call before the gui is destroyed.
    void stop();
    [[nodiscard]] bool isFinished() const { return m_next == m_steps.size(); }
    /// The error, if any. It ends the running loops; the program's gui should then report
    /// isEnding(), so that no other loop starts.
    [[nodiscard]] const std::string& problem() const { return m_problem; }

private:
    struct Step {
        std::u16string window;
        std::function<bool()> ready;
        std::function<void()> action;
    };

    void tick();
    void fail(const std::string& problem);
    [[nodiscard]] platform::NativeWindow& native() const;

    std::string m_folder;
    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    std::string m_problem;
    bool m_settling = false;
    bool m_skipsWaits = false;
    std::chrono::steady_clock::time_point m_stepBegan;
    platform::Gui* m_gui = nullptr;
    std::unique_ptr<platform::TestInput> m_input;
    std::unique_ptr<Ticker> m_ticker;
};

} // namespace tour
