// Going to the zone editor and back, many times.
#include "src/TheoraVideoManager.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/windows/Answering.h"

namespace {

class ZoneEditVisits : public test::ZoneEditTest {
protected:
    /// Loads the zones of the visit before, draws, steps, saves and leaves.
    void visit(int number) {
        show();
        if (zones().zoneCount() == 0) {
            addZone();
        }
        m_driver->click(u"OptionAddPoint");
        m_driver->drag({at(100, 100), at(300, 200)});
        m_driver->click(u"OptionDeletePoint");
        clickPicture(300, 200);
        goTo(number % 2 == 0 ? 17 : 3);
        EXPECT_TRUE(waitForFrame(number % 2 == 0 ? 17 : 3));
        m_driver->click(u"ButtonSave");
        m_driver->clickThen(u"ButtonClose", test::answering(test::Answer::yes));
        m_driver.reset();
        m_window.reset();
        EXPECT_EQ(theora::TheoraVideoManager::getInstance(), nullptr);
    }
};

TEST_F(ZoneEditVisits, AHundredVisitsLeaveNothingBehind) {
    makeClip(30);
    constexpr int kWarmUp = 10; // caches of the window system fill
    support::ProcessFigures before;
    for (int number = 0; number < kWarmUp + 100; ++number) {
        if (number == kWarmUp) {
            before = support::processFigures();
        }
        visit(number);
        test::pump();
    }
    const support::ProcessFigures after = support::processFigures();
    EXPECT_LE(after.handles, before.handles);
    EXPECT_LE(after.threads, before.threads);
    // A lost back buffer would be 9 KB for each visit.
    EXPECT_LT(after.heapBytes, before.heapBytes + support::kHeapTolerance)
        << before.heapBytes << " to " << after.heapBytes << " bytes";
    EXPECT_EQ(m_log.errors().size(), 1U) << "only the first visit found no zones";
}

} // namespace
