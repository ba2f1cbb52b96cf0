// One whole pass of an author, from the open scene window to the files on the disk: the program
// runs its own loops and hears nothing but mouse and keyboard.
#include <cstdint>
#include <string>
#include <vector>

#include "app/Program.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/windows/EditorTest.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CEditUI.h"
#include "toolkit/CListUI.h"
#include "tools/tour/Script.h"

namespace {

using platform::Key;
using support::readBytes;
using support::writeBytes;

constexpr const char16_t* kOpenScene = u"OpenSceneWindow";
constexpr const char16_t* kBranches = u"QuorvelWindow";
constexpr const char16_t* kZones = u"ZoneEditWindow";
constexpr const char16_t* kQuestion = u"ConfirmationWindow";

constexpr int kFrames = 12;

class EditingPass : public support::TempFolderTest {
protected:
    EditingPass() {
        test::copySkin();
        writeBytes("Scenes/Drill/Scene.xml",
                   "<Scene><Name>Drill</Name><FirstBranch>Start</FirstBranch><Branch>"
                   "<ID>Start</ID><Filename>intro.ogv</Filename></Branch></Scene>");
        support::ClipSpec clip;
        clip.frames = kFrames;
        support::makeFolder("from");
        writeBytes("from/door.ogv", support::makeClip(clip));
    }

    void click(const char16_t* window, std::u16string_view control) {
        m_script.on(window, [this, control] { m_script.click(control); });
    }
    void replaceText(const char16_t* window, std::u16string_view edit, const std::u16string& text) {
        click(window, edit);
        m_script.on(window, [this, text] {
            platform::Modifiers control;
            control.control = true;
            m_script.press(Key::a, control);
            m_script.type(text);
            m_script.press(Key::enter);
        });
    }
    void pick(std::u16string_view combo, int item) {
        click(kBranches, combo);
        m_script.on(kBranches, [this, item] { m_script.pickItem(item); });
    }
    void pickInRow(int row, std::u16string_view combo, int item) {
        m_script.on(kBranches, [this, row, combo] { m_script.clickInRow(row, combo); });
        m_script.on(kBranches, [this, item] { m_script.pickItem(item); });
    }
    void clickPicture(int x, int y) {
        m_script.on(kZones, [this, x, y] { m_script.clickAt({x, y + 36}); });
    }

    void addABranchWithAVideo();
    void drawAZone();
    void letItLeadSomewhere();
    int run();

    tour::Script m_script{"./"};
};

void EditingPass::addABranchWithAVideo() {
    click(kOpenScene, u"ButtonLoadScene");
    click(kBranches, u"ButtonAddBranch");
    replaceText(kBranches, u"EditBranchName", u"At the door");
    click(kBranches, u"ButtonAddVideo");
    m_script.waitUntil(kBranches, [this] {
        return m_script.get<toolkit::CControlUI>(u"ButtonSave").IsEnabled() &&
               m_script.get<toolkit::CComboUI>(u"ComboVideoName").GetCount() == 2;
    });
    pick(u"ComboVideoName", 1);
    click(kBranches, u"ButtonAddAction");
    pickInRow(0, u"ComboConditions", 2);
    click(kBranches, u"ButtonEditZones");
}

void EditingPass::drawAZone() {
    click(kZones, u"ButtonAddZone");
    replaceText(kZones, u"EditZone", u"Handle");
    click(kZones, u"OptionAddMultiPoint");
    clickPicture(200, 150);
    clickPicture(600, 150);
    clickPicture(400, 450);
    click(kZones, u"OptionMovePoint");
    click(kZones, u"ButtonNext10");
    // On frame 10 and all later ones the second point lies elsewhere.
    m_script.on(kZones, [this] { m_script.drag({{600, 186}, {640, 200}, {700, 216}}); });
    m_script.on(kZones, [this] { m_script.press(Key::right); });
    click(kZones, u"OptionToggleActive");
    click(kZones, u"ButtonSave");
    click(kZones, u"ButtonClose");
    click(kQuestion, u"ButtonYes");
}

void EditingPass::letItLeadSomewhere() {
    pick(u"ComboBranchName", 1);
    pickInRow(0, u"ComboParameter", 0);
    pickInRow(0, u"ComboBranches", 0);
    m_script.on(kBranches, [this] { m_script.clickInRow(0, u"CheckImmediate"); });
    click(kBranches, u"CheckFirst");
    click(kBranches, u"ButtonSave");
    click(kBranches, u"ButtonExit");
    click(kQuestion, u"ButtonYes");
}

int EditingPass::run() {
    m_script.play(test::gui());
    const int exitCode = app::runProgram("TestMode", [this] {
        auto gui = std::make_unique<test::ScriptedGui>(test::gui());
        gui->dialog.answer = platform::OpenFilesResult{m_folder.path() + "from/", {"door.ogv"}};
        gui->ends = [this] { return !m_script.problem().empty(); };
        return gui;
    });
    m_script.stop();
    return exitCode;
}

std::string word(std::int32_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(static_cast<std::uint32_t>(value) >> shift);
    }
    return bytes;
}

/// One frame's record: its points in pixels of the 64 x 48 video.
std::string shape(bool active, const std::vector<platform::Point>& points) {
    std::string bytes = word(8 + 8 * static_cast<int>(points.size())) + word(active ? 1 : 0);
    for (const platform::Point point : points) {
        bytes += word(point.x) + word(point.y);
    }
    return bytes;
}

/// The file of the zone; 20 x 15 display pixels stand for one of the video.
std::string drawnZone() {
    std::string zone = word(7) + std::string("Handle\0", 7) + word(kFrames);
    for (int frame = 0; frame < kFrames; ++frame) {
        const platform::Point second =
            frame < 10 ? platform::Point{30, 10} : platform::Point{35, 12};
        zone += shape(frame < 11, {{10, 10}, second, {20, 30}});
    }
    return "ENOZ" + word(static_cast<int>(zone.size())) + zone;
}

TEST_F(EditingPass, LeavesTheFilesThatAPlayerReads) {
    const support::LogCapture log;
    addABranchWithAVideo();
    drawAZone();
    letItLeadSomewhere();
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(m_script.problem(), "");
    ASSERT_TRUE(m_script.isFinished());

    EXPECT_EQ(readBytes("Scenes/Drill/door.ogv"), readBytes("from/door.ogv"));
    EXPECT_EQ(readBytes("Scenes/Drill/Scene.xml"), "<Scene>\r\n"
                                                   "\t<Name>Drill</Name>\r\n"
                                                   "\t<FirstBranch>At the door</FirstBranch>\r\n"
                                                   "\t<Branch>\r\n"
                                                   "\t\t<ID>Start</ID>\r\n"
                                                   "\t\t<Filename>intro.ogv</Filename>\r\n"
                                                   "\t</Branch>\r\n"
                                                   "\t<Branch>\r\n"
                                                   "\t\t<ID>At the door</ID>\r\n"
                                                   "\t\t<Filename>door.ogv</Filename>\r\n"
                                                   "\t\t<Action>\r\n"
                                                   "\t\t\t<Type>ZoneAction</Type>\r\n"
                                                   "\t\t\t<Parameter>Handle</Parameter>\r\n"
                                                   "\t\t\t<Immediate>true</Immediate>\r\n"
                                                   "\t\t\t<BranchID>Start</BranchID>\r\n"
                                                   "\t\t</Action>\r\n"
                                                   "\t</Branch>\r\n"
                                                   "</Scene>\r\n");
    EXPECT_EQ(readBytes("Scenes/Drill/door-ZoneInfo.xml"), "<ZoneInfo>\r\n"
                                                           "\t<VideoWidth>1280</VideoWidth>\r\n"
                                                           "\t<VideoHeight>720</VideoHeight>\r\n"
                                                           "\t<Zone>\r\n"
                                                           "\t\t<Name>Handle</Name>\r\n"
                                                           "\t</Zone>\r\n"
                                                           "</ZoneInfo>\r\n");
    EXPECT_EQ(readBytes("Scenes/Drill/door-ZoneInfo.bin"), drawnZone());
    EXPECT_EQ(support::filesBelow("Scenes"),
              (std::vector<std::string>{"Drill/Scene.xml", "Drill/door-ZoneInfo.bin",
                                        "Drill/door-ZoneInfo.xml", "Drill/door.ogv"}));

    EXPECT_EQ(log.errors(), std::vector<std::string>{"Unable to load zone binary"});
}

} // namespace
