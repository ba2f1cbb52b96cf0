// The zone editor on a clip whose frames carry their numbers, so that a test can read from the
// screen which frame is shown.
#pragma once

#include <string>
#include <vector>

#include "ZoneEdit/ZoneEdit.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/windows/EditorTest.h"
#include "zone/ZoneManager.h"

namespace test {

/// What the log says of a video that has no zones yet.
inline const std::vector<std::string> kNoZones{"Unable to load zone binary"};

class ZoneEditTest : public WindowTest<zoneedit::ZoneEdit> {
protected:
    /// Makes "Scenes/Fire/clip.ogv" with this many frames and tells the editor to open it.
    void makeClip(int frames);
    void makeClip(const support::ClipSpec& spec);
    /// Shows the window on a clip with this many frames.
    void show(int frames, int newZones = 0);
    using WindowTest::show;
    /// Adds a zone by its button.
    void addZone() { m_driver->click(u"ButtonAddZone"); }
    void goTo(int frame);
    /// A point of the picture area in window pixels.
    [[nodiscard]] platform::Point at(int x, int y);
    /// Clicks into the picture area.
    void clickPicture(int x, int y) { m_driver->click(at(x, y)); }
    /// Three points on all frames of the current zone.
    void drawTriangle();

    [[nodiscard]] zone::ZoneManager& zones() { return *zone::currentZoneManager(); }
    /// The points of a zone on a frame, in display pixels; empty without a shape.
    [[nodiscard]] std::vector<platform::Point> points(int zone, int frame);
    [[nodiscard]] std::u16string frameText() { return m_driver->textOf(u"EditCurrentFrame"); }
    /// The number that the picture on the screen carries; -1 when it carries none.
    [[nodiscard]] int shownFrame();
    /// Waits until the screen shows the frame. False when it does not come.
    [[nodiscard]] bool waitForFrame(int frame);

    platform::Size m_clipSize;
};

} // namespace test
