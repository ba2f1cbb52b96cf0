// The open scene and new scene windows and the confirmation dialog.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/windows/Answering.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/Confirmation.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "ui/StyleCombo.h"

namespace {

using support::writeBytes;
using test::Answer;
using test::answering;
using test::WindowDriver;

class OpenSceneWindow : public test::WindowTest<ui::OpenScene> {
protected:
    std::vector<std::u16string> names() {
        std::vector<std::u16string> texts;
        const auto& list = m_driver->get<toolkit::CListUI>(u"SceneList");
        for (int row = 0; row < list.GetCount(); ++row) {
            texts.push_back(test::inRow(*m_driver, u"SceneList", row, u"ListItem").GetText());
        }
        return texts;
    }

    /// Not every system's disk holds a name that is no text.
    void makeSceneThatIsNoText() {
        m_files.showAs(kNoText, "b-d");
        writeBytes("Scenes/b-d/Scene.xml", "");
    }

    static constexpr const char* kNoText = "b\xFF"
                                           "d";
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_override{{&m_files, core::services().clock, core::services().process}};
};

TEST_F(OpenSceneWindow, ListsTheScenesAndChoosesTheFirst) {
    writeBytes("Scenes/Fire %s/Scene.xml", "");
    makeSceneThatIsNoText();
    WindowDriver& driver = show();
    EXPECT_EQ(names(), (std::vector<std::u16string>{u"b\uFFFDd", u"Fire %s"}));
    EXPECT_EQ(driver.get<toolkit::CListUI>(u"SceneList").GetCurSel(), 0);
    const auto& row = *driver.get<toolkit::CListUI>(u"SceneList").GetItemAt(1);
    EXPECT_EQ(row.GetName(), u"Row");
    EXPECT_EQ(row.GetPos().height(), 16);
    EXPECT_EQ(test::inRow(driver, u"SceneList", 1, u"ListItem").GetToolTip(),
              u"Open Fire %s scenario");
    EXPECT_FALSE(driver.get(u"EmptyHeading").IsVisible());
    // The blue of the darkest pixel of a name: no less than that of the layout's ink, 1C2733.
    std::uint32_t blue = 0xFF;
    const platform::Bitmap picture = driver.picture();
    for (int y = row.GetPos().top; y < row.GetPos().bottom; ++y) {
        for (int x = row.GetPos().left; x < row.GetPos().left + 60; ++x) {
            blue = std::min(blue, picture.at(x, y) & 0xFFU);
        }
    }
    EXPECT_GE(blue, 0x33U);
    EXPECT_LT(blue, 0x80U);
}

TEST_F(OpenSceneWindow, OpensTheChosenSceneUnderItsStoredName) {
    makeSceneThatIsNoText();
    writeBytes("Scenes/Fire/Scene.xml", "");
    WindowDriver& driver = show();
    driver.click(u"ButtonLoadScene");
    EXPECT_EQ(scene().Name(), kNoText);
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_FALSE(m_state.quit);
    EXPECT_FALSE(m_state.newSceneRequest);

    show();
    m_driver->click(test::inRow(*m_driver, u"SceneList", 1, u"ListItem"));
    m_driver->click(u"ButtonLoadScene");
    EXPECT_EQ(scene().Name(), "Fire");

    show();
    m_driver->press(platform::Key::down); // the keyboard stands in the list
    m_driver->click(u"ButtonLoadScene");
    EXPECT_EQ(scene().Name(), "Fire");
}

TEST_F(OpenSceneWindow, WithoutScenesItSaysWhatToDo) {
    scene().SetName("kept");
    WindowDriver& driver = show();
    for (const auto* name : {u"EmptyIcon", u"EmptyHeading", u"EmptyLine"}) {
        EXPECT_TRUE(driver.get(name).IsVisible());
    }
    EXPECT_EQ(driver.get(u"EmptyHeading").GetText(), u"No scenes yet");
    EXPECT_FALSE(driver.get(u"ButtonLoadScene").IsEnabled());
    driver.click(u"ButtonLoadScene");
    EXPECT_FALSE(isClosed(*m_window));
    EXPECT_EQ(scene().Name(), "kept");
}

TEST_F(OpenSceneWindow, TellsWhyItIsBackAfterASceneThatDoesNotLoad) {
    writeBytes("Scenes/A %s/Scene.xml", "no scene");
    show();
    EXPECT_FALSE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_FALSE(scene().Load("A %s"));
    show();
    EXPECT_EQ(m_driver->get(u"LabelProblem").GetText(),
              u"\"A %s\" cannot be opened: its Scene.xml is not readable.");
    EXPECT_TRUE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_FALSE(m_driver->get(u"LabelHint").IsVisible());
    writeBytes("Scenes/A %s/Scene.xml", "<Scene><Name>A</Name></Scene>");
    EXPECT_TRUE(scene().Load("A %s"));
    show();
    EXPECT_TRUE(m_driver->get(u"LabelHint").IsVisible());
}

TEST_F(OpenSceneWindow, NothingChosenOpensNothing) {
    writeBytes("Scenes/A/Scene.xml", "");
    show();
    m_driver->get<toolkit::CListUI>(u"SceneList").SelectItem(-1);
    m_driver->click(u"ButtonLoadScene");
    EXPECT_FALSE(isClosed(*m_window));
}

TEST_F(OpenSceneWindow, TheOtherButtonsSetTheirFlag) {
    for (const auto* button : {u"ButtonNewScene", u"ButtonExit"}) {
        m_state = {};
        show();
        m_driver->click(button);
        const bool isExit = button == std::u16string_view(u"ButtonExit");
        EXPECT_EQ(m_state.newSceneRequest, !isExit);
        EXPECT_EQ(m_state.quit, isExit);
        EXPECT_TRUE(isClosed(*m_window));
    }
}

class NewSceneWindow : public test::WindowTest<ui::NewScene> {
protected:
    NewSceneWindow() { scene().SetName("before"); }
};

TEST_F(NewSceneWindow, TakesAnyName) {
    const std::pair<std::u16string, std::string> names[] = {
        {u"Ladder Inspection", "Ladder Inspection"},
        {u"", ""},
        {u"..", ".."},
        {u"a/b\\c", "a/b\\c"},
        {u"Übung \"%s\" & <x>", "\xC3\x9C"
                                "bung \"%s\" & <x>"},
    };
    for (const auto& [typed, stored] : names) {
        m_state = {};
        scene().AddBranch();
        WindowDriver& driver = show();
        // The keyboard stands in the edit from the start.
        driver.type(typed);
        driver.click(u"ButtonCreate");
        EXPECT_EQ(scene().Name(), stored);
        EXPECT_EQ(scene().branchCount(), 0) << "a new scene is empty";
        EXPECT_EQ(scene().FirstBranch(), "");
        EXPECT_TRUE(m_state.sceneCreated);
        EXPECT_TRUE(isClosed(*m_window));
    }
}

TEST_F(NewSceneWindow, BackChangesNothing) {
    scene().AddBranch();
    WindowDriver& driver = show();
    driver.type(u"Other");
    driver.click(u"ButtonBack");
    EXPECT_EQ(scene().Name(), "before");
    EXPECT_EQ(scene().branchCount(), 1);
    EXPECT_FALSE(m_state.sceneCreated);
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(NewSceneWindow, WarnsQuietlyOfANameThatWillNotLoadAgain) {
    WindowDriver& driver = show();
    const std::u16string usual = driver.get(u"LabelHint").GetText();
    driver.type(u"a&b");
    EXPECT_EQ(driver.get(u"LabelHint").GetText(), usual);
    driver.type(u"<");
    EXPECT_EQ(driver.get(u"LabelHint").GetText(),
              u"A scene with \"<\" in its name will not load again.");
    driver.press(platform::Key::backspace);
    EXPECT_EQ(driver.get(u"LabelHint").GetText(), usual);
}

TEST_F(NewSceneWindow, EnterInTheEditCreatesNothing) {
    WindowDriver& driver = show();
    driver.enter(u"EditSceneName", u"Name");
    EXPECT_FALSE(isClosed(*m_window));
    EXPECT_EQ(scene().Name(), "before");
}

TEST_F(NewSceneWindow, WindowsNeedTheSystemsComponents) {
    m_gui.library.fails = true;
    EXPECT_EQ(ui::NewScene::create(context()), nullptr);
    EXPECT_EQ(ui::OpenScene::create(context()), nullptr);
    EXPECT_EQ(m_gui.library.uses, 0);
}

/// Asks from an open scene window, which has no questions of its own.
class Question : public test::EditorTest {
protected:
    class Asker final : public ui::ConfirmCallback {
    public:
        platform::NativeWindow* GetParentWindow() override { return owner; }
        platform::NativeWindow* owner = nullptr;
    };

    Question() : m_owner(open<ui::OpenScene>()) { m_asker.owner = m_owner->GetNative(); }
    void ask(const std::string& title, const std::string& message, std::function<void()> answer) {
        test::gui().loop().post(std::move(answer));
        ui::Confirmation::ask(context(), m_asker, title, message);
    }

    std::shared_ptr<ui::OpenScene> m_owner;
    Asker m_asker;
};

TEST_F(Question, ShowsItsTextsAndHandsBackTheAnswer) {
    for (const auto& [answer, expected] : {std::pair{Answer::yes, ui::ConfirmCallback::kYes},
                                           std::pair{Answer::no, ui::ConfirmCallback::kNo},
                                           std::pair{Answer::escape, ui::ConfirmCallback::kNo}}) {
        m_asker.SetAnswer(7);
        std::string asked;
        ask("Gehen \xE2\x80\x94 50 %s?", "\xC3\x84?", answering(answer, &asked));
        EXPECT_EQ(asked, "Gehen \xE2\x80\x94 50 %s?|\xC3\x84?");
        EXPECT_EQ(m_asker.answer(), expected);
    }
}

TEST_F(Question, ADismissalLeavesThePresetAnswer) {
    for (const std::uint8_t preset : {ui::ConfirmCallback::kNo, ui::ConfirmCallback::kYes}) {
        m_asker.SetAnswer(preset);
        ask("?", "?", answering(Answer::close));
        EXPECT_EQ(m_asker.answer(), preset);
    }
}

TEST_F(Question, TheKeyboardStartsOnNo) {
    for (const platform::Key key : {platform::Key::enter, platform::Key::space}) {
        m_asker.SetAnswer(ui::ConfirmCallback::kYes);
        bool isSeen = false;
        ask("?", "?", [key, &isSeen] {
            WindowDriver question(test::topWindow());
            isSeen = question.manager().focusKeeper().showsRing();
            question.press(key);
        });
        EXPECT_TRUE(isSeen);
        EXPECT_EQ(m_asker.answer(), ui::ConfirmCallback::kNo);
    }
}

TEST_F(Question, OnlyItsOwnLoopEnds) {
    bool afterwards = false;
    test::gui().loop().post([&] {
        ask("?", "?", answering(Answer::yes));
        afterwards = true;
        test::gui().loop().post([] { test::gui().loop().postQuit(3); });
    });
    EXPECT_EQ(test::gui().loop().run(), 3);
    EXPECT_TRUE(afterwards);
    EXPECT_FALSE(isClosed(*m_owner));
}

TEST(StyleCombo, SetsTheLookOfCombosMadeInCode) {
    toolkit::CComboUI combo;
    ui::StyleCombo(combo, 120);
    EXPECT_EQ(combo.GetFixedWidth(), 200);
    EXPECT_EQ(combo.GetDropBoxSize(), (platform::Size{0, 120}));
    EXPECT_EQ(combo.GetPadding(), (platform::Rect{5, 1, 5, 1}));
    const toolkit::ItemStyle& style = combo.itemStyle();
    EXPECT_EQ(style.backImage, u"file='ComboItemNormal.png' corner='1,1,1,1'");
    EXPECT_EQ(style.selectedImage, u"file='ComboItemSelected.png' corner='1,1,1,1'");
    EXPECT_EQ(style.hotImage, u"file='ComboItemHover.png' corner='1,1,1,1'");
    EXPECT_EQ(style.textColor, 0xFF000000U);
    EXPECT_EQ(style.selectedTextColor, 0xFF000000U);
    EXPECT_EQ(style.selectedBackColor, 0xFFC1E3FFU);
    EXPECT_EQ(style.hotTextColor, 0xFF000000U);
    EXPECT_EQ(style.hotBackColor, 0xFFE9F5FFU);
    EXPECT_EQ(style.disabledTextColor, 0xFFCCCCCCU);
    EXPECT_EQ(style.disabledBackColor, 0xFFFFFFFFU);
    EXPECT_EQ(style.textPadding, (platform::Rect{5, 1, 5, 1}));
    EXPECT_EQ(style.font, 0);
}

} // namespace
