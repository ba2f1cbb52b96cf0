// The tour of the branch editor.
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "platform/Accessible.h"
#include "platform/Geometry.h"
#include "recovery/Places.h"
#include "recovery/RecentScenes.h"
#include "scene/Action.h"
#include "tests/support/TempFolder.h"
#include "tests/ui/BranchListFixture.h"
#include "ui/tour/TourPlaces.h"

namespace {

using platform::Key;
using platform::Rect;
using scene::Action;

class Tour : public test::BranchEditorTest {
protected:
    /// The scene of that name, with an action of each type.
    void makeDemo(const std::string& name = "Fire Drill Level 1") {
        support::writeBytes("Scenes/" + name + "/Scene.xml", "");
        makeScene({"Alarm sounds", "Take extinguisher"}, {"a.ogv", "b.ogv"});
        scene().SetName(name);
        addAction(Action::kZoneAction, "Extinguisher", "Take extinguisher");
        addAction(Action::kKeypressAction, "L", "Take extinguisher");
        addAction(Action::kRandomAction, {}, "Take extinguisher");
        addAction(Action::kDefaultAction, {}, "Take extinguisher");
    }
    void resize(int width, int height) {
        m_driver->native().setGeometry(Rect::at(0, 0, width, height));
        test::pump();
    }
    [[nodiscard]] bool isShown() { return isVisible(u"PanelTour"); }
    [[nodiscard]] Rect placeOf(std::u16string_view name) { return m_driver->get(name).GetPos(); }
    void expectRingRound(std::u16string_view subject) {
        const Rect area = placeOf(subject);
        EXPECT_EQ(placeOf(u"RingTour"),
                  (Rect{area.left - 2, area.top - 2, area.right + 2, area.bottom + 2}));
    }
    /// The panel is whole on the screen, and its title is this.
    void expectStep(const std::u16string& title, const std::u16string& step) {
        const platform::Size window = m_driver->manager().GetWindowSize();
        EXPECT_EQ(placeOf(u"PanelTour").intersected({0, 36, window.width, window.height}).size(),
                  (platform::Size{360, 164}));
        const toolkit::CControlUI& panel = m_driver->get(u"PanelTour");
        EXPECT_EQ(panel.accessibleName(), title);
        EXPECT_EQ(panel.accessibleRole(), platform::AccessibleRole::dialog);
        EXPECT_EQ(m_driver->textOf(u"LabelTourTitle"), title);
        EXPECT_EQ(m_driver->textOf(u"LabelTourStep"), step);
    }
};

TEST_F(Tour, BeginsOnceWhenADemoSceneIsTheFirstThatIsOpened) {
    makeDemo("Mine");
    show();
    EXPECT_FALSE(isShown()) << "no demo";
    makeDemo();
    show();
    EXPECT_FALSE(isShown()) << "the author has a scene";
    support::writeBytes("Scenes/Mine/Replaced", "");
    recovery::noteOpenedScene("Mine");
    show();
    EXPECT_FALSE(isShown()) << "the author has opened one";
    std::filesystem::remove(recovery::recentScenesPath());
    const auto settings = std::exchange(m_services.editorSettings, nullptr);
    show();
    EXPECT_FALSE(isShown()) << "it would come again";
    m_services.editorSettings = settings;
    recovery::noteOpenedScene("Fire Drill Level 1");
    show();
    EXPECT_TRUE(isShown());
    EXPECT_EQ(m_driver->focusName(), u"") << "the window works on";
    m_driver->press(Key::escape);
    EXPECT_FALSE(isShown());
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    show();
    EXPECT_FALSE(isShown()) << "once";
}

TEST_F(Tour, StandsBesideWhatEachStepIsAboutInWindowsOfEverySize) {
    makeDemo();
    m_state.tourStep = 0;
    show();
    for (const auto& [width, height] : {std::pair{884, 672}, {1600, 900}}) {
        SCOPED_TRACE(width);
        const bool isWide = width > 1240;
        resize(width, height);
        expectStep(u"A scene is made of branches", u"1 of 5");
        expectRingRound(u"ComboBranchName");
        EXPECT_FALSE(m_driver->get(u"ButtonTourBack").IsEnabled());
        m_driver->click(u"ButtonTourNext");
        expectStep(u"Actions say what comes next", u"2 of 5");
        if (isWide) {
            EXPECT_EQ(placeOf(u"RingTour"), Rect::at(730, 298, 856, 137));
            EXPECT_EQ(placeOf(u"PanelTour"), Rect::at(978, 449, 360, 164));
        }
        m_driver->click(u"ButtonTourNext");
        expectStep(u"Zones are what a learner clicks", u"3 of 5");
        expectRingRound(u"ButtonEditBranchZones");
        if (isWide) {
            m_driver->click(u"OptionPreview"); // in place of the map
        }
        m_driver->click(u"ButtonTourNext");
        expectStep(u"The map shows the whole scene", u"4 of 5");
        expectRingRound(u"SceneMap");
        m_driver->click(u"ButtonTourNext");
        EXPECT_EQ(isVisible(u"SceneMap"), isWide) << "the column is back";
        expectStep(u"Try it at any time", u"5 of 5");
        expectRingRound(u"ButtonPlay");
        EXPECT_EQ(m_driver->textOf(u"ButtonTourNext"), u"Done");
        m_driver->click(u"ButtonTourBack");
        m_driver->click(u"CheckMap");
        expectRingRound(u"CheckMap");
        m_driver->click(u"CheckMap");
        m_driver->click(u"ButtonTourNext");
        m_driver->click(u"ButtonTourNext");
        EXPECT_FALSE(isShown() || isVisible(u"RingTour") || isVisible(u"PointerTour"));
        m_driver->click(u"ButtonMenu");
        m_driver->press(Key::end);
        m_driver->press(Key::enter);
    }
}

TEST_F(Tour, GoesByKeysAloneWhileTheWindowWorksOn) {
    makeDemo();
    m_state.tourStep = 0;
    show();
    m_driver->press(Key::f6, {.shift = true});
    EXPECT_EQ(m_driver->focusName(), u"ButtonTourLeave");
    m_driver->press(Key::tab);
    m_driver->press(Key::enter);
    EXPECT_EQ(m_driver->focusName(), u"ButtonTourNext");
    m_driver->press(Key::tab, {.shift = true});
    m_driver->press(Key::enter);
    EXPECT_EQ(m_driver->focusName(), u"ButtonTourNext") << "there is no way back";
    m_driver->press(Key::enter);
    const auto text = [this] { return m_driver->textOf(u"LabelTour"); };
    for (const auto& start : {u"The first one waits for a click into the zone \"Extinguisher\"",
                              u"The first one waits for the key L",
                              u"The first one leads to \"Take", u"The first one leads to \"Take"}) {
        EXPECT_TRUE(text().starts_with(start)) << core::storedText(text());
        const Rect ring = placeOf(u"RingTour");
        session().removeAction(0, 0);
        m_driver->press(Key::f6);
        EXPECT_LT(placeOf(u"RingTour").height(), ring.height());
    }
    EXPECT_TRUE(text().starts_with(u"An action leads to another branch"));
    expectRingRound(u"ButtonAddAction");
    m_driver->click(u"ButtonAddAction");
    EXPECT_EQ(actions().GetCount(), 1);

    // Back from the zone editor.
    show();
    expectStep(u"Actions say what comes next", u"2 of 5");
    m_driver->press(Key::f6, {.shift = true});
    m_driver->press(Key::escape);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(m_driver->focusName(), u"ComboBranchName") << "where it was, nothing is any more";
    show();
    EXPECT_FALSE(isShown());
}

TEST_F(Tour, HasRoomForItsTextsInEveryLanguage) {
    makeDemo();
    for (const std::string language : {"English", "French", "German", "Spanish", "Dutch"}) {
        SCOPED_TRACE(language);
        m_services.translations = core::Translations::create("Translations.ini", language);
        core::setTexts(m_services.translations);
        m_state.tourStep = 0;
        show();
        const auto expectRoom = [this] {
            for (const auto* name : {u"LabelTourTitle", u"LabelTour", u"LabelTourStep"}) {
                const toolkit::CControlUI& control = m_driver->get(name);
                EXPECT_EQ(control.toolTipAt(control.GetPos().topLeft()), u"");
            }
            EXPECT_EQ(placeOf(u"ButtonTourNext").right, placeOf(u"PanelTour").right - 16);
        };
        for (int step = 0; step < 5; ++step) {
            expectRoom();
            for (int type = 0; step == 1 && type < 4; ++type) {
                session().moveAction(0, 3, 0);
                expectRoom();
            }
            m_driver->click(u"ButtonTourNext");
        }
    }
    core::setTexts(nullptr);
}

TEST(TourPlaces, KeepThePanelInTheRoomAndThePointerOnItsEdge) {
    using Side = ui::TourPlaces::Side;
    constexpr Rect kRoom{8, 44, 876, 664};
    for (const auto& [subject, side, panel, pointer] :
         std::initializer_list<std::tuple<Rect, Side, Rect, Rect>>{
             {Rect::at(10, 50, 20, 20), Side::top, Rect::at(8, 86, 360, 164),
              Rect::at(16, 77, 32, 10)},
             {Rect::at(840, 600, 30, 20), Side::bottom, Rect::at(516, 420, 360, 164),
              Rect::at(836, 583, 32, 10)},
             {Rect::at(10, 50, 100, 600), Side::left, Rect::at(126, 268, 360, 164),
              Rect::at(117, 334, 10, 32)},
             {Rect::at(760, 50, 100, 600), Side::right, Rect::at(384, 268, 360, 164),
              Rect::at(743, 334, 10, 32)},
             {Rect::at(16, 50, 852, 600), Side::none, Rect::at(262, 472, 360, 164), Rect{}},
             {Rect{}, Side::none, Rect::at(262, 484, 360, 164), Rect{}}}) {
        const ui::TourPlaces places = ui::placeTour(subject, kRoom, {360, 164});
        EXPECT_EQ(places.side, side);
        EXPECT_EQ(places.panel, panel);
        EXPECT_EQ(places.pointer, pointer);
        EXPECT_EQ(places.ring.isEmpty(), subject.isEmpty());
    }
}

} // namespace
