// What the editor's windows show while they are used: every text comes from the catalogue, and none
// is cut in any language. The scene's own names are digits, so that all letters are the program's.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEdit.h"
#include "check/Finding.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "import/Converter.h"
#include "import/ImportTypes.h"
#include "jobs/ImportOutcome.h"
#include "platform/FileSystem.h"
#include "publish/PublishJob.h"
#include "recovery/Backups.h"
#include "scene/SceneFolders.h"
#include "src/TheoraProbe.h"
#include "tests/skin/CutTexts.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FixedClock.h"
#include "tests/support/OggPager.h"
#include "tests/support/PseudoTexts.h"
#include "tests/support/windows/EditorTest.h"
#include "tests/support/windows/Published.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "ui/BranchList.h"
#include "ui/EarlierVersions.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "ui/SceneHints.h"
#include "ui/SettingsWindow.h"
#include "ui/VersionHistory.h"
#include "ui/importing/ImportRow.h"
#include "ui/importing/ImportVideo.h"
#include "ui/importing/SceneImports.h"
#include "ui/keys/KeysWindow.h"
#include "ui/publishing/PublishWindow.h"

namespace {

using platform::Key;
using toolkit::CControlUI;

constexpr const char* kPseudo = "Pseudo";
constexpr const char* kScene = "1";
constexpr const char* kClip = "2.ogv";

/// What stays as it is in every language: keys of one letter, F1 to F12, files, folders, names.
const std::regex kNoTexts(
    R"(\b[A-Z]\b|\bF\d+\b|[\w/.\\:-]*\.(ogv|mp4|mov|js|html)\b|Quorvel|Published/1|[\w/.\\:-]*ffmpeg|([A-Z]:)?[\\/][\w\\/.-]*|)"
    "Pseudo|English|Deutsch|Fran\xC3\xA7"
    "ais|Espa\xC3\xB1ol|Nederlands");

class WindowTexts : public test::EditorTest, public testing::WithParamInterface<std::string> {
protected:
    WindowTexts() {
        m_services.translations = support::textsIn(GetParam(), "Translations.ini");
        core::setTexts(m_services.translations);
        support::writeBytes("Scenes/1/2.ogv", support::makeClip({.frames = 30}));
        support::writeBytes("Scenes/1/2.ogv-ZoneInfo.xml",
                            "<ZoneInfo><Zone><Name>7</Name></Zone></ZoneInfo>");
    }
    ~WindowTexts() override {
        core::setTexts(nullptr);
        zoneedit::setCurrentZoneManager(nullptr);
    }

    /// Three branches with something to find in each.
    void makeScene() {
        session().newScene(kScene);
        for (int branch = 0; branch < 3; ++branch) {
            session().addBranch();
            session().renameBranch(branch, std::to_string(10 + branch));
            session().setVideo(branch, branch < 2 ? kClip : "");
        }
        constexpr struct {
            int type;
            const char* parameter;
            const char* target;
        } kActions[] = {
            {0, "", "11"}, {1, "3", "12"}, {2, "7", "11"}, {3, "", "99"}, {3, "", "12"}};
        for (const auto& action : kActions) {
            session().addAction(0);
            const int last = session().actionCount(0) - 1;
            session().setType(0, last, action.type);
            session().setParameter(0, last, action.parameter);
            session().setTarget(0, last, action.target);
        }
    }

    /// All texts of the window, of its rows and of what a screen reader finds there.
    void expectTexts(const test::WindowDriver& driver, const std::string& where) {
        SCOPED_TRACE(where);
        test::pump();
        driver.manager().UpdateLayout();
        CControlUI& root = *driver.manager().GetRoot();
        if (GetParam() != kPseudo) {
            test::expectNoneCut(root);
            return;
        }
        expectControls(root);
        expectAccessible(root);
        if (CControlUI* menu = toolkit::MenuPopup::of(driver.manager()).menu()) {
            expectControls(*menu);
        }
    }
    void expectControls(CControlUI& control) {
        const std::string name = core::storedText(control.GetClass() + u" " + control.GetName());
        const bool isData = control.GetClass() == u"Edit";
        expectTranslated(isData ? u"" : control.GetText(), name);
        expectTranslated(control.GetToolTip(), name + ", tool tip");
        for (int i = 0; i < control.childCount(); ++i) {
            expectControls(*control.childAt(i));
        }
    }
    void expectAccessible(platform::Accessible& node) {
        expectTranslated(node.accessibleName(), "name of " + core::storedText(node.accessibleId()));
        if (node.accessibleRole() != platform::AccessibleRole::edit) {
            expectTranslated(node.accessibleValue(),
                             "value of " + core::storedText(node.accessibleId()));
        }
        for (int i = 0; i < node.accessibleChildCount(); ++i) {
            if (platform::Accessible* child = node.accessibleChild(i)) {
                expectAccessible(*child);
            }
        }
    }
    void expectTranslated(const std::u16string& text, const std::string& where) {
        const std::string rest =
            std::regex_replace(core::storedText(support::notTranslated(text)), kNoTexts, "");
        const bool hasLetters = std::any_of(rest.begin(), rest.end(), [](char sign) {
            return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
        });
        EXPECT_FALSE(hasLetters) << where << ": " << core::storedText(text);
    }

    template <class Window>
    void expectWindow(const std::string& where) {
        const auto window = openTitled<Window>(u"1");
        expectTexts(test::WindowDriver(*window), where);
    }
    void resize(const test::WindowDriver& driver, platform::Size size) {
        driver.native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        ASSERT_TRUE(test::pumpUntil([&] { return driver.manager().GetWindowSize() == size; }));
    }

    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
};

TEST_P(WindowTexts, OfTheWindowsBesideTheEditors) {
    expectWindow<ui::NewScene>("New Scene");
    expectWindow<ui::SettingsWindow>("Settings");
    expectWindow<ui::KeysWindow>("Keys");
    makeScene();
    EXPECT_TRUE(session().save(scene::sceneFolderPath(kScene)));
    support::writeBytes("Scenes/4/Scene.xml", "broken");
    const auto window = openTitled<ui::OpenScene>(u"1");
    test::WindowDriver driver(*window);
    driver.click(u"ButtonMenu");
    expectTexts(driver, "Open Scene");
}

TEST_P(WindowTexts, OfTheBranchEditor) {
    makeScene();
    const auto window = openTitled<ui::BranchList>(u"1");
    const test::WindowDriver driver(*window);
    for (const platform::Size size :
         {platform::Size{884, 672}, platform::Size{1366, 728}, platform::Size{1600, 900}}) {
        resize(driver, size);
        expectTexts(driver, "branches, " + std::to_string(size.width));
    }
    driver.click(u"ButtonMenu");
    expectTexts(driver, "menu");
    driver.press(Key::escape);
    driver.press(Key::f5);
    expectTexts(driver, "preview");
    driver.press(Key::escape);
    driver.click(u"ButtonRemoveBranch");
    expectTexts(driver, "a branch removed");
    driver.press(Key::z, {.control = true});
    driver.enter(u"EditBranchName", u"15");
    driver.click(u"ButtonSave");
    expectTexts(driver, "saved");
    inWindow("Confirmation.xml", [this](const test::WindowDriver& question) {
        expectTexts(question, "question");
        question.click(u"ButtonNo");
    });
    driver.click(u"ButtonExit");
}

TEST_P(WindowTexts, OfAFindingAboutANameOfTwoWords) {
    session().newScene(kScene);
    session().addBranch();
    session().renameBranch(0, "12345 12345");
    session().setVideo(0, kClip);
    session().addAction(0);
    session().setType(0, 0, 2);
    session().setParameter(0, 0, "7");
    session().setTarget(0, 0, "12345 12345");
    const auto window = openTitled<ui::BranchList>(u"1");
    const test::WindowDriver driver(*window);
    resize(driver, {1600, 900});
    const auto& findings = driver.get<toolkit::CListUI>(u"ListFindings");
    check::Finding waits;
    waits.kind = check::Kind::waits;
    waits.arguments = {"12345 12345"};
    const std::u16string sentence = core::displayText(check::findingText(waits));
    EXPECT_TRUE(test::pumpUntil([&] {
        bool isListed = false;
        for (int row = 0; row < findings.GetCount(); ++row) {
            isListed = isListed || findings.GetItemAt(row)->GetToolTip() == sentence;
        }
        return isListed;
    })) << core::storedText(sentence);
    expectTexts(driver, "findings");
}

TEST_P(WindowTexts, OfClipsThatCannotBePlayed) {
    const support::Bytes clip = support::makeClip({.sound = support::Sound::after});
    const auto damaged = [&](int serial, const std::string& packet) {
        const support::Bytes page =
            support::OggPager(serial).pages({{{packet.begin(), packet.end()}, 0}}, {})[0].bytes;
        constexpr std::ptrdiff_t kFirstPage = 70;
        return std::string(clip.begin(), clip.begin() + kFirstPage) +
               std::string(page.begin(), page.end());
    };
    const int serial = clip[14] + 256 * clip[15]; // of the page; the rest is 0
    const std::string files[] = {std::string(clip.begin(), clip.begin() + 100),
                                 damaged(serial, "frame"), damaged(serial, "\x81theora and more"),
                                 damaged(serial + 1, "\x01vorbis and more")};
    std::set<std::string> reasons;
    for (const std::string& bytes : files) {
        support::writeBytes("5.ogv", bytes);
        theora::Probe probe = theora::probeClip("5.ogv", platform::nativeFileSystem());
        EXPECT_TRUE(reasons.insert(probe.reason).second) << probe.reason;
        jobs::ImportOutcome outcome;
        outcome.note("5.ogv", {.result = jobs::ImportResult::copied, .probe = probe});
        const std::u16string text = ui::importProblem(outcome);
        if (GetParam() == kPseudo) {
            expectTranslated(text, probe.reason);
        } else {
            EXPECT_EQ(core::storedText(text).find(probe.reason) != std::string::npos,
                      GetParam() == "English");
        }
    }
}

TEST_P(WindowTexts, OfImportingAndPublishing) {
    using imports::ImportState;
    makeScene();
    m_services.sceneImports = std::make_shared<ui::SceneImports>(
        m_gui.loop(), *core::services().fileSystem, m_services.sceneSession, nullptr,
        scene::sceneFolderPath(kScene), [](const auto&) { return imports::Converter(); });
    {
        const auto window = openTitled<ui::ImportVideo>(u"1");
        const test::WindowDriver driver(*window);
        EXPECT_TRUE(test::pumpUntil([&] { return driver.get(u"PaneMissing").IsVisible(); }));
        expectTexts(driver, "no converter");
        auto& list = driver.get<toolkit::CListUI>(u"ListImports");
        const imports::SourceFacts facts{42.1, {1920, 1080}, true};
        for (const ImportState state : {ImportState::waiting, ImportState::converting,
                                        ImportState::done, ImportState::cancelled}) {
            list.Add(ui::makeImportRow({.source = "5.mp4",
                                        .state = state,
                                        .facts = facts,
                                        .percent = 46,
                                        .secondsLeft = 38,
                                        .clip = {"5.ogv", 8'200'000, true}}));
        }
        for (int kind = 0; kind <= static_cast<int>(imports::Failure::noMemory); ++kind) {
            imports::ImportItem item{.source = "5.mp4", .state = ImportState::failed};
            item.failure.kind = static_cast<imports::Failure>(kind);
            list.Add(ui::makeImportRow(item));
        }
        driver.get(u"PaneMissing").SetVisible(false);
        driver.get(u"PaneImport").SetVisible(true);
        expectTexts(driver, "importing");
    }
    m_services.sceneImports.reset();
    const auto window = std::make_shared<ui::PublishWindow>(
        context(), ui::PublishTask{scene::sceneFolderPath(kScene), {}});
    ASSERT_TRUE(window->Create(nullptr, u"1", ui::kScreenStyle, ui::kScreenExtendedStyle));
    const test::WindowDriver driver(*window);
    expectTexts(driver, "publish");
    window->showProgress({"2.ogv", 3, 4, 58, 38});
    expectTexts(driver, "publishing");
    publish::PublishResult result;
    result.state = publish::PublishResult::State::failed;
    for (int kind = 1; kind <= static_cast<int>(publish::PublishFailure::noMemory); ++kind) {
        result.failure = static_cast<publish::PublishFailure>(kind);
        window->showResult(result);
        expectTexts(driver, "not published");
    }
    window->showResult(test::publishedScene());
    expectTexts(driver, "published");
}

TEST_P(WindowTexts, OfEarlierVersions) {
    const auto keeper = std::make_shared<recovery::Backups>(
        [] { return recovery::sceneVersionsFolder(kScene); }, [] { return true; });
    scene().setKeeper(keeper);
    makeScene();
    for (int day = 0; day < 4; ++day) {
        session().removeAction(0, 0);
        m_clock.time += 40'000;
        EXPECT_TRUE(session().save(scene::sceneFolderPath(kScene)));
        keeper->settle();
    }
    ui::EarlierVersions window(context(), ui::sceneHistory(session(), {"0", "1", "2", "3"}));
    ASSERT_TRUE(window.Create(nullptr, u"1", ui::kScreenStyle, ui::kScreenExtendedStyle));
    test::WindowDriver driver(window);
    driver.show();
    const auto& list = driver.get<toolkit::CListUI>(u"ListVersions");
    EXPECT_TRUE(test::pumpUntil([&] { return list.GetCount() > 3; }));
    driver.click(*list.GetItemAt(1));
    EXPECT_TRUE(test::pumpUntil([&] { return driver.get(u"ButtonRestoreVersion").IsEnabled(); }));
    expectTexts(driver, "earlier versions");
    driver.click(u"OptionVersionActions");
    expectTexts(driver, "actions of an earlier version");
    scene().setKeeper(nullptr);
}

TEST_P(WindowTexts, OfTheZoneEditor) {
    m_state.zoneEditVideo = sceneFolder(kScene) + kClip;
    std::filesystem::remove("Scenes/1/2.ogv-ZoneInfo.xml");
    const auto window = openTitled<zoneedit::ZoneEdit>(u"1");
    const test::WindowDriver driver(*window);
    expectTexts(driver, "no zone");
    for (const auto* tool : {u"OptionMovePoint", u"OptionAddPoint", u"OptionDeletePoint"}) {
        driver.click(tool);
        expectTexts(driver, "tool");
    }
    driver.click(u"ButtonAddZone");
    driver.retype(u"EditZone", u"8");
    driver.press(Key::enter);
    driver.click(u"CheckPanel");
    driver.click(u"CheckLoupe");
    driver.click(u"OptionAddMultiPoint");
    const platform::Rect picture = driver.get(u"Video").GetPos();
    for (const platform::Point at : {platform::Point{100, 100}, {300, 100}, {200, 300}}) {
        driver.click(platform::Point{picture.left + at.x, picture.top + at.y});
    }
    driver.press(Key::b);
    driver.enter(u"EditCurrentFrame", u"20");
    driver.manager().SetFocus(nullptr);
    driver.press(Key::e);
    EXPECT_EQ(driver.textOf(u"EditRangeTo"), u"20");
    expectTexts(driver, "a range");
    resize(driver, {1920, 1040});
    expectTexts(driver, "a range in the band");
    driver.click(u"ButtonInterpolate");
    expectTexts(driver, "interpolated");
    driver.click(u"ButtonFollow");
    EXPECT_TRUE(driver.get(u"PanelFollow").IsVisible());
    expectTexts(driver, "followed");
    resize(driver, {1024, 712});
    expectTexts(driver, "small");
    driver.click(u"ButtonMenu");
    expectTexts(driver, "menu");
}

INSTANTIATE_TEST_SUITE_P(Languages, WindowTexts,
                         testing::Values(kPseudo, "English", "French", "German", "Spanish",
                                         "Dutch"),
                         [](const auto& language) { return language.param; });

/// Of the bar with what can be done to a range of frames, whose parts the program places.
using RangeBarTexts = WindowTexts;

TEST_P(RangeBarTexts, HaveRoomInPartsThatDoNotMeet) {
    m_state.zoneEditVideo = sceneFolder(kScene) + kClip;
    for (const platform::Size size :
         {platform::Size{1024, 756}, {1280, 856}, {1880, 1040}, {1920, 1040}}) {
        SCOPED_TRACE(size.width);
        m_gui.host.screenHeight = size.height == 756 ? 768 : 1080;
        const auto window = openTitled<zoneedit::ZoneEdit>(u"1");
        const test::WindowDriver driver(*window);
        resize(driver, size);
        driver.press(Key::b);
        driver.enter(u"EditCurrentFrame", u"20");
        driver.press(Key::e);
        CControlUI& bar = driver.get(u"PanelRange");
        ASSERT_TRUE(bar.IsVisible());
        const platform::Rect room = platform::Rect::at(0, 0, size.width, size.height);
        EXPECT_EQ(bar.GetPos().intersected(room), bar.GetPos());
        for (int i = 0; i < bar.childCount(); ++i) {
            CControlUI& part = *bar.childAt(i);
            const std::string name = core::storedText(part.GetName());
            EXPECT_EQ(part.GetPos().intersected(bar.GetPos()), part.GetPos()) << name;
            part.SetToolTip(u""); // then a text offers itself where its box cuts it
            EXPECT_EQ(part.toolTipAt(part.GetPos().topLeft()), u"") << name;
            for (int other = 0; other < i; ++other) { // joined ones share a border
                const platform::Rect both = part.GetPos().intersected(bar.childAt(other)->GetPos());
                EXPECT_TRUE(both.width() <= 1 || both.height() <= 1)
                    << name << " and " << core::storedText(bar.childAt(other)->GetName());
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, RangeBarTexts,
                         testing::Values("English", "French", "German", "Spanish", "Dutch",
                                         "Pseudo"),
                         [](const auto& language) { return std::string(language.param); });

} // namespace
