// The list of zones: adding, choosing, naming, removing, the active flag, saving and closing.
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/windows/Answering.h"
#include "zone/Zone.h"

namespace {

using platform::Point;
using support::readBytes;
using test::Answer;
using test::answering;
using test::isChecked;
using test::itemsOf;
using toolkit::CComboUI;
using Texts = std::vector<std::u16string>;

class ZoneEditZones : public test::ZoneEditTest {
protected:
    CComboUI& list() { return m_driver->get<CComboUI>(u"ComboZone"); }
    std::u16string name() { return m_driver->get(u"EditZone").GetText(); }
};

TEST_F(ZoneEditZones, AVideoWithoutZonesStartsEmpty) {
    makeClip(5);
    show();
    EXPECT_EQ(zones().zoneCount(), 0);
    EXPECT_EQ(list().GetCount(), 0);
    EXPECT_EQ(name(), u"");
    for (const auto* control : {u"ComboZone", u"EditZone", u"ButtonRemoveZone"}) {
        EXPECT_FALSE(m_driver->get(control).IsEnabled()) << core::storedText(control);
    }
    EXPECT_TRUE(m_driver->get(u"EmptyLine").IsVisible()) << "says what to do";
    EXPECT_TRUE(m_driver->get(u"ButtonSave").IsEnabled());
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionProgressChanges"));
    EXPECT_FALSE(isChecked(*m_driver, u"OptionToggleActive"));
    const auto errors = m_log.errors();
    m_driver->click(u"ButtonRemoveZone");
    clickPicture(50, 50);
    m_driver->click(u"OptionToggleActive");
    EXPECT_FALSE(isChecked(*m_driver, u"OptionToggleActive"));
    EXPECT_EQ(m_log.errors(), errors);
    m_driver->click(u"ButtonAddZone");
    EXPECT_FALSE(m_driver->get(u"EmptyLine").IsVisible());
}

TEST_F(ZoneEditZones, NewZonesAreNumberedAndNeverReuseANumber) {
    makeClip(5);
    show();
    addZone();
    addZone();
    addZone();
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Zone 2", u"Zone 3"}));
    EXPECT_EQ(list().GetCurSel(), 2);
    EXPECT_EQ(zones().currentZone, 2);
    EXPECT_EQ(name(), u"Zone 3");
    EXPECT_EQ(zones().zone(2)->frameCount(), 5);
    m_driver->pick(u"ComboZone", 1);
    std::string asked;
    m_driver->clickThen(u"ButtonRemoveZone", answering(Answer::yes, &asked));
    EXPECT_EQ(asked, "Remove Zone?|Are you sure you want to remove the zone?");
    addZone();
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Zone 3", u"Zone 4"}));
    // Another window begins to count anew.
    show();
    addZone();
    EXPECT_EQ(itemsOf(list()), Texts{u"Zone 1"});
}

TEST_F(ZoneEditZones, ChoosingAZoneShowsItsNameAndFlag) {
    makeClip(5);
    show();
    addZone();
    addZone();
    m_driver->click(u"OptionToggleActive");
    EXPECT_FALSE(isChecked(*m_driver, u"OptionToggleActive"));
    m_driver->pick(u"ComboZone", 0);
    EXPECT_EQ(zones().currentZone, 0);
    EXPECT_EQ(name(), u"Zone 1");
    EXPECT_TRUE(isChecked(*m_driver, u"OptionToggleActive"));
    m_driver->pick(u"ComboZone", 1);
    EXPECT_FALSE(isChecked(*m_driver, u"OptionToggleActive"));
}

TEST_F(ZoneEditZones, ANameIsTakenWhenTheEditIsLeft) {
    makeClip(5);
    show();
    addZone();
    addZone();
    const std::u16string typed[] = {u"Door", u"Zone 1", u"", u"50 % \"%s\" & ä\U0001F525"};
    for (const std::u16string& text : typed) {
        test::typeInto(*m_driver, u"EditZone", text);
        m_driver->press(platform::Key::tab);
        EXPECT_EQ(zones().getZoneName(1), core::storedText(text));
        EXPECT_EQ(list().GetCurSel(), 1);
        EXPECT_EQ(list().GetText(), text);
        EXPECT_EQ(name(), text);
    }
    EXPECT_EQ(zones().getZoneName(0), "Zone 1");
    // Before a click elsewhere acts.
    test::typeInto(*m_driver, u"EditZone", u"Last");
    m_driver->click(u"ButtonSave");
    EXPECT_NE(readBytes("Scenes/Fire/clip-ZoneInfo.xml").find("<Name>Last</Name>"),
              std::string::npos);
}

TEST_F(ZoneEditZones, ANameThatNobodyTouchedStaysByteForByte) {
    makeClip(3);
    show();
    addZone();
    zones().setZoneName(0, "b\xFF"
                           "d\tname");
    m_driver->click(u"ButtonSave");
    const std::string before = readBytes("Scenes/Fire/clip-ZoneInfo.bin");
    show();
    m_driver->click(u"EditZone");
    m_driver->press(platform::Key::tab);
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Fire/clip-ZoneInfo.bin"), before);
}

TEST_F(ZoneEditZones, RemovalAsksAndADismissalKeepsTheZone) {
    makeClip(5);
    show();
    addZone();
    addZone();
    for (const Answer answer : {Answer::no, Answer::escape, Answer::close}) {
        m_driver->clickThen(u"ButtonRemoveZone", answering(answer));
        EXPECT_EQ(zones().zoneCount(), 2);
    }
    m_driver->clickThen(u"ButtonRemoveZone", answering(Answer::yes));
    EXPECT_EQ(itemsOf(list()), Texts{u"Zone 1"});
    EXPECT_EQ(zones().currentZone, 0);
    EXPECT_EQ(name(), u"Zone 1");
    m_driver->clickThen(u"ButtonRemoveZone", answering(Answer::yes));
    EXPECT_EQ(zones().zoneCount(), 0);
    EXPECT_EQ(zones().currentZone, -1);
    EXPECT_EQ(name(), u"");
    EXPECT_FALSE(m_driver->get(u"EditZone").IsEnabled());
}

bool activeOn(zone::ZoneManager& zones, int from, int to, bool active) {
    for (int frame = from; frame <= to; ++frame) {
        if (zones.isActive(0, frame) != active) {
            return false;
        }
    }
    return true;
}

TEST_F(ZoneEditZones, TheActiveFlagSpreadsWhenChangesAreCarriedForward) {
    makeClip(20);
    show();
    addZone();
    m_driver->enter(u"EditCurrentFrame", u"7");
    m_driver->click(u"OptionToggleActive");
    EXPECT_TRUE(activeOn(zones(), 0, 6, true));
    EXPECT_TRUE(activeOn(zones(), 7, 19, false));
    m_driver->click(u"OptionProgressChanges");
    EXPECT_FALSE(zones().progressChanges);
    m_driver->enter(u"EditCurrentFrame", u"10");
    EXPECT_FALSE(isChecked(*m_driver, u"OptionToggleActive"));
    m_driver->click(u"OptionToggleActive");
    EXPECT_TRUE(activeOn(zones(), 10, 10, true));
    EXPECT_TRUE(activeOn(zones(), 11, 19, false));
}

TEST_F(ZoneEditZones, SteppingChangesNoFlag) {
    makeClip(30);
    show();
    addZone();
    m_driver->click(u"OptionProgressChanges");
    for (const int frame : {3, 9, 20}) {
        m_driver->enter(u"EditCurrentFrame", core::displayText(std::to_string(frame)));
        m_driver->click(u"OptionToggleActive");
    }
    m_driver->click(u"OptionProgressChanges");
    m_driver->enter(u"EditCurrentFrame", u"0");
    for (int frame = 0; frame < 30; ++frame) {
        const bool active = frame != 3 && frame != 9 && frame != 20;
        EXPECT_EQ(isChecked(*m_driver, u"OptionToggleActive"), active) << frame;
        m_driver->press(platform::Key::right);
    }
    for (int frame = 0; frame < 30; ++frame) {
        EXPECT_EQ(zones().isActive(0, frame), frame != 3 && frame != 9 && frame != 20) << frame;
    }
}

/// A binary record's little-endian word.
std::string word(std::uint32_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) {
        bytes += static_cast<char>(value >> static_cast<unsigned>(8 * i));
    }
    return bytes;
}

TEST_F(ZoneEditZones, SavesBothFilesByteForByte) {
    // The clip is 64 x 48, the picture 1280 x 720: 20 and 15 display pixels for one of the video.
    makeClip(2);
    show();
    addZone();
    drawTriangle();
    test::typeInto(*m_driver, u"EditZone", u"A&B");
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Fire/clip-ZoneInfo.xml"), "<ZoneInfo>\r\n"
                                                          "\t<VideoWidth>1280</VideoWidth>\r\n"
                                                          "\t<VideoHeight>720</VideoHeight>\r\n"
                                                          "\t<Zone>\r\n"
                                                          "\t\t<Name>A&B</Name>\r\n"
                                                          "\t</Zone>\r\n"
                                                          "</ZoneInfo>\r\n");
    const std::string shape =
        word(8 + 8 * 3) + word(1) + word(5) + word(7) + word(15) + word(7) + word(10) + word(27);
    EXPECT_EQ(readBytes("Scenes/Fire/clip-ZoneInfo.bin"), "ENOZ" + word(4 + 4 + 4 + 2 * 32) +
                                                              word(4) + std::string("A&B\0", 4) +
                                                              word(2) + shape + shape);
}

TEST_F(ZoneEditZones, AnotherWindowFindsTheSavedZonesAgain) {
    makeClip(3);
    show();
    addZone();
    drawTriangle();
    addZone();
    m_driver->click(u"ButtonSave");
    const auto before = m_log.errors();
    show();
    EXPECT_EQ(itemsOf(list()), (Texts{u"Zone 1", u"Zone 2"}));
    EXPECT_EQ(list().GetCurSel(), 1) << "the last zone of the file";
    EXPECT_EQ(name(), u"Zone 2");
    EXPECT_EQ(points(0, 2), (std::vector<Point>{{100, 105}, {300, 105}, {200, 405}}))
        << "to a pixel of the video";
    EXPECT_EQ(m_log.errors(), before);
}

TEST_F(ZoneEditZones, AFailedSaveIsShownUntilTheNextGoodOne) {
    makeClip(3);
    support::makeFolder("Scenes/Fire/clip-ZoneInfo.xml");
    show();
    addZone();
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(m_driver->get(u"LabelVideo").GetText(), u"clip.ogv");
    EXPECT_FALSE(m_driver->get(u"LabelNote").IsVisible());
    EXPECT_TRUE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_EQ(m_driver->get(u"LabelProblem").GetText().substr(0, 30),
              u"Not saved: clip-ZoneInfo.xml: ");
    EXPECT_EQ(m_log.errors().back(), "Unable to save zone info file");
    std::filesystem::remove("Scenes/Fire/clip-ZoneInfo.xml");
    m_driver->click(u"ButtonSave");
    EXPECT_FALSE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_TRUE(m_driver->get(u"LabelNote").IsVisible());
    EXPECT_EQ(m_driver->get(u"LabelNote").GetText().substr(0, 9), u"Saved at ");
    std::filesystem::remove("Scenes/Fire/clip-ZoneInfo.bin");
    support::makeFolder("Scenes/Fire/clip-ZoneInfo.bin");
    m_driver->click(u"ButtonSave");
    EXPECT_FALSE(m_driver->get(u"LabelNote").IsVisible());
    EXPECT_EQ(m_driver->get(u"LabelProblem").GetText().substr(0, 30),
              u"Not saved: clip-ZoneInfo.bin: ");
}

TEST_F(ZoneEditZones, ANameThatHidesTheZonesFromScenesIsHintedAt) {
    makeClip(3);
    show();
    addZone();
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"a & b", u""},
        {u"a<b", u"A name with \"<\" hides all zones of this video from the branch editor."},
        {u"a", u""},
    };
    for (const auto& [typed, hint] : cases) {
        m_driver->enter(u"EditZone", typed);
        EXPECT_EQ(m_driver->get(u"LabelNote").GetText(), hint);
    }
}

struct Closing {
    Answer answer;
    bool closes;
};

TEST_F(ZoneEditZones, CloseAsksAndADismissalMeansYes) {
    makeClip(3);
    for (const Closing& test : {Closing{Answer::no, false}, Closing{Answer::escape, false},
                                Closing{Answer::close, true}, Closing{Answer::yes, true}}) {
        show();
        std::string asked;
        m_driver->clickThen(u"ButtonClose", answering(test.answer, &asked));
        EXPECT_EQ(asked, "Close?|Are you sure you want to close Zone Edit?");
        EXPECT_EQ(isClosed(*m_window), test.closes);
        EXPECT_FALSE(m_state.quit);
    }
}

TEST_F(ZoneEditZones, TheCloseBoxAsksNothing) {
    makeClip(3);
    show();
    test::input().requestClose(m_driver->native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(ZoneEditZones, AVideoOfAnotherLengthBringsItsZonesToItsLength) {
    makeClip(4);
    show();
    addZone();
    drawTriangle();
    m_driver->click(u"ButtonSave");
    makeClip(9);
    show();
    EXPECT_EQ(zones().zone(0)->frameCount(), 9);
    EXPECT_EQ(points(0, 8), points(0, 3));
    EXPECT_EQ(points(0, 8).size(), 3U);
}

} // namespace
