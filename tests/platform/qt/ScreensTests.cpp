// Popups of windows that lie across two screens, the right one of which has twice the scale of the
// left one.
#include <QByteArray>
#include <QRect>
#include <QScreen>
#include <QtGlobal>
#include <string>

#include <gtest/gtest.h>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/qt/QtWindow.h"
#include "tests/support/gui/TestWindow.h"

namespace {

using platform::Rect;
using platform::Size;

class Screens : public testing::Test {
protected:
    static void SetUpTestSuite() { qputenv("QT_SCREEN_SCALE_FACTORS", "wide=1;fine=2"); }
    static platform::qt::QtSurface& surface(test::TestWindow& window) {
        return static_cast<platform::qt::QtWindow&>(window.native()).surface();
    }
};

TEST_F(Screens, APopupOpensWhereItsAnchorIsWithTheScaleOfItsOwner) {
    const struct {
        const char* name;
        Rect owner; ///< in its own pixels, as all places
        const char* ownersScreen;
        Rect popup;
        const char* screen;
        Rect area;
        QRect place; ///< in those of the popup's screen
        Size pixels;
    } cases[] = {
        {"left alone",
         Rect::at(100, 200, 900, 600),
         "wide",
         Rect::at(300, 300, 200, 100),
         "wide",
         {0, 0, 1920, 1080},
         {300, 300, 200, 100},
         {200, 100}},
        {"from the left one",
         Rect::at(1400, 200, 900, 600),
         "wide",
         Rect::at(2100, 300, 200, 100),
         "fine",
         {1920, 0, 5760, 2160},
         {2010, 150, 100, 50},
         {200, 100}},
        {"right alone",
         Rect::at(2400, 200, 900, 600),
         "fine",
         Rect::at(2500, 300, 200, 100),
         "fine",
         {1920, 0, 3840, 1080},
         {2500, 300, 200, 100},
         {400, 200}},
        {"from the right one",
         Rect::at(1820, 200, 900, 600),
         "fine",
         Rect::at(1850, 300, 30, 100),
         "wide",
         {960, 0, 1920, 540},
         {1780, 600, 60, 200},
         {60, 200}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::TestWindow owner({900, 600}, nullptr, platform::WindowKind::normal, {300, 200});
        owner.native().setGeometry(c.owner);
        owner.show();
        EXPECT_EQ(surface(owner).screen()->name().toStdString(), c.ownersScreen);
        test::TestWindow popup({1, 1}, &owner.native(), platform::WindowKind::popup);
        EXPECT_EQ(owner.native().workArea(c.popup.topLeft()), c.area);
        for (int time = 0; time < 2; ++time) { // the window of a list is kept for the next one
            popup.native().setGeometry(c.popup);
            popup.show();
            EXPECT_EQ(surface(popup).screen()->name().toStdString(), c.screen);
            EXPECT_EQ(surface(popup).geometry(), c.place);
            EXPECT_EQ(popup.native().geometry(), c.popup);
            EXPECT_EQ(popup.native().scale(), owner.native().scale());
            EXPECT_EQ(popup.native().picture().snapshot().size(), c.pixels);
            popup.native().show(false);
        }
    }
}

// The place that a window had there, as it counted it, is looked for before it is shown again.
TEST_F(Screens, TheScreenThatAHiddenWindowWillStandOnCountsItsPlace) {
    test::TestWindow window({900, 600}, nullptr, platform::WindowKind::normal, {300, 200});
    EXPECT_EQ(window.native().workArea({3000, 500}), (Rect{1920, 0, 3840, 1080}));
}

TEST_F(Screens, WhatLiesBeyondAllOfThemBelongsToTheNearest) {
    test::TestWindow window({900, 600}, nullptr, platform::WindowKind::normal, {300, 200});
    window.native().setGeometry(Rect::at(2400, 800, 900, 600));
    window.show();
    const Rect right{1920, 0, 3840, 1080};
    EXPECT_EQ(window.native().workArea({2500, 1100}), right) << "below";
    EXPECT_EQ(window.native().workArea({3900, 500}), right) << "to the right";
    EXPECT_EQ(window.native().workArea({1700, 700}), (Rect{960, 0, 1920, 540}));
}

} // namespace
