// The window of earlier versions, on versions that real saves have kept.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/File.h"
#include "core/Text.h"
#include "recovery/Backups.h"
#include "tests/support/TaskLoop.h"
#include "tests/ui/BranchListFixture.h"
#include "ui/EarlierVersions.h"
#include "ui/VersionHistory.h"
#include "ui/VersionReader.h"
#include "ui/map/SceneMap.h"

namespace {

using platform::Key;
using test::Texts;

class EarlierVersionsTest : public test::EditorTest {
protected:
    EarlierVersionsTest() {
        m_keeper = std::make_shared<recovery::Backups>(
            [] { return recovery::sceneVersionsFolder("Fire"); }, [] { return true; });
        scene().setKeeper(m_keeper);
        session().newScene("Fire");
        session().addBranch();
        session().renameBranch(0, "Alarm");
    }
    void save(std::int64_t seconds) {
        m_clock.time += seconds;
        EXPECT_TRUE(session().save("Scenes/Fire/"));
        m_keeper->settle();
        // As old as the clock says.
        const auto age = std::chrono::seconds(platform::nativeClock().now() - m_clock.time);
        std::filesystem::last_write_time("Scenes/Fire/Scene.xml",
                                         std::filesystem::file_time_type::clock::now() - age);
    }
    /// Opens the window and waits until it has read everything.
    void open() {
        forgetQuit();
        m_driver.reset();
        m_window = std::make_shared<ui::EarlierVersions>(
            context(), ui::sceneHistory(session(), {"Default", "Keypress", "Zone", "Random"}));
        ASSERT_TRUE(m_window->Create(nullptr, u"Test", ui::kScreenStyle, ui::kScreenExtendedStyle));
        m_window->ShowWindow(true);
        m_driver = std::make_unique<test::WindowDriver>(*m_window);
    }
    toolkit::CListUI& list(std::u16string_view name) {
        return m_driver->get<toolkit::CListUI>(name);
    }
    bool hasRows(std::u16string_view name, int count) {
        return test::pumpUntil([&] { return list(name).GetCount() == count; });
    }
    Texts rows(std::u16string_view name) {
        Texts texts;
        for (int i = 0; i < list(name).GetCount(); ++i) {
            texts.push_back(list(name).GetItemAt(i)->accessibleName());
        }
        return texts;
    }
    ui::SceneMap& map() { return m_driver->get<ui::SceneMap>(u"VersionMap"); }
    Texts nodes() {
        Texts texts;
        for (int i = 0; i < map().accessibleChildCount(); ++i) {
            texts.push_back(map().accessibleChild(i)->accessibleName());
        }
        return texts;
    }
    void clickRow(int row) { m_driver->click(*list(u"ListVersions").GetItemAt(row)); }
    bool canRestore() { return m_driver->get(u"ButtonRestoreVersion").IsEnabled(); }

    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
    std::shared_ptr<recovery::Backups> m_keeper;
    std::shared_ptr<ui::EarlierVersions> m_window;
    std::unique_ptr<test::WindowDriver> m_driver;
};

TEST_F(EarlierVersionsTest, ListsDaysAndDifferencesAndBringsOneBackAsAStep) {
    save(0); // the first replaces nothing
    session().addBranch();
    session().renameBranch(1, "Lift");
    save(86'400);
    session().addAction(0);
    session().setTarget(0, 0, "Lift");
    save(600);
    session().setImmediate(0, 0, true);
    open();
    ASSERT_TRUE(hasRows(u"ListVersions", 4));
    EXPECT_EQ(rows(u"ListVersions"), (Texts{u"Today", u"22:13, 1 action changed", u"Yesterday",
                                            u"22:13, 1 branch fewer, 1 action changed"}));
    EXPECT_EQ(list(u"ListVersions").GetCurSel(), 1) << "the newest, not its day";
    ASSERT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_EQ(rows(u"ListDifferences"), Texts{u"Other actions: \"Alarm\" 1"});
    EXPECT_EQ(rows(u"ListVersionActions"), (Texts{u"Alarm, first branch", u"Lift"}));
    m_driver->press(Key::down);
    EXPECT_EQ(m_driver->textOf(u"LabelVersion"), u"Yesterday, 22:13") << "days are passed over";
    ASSERT_TRUE(hasRows(u"ListDifferences", 2));
    EXPECT_EQ(rows(u"ListDifferences"),
              (Texts{u"Without \"Lift\"", u"Other actions: \"Alarm\" 1"}));

    const std::string now = session().savedForm();
    const std::string saved = support::readBytes("Scenes/Fire/Scene.xml");
    ASSERT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    m_driver->click(u"ButtonRestoreVersion");
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_EQ(session().branchNames(), std::vector<std::string>{"Alarm"});
    EXPECT_EQ(support::readBytes("Scenes/Fire/Scene.xml"), saved) << "only Save writes";
    EXPECT_TRUE(session().undo());
    EXPECT_EQ(session().savedForm(), now);
}

TEST_F(EarlierVersionsTest, AVersionIsShownAsAMapUntilItsActionsAreWanted) {
    session().addBranch();
    session().renameBranch(1, "Lift");
    session().addAction(0);
    session().setTarget(0, 0, "Lift");
    session().addAction(0);
    session().setTarget(0, 1, "Roof"); // which is not there
    save(0);
    session().removeAction(0, 1);
    save(60);
    session().removeBranch(1);
    save(60);
    open();
    ASSERT_TRUE(hasRows(u"ListVersions", 3));
    ASSERT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_EQ(nodes(), (Texts{u"Alarm, first branch, 1 action, 1 error", // it has no video
                              u"Lift, 0 actions, 1 error"}));
    m_driver->press(Key::down);
    EXPECT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_EQ(nodes(),
              (Texts{u"Alarm, first branch, 2 actions, 2 errors", u"Lift, 0 actions, 1 error"}));
    EXPECT_EQ(map().accessibleChild(0)->accessibleChild(1)->accessibleName(),
              u"Default, to Roof, missing");
    EXPECT_FALSE(m_driver->get(u"ListVersionActions").IsVisible());

    m_driver->press(Key::f6);
    EXPECT_EQ(m_driver->focusName(), u"VersionMap");
    EXPECT_EQ(map().accessibleValue(), u"Alarm, first branch, 2 actions, 2 errors");
    m_driver->press(Key::right);
    EXPECT_EQ(map().accessibleValue(), u"Lift, 0 actions, 1 error");
    m_driver->press(Key::digit0, {.control = true});
    const platform::Rect alarm = map().placeOf(0);
    m_driver->press(Key::minus, {.control = true});
    EXPECT_LT(map().placeOf(0).width(), alarm.width());
    m_driver->press(Key::digit0, {.control = true});
    EXPECT_EQ(map().placeOf(0), alarm);

    m_driver->manager().SetFocus(&m_driver->get(u"OptionVersionMap"));
    m_driver->press(Key::right);
    EXPECT_TRUE(m_driver->get(u"ListVersionActions").IsVisible());
    EXPECT_FALSE(map().IsVisible());
    clickRow(1);
    EXPECT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_FALSE(map().IsVisible()) << "the actions stay";
    m_driver->click(u"OptionVersionMap");
    EXPECT_TRUE(map().IsVisible());
    EXPECT_EQ(nodes(), (Texts{u"Alarm, first branch, 1 action, 1 error", // of the next version
                              u"Lift, 0 actions, 1 error"}));
}

TEST_F(EarlierVersionsTest, AMapOfAVersionChangesNothingWhenItIsDragged) {
    session().addBranch();
    session().renameBranch(1, "Lift");
    session().addAction(0);
    session().setTarget(0, 0, "Lift");
    save(0);
    session().addBranch();
    save(60);
    open();
    ASSERT_TRUE(hasRows(u"ListVersions", 2));
    ASSERT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    m_driver->press(Key::plus, {.control = true}); // whole nodes
    const std::string before = session().savedForm();
    const platform::Rect place = map().placeOf(0);
    const platform::Point row{(place.left + place.right) / 2, place.bottom - 12};
    m_driver->drag({row, {row.x + 30, row.y + 20}});
    EXPECT_EQ(map().placeOf(0),
              platform::Rect::at(place.left + 30, place.top + 20, place.width(), place.height()))
        << "the view is moved, at an action too";
    EXPECT_EQ(session().savedForm(), before);
}

TEST_F(EarlierVersionsTest, AVersionTooLargeForAMapIsListed) {
    for (int i = 0; i < 20'001; ++i) {
        session().addAction(0);
    }
    save(0);
    while (session().actionCount(0) > 1) {
        session().removeAction(0, 0);
    }
    save(60);
    session().addBranch();
    save(60);
    open();
    ASSERT_TRUE(hasRows(u"ListVersions", 3));
    ASSERT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_TRUE(map().IsVisible());
    clickRow(2);
    EXPECT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_FALSE(map().IsVisible());
    EXPECT_FALSE(m_driver->get(u"OptionVersionMap").IsEnabled());
    EXPECT_TRUE(m_driver->get(u"ListVersionActions").IsVisible());
    clickRow(1);
    EXPECT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_TRUE(map().IsVisible()) << "as before";
}

TEST_F(EarlierVersionsTest, WithoutVersionsItSaysSoAndEscCloses) {
    open();
    EXPECT_TRUE(test::pumpUntil([&] { return m_driver->get(u"EmptyHeading").IsVisible(); }));
    EXPECT_EQ(m_driver->textOf(u"EmptyHeading"), u"No earlier versions yet");
    EXPECT_FALSE(canRestore());
    m_driver->press(Key::enter);
    m_driver->press(Key::escape);
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(EarlierVersionsTest, ClosingWhileAVersionIsReadDoesNotWaitForIt) {
    save(0);
    save(60);
    session().addBranch();
    save(60);
    std::promise<void> began;
    bool isStopped = false;
    ui::VersionHistory history = ui::sceneHistory(session(), {});
    history.read = [&](const recovery::Version&) {
        began.set_value();
        char byte = 0;
        for (int i = 0; i < 200'000 && !isStopped; ++i) { // a very long file
            core::File file;
            isStopped = !file.open("Scenes/Fire/Scene.xml", "rb") || !file.read(&byte, 1);
        }
        return ui::VersionDetails();
    };
    support::TaskLoop loop;
    std::optional<ui::VersionReader> reader(std::in_place, loop, *core::services().fileSystem,
                                            history);
    reader->readAll([](const auto&) {}, [] {});
    began.get_future().wait();
    reader.reset();
    EXPECT_TRUE(isStopped);
}

class VersionsOfTheEditor : public test::BranchEditorTest {};

TEST_F(VersionsOfTheEditor, AreOpenedByTheMenuAndRestoredAsAStep) {
    scene().setKeeper(std::make_shared<recovery::Backups>(
        [] { return recovery::sceneVersionsFolder("Fire"); }, [] { return true; }));
    makeScene({"Alarm"});
    m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
    show();
    m_driver->click(u"ButtonSave");
    m_driver->click(u"ButtonAddBranch");
    m_driver->click(u"ButtonSave");
    m_driver->click(u"ButtonMenu");
    m_driver->type(u"e");
    std::u16string summary;
    inWindow("EarlierVersions.xml", [&](const test::WindowDriver& versions) {
        EXPECT_TRUE(
            test::pumpUntil([&] { return versions.get(u"ButtonRestoreVersion").IsEnabled(); }));
        summary = versions.get<toolkit::CListUI>(u"ListVersions").GetItemAt(1)->accessibleName();
        test::input().requestClose(m_driver->native());
        test::pump();
        EXPECT_FALSE(isClosed(*m_window)) << "the versions have to end first";
        versions.press(Key::enter); // on the list
    });
    m_driver->press(Key::enter);
    EXPECT_TRUE(summary.ends_with(u"1 branch fewer")) << core::storedText(summary);
    EXPECT_EQ(test::itemsOf(combo(u"ComboBranchName")), Texts{u"Alarm"});
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(test::itemsOf(combo(u"ComboBranchName")).size(), 2U);
    m_driver->click(u"ButtonAddAction");
    EXPECT_EQ(session().actionCount(0) + session().actionCount(1), 1) << "the editor works again";
}

TEST_F(EarlierVersionsTest, HostileVersionsAreShownAsUnreadableOrNotAtAll) {
    const std::string folder = recovery::sceneVersionsFolder("Fire");
    const std::string stamp = "20231114T22131";
    const std::vector<std::string> bytes{"", "<Scene>", "<a/>", std::string(40U << 20U, 'x'),
                                         "<Scene><Branch><ID>x</ID></Branch></Scene>"};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::string time = stamp + std::to_string(i) + "Z";
        support::writeBytes(folder + time + "-0-" + time + "-Scene.xml", bytes[i]);
    }
    support::writeBytes(folder + "other", "x");
    support::makeFolder(folder + "20231114T221319Z-0-20231114T221319Z-Scene.xml");
    open();
    ASSERT_TRUE(hasRows(u"ListVersions", 6));
    EXPECT_EQ(rows(u"ListVersions")[1], u"22:13, 1 branch more, 1 branch fewer");
    EXPECT_EQ(rows(u"ListVersions")[5], u"22:13, Cannot be read");
    EXPECT_TRUE(m_log.errors().empty());
    EXPECT_NE(m_log.page().find("Ignored among the earlier versions"), std::string::npos);
    clickRow(5);
    EXPECT_TRUE(test::pumpUntil([&] { return m_driver->get(u"LabelProblem").IsVisible(); }));
    EXPECT_FALSE(canRestore());
    clickRow(1);
    EXPECT_TRUE(test::pumpUntil([&] { return canRestore(); }));
    EXPECT_FALSE(m_driver->get(u"LabelProblem").IsVisible());
}

} // namespace
