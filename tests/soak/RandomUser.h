// A person who does anything at all, by real input events on whatever window is on top. What is
// done follows from the seed and from what the windows show, so that a seed repeats its course.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "platform/testing/TestInput.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/window/WindowImplBase.h"

namespace soak {

class RandomUser {
public:
    /// `gui` outlives it, `dialog` every action: it answers with files of the folder "videos".
    RandomUser(platform::Gui& gui, test::ScriptedFileDialog& dialog, std::seed_seq& seed);

    /// Queues one action; nothing while no window is open. UI thread, inside a loop.
    void act();
    /// How many ticks of the loop the last action deserves before the next.
    [[nodiscard]] int patience() const { return m_patience; }
    /// A number for all actions so far and the windows they met: runs that were alike have the
    /// same.
    [[nodiscard]] std::uint64_t course() const { return m_course; }
    /// Actions by the class of the window they met.
    [[nodiscard]] const std::map<std::u16string, int>& actions() const { return m_actions; }

private:
    struct Action {
        int weight;
        void (RandomUser::*perform)();
    };

    [[nodiscard]] platform::NativeWindow& native() const { return *m_window->GetNative(); }
    [[nodiscard]] int below(int limit);
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }
    /// Of 0 to `items.size()` - 1.
    template <class Items>
    [[nodiscard]] auto& oneOf(Items& items) {
        return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
    }
    [[nodiscard]] platform::Point anyPoint();
    [[nodiscard]] platform::Point anyPointIn(const platform::Rect& rect);
    [[nodiscard]] platform::Modifiers anyModifiers();
    [[nodiscard]] std::u16string anyText();
    void note(std::uint64_t what);
    void answerFileDialog();

    void mouse(platform::EventKind kind, platform::Point at,
               platform::MouseButton button = platform::MouseButton::left);
    void click(platform::NativeWindow& native, platform::Point at,
               platform::MouseButton button = platform::MouseButton::left,
               platform::Modifiers modifiers = {});
    /// Null where there is none.
    [[nodiscard]] const toolkit::CControlUI* anyControl();
    void clickControl();
    void clickAnywhere();
    void doubleClick();
    void pressOnly();
    void drag();
    void turnWheel();
    void pressKey();
    void typeText();
    void compose();
    void pickFromDropList();
    void playScene();
    void askToClose();
    void harmAFile();

    test::ScriptedFileDialog& m_dialog;
    std::unique_ptr<platform::TestInput> m_input;
    std::mt19937_64 m_random;
    toolkit::WindowImplBase* m_window = nullptr; ///< on top, valid during an action
    int m_patience = 1;
    std::uint64_t m_course = 0;
    std::map<std::u16string, int> m_actions;
};

} // namespace soak
