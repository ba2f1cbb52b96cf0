// What the pointer does beyond clicks: which pixel it lies in on screens that have several for each
// of ours, and the move of a window by its caption.
#include <QApplication>
#include <QCoreApplication>
#include <QCursor>
#include <QImage>
#include <QMouseEvent>
#include <QPalette>
#include <QPixmap>
#include <QPoint>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/qt/QtWindow.h"
#include "platform/qt/WindowMove.h"
#include "tests/platform/Appearance.h"
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

TEST(Appearance, FollowsTheSystemWhileItIsToldTo) {
    static_cast<void>(test::gui()); // it owns the palette
    const QPalette before = QApplication::palette();
    test::expectWindowsFollow([](bool isDark) {
        QApplication::setPalette(QPalette(isDark ? Qt::black : Qt::lightGray));
    });
    QApplication::setPalette(before);
}

TEST(CaptionMove, IsHandedToTheSystemAtTheFirstMotionWithTheButtonDown) {
    static_cast<void>(test::gui()); // it owns the pointer that the events name
    using Steps = std::vector<std::string>;
    struct Step {
        QPoint at;
        Qt::MouseButton released = Qt::NoButton;
        Qt::MouseButtons held = Qt::LeftButton;
    };
    const Step release{{1, 1}, Qt::LeftButton, Qt::NoButton};
    const Step hover{{9, 9}, Qt::NoButton, Qt::NoButton};
    const auto follow = [](platform::qt::WindowMove& move, const Step& step) {
        const auto type =
            step.released == Qt::NoButton ? QEvent::MouseMove : QEvent::MouseButtonRelease;
        return move.follow(
            QMouseEvent(type, step.at, step.at, step.released, step.held, Qt::NoModifier));
    };
    const struct {
        const char* what;
        bool systemMoves;
        std::vector<Step> events;
        Steps expected;
        bool stillMoves;
    } cases[] = {
        {"a tap", true, {release}, {}, false},
        {"a release that was lost", true, {hover}, {}, false},
        {"a drag", true, {{{12, 15}}, {{30, 30}}}, {"system"}, false},
        {"no system", false, {{{12, 15}}, {{30, 40}}}, {"7,12", "25,37"}, true},
        {"no system, ended", false, {{{12, 15}}, release}, {"7,12"}, false},
    };
    for (const auto& c : cases) {
        Steps steps;
        platform::qt::WindowMove move(
            [&] {
                if (c.systemMoves) {
                    steps.emplace_back("system");
                }
                return c.systemMoves;
            },
            [&](QPoint to) {
                steps.push_back(std::to_string(to.x()) + "," + std::to_string(to.y()));
            });
        EXPECT_FALSE(follow(move, hover)) << c.what;
        move.begin({5, 3});
        for (const Step& step : c.events) {
            follow(move, step);
        }
        EXPECT_EQ(steps, c.expected) << c.what;
        EXPECT_EQ(follow(move, {{50, 50}}), c.stillMoves) << c.what;
    }
}

TEST(SizingBorder, SizesByTheEdgesThatAreHeldAndNoFurtherThanTheLeastSize) {
    const struct {
        platform::Point from;
        platform::Point by;
        platform::Rect expected;
        Qt::CursorShape cursor;
    } cases[] = {
        {{298, 100}, {40, 9}, platform::Rect::at(100, 100, 340, 200), Qt::SizeHorCursor},
        {{2, 100}, {90, 9}, platform::Rect::at(150, 100, 250, 200), Qt::SizeHorCursor},
        {{150, 3}, {5, -30}, platform::Rect::at(100, 70, 300, 230), Qt::SizeVerCursor},
        {{297, 190}, {20, -90}, platform::Rect::at(100, 100, 320, 150), Qt::SizeFDiagCursor},
        {{150, 100}, {20, 20}, platform::Rect::at(100, 100, 300, 200), Qt::ArrowCursor},
        {{2, 150},
         {90, 9},
         platform::Rect::at(100, 100, 300, 200),
         Qt::ArrowCursor}, // the content's
    };
    for (const auto& c : cases) {
        test::TestWindow window({300, 200}, nullptr, platform::WindowKind::normal, {250, 150});
        window.native().setGeometry({100, 100, 400, 300});
        window.pressed = {0, 120, 300, 160};
        window.show();
        using platform::EventKind;
        const auto& surface = static_cast<platform::qt::QtWindow&>(window.native()).surface();
        test::input().mouse(window.native(), EventKind::mouseMove, c.from);
        test::pump();
        EXPECT_EQ(surface.cursor().shape(), c.cursor) << c.from.x << "," << c.from.y;
        test::input().mouse(window.native(), EventKind::mouseDown, c.from);
        const platform::Point to{c.from.x + c.by.x, c.from.y + c.by.y};
        test::input().mouse(window.native(), EventKind::mouseMove, to);
        test::pump();
        EXPECT_EQ(window.native().geometry(), c.expected) << c.from.x << "," << c.from.y;
        test::input().mouse(window.native(), EventKind::mouseUp, to);
        test::pump();
        const platform::Size size = window.native().geometry().size();
        for (const double zoom : {8.0, 1.25, 1.0}) { // the first is too large for the screen
            test::gui().windows().setZoom(zoom);
            test::pump();
        }
        EXPECT_EQ(window.native().geometry().size(), size) << "is kept";
    }
}

TEST(PointerShape, IsTheSystemsOwnOrDrawnForTheScale) {
    using platform::PointerShape;
    test::TestWindow window;
    window.show();
    const auto& surface = static_cast<platform::qt::QtWindow&>(window.native()).surface();
    const std::pair<PointerShape, Qt::CursorShape> shapes[] = {
        {PointerShape::text, Qt::IBeamCursor},
        {PointerShape::hand, Qt::PointingHandCursor},
        {PointerShape::sizeAcross, Qt::SizeHorCursor},
        {PointerShape::sizeDown, Qt::SizeVerCursor},
        {PointerShape::notAllowed, Qt::ForbiddenCursor},
        {PointerShape::arrow, Qt::ArrowCursor}};
    for (const auto& [shape, cursor] : shapes) {
        window.native().input().setPointer(shape);
        EXPECT_EQ(surface.cursor().shape(), cursor);
    }
    std::vector<QImage> drawn;
    for (const double zoom : {1.0, 2.0}) {
        test::gui().windows().setZoom(zoom);
        for (const auto& [shape, hotSpot] : {std::pair{PointerShape::move, QPoint{12, 12}},
                                             {PointerShape::addPoint, {8, 12}},
                                             {PointerShape::deletePoint, {8, 12}},
                                             {PointerShape::scale, {12, 12}},
                                             {PointerShape::rotate, {12, 12}},
                                             {PointerShape::rectangle, {12, 12}},
                                             {PointerShape::link, {5, 18}}}) {
            window.native().input().setPointer(shape);
            const QCursor cursor = surface.cursor();
            const QImage picture = cursor.pixmap().toImage();
            EXPECT_EQ(picture.width(), std::lround(24 * window.native().scale()));
            const double places = cursor.pixmap().deviceIndependentSize().width() / 24;
            EXPECT_LE((QPointF(hotSpot) * places - cursor.hotSpot()).manhattanLength(), places);
            EXPECT_EQ(std::ranges::count(drawn, picture), 0);
            drawn.push_back(picture);
        }
    }
    test::gui().windows().setZoom(1);
}

TEST(FixedSize, ReachesTheWindowManagerAndFollowsTheProgramsOwnChange) {
    test::TestWindow window({200, 100});
    test::TestWindow popup({50, 50}, &window.native(), platform::WindowKind::popup);
    const auto surfaceOf = [](test::TestWindow& of) -> const QWindow& {
        return static_cast<platform::qt::QtWindow&>(of.native()).surface();
    };
    for (const QSize size : {QSize(200, 100), QSize(300, 90), QSize(120, 240)}) {
        window.native().setGeometry(platform::Rect::at(10, 10, size.width(), size.height()));
        EXPECT_EQ(surfaceOf(window).minimumSize(), size);
        EXPECT_EQ(surfaceOf(window).maximumSize(), size);
        EXPECT_EQ(surfaceOf(window).size(), size);
    }
    EXPECT_NE(surfaceOf(popup).minimumSize(), surfaceOf(popup).maximumSize());
}
