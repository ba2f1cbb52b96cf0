// Which keys reach the commands of a window, and what becomes of a text that is being typed.
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "core/Text.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/commands/CommandSet.h"

namespace {

using platform::Key;
using platform::Modifiers;
using ui::Command;

constexpr Modifiers kControl{.control = true};
constexpr Modifiers kControlShift{.shift = true, .control = true};

/// Each command has its key's name for an id.
constexpr Command kTable[] = {
    {.id = "Ctrl+S",
     .control = u"Save",
     .toolTip = u"Save: %s (Ctrl+S)",
     .keys = {{{Key::s, kControl}}}},
    {.id = "Ctrl+D", .control = u"Missing", .keys = {{{Key::d, kControl}}}},
    {.id = "Ctrl+Z", .keys = {{{Key::z, kControl}}}},
    {.id = "Ctrl+Y", .keys = {{{Key::y, kControl}, {Key::z, kControlShift}}}},
    {.id = "Ctrl+C", .keys = {{{Key::c, kControl}}}},
    {.id = "Ctrl+Up", .keys = {{{Key::up, kControl}}}},
    {.id = "Ctrl+Left", .keys = {{{Key::left, kControl}}}},
    {.id = "F5", .keys = {{{Key::f5, {}}}}},
    {.id = "F4", .keys = {{{Key::f4, {}}}}},
    {.id = "Esc", .keys = {{{Key::escape, {}}}}},
    {.id = "N", .keys = {{{Key::n, {}}}}},
    {.id = "2", .keys = {{{Key::digit2, {}}}}},
    {.id = "Space", .keys = {{{Key::space, {}}}}},
    {.id = "Home", .keys = {{{Key::home, {}}}}},
    {.id = "Delete", .keys = {{{Key::del, {}}}}},
    {.id = "Down", .keys = {{{Key::down, {}}}}},
    {.id = "Left", .keys = {{{Key::left, {}}}}, .repeats = true, .anyModifiers = true},
    {.id = "Right", .keys = {{{Key::right, {}}}}, .anyModifiers = true},
};

class CommandWindow final : public ui::EditorWindow {
public:
    static std::shared_ptr<CommandWindow> create(const ui::WindowContext& context) {
        return std::make_shared<CommandWindow>(context);
    }
    explicit CommandWindow(const ui::WindowContext& context) : EditorWindow(context, kTable) {
        for (const Command& command : kTable) {
            commands().bind(
                command.id, [this, &command] { write(std::string(command.id)); },
                [this] { return allowed; }, [this] { return subject; });
        }
    }
    using EditorWindow::commands;
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"TestWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Commands.xml"; }
    void OnKillFocus(toolkit::TNotifyUI& message) override {
        write("took " + core::storedText(message.pSender->GetText()));
    }
    /// What has run since the last time.
    [[nodiscard]] std::string take() { return std::exchange(m_ran, {}); }

    bool allowed = true;
    std::u16string subject;

private:
    void write(const std::string& what) { m_ran += (m_ran.empty() ? "" : ", ") + what; }
    std::string m_ran;
};

class Commands : public test::WindowTest<CommandWindow> {
protected:
    Commands() {
        support::writeBytes("UI/Commands.xml",
                            "<Window size=\"300,200\"><Edit name=\"Edit\" "
                            "pos=\"10,10,100,25\"/><Combo name=\"Combo\" "
                            "pos=\"10,50,100,25\" dropboxsize=\"0,100\"/><Button name=\"Save\" "
                            "pos=\"10,90,80,25\"/>"
                            "<List name=\"List\" pos=\"150,10,100,100\"/></Window>");
        show();
    }
    /// What the window did when the chord named so was pressed.
    std::string press(const std::string& chord) {
        for (const Command& command : kTable) {
            for (const ui::KeyChord& key : command.keys) {
                if (core::storedText(ui::keyText(key)) == chord) {
                    m_driver->press(key.key, key.modifiers);
                    return m_window->take();
                }
            }
        }
        throw std::runtime_error("no key " + chord);
    }
};

TEST_F(Commands, TakeTheKeysThatTheFocusedControlDoesNotClaim) {
    const struct {
        const char16_t* focus;
        std::string claimed; ///< of all keys of the table
    } cases[] = {
        {u"", ""},
        {u"Save", "Space "},
        {u"Combo", "F4 N 2 Space Home Down "},
        {u"List", "Home Down "},
        {u"Edit", "Ctrl+C Ctrl+Left N 2 Space Home Delete Down Left Right "},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(core::storedText(test.focus));
        std::string claimed;
        for (const Command& command : kTable) {
            // Nothing was typed: the edit has nothing to undo of its own.
            m_driver->get(u"Edit").SetText(u"old");
            m_driver->manager().SetFocus(m_driver->manager().FindControl(test.focus));
            static_cast<void>(m_window->take());
            const std::string id(command.id);
            const std::string ran = press(id);
            const bool hands = *test.focus == u'E' && (id.starts_with("Ctrl") || id[0] == 'F');
            if (ran != (hands ? "took old, " + id : id)) {
                claimed += id + " ";
            }
            m_driver->press(Key::escape); // closes a list
        }
        EXPECT_EQ(claimed, test.claimed);
    }
}

TEST_F(Commands, AreGivenTheTextBeingTypedAndTheTypingGoesOn) {
    m_driver->retype(u"Edit", u"ab");
    EXPECT_EQ(press("Esc"), "Esc") << "leaves the typing alone";
    EXPECT_EQ(press("Ctrl+Z"), "") << "the edit's own";
    EXPECT_EQ(press("Ctrl+Shift+Z"), "");
    EXPECT_EQ(m_driver->textOf(u"Edit"), u"ab");
    EXPECT_EQ(press("F5"), "took ab, F5");
    EXPECT_EQ(m_driver->focusName(), u"Edit");
    EXPECT_EQ(press("Ctrl+Z"), "took ab, Ctrl+Z") << "it is taken: the editor's";
    EXPECT_EQ(press("Ctrl+Y"), "took ab, Ctrl+Y");
    m_driver->type(u"c");
    EXPECT_EQ(press("Ctrl+Z"), "");
    EXPECT_EQ(m_driver->textOf(u"Edit"), u"ab");
    EXPECT_EQ(press("Ctrl+Y"), "") << "what the edit took back, it brings again";
    EXPECT_EQ(m_driver->textOf(u"Edit"), u"abc");
}

TEST_F(Commands, RunOnceForAPressAndOnlyWhenTheyWouldDoSomething) {
    EXPECT_EQ(press("Ctrl+D"), "Ctrl+D") << "runs without its button";
    m_driver->click(u"Save");
    EXPECT_EQ(m_window->take(), "Ctrl+S");
    m_driver->get(u"Save").SetEnabled(false);
    EXPECT_EQ(press("Ctrl+S"), "") << "its button is disabled";
    EXPECT_FALSE(m_window->commands().isEnabled("Ctrl+S"));
    m_window->commands().showEnabled();
    EXPECT_EQ(press("Ctrl+S"), "Ctrl+S");
    m_window->allowed = false;
    EXPECT_EQ(press("F5") + press("N"), "");
    m_window->commands().showEnabled();
    const toolkit::CControlUI& save = m_driver->get(u"Save");
    EXPECT_FALSE(save.IsEnabled());
    EXPECT_EQ(save.GetToolTip() + u"|" + save.accessibleName(), u"Save (Ctrl+S)|Save");
    m_window->subject = u"it";
    m_window->commands().showEnabled();
    EXPECT_EQ(save.GetToolTip() + u"|" + save.accessibleName(), u"Save: it (Ctrl+S)|Save: it");
    m_window->allowed = true;

    for (const auto& [key, ran] : {std::pair{Key::n, "N"}, std::pair{Key::left, "Left, Left"}}) {
        platform::Event event;
        event.kind = platform::EventKind::keyDown;
        event.key = key;
        EXPECT_TRUE(m_window->MessageHandler(event));
        event.repeat = true;
        EXPECT_TRUE(m_window->MessageHandler(event));
        EXPECT_EQ(m_window->take(), ran);
    }
    m_driver->press(Key::right, kControl);
    m_driver->press(Key::left, kControl);
    EXPECT_EQ(m_window->take(), "Right, Ctrl+Left");
}

TEST_F(Commands, OfEveryWindowOpenTheManualOrSayWhyNot) {
    const auto openManual = [&] { m_driver->press(Key::f1, {.shift = true}); };
    openManual();
    support::writeBytes("Manual/index.html", "");
    openManual();
    m_gui.userDesktop.opens = false;
    openManual();
    const std::string page = core::services().fileSystem->fullPath("Manual/index.html");
    const std::string error = "Quorvel: The manual cannot be opened:\n" + page;
    EXPECT_EQ(m_gui.userDesktop.opened, (std::vector{page, page}));
    EXPECT_EQ(m_gui.userDesktop.errors, (std::vector{error, error}));
    EXPECT_EQ(m_window->take(), "");
}

TEST_F(Commands, OfEveryWindowShowTheKeysThatTheTablesHave) {
    m_driver->press(Key::f1);
    test::pump();
    test::WindowDriver keys(test::topWindow());
    ASSERT_EQ(test::topWindow().GetSkinFile(), "Keys.xml");
    keys.type(u"UND");
    keys.click(u"ButtonKeysCopy");
    EXPECT_EQ(m_gui.windows().clipboardText(), u"Everywhere\nCtrl+Z\tUndo\n");
    const auto& list = keys.get<toolkit::CContainerUI>(u"ListKeys");
    EXPECT_EQ(list.GetItemAt(list.GetCount() - 1)->accessibleName(), u"Ctrl+Z: Undo");
    keys.press(Key::f1); // back to the field, in the same window
    keys.retype(u"EditFindKey", u"shift+left");
    keys.click(u"ButtonKeysCopy");
    EXPECT_EQ(m_gui.windows().clipboardText(), u"Zone Edit: frames\nShift+Left\tBack 10 frames\n");
    keys.retype(u"EditFindKey", u"no such key");
    EXPECT_TRUE(keys.get(u"EmptyLine").IsVisible());
    keys.press(Key::escape);
    test::pump();
    EXPECT_EQ(&test::topWindow(), m_window.get());
}

} // namespace
