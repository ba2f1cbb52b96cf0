// Windows that grow: filling the screen and coming back, and what a wide window has room for.
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include "core/EditorSettings.h"
#include "platform/Window.h"
#include "tests/ui/BranchListFixture.h"
#include "ui/OpenScene.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/KeyMap.h"

namespace {

using platform::Key;
using platform::WindowState;
using test::WindowDriver;

class WindowSize : public test::BranchEditorTest {
protected:
    void expectState(WindowState state, const char* how) {
        EXPECT_TRUE(test::pumpUntil([&] { return m_driver->native().state() == state; })) << how;
        test::pump();
        EXPECT_EQ(m_driver->get(u"ButtonMaximize").GetToolTip(),
                  state == WindowState::maximized ? u"Restore" : u"Maximise")
            << how;
    }
    void resize(int width, int height) {
        m_driver->native().setGeometry(platform::Rect::at(0, 0, width, height));
        test::pump();
    }
};

TEST_F(WindowSize, FillsTheScreenAndComesBackInEveryWay) {
    makeScene({"A"});
    show();
    const platform::Size size{900, 700};
    resize(size.width, size.height);
    const platform::Rect area = test::gui().windows().workArea({0, 0});
    const platform::Point caption{300, 18};
    for (const auto& [how, act] :
         std::initializer_list<std::pair<const char*, std::function<void()>>>{
             {"button", [&] { m_driver->click(u"ButtonMaximize"); }},
             {"key", [&] { m_driver->press(Key::f11); }},
             {"caption", [&] { m_driver->doubleClick(caption); }}}) {
        act();
        expectState(WindowState::maximized, how);
        EXPECT_EQ(m_driver->native().geometry(), area) << how;
        EXPECT_EQ(m_driver->get(u"ButtonExit").GetPos().right, area.width() - 16) << how;
        act();
        expectState(WindowState::normal, how);
        EXPECT_EQ(m_driver->native().geometry().size(), size) << how;
    }
    m_driver->click(u"ButtonMinimize");
    expectState(WindowState::minimized, "minimise");
    m_driver->native().setState(WindowState::maximized);
    expectState(WindowState::maximized, "system");
    ui::KeyMap::of(m_services).choose(ui::kMaximizeCommand, {{{Key::f7, {}}}});
    EXPECT_EQ(m_driver->get(u"ButtonMaximize").GetToolTip(), u"Restore (F7)");
    m_driver->press(Key::f7);
    EXPECT_TRUE(test::pumpUntil(
        [&] { return m_driver->get(u"ButtonMaximize").GetToolTip() == u"Maximise (F7)"; }));
}

TEST_F(WindowSize, AWideWindowHasAPaneLeftOfTheColumnOnceSomethingIsInIt) {
    makeScene({"A"});
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    const auto shownAt = [this](int width) {
        resize(width, 700);
        const platform::Rect& column = m_driver->get(u"PaneColumn").GetPos();
        EXPECT_EQ(isVisible(u"SplitterColumn"), isVisible(u"PaneLeft"));
        return std::pair(isVisible(u"PaneLeft") ? m_driver->get(u"PaneLeft").GetPos().width() : 0,
                         isVisible(u"PaneColumn") ? column.left : 0);
    };
    m_services.editorSettings->set("leftPane", "false");
    show();
    EXPECT_EQ(shownAt(1600), std::pair(0, 374)) << "in the middle";
    m_services.editorSettings->set("leftPane", "true");
    for (int run = 0; run < 2; ++run) {
        show();
        EXPECT_EQ(shownAt(1239), std::pair(0, 194));
        EXPECT_EQ(shownAt(1600), run == 0 ? std::pair(700, 732) : std::pair(600, 632));
        const platform::Point bar = WindowDriver::middleOf(m_driver->get(u"SplitterColumn"));
        m_driver->drag({bar, {bar.x - (run == 0 ? 100 : 0), bar.y}});
        EXPECT_EQ(shownAt(1600), std::pair(600, 632)) << "and so in the next window";
        EXPECT_EQ(shownAt(1240), std::pair(340, 372)) << "both at their least";
    }
}

// Each in a run of its own, as far as the settings go.
TEST_F(WindowSize, WindowsStandWhereTheAuthorLeftThemAtTheNextStartToo) {
    makeScene({"A"});
    const platform::Rect area = test::gui().windows().workArea({0, 0});
    platform::Rect opened;
    WindowState state{};
    const auto run = [&]<class Window>(std::shared_ptr<Window> window,
                                       const std::function<void(const WindowDriver&)>& act) {
        m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
        test::gui().loop().post([&] {
            const WindowDriver driver(*window);
            test::pump();
            state = driver.native().state();
            opened = driver.native().normalGeometry();
            driver.hover(u"ButtonExit");
            act(driver);
            test::pump();
            window->Close(1);
        });
        EXPECT_TRUE(window->runScreen(u"Test"));
    };
    const auto open = [&](const std::function<void(const WindowDriver&)>& act) {
        run(ui::BranchList::create(context()), act);
    };
    const auto place = [](const platform::Rect& to) {
        return [to](const WindowDriver& driver) { driver.native().setGeometry(to); };
    };
    const auto leave = [](const WindowDriver&) {};
    const platform::Rect large = platform::Rect::at(area.left + 7, area.top + 9, 1000, 700);
    const platform::Rect far = platform::Rect::at(area.left - 800, area.bottom - 20, 900, 680);
    open(place(large));
    EXPECT_EQ(opened, area.centred({884, 672}));
    run(ui::OpenScene::create(context()), leave);
    EXPECT_EQ(opened, area.centred(opened.size())) << "each has its own place";
    open([](const WindowDriver& driver) { driver.press(Key::f11); });
    EXPECT_EQ(opened, large);
    open([](const WindowDriver& driver) { driver.press(Key::f11); });
    EXPECT_EQ(state, WindowState::maximized);
    EXPECT_EQ(opened, large);
    open(place(far));
    EXPECT_EQ(state, WindowState::normal);
    EXPECT_EQ(opened, large);
    open(leave);
    EXPECT_EQ(opened, far) << "a hundred pixels of the caption are enough";
    for (const char* odd :
         {"-801,2000,900,680", "1,2,3", "x", "", "1,2,999999,9", "9999,0,900,700"}) {
        support::writeBytes("Editor.ini", std::string("place.BranchList = ") + odd);
        open(leave);
        EXPECT_EQ(opened.topLeft(), area.centred(opened.size()).topLeft()) << odd;
    }
    support::writeBytes("Editor.ini", "place.BranchList = 3,4,100,6000,maximised");
    open(leave);
    EXPECT_EQ(opened, platform::Rect::at(3, 4, 884, area.height()));
}

} // namespace
