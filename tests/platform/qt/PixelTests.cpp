// Which pixel a position of the pointer lies in, on screens that have several for each of ours.
#include <QCoreApplication>
#include <QMouseEvent>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/qt/QtWindow.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

TEST(PointerPixel, IsTheOneThatThePositionLiesInAndNotTheNearest) {
    test::TestWindow window;
    window.native().setGeometry({100, 100, 300, 200});
    window.show();
    test::pump();
    static_cast<void>(window.takeEvents());
    auto& surface = static_cast<platform::qt::QtWindow&>(window.native()).surface();
    const std::pair<QPointF, const char*> cases[] = {
        {{10, 20}, "up 1 10,20"},
        {{10.5, 20.75}, "up 1 10,20"},
        {{199.5, 99.5}, "up 1 199,99"},
        {{-0.5, 100.0}, "up 1 -1,100"},
    };
    for (const auto& [at, expected] : cases) {
        QMouseEvent release(QEvent::MouseButtonRelease, at, surface.mapToGlobal(at), Qt::LeftButton,
                            Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&surface, &release);
        EXPECT_EQ(window.takeEvents(), std::vector<std::string>{expected});
    }
}
