// Ways to work the program's windows without a mouse: what an author does to a control becomes
// steps of a script, by keys alone or by the actions of the accessibility tree alone. UI thread
// only.
#pragma once

#include <string>
#include <string_view>

namespace tour {

class Script;

/// A control of a window, by its name; in the branch editor's list of actions also by its row.
struct Target {
    std::u16string_view window; ///< its class name; a constant, as is `name`
    std::u16string_view name;
    int row = -1; ///< -1: in no row
};

class Hands {
public:
    virtual ~Hands() = default;
    /// A button, or a box to tick.
    virtual void press(Target target) = 0;
    /// Replaces the text of an edit, and leaves it with the next that is done.
    virtual void write(Target edit, const std::u16string& text) = 0;
    /// Picks an item of a combo.
    virtual void choose(Target combo, int item) = 0;
};

/// Tab, Space, typed text and the arrow keys.
class KeyHands final : public Hands {
public:
    explicit KeyHands(Script& script) : m_script(script) {}
    void press(Target target) override;
    void write(Target edit, const std::u16string& text) override;
    void choose(Target combo, int item) override;

private:
    void reach(Target target);

    Script& m_script;
};

/// What a screen reader can do: press, focus, replace a text.
class AccessibleHands final : public Hands {
public:
    explicit AccessibleHands(Script& script) : m_script(script) {}
    void press(Target target) override;
    void write(Target edit, const std::u16string& text) override;
    void choose(Target combo, int item) override;

private:
    Script& m_script;
};

} // namespace tour
