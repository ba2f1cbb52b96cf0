// Which keys reach the commands of a window, and what becomes of a text that is being typed.
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "platform/Accessible.h"
#include "tests/support/windows/EditorTest.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CContainerUI.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/KeyMap.h"

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
     .toolTip = "Save (Ctrl+S)"_tr,
     .keys = {{{Key::s, kControl}}},
     .subjectTip = "SaveIt|Save: {0} (Ctrl+S)"_tr},
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
    explicit CommandWindow(const ui::WindowContext& context) : EditorWindow(context, {kTable}) {
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
        bool isLimited = false;
    } cases[] = {
        {u"", ""},
        {u"Save", "Space "},
        {u"Save", "N 2 Space ", true},
        {u"List", "Home Down ", true},
        {u"Combo", "F4 N 2 Space Home Down "},
        {u"List", "Home Down "},
        {u"Edit", "Ctrl+C Ctrl+Left N 2 Space Home Delete Down Left Right "},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(core::storedText(test.focus));
        std::string claimed;
        static constexpr std::u16string_view kTyping[] = {u"List"};
        m_window->commands().setTypingControls(test.isLimited
                                                   ? std::span<const std::u16string_view>(kTyping)
                                                   : std::span<const std::u16string_view>());
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
    support::writeBytes("Manual/Commands.html", "");
    openManual();
    EXPECT_TRUE(m_gui.userDesktop.opened.back().ends_with("Commands.html")) << "its own page";
    support::writeBytes("Languages.ini", "[Language:German]\nManual = Handbuch\n");
    m_services.translations = core::Translations::create("Languages.ini", "german");
    openManual();
    EXPECT_EQ(m_gui.userDesktop.opened.back(), *(m_gui.userDesktop.opened.end() - 2));
    support::writeBytes("Manual/German/index.html", "");
    openManual();
    EXPECT_TRUE(m_gui.userDesktop.opened.back().ends_with("index.html")) << "in the language";
    EXPECT_EQ(m_window->take(), "");
}

using Keys = test::BranchEditorTest;

/// The list of keys, opened in the window of the driver.
test::WindowDriver openKeys(const test::WindowDriver& driver) {
    driver.press(Key::f1);
    test::pump();
    EXPECT_EQ(test::topWindow().GetSkinFile(), "Keys.xml");
    return test::WindowDriver(test::topWindow());
}

/// What the rows tell a screen reader, a line each.
std::u16string rowsOf(const test::WindowDriver& keys) {
    std::u16string text;
    const auto& list = keys.get<toolkit::CContainerUI>(u"ListKeys");
    for (int i = 0; i < list.GetCount(); ++i) {
        const toolkit::CControlUI& row = *list.GetItemAt(i);
        if (row.accessibleRole() == platform::AccessibleRole::listItem) {
            text += row.accessibleName() + u"\n";
        }
    }
    return text;
}

TEST_F(Keys, OfAllTablesAreInOneListWhicheverWindowAsks) {
    makeScene({"A"});
    show();
    const test::WindowDriver keys = openKeys(*m_driver);
    keys.type(u"UND");
    keys.click(u"ButtonKeysCopy");
    EXPECT_EQ(m_gui.windows().clipboardText(), u"Everywhere\nCtrl+Z\tUndo\n");
    keys.retype(u"EditFindKey", u"shift+left");
    EXPECT_EQ(rowsOf(keys), u"Shift+Left: Back 10 frames\n"
                            u"Ctrl+Shift+Left: Move the point left by 10 pixels\n");
    keys.retype(u"EditFindKey", u"Add B");
    EXPECT_EQ(rowsOf(keys), u"Add Branch\n") << "a command without a key";
    keys.retype(u"EditFindKey", u"scene");
    EXPECT_NE(rowsOf(keys).find(u"A to Z go to the scene."), std::u16string::npos);
    keys.retype(u"EditFindKey", u"f5");
    EXPECT_EQ(rowsOf(keys), u"F5: Play\nShift+F5: Play from Here\n");
    keys.retype(u"EditFindKey", u"drag");
    EXPECT_EQ(rowsOf(keys), u"Ctrl+Drag: Rectangle (Add many)\n"
                            u"Ctrl+Drag: Scale the shape\n"
                            u"Ctrl+Shift+Drag: Rotate the shape\n"
                            u"Shift+Drag: Straight across or down\n");
    keys.retype(u"EditFindKey", u"arrows");
    keys.click(u"ButtonKeysCopy");
    EXPECT_EQ(m_gui.windows().clipboardText(), u"Map\nArrows\tTo the nearest branch\n");
    keys.retype(u"EditFindKey", u"no such key");
    EXPECT_TRUE(keys.get(u"EmptyLine").IsVisible());

    for (const std::string layout : {"Settings.xml", "Confirmation.xml"}) {
        const auto ask = [&](const test::WindowDriver& asking) {
            asking.press(Key::f1);
            test::pump();
            EXPECT_EQ(keys.focusName(), u"EditFindKey") << "the one that is open";
            keys.type(u"x"); // it takes input
            asking.press(Key::escape);
        };
        if (layout == "Settings.xml") {
            m_driver->press(Key::menu);
            m_driver->type(u"s");
            inWindow(layout, ask);
            m_driver->press(Key::enter);
            test::pump();
        } else {
            inWindow(layout, ask);
            m_driver->click(u"ButtonExit");
        }
    }
    EXPECT_EQ(keys.textOf(u"EditFindKey"), u"no such keyxx");
    support::writeBytes("Manual/Confirmation.html", "");
    keys.click(u"ButtonManual");
    ASSERT_EQ(m_gui.userDesktop.opened.size(), 1U);
    EXPECT_TRUE(m_gui.userDesktop.opened[0].ends_with("Confirmation.html")) << "the last to ask";
}

TEST_F(Keys, OfALongLineAreNotReadToItsEnd) {
    std::string line = "[keys]\nsave = none";
    while (line.size() < 65'000) {
        line += ",none";
    }
    support::writeBytes("Editor.ini", line + "\nundo = F9, F9, F9\n");
    const ui::KeyMap keys(std::make_shared<core::EditorSettings>("Editor.ini"));
    EXPECT_EQ(keys.problems(),
              (test::Texts{u"Save: \"none\" is not a key.", u"Save: \"none\" is not a key.",
                           u"Save: \"none\" is not a key.", u"Save: \"none\" is not a key.",
                           u"Save: only two keys count."}));
}

TEST_F(Keys, OfTheManualOpenThePageOfEachWindow) {
    std::string layout;
    const auto expectPage = [&](const test::WindowDriver& driver) {
        const std::string page = "Manual/" + layout + ".html";
        support::writeBytes(page, "");
        m_gui.userDesktop.opened.clear();
        driver.press(Key::f1, {.shift = true});
        EXPECT_EQ(m_gui.userDesktop.opened,
                  std::vector{core::services().fileSystem->fullPath(page)});
    };
    const auto inDialog = [&](const test::WindowDriver& driver) {
        expectPage(driver);
        driver.press(Key::escape);
    };
    makeScene({"A"});
    show();
    layout = "BranchList";
    expectPage(*m_driver);
    layout = "Confirmation";
    inWindow(layout + ".xml", inDialog);
    m_driver->click(u"ButtonExit");
    for (const auto& [letter, name, isDialog] : {std::tuple{u"p", "Publish", true},
                                                 {u"e", "EarlierVersions", true},
                                                 {u"i", "ImportVideo", false},
                                                 {u"s", "Settings", false},
                                                 {u"k", "Keys", false}}) {
        layout = name;
        m_driver->press(Key::menu);
        m_driver->type(letter);
        if (isDialog) {
            inWindow(layout + ".xml", inDialog);
        }
        m_driver->press(Key::enter);
        test::pump();
        if (!isDialog) {
            ASSERT_EQ(test::topWindow().GetSkinFile(), layout + ".xml");
            inDialog(test::WindowDriver(test::topWindow()));
            test::pump();
        }
    }
    layout = "OpenScene";
    const auto openScene = open<ui::OpenScene>();
    expectPage(test::WindowDriver(*openScene));
    layout = "NewScene";
    const auto newScene = open<ui::NewScene>();
    expectPage(test::WindowDriver(*newScene));
}

TEST_F(Keys, AreChosenInTheListAndCountAtOnce) {
    makeScene({"A"});
    show();
    const test::WindowDriver keys = openKeys(*m_driver);
    const auto choose = [&](const std::u16string& text, Key key, platform::Modifiers held = {}) {
        keys.retype(u"EditFindKey", text);
        keys.press(Key::f6); // the list
        keys.press(Key::down);
        keys.press(Key::enter);
        keys.press(key, held);
        return rowsOf(keys);
    };
    EXPECT_EQ(choose(u"Add Branch", Key::z, kControl), u"Ctrl+Z is \"Undo\".\n");
    keys.press(Key::escape);
    EXPECT_EQ(rowsOf(keys), u"Add Branch\n") << "waits no more";
    EXPECT_EQ(choose(u"Add Branch", Key::down), u"Down belongs to fields and lists.\n");
    EXPECT_EQ(choose(u"Add Branch", Key::tab), u"Add Branch\n") << "leaves the list";
    EXPECT_EQ(choose(u"Next control", Key::k), u"Tab: Next control\n");
    EXPECT_EQ(choose(u"Scale the shape", Key::del), u"Ctrl+Drag: Scale the shape\n");
    EXPECT_EQ(keys.textOf(u"LabelHint"), u"This key cannot be changed.");
    EXPECT_EQ(choose(u"Add Branch", Key::b, kControl), u"Ctrl+B: Add Branch\n");
    EXPECT_EQ(m_driver->get(u"ButtonAddBranch").GetToolTip(),
              u"Add a branch to the scene (Ctrl+B)");
    m_driver->press(Key::b, kControl);
    EXPECT_EQ(session().branchCount(), 2);

    EXPECT_EQ(choose(u"Undo", Key::u, kControl), u"Ctrl+U: Undo\n");
    EXPECT_EQ(m_driver->get(u"ButtonUndo").GetToolTip(), u"Undo: add branch (Ctrl+U)");
    EXPECT_EQ(choose(u"Redo", Key::z, kControl), u"Ctrl+Z: Redo\nCtrl+Shift+Z: Redo\n");
    EXPECT_EQ(choose(u"Undo", Key::backspace), u"Undo\n") << "Redo has its key";
    EXPECT_EQ(choose(u"Redo", Key::del), u"Ctrl+Shift+Z: Redo\n");
    EXPECT_EQ(choose(u"Undo", Key::backspace), u"Ctrl+Z: Undo\n");
    EXPECT_EQ(m_driver->get(u"ButtonUndo").GetToolTip(), u"Undo: add branch (Ctrl+Z)");
    EXPECT_EQ(support::readBytes("Editor.ini"),
              "[keys]\r\nredo = Ctrl+Shift+Z\r\naddBranch = Ctrl+B\r\n");
    keys.press(Key::menu);
    keys.press(Key::end);
    keys.press(Key::enter); // all keys
    m_driver->press(Key::b, kControl);
    EXPECT_EQ(session().branchCount(), 2);
    EXPECT_EQ(support::readBytes("Editor.ini"), "[keys]\r\n");
}

TEST_F(Keys, AreReadFromTheSettingsAndWhatIsOddThereIsOnlyShown) {
    support::writeBytes("Editor.ini",
                        "keepDrafts = false\n[Keys]\nback = right\nforward = LEFT\n"
                        "save = F9, ctrl + shift+s, F10\nSAVE = F7\nundo = Ctrl+Blah\n"
                        "redo = Ctrl+Z\nstop = F8\nscaleShape = F8\nnothing = F5\nmanual =\n"
                        "addVideo = Tab\nrename = F9\n[other]\naddBranch = F11\n");
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    makeScene({"A"});
    show();
    const test::WindowDriver keys = openKeys(*m_driver);
    const std::u16string rows = rowsOf(keys);
    for (const std::u16string_view row :
         {u"Right: Back 1 frame\n", u"Left: Forward 1 frame\n", u"F9: Save\nCtrl+Shift+S: Save\n",
          u"Ctrl+Z: Redo\n", u"Esc: Close a list, stop what runs\n", u"\nUndo\n", u"\nManual\n",
          u"F2: Rename the Branch\n", u"Ctrl+Drag: Scale the shape\n",
          u"\"stop\" has no keys to choose.\n\"scaleShape\" has no keys to choose.\n"
          u"\"nothing\" has no keys to choose.\n"
          u"Save: only two keys count.\nUndo: \"Ctrl+Blah\" is not a key.\n"
          u"Add Video…: Tab is \"Next control\".\nRename the Branch: F9 is \"Save\".\n"}) {
        EXPECT_NE(rows.find(row), std::u16string::npos) << core::storedText(row);
    }
    EXPECT_EQ(m_log.count("Settings \""), 0U);
    keys.press(Key::f6);
    keys.press(Key::end);
    const auto& list = keys.get<toolkit::CContainerUI>(u"ListKeys");
    const auto lowest = [&] { return list.GetItemAt(list.GetCount() - 1)->GetPos().bottom; };
    const int before = lowest();
    keys.wheel(keys.middleOf(list), 20);
    EXPECT_TRUE(lowest() >= before) << "scrolled back";
}

} // namespace
