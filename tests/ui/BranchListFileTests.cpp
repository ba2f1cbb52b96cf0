// The branch editor: saving a scene and leaving it.
#include <filesystem>
#include <string>

#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"

namespace {

using support::readBytes;
using test::Answer;
using test::answering;
using test::WindowDriver;

class BranchEditorFiles : public test::BranchEditorTest {};

TEST_F(BranchEditorFiles, SavesTheSceneByteForByte) {
    makeScene({"Alarm & <co>", "Lift"});
    scene().setBranchFilename(0, "a.ogv");
    addAction(0, 2, "Door", "Lift");
    addAction(0, 1, "L", "Alarm & <co>");
    scene().action(0, 1)->SetImmediate(true);
    WindowDriver& driver = show();
    driver.click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Fire drill/Scene.xml"),
              "<Scene>\r\n"
              "\t<Name>Fire drill</Name>\r\n"
              "\t<FirstBranch>Alarm & <co></FirstBranch>\r\n"
              "\t<Branch>\r\n"
              "\t\t<ID>Alarm & <co></ID>\r\n"
              "\t\t<Filename>a.ogv</Filename>\r\n"
              "\t\t<Action>\r\n"
              "\t\t\t<Type>ZoneAction</Type>\r\n"
              "\t\t\t<Parameter>Door</Parameter>\r\n"
              "\t\t\t<BranchID>Lift</BranchID>\r\n"
              "\t\t</Action>\r\n"
              "\t\t<Action>\r\n"
              "\t\t\t<Type>KeypressAction</Type>\r\n"
              "\t\t\t<Parameter>L</Parameter>\r\n"
              "\t\t\t<Immediate>true</Immediate>\r\n"
              "\t\t\t<BranchID>Alarm & <co></BranchID>\r\n"
              "\t\t</Action>\r\n"
              "\t</Branch>\r\n"
              "\t<Branch>\r\n"
              "\t\t<ID>Lift</ID>\r\n"
              "\t\t<Filename></Filename>\r\n"
              "\t</Branch>\r\n"
              "</Scene>\r\n");
    EXPECT_EQ(driver.get(u"LabelStatus").GetText(),
              u"Saved at 03:07:41 PM. The name \"Alarm & <co>\" holds a \"<\": a scene saved with "
              u"it will not load again.");
}

TEST_F(BranchEditorFiles, ASceneWithoutBranchesIsNotSaved) {
    makeScene({});
    show().click(u"ButtonSave");
    EXPECT_FALSE(support::exists("Scenes"));
    EXPECT_TRUE(m_log.errors().empty());
}

/// An action's element in the file; empty texts as the file leaves them out.
std::string actionText(const char* type, const std::string& parameter, const std::string& target,
                       bool immediate = false) {
    return std::string("\t\t<Action>\r\n\t\t\t<Type>") + type + "</Type>\r\n" +
           (parameter.empty() ? "" : "\t\t\t<Parameter>" + parameter + "</Parameter>\r\n") +
           (immediate ? "\t\t\t<Immediate>true</Immediate>\r\n" : "") + "\t\t\t<BranchID>" +
           target + "</BranchID>\r\n\t\t</Action>\r\n";
}

std::string branchText(const std::string& id, const std::string& video,
                       const std::string& actions = {}) {
    return "\t<Branch>\r\n\t\t<ID>" + id + "</ID>\r\n\t\t<Filename>" + video + "</Filename>\r\n" +
           actions + "\t</Branch>\r\n";
}

/// Names that no edit and no list can show as they are: bad UTF-8, TABs, equal and empty IDs;
/// targets, parameters and videos that are not on offer; parameters where none is needed.
std::string oddScene() {
    const std::string bad = "b\xFF\xC3";
    const std::string wide(300, 'w');
    return "<Scene>\r\n\t<Name>Odd</Name>\r\n\t<FirstBranch>" + bad + "</FirstBranch>\r\n" +
           branchText(bad, "v\xFE.ogv",
                      actionText("ZoneAction", "z\xFD", bad) +
                          actionText("ZoneAction", "Door", "") +
                          actionText("ZoneAction", "", "same") +
                          actionText("KeypressAction", "lower", "nowhere", true) +
                          actionText("KeypressAction", "Q", "", true) +
                          actionText("KeypressAction", "", wide)) +
           branchText("two\tlines", "a.ogv",
                      actionText("DefaultAction", "left over", "same", true) +
                          actionText("RandomAction", "A", "two\tlines") +
                          actionText("RandomAction", "", "")) +
           branchText("same", "v\xFD.ogv") + branchText("same", "") + branchText("", "A.OGV") +
           branchText(wide, wide) + "</Scene>\r\n";
}

TEST_F(BranchEditorFiles, LookingAtEverythingAndSavingGivesTheSameBytes) {
    const std::string bytes = oddScene();
    support::writeBytes("Scenes/Odd/Scene.xml", bytes);
    support::writeBytes("Scenes/Odd/a-ZoneInfo.xml",
                        std::string("<ZoneInfo><Zone><Name>Door</Name></Zone></ZoneInfo>"));
    ASSERT_TRUE(scene().Load("Odd"));
    WindowDriver& driver = show();
    for (const int branch : {1, 2, 3, 4, 5, 0, 5, 4, 3, 2, 1, 0}) {
        driver.pick(u"ComboBranchName", branch);
        driver.click(u"EditBranchName");
        driver.click(u"ComboVideoName");
        driver.press(platform::Key::escape);
        const int rows = driver.get<toolkit::CListUI>(u"BranchList").GetCount();
        for (int row = 0; row < rows; ++row) {
            for (const auto* combo : {u"ComboConditions", u"ComboParameter", u"ComboBranches"}) {
                toolkit::CControlUI& shown = test::inRow(driver, u"BranchList", row, combo);
                driver.click(shown);
                driver.press(platform::Key::escape);
                driver.wheel(WindowDriver::middleOf(shown), -1);
            }
        }
        for (int stop = 0; stop < 40; ++stop) {
            driver.press(platform::Key::tab);
        }
    }
    driver.click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Odd/Scene.xml"), bytes);
}

TEST_F(BranchEditorFiles, AFailedSaveIsShownUntilTheNextGoodOne) {
    makeScene({"Alarm"});
    support::makeFolder("Scenes/Fire drill/Scene.xml");
    WindowDriver& driver = show();
    const std::u16string usual = driver.get(u"LabelStatus").GetText();
    EXPECT_EQ(usual, u"Changes are kept in memory until you press Save.");
    driver.click(u"ButtonSave");
    const std::u16string shown = driver.get(u"LabelStatus").GetText();
    EXPECT_EQ(shown.substr(0, 11), u"Not saved: ");
    EXPECT_GT(shown.size(), 11U);
    // In a label of its own, which stands out.
    EXPECT_EQ(driver.get(u"LabelProblem").GetText(), shown);
    EXPECT_TRUE(driver.get(u"LabelProblem").IsVisible());
    EXPECT_FALSE(driver.get(u"LabelStatus").IsVisible());
    // Another window of the same scene still tells.
    m_driver.reset();
    m_window.reset();
    show();
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText(), shown);
    std::filesystem::remove("Scenes/Fire drill/Scene.xml");
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText(), u"Saved at 03:07:41 PM. " + usual);
    EXPECT_FALSE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_TRUE(m_driver->get(u"LabelStatus").IsVisible());
}

struct Leaving {
    Answer answer;
    bool leaves;
};

TEST_F(BranchEditorFiles, ExitAsksAndADismissalMeansYes) {
    for (const Leaving& test : {Leaving{Answer::no, false}, Leaving{Answer::escape, false},
                                Leaving{Answer::yes, true}, Leaving{Answer::close, true}}) {
        makeScene({"Alarm"});
        m_state.quit = false;
        WindowDriver& driver = show();
        std::string asked;
        driver.clickThen(u"ButtonExit", answering(test.answer, &asked));
        EXPECT_EQ(asked, "Exit?|Are you sure you want to exit?");
        EXPECT_EQ(m_state.quit, test.leaves);
        EXPECT_EQ(isClosed(*m_window), test.leaves);
    }
}

TEST_F(BranchEditorFiles, AnExitQuestionThatCannotBeAskedMeansYes) {
    makeScene({"Alarm"});
    WindowDriver& driver = show();
    std::filesystem::remove("UI/Confirmation.xml");
    driver.click(u"ButtonExit");
    EXPECT_TRUE(m_state.quit);
    EXPECT_FALSE(m_log.errors().empty());
}

} // namespace
