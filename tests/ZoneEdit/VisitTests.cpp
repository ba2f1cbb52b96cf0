// Going to the zone editor and back, many times.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "recovery/Drafts.h"
#include "scene/SceneSession.h"
#include "src/TheoraVideoManager.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/FixedClock.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/TempFolder.h"
#include "tests/support/windows/Answering.h"
#include "toolkit/controls/CListUI.h"
#include "ui/BranchList.h"

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

    bool m_areDraftsKept = true;
};

TEST_F(ZoneEditVisits, OfferWhatWasLeftUnsavedAndRestoreItAsOneStep) {
    m_services.drafts =
        std::make_shared<recovery::Drafts>(m_gui.loop(), [this] { return m_areDraftsKept; });
    makeClip(30);
    const std::string folder = "Scenes/Fire/";
    std::filesystem::rename(folder + "clip.ogv", folder + "A view of the hall.ogv");
    m_state.zoneEditVideo = sceneFolder("Fire") + "A view of the hall.ogv";
    show();
    addZone();
    drawTriangle();
    // In whole pixels of the video, as a save stores them.
    const std::vector<platform::Point> drawn{{100, 105}, {300, 105}, {200, 405}};
    m_areDraftsKept = false;
    const auto leave = [this] {
        m_driver->clickThen(u"ButtonClose", test::answering(test::Answer::yes));
        m_driver.reset();
        m_window.reset();
    };
    leave();
    show();
    EXPECT_FALSE(isVisible(u"PanelNotice")) << "drafts are off";
    addZone();
    drawTriangle();
    m_areDraftsKept = true;
    leave();

    show();
    EXPECT_EQ(zones().zoneCount(), 0);
    ASSERT_TRUE(isVisible(u"PanelNotice"));
    EXPECT_TRUE(m_driver->textOf(u"LabelNotice")
                    .starts_with(u"Unsaved work of \"A view of the hall.ogv\" from "));
    m_driver->click(u"ButtonRestoreDraft");
    EXPECT_EQ(points(0, 20), drawn);
    EXPECT_FALSE(isVisible(u"PanelNotice"));
    m_driver->press(platform::Key::z, {.control = true});
    EXPECT_EQ(zones().zoneCount(), 0);
    leave();
    const auto height = std::exchange(m_gui.host.screenHeight, 700);
    const std::string info = folder + "A view of the hall-ZoneInfo.xml";
    support::writeBytes(info, std::string("<"));
    show();
    EXPECT_TRUE(isVisible(u"ButtonRestoreDraft")) << "in front of what the caption cannot hold";
    m_driver->click(u"ButtonCloseNotice");
    EXPECT_TRUE(isVisible(u"PanelNotice"));
    leave();
    m_gui.host.screenHeight = height;
    std::filesystem::remove(info);
    show();
    m_driver->click(u"ButtonRestoreDraft");
    m_driver->click(u"ButtonSave");
    leave();
    show();
    EXPECT_FALSE(isVisible(u"PanelNotice")) << "it was saved";
    EXPECT_EQ(points(0, 20), drawn);
}

TEST_F(ZoneEditVisits, GoOnWhereTheLastOneEndedWhenAskedToAndSayWhatWasRenamed) {
    show(30, 3);
    m_driver->pick(u"ComboZone", 1);
    m_driver->enter(u"EditZone", u"Gate");
    m_driver->click(u"ButtonSave");
    m_driver->enter(u"EditZone", u"Not saved");
    EXPECT_TRUE(m_window->result().renamedZones.empty()) << "it was new";
    goTo(17);
    const auto reopen = [this](bool resumes) {
        m_driver->clickThen(u"ButtonClose", test::answering(test::Answer::yes));
        m_state.zoneEditResumes = resumes;
        show();
    };
    reopen(true);
    EXPECT_EQ(frameText(), u"17");
    EXPECT_TRUE(waitForFrame(17));
    EXPECT_EQ(m_driver->textOf(u"ComboZone"), u"Gate");
    m_driver->enter(u"EditZone", u"Door");
    m_driver->pick(u"ComboZone", 0);
    m_driver->enter(u"EditZone", u"Gate"); // what waited for the zone before finds this one
    m_driver->click(u"ButtonSave");
    const auto& renamed = m_window->result().renamedZones;
    ASSERT_EQ(renamed.size(), 1U);
    EXPECT_EQ(renamed[0].from + ">" + renamed[0].to, "Zone 1>Gate");
    reopen(false);
    EXPECT_EQ(frameText(), u"0");
    EXPECT_EQ(m_driver->textOf(u"ComboZone"), u"Zone 3");
}

TEST_F(ZoneEditVisits, BeginAtTheZoneAndTheFrameOfAFinding) {
    show(30, 3);
    m_driver->pick(u"ComboZone", 1);
    m_driver->click(u"OptionToggleActive"); // no more, on any frame
    goTo(17);
    m_driver->click(u"OptionToggleActive");
    ASSERT_FALSE(zones().isActive(1, 16));
    ASSERT_TRUE(zones().isActive(1, 17));
    goTo(3);
    m_driver->pick(u"ComboZone", 2);
    m_driver->click(u"ButtonSave");
    m_driver->clickThen(u"ButtonClose", test::answering(test::Answer::yes));

    scene().newScene("Fire");
    scene().AddBranch();
    scene().setBranchFilename(0, "clip.ogv");
    m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
    const auto branches = open<ui::BranchList>();
    const test::WindowDriver driver(*branches);
    driver.native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
    test::pump();
    const auto& findings = driver.get<toolkit::CListUI>(u"ListFindings");
    const std::u16string wanted = u"The zone \"Zone 2\" has fewer than 3 points on 13 frames";
    const auto row = [&] {
        int found = findings.GetCount();
        while (--found >= 0 &&
               findings.GetItemAt(found)->accessibleName().find(wanted) == std::u16string::npos) {
        }
        return found;
    };
    ASSERT_TRUE(test::pumpUntil([&] { return row() >= 0; }));
    driver.click(*findings.GetItemAt(row()));
    EXPECT_TRUE(isClosed(*branches) && m_state.zoneEditRequest);
    show();
    EXPECT_EQ(m_driver->textOf(u"ComboZone"), u"Zone 2");
    EXPECT_EQ(frameText(), u"17");
    EXPECT_TRUE(waitForFrame(17));
}

TEST_F(ZoneEditVisits, SayWhyUnsavedWorkCannotBeKeptUntilItCan) {
    support::FixedClock clock;
    const core::ServicesOverride fixed(
        {core::services().fileSystem, &clock, core::services().process});
    m_services.drafts = std::make_shared<recovery::Drafts>(m_gui.loop(), [] { return true; });
    support::writeBytes("Drafts", "a file in the place of the folder");
    show(30, 1);
    const auto tip = [this] { return m_driver->get(u"LabelState").GetToolTip(); };
    EXPECT_EQ(tip(), u"");
    const auto failures = [this] {
        const std::vector<std::string> lines = m_log.errors();
        return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.starts_with("Unable to keep unsaved work: ");
        });
    };
    for (int edit = 0; edit < 2; ++edit) {
        drawTriangle();
        clock.passed += recovery::Drafts::kRetryDelay.count();
        EXPECT_TRUE(test::pumpUntil([&] { return !tip().empty(); }));
        EXPECT_TRUE(tip().starts_with(u"Unsaved work cannot be kept as a draft: "));
        EXPECT_EQ(failures(), 1);
        m_driver->click(u"ButtonSave");
        EXPECT_TRUE(m_driver->textOf(u"LabelState").starts_with(u"Saved "));
        EXPECT_TRUE(test::pumpUntil([&] { return tip().empty(); })) << "nothing is unsaved";
    }
    std::filesystem::remove("Drafts");
    addZone();
    clock.passed += recovery::Drafts::kRetryDelay.count();
    EXPECT_TRUE(test::pumpUntil([] { return support::exists("Drafts"); }));
    EXPECT_EQ(tip(), u"");
    m_driver.reset();
    m_window.reset();
    m_services.drafts.reset(); // its thread asks the clock
}

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
    // The last visit's threads may still be ending.
    support::ProcessFigures after;
    EXPECT_TRUE(test::pumpUntil([&] {
        after = support::processFigures();
        return after.threads <= before.threads;
    })) << after.threads;
    EXPECT_LE(after.handles, before.handles);
    // A lost back buffer would be 9 KB for each visit.
    EXPECT_LT(after.heapBytes, before.heapBytes + support::kHeapTolerance)
        << before.heapBytes << " to " << after.heapBytes << " bytes";
    EXPECT_EQ(m_log.errors().size(), 1U) << "only the first visit found no zones";
}

} // namespace
