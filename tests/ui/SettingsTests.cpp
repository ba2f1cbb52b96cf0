// The menus of the windows and the settings that they open.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "platform/Event.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "recovery/Drafts.h"
#include "tests/support/FixedClock.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/EditorTest.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "ui/ChosenLanguage.h"
#include "ui/FigureTexts.h"
#include "ui/OpenScene.h"
#include "ui/SkinChoice.h"
#include "ui/TimeTexts.h"

namespace {

using platform::Key;
using platform::Size;
using test::isChecked;
using test::menuOf;
using test::Texts;

class OpenSceneMenu : public test::WindowTest<ui::OpenScene> {};
class BranchEditorMenu : public test::BranchEditorTest {
protected:
    /// Opens the settings from the menu, by keys alone.
    test::WindowDriver openSettings() {
        m_driver->click(u"ButtonMenu");
        m_driver->type(u"s");
        m_driver->press(Key::enter);
        test::pump();
        return test::WindowDriver(test::topWindow());
    }
};

TEST_F(OpenSceneMenu, LeadsToTheSettings) {
    show().click(u"ButtonMenu");
    const Texts all = menuOf(*m_driver);
    EXPECT_EQ(Texts(all.end() - 2, all.end()), (Texts{u"Settings…", u"Keys"}));
    m_driver->press(Key::end);
    m_driver->press(Key::up);
    m_driver->press(Key::enter);
    test::pump();
    EXPECT_EQ(test::topWindow().GetSkinFile(), "Settings.xml");
}

TEST_F(BranchEditorMenu, ShowsTheCommandsThatHaveAHandler) {
    makeScene({"A"});
    show().click(u"ButtonMenu");
    const Texts all = menuOf(*m_driver);
    ASSERT_GE(all.size(), 3U);
    EXPECT_EQ(Texts(all.end() - 4, all.end()), (Texts{u"Settings…", u"Keys", u"Manual", u"Tour"}));
    EXPECT_NE(all.front(), u"-");
    m_driver->press(Key::end);
    m_driver->press(Key::up);
    m_driver->press(Key::enter);
    EXPECT_EQ(m_gui.userDesktop.errors.size(), 1U) << "the manual is not there";
    EXPECT_EQ(menuOf(*m_driver), Texts{});
}

TEST_F(BranchEditorMenu, IsThatOfWhatWasPressedOrHasTheKeyboard) {
    makeScene({"A", "B"});
    addAction(0, {}, "A");
    addAction(0);
    show();
    const auto rightClick = [&](const toolkit::CControlUI& control) {
        for (const auto kind : {platform::EventKind::mouseDown, platform::EventKind::mouseUp}) {
            test::input().mouse(m_driver->native(), kind, m_driver->middleOf(control),
                                platform::MouseButton::right);
        }
        test::pump();
        const Texts rows = menuOf(*m_driver);
        return rows.empty() ? u"" : rows.front();
    };
    EXPECT_EQ(rightClick(combo(1, u"ComboBranches")), u"Add Action");
    EXPECT_EQ(actions().GetCurSel(), 1);
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"A") << "nothing else is pressed";
    EXPECT_EQ(rightClick(combo(u"ComboBranchName")), u"Add Branch") << "in place of the first";
    m_driver->press(Key::escape);
    EXPECT_EQ(rightClick(m_driver->get(u"LabelScene")), u"");
    m_driver->manager().SetFocus(&actions());
    m_driver->press(Key::f10, {.shift = true});
    EXPECT_EQ(menuOf(*m_driver).front(), u"Add Action");
    const auto* menu = toolkit::MenuPopup::of(m_driver->manager()).menu();
    EXPECT_EQ(menu->GetPos().top, actions().GetItemAt(1)->GetPos().bottom + 2);
    m_driver->press(Key::enter); // it begins at its first row
    EXPECT_EQ(actions().GetCount(), 3);
    m_driver->manager().SetFocus(m_driver->manager().FindControl(u"ButtonSave"));
    m_driver->press(Key::menu);
    EXPECT_EQ(menuOf(*m_driver).front(), u"Open Another Scene…")
        << "nothing of its own: the window's";
    m_driver->press(Key::escape);
    m_driver->press(Key::f2);
    m_driver->type(u"C");
    m_driver->press(Key::f6);
    EXPECT_EQ(session().branchName(0), "C") << "the whole name was selected";
    EXPECT_EQ(m_driver->focusName(), u"BranchList");
    m_driver->press(Key::f6);
    EXPECT_EQ(m_driver->focusName(), u"ButtonRetarget") << "what the strip offers";
    m_driver->press(Key::f6);
    EXPECT_EQ(m_driver->focusName(), u"EditBranchName") << "where it was before";
    m_driver->press(Key::f6, {.shift = true});
    EXPECT_EQ(m_driver->focusName(), u"ButtonRetarget");
}

TEST_F(BranchEditorMenu, LeavesForAnotherSceneOnlyWhatIsKept) {
    makeScene({"A"});
    show();
    session().addBranch();
    m_driver->press(Key::menu);
    const toolkit::CControlUI* row =
        toolkit::MenuPopup::of(m_driver->manager()).menu()->GetItemAt(0);
    EXPECT_EQ(row->GetText(), u"Open Another Scene…");
    EXPECT_FALSE(row->IsEnabled()) << "no draft keeps the work";
    m_driver->press(Key::escape);
    m_services.editorSettings.reset();
    m_services.drafts = std::make_shared<recovery::Drafts>(m_gui.loop(), [] { return true; });
    m_driver->press(Key::menu);
    EXPECT_TRUE(toolkit::MenuPopup::of(m_driver->manager()).menu()->GetItemAt(0)->IsEnabled());
}

TEST_F(BranchEditorMenu, ChangesOfTheSettingsCountAtOnce) {
    makeScene({"A"});
    int asked = 0;
    m_services.drafts = std::make_shared<recovery::Drafts>(m_gui.loop(), [this, &asked] {
        ++asked;
        return m_services.editorSettings->keepDrafts();
    });
    auto draft = m_services.drafts->open({"A", "A"}, [] {
        return recovery::DraftContent{{recovery::kDraftScene, [](core::File&) { return true; }}};
    });
    draft->changed();
    draft->flush();
    show();
    test::WindowDriver settings = openSettings();
    ASSERT_TRUE(isChecked(settings, u"CheckKeepDrafts"));
    ASSERT_TRUE(isChecked(settings, u"CheckKeepBackups"));
    settings.press(Key::space); // the keyboard stands in the first box
    EXPECT_FALSE(m_services.editorSettings->keepDrafts());
    const int askedBefore = asked;
    settings.click(u"CheckKeepBackups");
    EXPECT_EQ(asked, askedBefore) << "these are no drafts";
    draft = nullptr;
    m_services.drafts->settle();
    EXPECT_FALSE(support::exists("Drafts"));
    settings.click(u"CheckKeepDrafts");
    EXPECT_EQ(support::readBytes("Editor.ini"), "keepDrafts = true\r\nkeepBackups = false\r\n");
    EXPECT_EQ(settings.get<toolkit::CComboUI>(u"ComboScale").GetText(), u"100 %");
    settings.click(u"ComboSkin");
    settings.press(Key::down);
    settings.press(Key::enter);
    EXPECT_TRUE(m_gui.windows().isDark());
    EXPECT_EQ(ui::chosenSkin(*m_services.editorSettings).appearance, platform::Appearance::dark);
    constexpr std::uint32_t kDarkBand = 0xFF2A323B;
    EXPECT_EQ(m_driver->pixel({3, 3}), kDarkBand) << "in the window below";
    EXPECT_EQ(settings.pixel({3, 3}), kDarkBand);
    m_gui.windows().setAppearance(platform::Appearance::light);
    const Size size = m_driver->picture().size();
    settings.click(u"ComboScale");
    settings.press(Key::end);
    settings.press(Key::enter);
    const double scale = m_driver->native().scale();
    EXPECT_GT(scale, 1) << "less than 2 on a screen too small for it";
    EXPECT_EQ(m_driver->picture().size(),
              (Size{static_cast<int>(std::ceil(size.width * scale - 1e-6)),
                    static_cast<int>(std::ceil(size.height * scale - 1e-6))}));
    EXPECT_EQ(m_services.editorSettings->scale(), 200);
    settings.click(u"CheckKeepDrafts"); // at its place in the larger window
    EXPECT_FALSE(isChecked(settings, u"CheckKeepDrafts"));
    m_gui.windows().setZoom(1);
    settings.press(Key::escape);
    test::pump();
    EXPECT_EQ(&test::topWindow(), m_window.get());
    EXPECT_FALSE(isChecked(openSettings(), u"CheckKeepBackups"));
}

TEST_F(BranchEditorMenu, TheSettingsShowWhereScenesAreAndChangeItForASharedInstallation) {
    makeScene({"A"});
    show();
    constexpr const char16_t* kField = u"EditScenesFolder";
    const auto fullPath = [](const std::string& path) {
        return core::displayText(platform::nativeFileSystem().fullPath(path));
    };
    {
        test::WindowDriver settings = openSettings();
        EXPECT_FALSE(settings.get(u"ButtonScenesFolder").IsVisible());
        EXPECT_EQ(settings.textOf(kField), fullPath("Scenes"));
        settings.press(Key::escape);
        test::pump();
    }
    m_services.installation = {m_folder.path(), m_folder.path() + "user/Quorvel/Quorvel.ini"};
    support::makeFolder("old/Programs/Quorvel");
    const struct {
        std::optional<std::string> chosen;
        std::string tree; ///< in the file
    } cases[] = {{std::nullopt, ""},
                 {"new", "new/Quorvel"},
                 {"a/quorvel", "a/quorvel"},
                 {"old", "old"},
                 {"old/Programs/Quorvel", "old"},
                 {"old/Programs/Quorvel/Scenes", "old"}};
    test::WindowDriver settings = openSettings();
    for (const auto& [chosen, tree] : cases) {
        m_gui.dialog.folder = chosen ? m_folder.path() + *chosen : chosen;
        settings.click(u"ButtonScenesFolder");
        EXPECT_EQ(settings.textOf(kField),
                  fullPath(chosen ? tree + "/Programs/Quorvel/Scenes" : "Scenes"));
        std::string kept = chosen ? support::readBytes("user/Quorvel/Quorvel.ini") : "";
        std::string expected = chosen ? "folder = " + m_folder.path() + tree + "\r\n" : "";
        std::replace(kept.begin(), kept.end(), '\\', '/'); // either, on Windows
        std::replace(expected.begin(), expected.end(), '\\', '/');
        EXPECT_EQ(kept, expected);
    }
    EXPECT_EQ(settings.textOf(u"LabelScenesFolder").substr(0, 4), u"From");
    m_services.installation.placeFile = m_folder.path() + "old"; // a folder
    settings.click(u"ButtonScenesFolder");
    EXPECT_EQ(settings.textOf(u"LabelScenesFolder").substr(0, 10), u"The choice");
}

TEST_F(BranchEditorMenu, AnotherLanguageShowsTheScreenAgainAndNeverAMixture) {
    makeScene({"A", "B"});
    show().pick(u"ComboBranchName", 1);
    test::WindowDriver settings = openSettings();
    settings.pick(u"ComboLanguage", 2);
    EXPECT_EQ(settings.get<toolkit::CComboUI>(u"ComboLanguage").GetText(), u"Deutsch");
    EXPECT_EQ(core::tr("Save"_tr), u"Save") << "what is open stays as it is";
    settings.press(Key::escape);
    EXPECT_TRUE(test::pumpUntil([&] { return isClosed(*m_window); }));
    ui::speakChosenLanguage(m_services);
    show();
    EXPECT_EQ(m_driver->textOf(u"ButtonSave"), u"Speichern");
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"B") << "where it was";
    core::setTexts(nullptr);
}

TEST_F(BranchEditorMenu, ALanguageOfTheCataloguesOwnIsOfferedAndSpoken) {
    support::writeBytes("Translations.ini", support::readBytes("Translations.ini") +
                                                "\n[Language:Esperanto]\nSave = Konservi\n");
    m_services.translations = core::Translations::create("Translations.ini", "English");
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    makeScene({"A"});
    show();
    test::WindowDriver settings = openSettings();
    EXPECT_EQ(
        test::itemsOf(settings.get<toolkit::CComboUI>(u"ComboLanguage")),
        (Texts{u"English", u"Français", u"Deutsch", u"Español", u"Nederlands", u"Esperanto"}));
    settings.pick(u"ComboLanguage", 5);
    settings.press(Key::escape);
    EXPECT_TRUE(test::pumpUntil([&] { return isClosed(*m_window); }));
    ui::speakChosenLanguage(m_services);
    show();
    EXPECT_EQ(m_driver->textOf(u"ButtonSave"), u"Konservi");
    EXPECT_EQ(m_driver->textOf(u"ButtonExit"), u"Exit") << "what it lacks is English";
    core::setTexts(nullptr);
}

TEST_F(BranchEditorMenu, TheTimeOfSavingFollowsTheLanguage) {
    const std::pair<const char*, std::u16string_view> languages[] = {
        {"english", u"Saved at 03:07:41 PM."},
        {"Klingon", u"Saved at 03:07:41 PM."},
        {"german", u"Gespeichert um 22:13:20."},
    };
    for (const auto& [language, shown] : languages) {
        core::setTexts(m_services.translations->in(language));
        makeScene({"A"});
        show().click(u"ButtonSave");
        EXPECT_EQ(m_driver->textOf(u"LabelStatus").substr(0, shown.size()), shown);
    }
    core::setTexts(nullptr);
}

TEST_F(OpenSceneMenu, TheDayBeforeIsYesterdayHoweverLongItWas) {
    support::FixedClock clock;
    core::ServicesOverride stopped{{core::services().fileSystem, &clock, core::services().process}};
    constexpr std::int64_t kHour = 60 * 60;
    const std::int64_t midnight = 1'699'920'000; // of the 14th, of Greenwich
    clock.summerEnd = midnight + kHour;          // so that the 14th has 25 hours
    clock.time = midnight + 24 * kHour + kHour / 2;
    EXPECT_EQ(ui::dayText(midnight + 24 * kHour), u"Today");
    EXPECT_EQ(ui::dayText(midnight + 24 * kHour - 1), u"Yesterday");
    EXPECT_EQ(ui::dayText(midnight - kHour), u"Yesterday") << "its first second";
    EXPECT_EQ(ui::dayText(midnight - kHour - 1), u"13 November");
}

TEST_F(BranchEditorMenu, OpeningTheSettingsChoosesNoLanguage) {
    m_services.translations = m_services.translations->in("german");
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    makeScene({"A"});
    show();
    test::WindowDriver settings = openSettings();
    EXPECT_EQ(settings.get<toolkit::CComboUI>(u"ComboLanguage").GetText(), u"Deutsch");
    settings.press(Key::escape);
    EXPECT_EQ(m_services.editorSettings->getString(core::kLanguageKey, "none"), "none");
    support::writeBytes("Editor.ini", "language =\n");
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    EXPECT_FALSE(ui::isLanguageNew(m_services)) << "no choice either";
}

TEST_F(OpenSceneMenu, FiguresFollowTheLanguage) {
    const auto figures = [this](const char* language) {
        core::setTexts(m_services.translations->in(language));
        const std::u16string text = ui::bytesText(842'499) + u" " + ui::bytesText(8'249'999) +
                                    u" " + ui::percentText(46) + u" " + ui::lengthText(62.5) +
                                    u" " + ui::dateText(1'698'833'600);
        core::setTexts(nullptr);
        return text;
    };
    EXPECT_EQ(figures("English"), u"842 KB 8.2 MB 46 % 1:02.50 1 Nov 2023");
    EXPECT_EQ(figures("French"), u"842\u00A0Ko 8,2\u00A0Mo 46\u202F% 1:02.50 1er nov. 2023");
    EXPECT_EQ(figures("German"), u"842\u00A0KB 8,2\u00A0MB 46\u00A0% 1:02.50 1. Nov 2023");
    EXPECT_EQ(figures("Dutch"), u"842\u00A0kB 8,2\u00A0MB 46% 1:02.50 1 nov 2023");
}

TEST_F(BranchEditorMenu, TheSettingsTakeNoInputWhileTheSystemAsksForFiles) {
    makeScene({"A"});
    show();
    const test::WindowDriver settings = openSettings();
    m_gui.dialog.whileOpen = [&] { settings.click(u"CheckKeepDrafts"); };
    m_driver->click(u"ButtonAddVideo");
    ASSERT_EQ(m_gui.dialog.requests.size(), 1U);
    EXPECT_TRUE(isChecked(settings, u"CheckKeepDrafts"));
    settings.click(u"CheckKeepDrafts");
    EXPECT_FALSE(isChecked(settings, u"CheckKeepDrafts"));
}

} // namespace
