// The list of zones: adding, choosing, naming, removing, the active flag, saving and closing.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ZoneEdit/ZoneTexts.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "recovery/Backups.h"
#include "recovery/Versions.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/windows/Answering.h"
#include "zone/Zone.h"

namespace {

using test::Answer;
using test::answering;
using test::isChecked;
using test::itemsOf;
using Texts = std::vector<std::u16string>;

class ZoneEditZones : public test::ZoneEditTest {
protected:
    toolkit::CComboUI& list() { return m_driver->get<toolkit::CComboUI>(u"ComboZone"); }
    std::u16string name() { return m_driver->textOf(u"EditZone"); }
    bool isActive() { return isChecked(*m_driver, u"OptionToggleActive"); }
};

TEST_F(ZoneEditZones, AVideoWithoutZonesStartsEmptyOnItsFirstFrame) {
    show(5);
    EXPECT_EQ(frameText(), u"0");
    EXPECT_EQ(m_driver->textOf(u"EditTotalFrames"), u"4");
    EXPECT_EQ(m_driver->textOf(u"LabelVideo"), u"clip.ogv");
    EXPECT_EQ(m_driver->get(u"Video").accessibleName(), u"Picture");
    EXPECT_EQ(m_driver->get(u"ButtonCloseNotice").accessibleName(), u"Close this message")
        << "another button closes the window";
    EXPECT_EQ(itemsOf(list()), Texts{});
    for (const auto* control : {u"ComboZone", u"EditZone", u"ButtonRemoveZone"}) {
        EXPECT_FALSE(m_driver->get(control).IsEnabled()) << core::storedText(control);
    }
    EXPECT_TRUE(isVisible(u"EmptyLine")) << "says what to do";
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionProgressChanges"));
    m_driver->click(u"OptionAddPoint");
    clickPicture(50, 50);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionAddPoint")) << "there was no zone to add to";
    m_driver->click(u"OptionToggleActive");
    EXPECT_FALSE(isActive());
    EXPECT_EQ(m_log.errors(), test::kNoZones);
    addZone();
    EXPECT_FALSE(isVisible(u"EmptyLine"));
}

TEST_F(ZoneEditZones, NewZonesAreNumberedAndChoosingOneShowsIt) {
    show(5, 3);
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Zone 2", u"Zone 3"}));
    EXPECT_EQ(editing().currentZone, 2);
    EXPECT_EQ(zones().zone(2)->frameCount(), 5);
    m_driver->click(u"OptionToggleActive");
    for (const int zone : {0, 2, 1}) {
        m_driver->pick(u"ComboZone", zone);
        EXPECT_EQ(editing().currentZone, zone);
        EXPECT_EQ(name(), list().GetItemText(zone));
        EXPECT_EQ(isActive(), zone != 2);
    }
    for (const Answer answer : {Answer::no, Answer::escape, Answer::close, Answer::yes}) {
        EXPECT_EQ(zones().zoneCount(), 3);
        std::string asked;
        m_driver->clickThen(u"ButtonRemoveZone", answering(answer, &asked));
        EXPECT_EQ(asked, "Remove Zone?|Are you sure you want to remove the zone?");
    }
    EXPECT_EQ(name(), u"Zone 3") << "what follows takes its place";
    addZone();
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Zone 3", u"Zone 4"})) << "no number again";
    for (int left = 2; left >= 0; --left) {
        m_driver->clickThen(u"ButtonRemoveZone", answering(Answer::yes));
        EXPECT_EQ(editing().currentZone, left - 1);
    }
    EXPECT_EQ(name(), u"");
    EXPECT_FALSE(m_driver->get(u"EditZone").IsEnabled());
    show();
    addZone();
    EXPECT_EQ(name(), u"Zone 1") << "another window begins to count anew";
}

TEST_F(ZoneEditZones, ANameIsTakenWhenTheEditIsLeft) {
    show(5, 2);
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"Zone 1",
         u"2 zones are named \"Zone 1\": actions tell zones apart by their names alone."},
        {u"", u"A zone without a name cannot be chosen for an action."},
        {u"50 % \"%s\" & ä\U0001F525", u""},
        {u"a<b", u"A name with \"<\" hides all zones of this video from the branch editor."},
        {u"Door", u""},
    };
    for (const auto& [typed, hint] : cases) {
        m_driver->retype(u"EditZone", typed);
        m_driver->press(platform::Key::tab);
        EXPECT_EQ(zones().getZoneName(1), core::storedText(typed));
        EXPECT_EQ(list().GetCurSel(), 1);
        EXPECT_EQ(list().GetText(), typed);
        EXPECT_EQ(name(), typed);
        EXPECT_EQ(m_driver->textOf(u"LabelNote"), hint);
    }
    EXPECT_EQ(zones().getZoneName(0), "Zone 1");
    m_driver->retype(u"EditZone", u"Do");
    m_driver->press(platform::Key::escape);
    EXPECT_EQ(name(), u"Door") << "what stood there before";
    // Before a click elsewhere acts.
    m_driver->retype(u"EditZone", u"Last");
    m_driver->click(u"ButtonSave");
    show(9); // the zones of a shorter video go on to its end
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Last"}));
    EXPECT_EQ(name(), u"Last") << "the last zone of the file is chosen";
    EXPECT_EQ(zones().zone(0)->frameCount(), 9);
    // What an edit cannot show stays as it is while nobody types.
    const std::string odd = "b\xFF\td";
    const std::string base = core::withoutExtension(m_state.zoneEditVideo);
    const auto stored = zone::ZoneManager::createForEditing(base, 9, zones().scale);
    stored->setZoneName(1, odd);
    ASSERT_TRUE(stored->saveAs(base));
    show();
    m_driver->pick(u"ComboZone", 1);
    m_driver->click(u"EditZone");
    m_driver->press(platform::Key::tab);
    EXPECT_EQ(zones().getZoneName(1), odd);
    m_driver->click(u"CheckPanel");
    test::pump();
    m_driver->doubleClick(
        test::WindowDriver::middleOf(test::inRow(*m_driver, u"ListZones", 1, u"LabelRowName")));
    EXPECT_EQ(m_driver->focusName(), u"EditRowName");
    m_driver->press(platform::Key::enter);
    EXPECT_EQ(zones().getZoneName(1), odd);
}

TEST_F(ZoneEditZones, TheActiveFlagIsCarriedForwardByItsOptionAndNotBySteps) {
    show(20, 1);
    std::vector<bool> active(20, true);
    goTo(7);
    m_driver->click(u"OptionToggleActive");
    std::fill(active.begin() + 7, active.end(), false);
    m_driver->click(u"OptionProgressChanges");
    EXPECT_FALSE(editing().progressChanges);
    for (const int frame : {3, 10, 15}) {
        goTo(frame);
        m_driver->click(u"OptionToggleActive");
        active[static_cast<std::size_t>(frame)] = frame != 3;
    }
    m_driver->click(u"OptionProgressChanges");
    goTo(0);
    for (int frame = 0; frame < 20; ++frame) {
        EXPECT_EQ(isActive(), active[static_cast<std::size_t>(frame)]) << frame;
        m_driver->press(platform::Key::right);
    }
    for (int frame = 0; frame < 20; ++frame) {
        EXPECT_EQ(zones().isActive(0, frame), active[static_cast<std::size_t>(frame)]) << frame;
    }
}

TEST_F(ZoneEditZones, AFailedSaveIsShownUntilTheNextGoodOne) {
    show(3, 1);
    widen();
    for (const std::string file : {"clip-ZoneInfo.xml", "clip-ZoneInfo.bin"}) {
        const std::string path = "Scenes/Fire/" + file;
        std::filesystem::remove(path);
        support::makeFolder(path);
        m_driver->click(u"ButtonSave");
        EXPECT_FALSE(isVisible(u"LabelNote"));
        EXPECT_TRUE(isVisible(u"LabelProblem"));
        EXPECT_EQ(core::storedText(m_driver->textOf(u"LabelProblem")).substr(0, 30),
                  "Not saved: " + file + ": ");
        m_driver->enter(u"EditCurrentFrame", u"x");
        EXPECT_EQ(core::storedText(m_driver->textOf(u"LabelProblem")).substr(0, 50),
                  "Not a frame number. Not saved: " + file + ": ");
        std::filesystem::remove(path);
        m_driver->press(platform::Key::s, {.control = true});
        EXPECT_FALSE(isVisible(u"LabelProblem"));
        EXPECT_TRUE(isVisible(u"LabelNote"));
        EXPECT_EQ(m_driver->textOf(u"LabelNote").substr(0, 9), u"Saved at ");
    }
    EXPECT_EQ(m_log.errors()[1], "Unable to save zone info file");
}

TEST_F(ZoneEditZones, SavedIsSaidUntilTheNextChange) {
    show(5, 2);
    drawTriangle();
    const auto note = [this] { return m_driver->textOf(u"LabelNote").substr(0, 8); };
    const std::function<void()> changes[] = {
        [this] { addZone(); },
        [this] { m_driver->enter(u"EditZone", u"Door"); },
        [this] { m_driver->click(u"OptionToggleActive"); },
        [this] {
            m_driver->drag({at(100, 100), at(110, 120)});
        },
        [this] {
            m_driver->click(u"OptionAddPoint");
            clickPicture(500, 500);
        },
        [this] {
            m_driver->click(u"OptionDeletePoint");
            clickPicture(500, 500);
        },
        [this] { m_driver->clickThen(u"ButtonRemoveZone", answering(Answer::yes)); },
    };
    for (const auto& change : changes) {
        m_driver->click(u"ButtonSave");
        m_driver->pick(u"ComboZone", 0);
        m_driver->pick(u"ComboZone", 1);
        m_driver->press(platform::Key::right);
        m_driver->click(u"OptionMovePoint");
        clickPicture(100, 100);
        m_driver->click(u"OptionDeletePoint");
        clickPicture(1000, 600);
        m_driver->click(u"OptionMovePoint");
        EXPECT_EQ(note(), u"Saved at") << "nothing has changed";
        change();
        EXPECT_EQ(note(), u"") << &change - changes;
    }
}

TEST_F(ZoneEditZones, FilesThatCannotBeReadWholeAreSaidAndKept) {
    scene().SetName("Fire");
    show(5, 2);
    m_driver->click(u"ButtonSave");
    const std::string base = "Scenes/Fire/clip-ZoneInfo";
    const std::string whole = support::readBytes(base + ".bin");
    const std::pair<std::size_t, std::u16string> cases[] = {
        {0, u"0 of 2 zones read: clip-ZoneInfo.bin is damaged."},
        {whole.size() - 20, u"1 of 2 zones read: clip-ZoneInfo.bin is damaged. "
                            u"Another: 2 of 5 frames."},
        {std::string::npos, u"0 of 2 zones read: clip-ZoneInfo.bin is missing."},
        {1, u"0 of 2 zones read: clip-ZoneInfo.bin is damaged."},
    };
    for (const auto& [size, problem] : cases) {
        const std::string list = support::readBytes(base + ".xml");
        support::writeBytes(base + ".bin", whole.substr(0, size));
        if (size > whole.size()) {
            std::filesystem::remove(base + ".bin");
        }
        show();
        widen();
        EXPECT_TRUE(isVisible(u"LabelProblem") && !isVisible(u"LabelNote"));
        EXPECT_EQ(m_driver->textOf(u"LabelProblem"), problem);
        m_driver->click(u"ButtonSave");
        EXPECT_TRUE(isVisible(u"LabelNote") && !isVisible(u"LabelProblem"));
        EXPECT_TRUE(m_driver->textOf(u"LabelNote").find(core::tr(zoneedit::kDamagedKept)) !=
                    std::u16string::npos);
        const recovery::Version version =
            recovery::listVersions(platform::nativeFileSystem(), platform::nativeClock(),
                                   recovery::zoneVersionsFolder("Fire", "clip"))
                .versions.front();
        EXPECT_TRUE(version.isDamaged);
        EXPECT_EQ(support::readBytes(version.base + "-ZoneInfo.xml"), list);
        EXPECT_EQ(version.endings.size(), size > whole.size() ? 1U : 2U);
        support::writeBytes(base + ".xml", list);
    }
}

TEST_F(ZoneEditZones, CloseAsksAndADismissalMeansYes) {
    makeClip(3);
    for (const Answer answer : {Answer::no, Answer::escape, Answer::close, Answer::yes}) {
        show();
        std::string asked;
        m_driver->clickThen(u"ButtonClose", [&] {
            platform::Event close;
            close.kind = platform::EventKind::closeRequest;
            m_window->HandleMessage(close);
            EXPECT_FALSE(isClosed(*m_window)) << "the question has to end first";
            answering(answer, &asked)();
        });
        EXPECT_EQ(asked, "Close?|Are you sure you want to close Zone Edit?");
        EXPECT_EQ(isClosed(*m_window), answer == Answer::close || answer == Answer::yes);
        EXPECT_FALSE(m_state.quit);
    }
    show();
    test::input().requestClose(m_driver->native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window)) << "the close box asks nothing";
}

} // namespace
