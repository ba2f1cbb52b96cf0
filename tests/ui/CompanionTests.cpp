// Modeless windows beside a screen, in the loop that runs it.
#include <functional>
#include <memory>
#include <string>

#include "tests/support/windows/EditorTest.h"
#include "ui/ConfirmCallback.h"
#include "ui/Confirmation.h"

namespace {

/// Counts the clicks on its button "Go" and does what the test wants at each.
class PlainWindow : public ui::ConfirmCallback, public ui::EditorWindow {
public:
    explicit PlainWindow(const ui::WindowContext& context) : EditorWindow(context) {}
    using EditorWindow::companions;
    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return GetNative(); }
    [[nodiscard]] ui::Companions* askersCompanions() override { return &companions(); }
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"TestWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Plain.xml"; }
    void OnClick(toolkit::TNotifyUI& /*message*/) override {
        ++clicks;
        if (onClick) {
            onClick();
        }
    }

    int clicks = 0;
    std::function<void()> onClick;
};

class Companion final : public PlainWindow {
public:
    using PlainWindow::PlainWindow;
    static std::shared_ptr<Companion> create(const ui::WindowContext& context) {
        auto window = std::make_shared<Companion>(context);
        last = window;
        return window;
    }
    static inline std::weak_ptr<Companion> last;
};

class CompanionWindows : public test::EditorTest {
protected:
    CompanionWindows() {
        support::writeBytes("UI/Plain.xml", "<Window size=\"200,100\"><Button name=\"Go\" "
                                            "pos=\"10,10,80,25\"/></Window>");
        forgetQuit();
    }
    /// Runs the screen with `act` in its loop; a companion stands beside it by then.
    void run(const std::function<void()>& act) {
        m_screen = std::make_shared<PlainWindow>(context());
        context().gui.loop().post([&] {
            EXPECT_TRUE(m_screen->companions().show<Companion>(context(), u"Beside"));
            test::pump();
            ASSERT_FALSE(Companion::last.expired());
            act();
        });
        EXPECT_TRUE(m_screen->runScreen(u"Screen"));
        EXPECT_EQ(m_screen->GetNative(), nullptr) << "the loop has ended before its screen";
        test::pump();
        EXPECT_TRUE(Companion::last.expired());
    }
    static Companion& beside() { return *Companion::last.lock(); }
    static void click(PlainWindow& window) { test::WindowDriver(window).click(u"Go"); }
    /// Whether a loop that begins now ends by its own quit.
    bool nothingIsLeft() {
        context().gui.loop().post([this] { context().gui.loop().postQuit(7); });
        return context().gui.loop().run() == 7;
    }

    std::shared_ptr<PlainWindow> m_screen;
};

TEST_F(CompanionWindows, WorkBesideTheirScreenAndEndAlone) {
    run([&] {
        click(beside());
        click(*m_screen);
        EXPECT_TRUE(beside().clicks == 1 && m_screen->clicks == 1);
        const Companion* first = &beside();
        EXPECT_TRUE(m_screen->companions().show<Companion>(context(), u"Beside"));
        EXPECT_EQ(&beside(), first) << "one of a kind";

        test::input().requestClose(*beside().GetNative());
        test::pump();
        EXPECT_TRUE(Companion::last.expired()) << "released once it is closed";
        context().gui.loop().post([&] { // the screen's loop goes on
            EXPECT_TRUE(m_screen->companions().show<Companion>(context(), u"Beside"));
            m_screen->Close(1);
        });
    });
    EXPECT_TRUE(nothingIsLeft());
}

TEST_F(CompanionWindows, EndWithTheirScreenWhoeverEndsIt) {
    const std::function<void()> ends[] = {
        [&] { m_screen->Close(1); },
        [&] { test::input().requestClose(*m_screen->GetNative()); },
        [&] { // from the companion's own handler
            beside().onClick = [&] { m_screen->Close(1); };
            click(beside());
        },
        [&] {
            beside().Close(1);
            m_screen->Close(1);
        },
    };
    for (const auto& end : ends) {
        run(end);
        EXPECT_TRUE(nothingIsLeft());
    }
}

TEST_F(CompanionWindows, TakeNoInputWhileTheirScreenAsks) {
    run([&] {
        context().gui.loop().post([&] {
            click(beside());
            click(*m_screen);
            EXPECT_EQ(beside().clicks + m_screen->clicks, 0);
            test::WindowDriver(test::topWindow()).press(platform::Key::escape);
        });
        ui::Confirmation::ask(context(), *m_screen, "Exit?", "Really?");
        click(beside());
        EXPECT_EQ(beside().clicks, 1);
        m_screen->Close(1);
    });
}

} // namespace
