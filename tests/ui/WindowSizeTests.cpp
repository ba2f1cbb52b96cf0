// Windows that grow: filling the screen and coming back, and what a wide window has room for.
#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>

#include "core/EditorSettings.h"
#include "platform/Window.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CContainerUI.h"

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
    show();
    EXPECT_EQ(shownAt(1600), std::pair(0, 374)) << "in the middle";
    for (int run = 0; run < 2; ++run) {
        show().get<toolkit::CContainerUI>(u"PaneLeft").AddNew<toolkit::CControlUI>();
        EXPECT_EQ(shownAt(1239), std::pair(0, 194));
        EXPECT_EQ(shownAt(1600), run == 0 ? std::pair(700, 732) : std::pair(600, 632));
        const platform::Point bar = WindowDriver::middleOf(m_driver->get(u"SplitterColumn"));
        m_driver->drag({bar, {bar.x - (run == 0 ? 100 : 0), bar.y}});
        EXPECT_EQ(shownAt(1600), std::pair(600, 632)) << "and so in the next window";
        EXPECT_EQ(shownAt(1240), std::pair(340, 372)) << "both at their least";
    }
}

} // namespace
