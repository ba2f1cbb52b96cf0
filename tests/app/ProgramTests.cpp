// Start-up, exit codes, the hand-off around the screens, and one whole pass of an author.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/Program.h"
#include "core/Log.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/FileDialog.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecordingProcess.h"
#include "tests/support/windows/EditorTest.h"
#include "tests/zone/ZoneFixture.h"
#include "tools/tour/AuthoringPass.h"
#include "tools/tour/EditingPass.h"
#include "tools/tour/Hands.h"
#include "tools/tour/Script.h"

namespace {

using support::readBytes;
using support::writeBytes;
using Lines = std::vector<std::string>;

const std::string kFolder = "Scenes/\xC3\x9C/";
constexpr int kFrames = 14;

/// In pixels of the 64 x 48 video; 20 x 15 display pixels stand for one of it.
std::string zoneOnAllFrames(const std::string& name, const zone_tests::Points& before,
                            const zone_tests::Points& fromFrame11) {
    std::vector<std::string> shapes(kFrames, zone_tests::shapeBytes(before));
    std::fill(shapes.begin() + 11, shapes.end(), zone_tests::shapeBytes(fromFrame11));
    return zone_tests::zoneBytes(name, shapes);
}

/// The program's working directory is two folders deep, as in the product.
class Program : public support::TempFolderTest {
protected:
    Program() {
        writeBytes("Settings/Launcher.ini", "Menu.exe");
        support::makeFolder("Programs/Quorvel");
        std::filesystem::current_path("Programs/Quorvel");
        test::copySkin();
        writeBytes(kFolder + "Scene.xml", "<Scene><Name>\xC3\x9C</Name></Scene>");
    }
    int run(const std::string& commandLine, tour::Script& script) {
        script.play(test::gui());
        const int exitCode = app::runProgram(commandLine, [&]() -> std::unique_ptr<platform::Gui> {
            ++m_guis;
            auto gui = std::make_unique<test::ScriptedGui>(test::gui());
            gui->library.fails = m_componentsFail;
            gui->dialog.answer = m_chosenFiles;
            gui->ends = [&] { return !script.problem().empty(); };
            return m_hasDisplay ? std::move(gui) : nullptr;
        });
        script.stop();
        EXPECT_EQ(script.problem(), "");
        EXPECT_TRUE(script.isFinished());
        return exitCode;
    }

    support::LogCapture m_log;
    support::RecordingProcess m_process;
    core::ServicesOverride m_override{
        {core::services().fileSystem, core::services().clock, &m_process}};
    std::optional<platform::OpenFilesResult> m_chosenFiles;
    bool m_hasDisplay = true;
    bool m_componentsFail = false;
    int m_guis = 0;
};

TEST_F(Program, AStartThatFailsShowsNothing) {
    tour::Script nothing("./");
    m_hasDisplay = false;
    EXPECT_EQ(run("", nothing), 1);
    std::filesystem::rename("Translations.ini", "away");
    EXPECT_EQ(run("Launcher", nothing), 1);
    EXPECT_EQ(m_guis, 1) << "without texts there is no window";
    EXPECT_TRUE(m_process.requests.empty()) << "and no hand-off";
    std::filesystem::rename("away", "Translations.ini");
    m_hasDisplay = m_componentsFail = true;
    m_process.onStart = [] { core::Log::get()->Error("later than the page"); };
    EXPECT_EQ(run("Launcher", nothing), 1);
    ASSERT_EQ(m_process.requests.size(), 1U) << "the launcher starts again";
    EXPECT_EQ(std::filesystem::path(m_process.requests.front().program).filename(), "Menu.exe");
    EXPECT_EQ(m_log.errors(),
              (Lines{"Unable to initialize editor interfaces.", "CoInitialize failed (8007000E)"}));
}

TEST_F(Program, GoesBackToTheOpenWindowAndOffersWhatWasNotSaved) {
    tour::Script script("./");
    const auto click = [&script](const char16_t* window, const char16_t* control) {
        script.on(window, [&script, control] { script.click(control); });
    };
    click(u"OpenSceneWindow", u"ButtonLoadScene");
    click(u"QuorvelWindow", u"ButtonAddBranch");
    script.on(u"QuorvelWindow", [&script] {
        script.press(platform::Key::menu);
        script.type(u"o");
        script.press(platform::Key::enter);
    });
    click(u"OpenSceneWindow", u"ButtonRestoreDraft");
    script.on(u"QuorvelWindow", [&script] {
        EXPECT_EQ(script.get<toolkit::CComboUI>(u"ComboBranchName").GetCount(), 1);
    });
    click(u"QuorvelWindow", u"ButtonExit");
    click(u"ConfirmationWindow", u"ButtonYes");
    EXPECT_EQ(run("TestMode", script), 0);
    EXPECT_EQ(m_log.errors(), Lines{});
}

/// One whole pass of an author, from the open scene window to the files on the disk: the program
/// runs its own loops and hears nothing but mouse and keyboard.
TEST_F(Program, LeavesTheFilesThatAPlayerReads) {
    writeBytes(kFolder + "Scene.xml",
               "<Scene><Name>\xC3\x9C</Name><FirstBranch>Start</FirstBranch><Branch>"
               "<ID>Start</ID><Filename>door.ogv</Filename></Branch></Scene>");
    support::ClipSpec clip;
    clip.frames = kFrames;
    const support::Bytes bytes = support::makeClip(clip);
    const std::string video(bytes.begin(), bytes.end());
    writeBytes(kFolder + "door.ogv", video);
    const zone_tests::Points triangle{{10, 10}, {30, 10}, {20, 30}};
    const std::string handle = zoneOnAllFrames("Handle", triangle, triangle);
    writeBytes(kFolder + "door-ZoneInfo.bin", handle);
    writeBytes(kFolder + "door-ZoneInfo.xml", zone_tests::infoBytes({"Handle"}));
    tour::Script script("./");
    script.skipWaits();
    tour::writeEditingPass(script);
    EXPECT_EQ(run("TestMode", script), 0);
    std::string scene = readBytes(kFolder + "Scene.xml");
    std::erase_if(scene, [](char c) { return c == '\r' || c == '\n' || c == '\t'; });
    EXPECT_EQ(scene,
              "<Scene><Name>\xC3\x9C</Name><FirstBranch>Start</FirstBranch>"
              "<Branch><ID>Start</ID><Filename>door.ogv</Filename></Branch>"
              "<Branch><ID>Check the corridor</ID><Filename>door.ogv</Filename>"
              "<Action><Type>ZoneAction</Type><Parameter>Handle</Parameter>"
              "<Immediate>true</Immediate><BranchID>Start</BranchID></Action>"
              "<Action><Type>DefaultAction</Type><BranchID>Check the corridor</BranchID></Action>"
              "</Branch></Scene>");
    EXPECT_EQ(readBytes(kFolder + "door-ZoneInfo.xml"),
              zone_tests::infoBytes({"Handle", "Way out"}));
    EXPECT_EQ(readBytes(kFolder + "door-ZoneInfo.bin"),
              handle + zoneOnAllFrames("Way out", {{24, 15}, {36, 14}, {38, 30}, {25, 31}},
                                       {{24, 15}, {39, 13}, {38, 30}, {25, 31}}));
    EXPECT_EQ(support::filesBelow(kFolder),
              (Lines{"Scene.xml", "door-ZoneInfo.bin", "door-ZoneInfo.xml", "door.ogv"}));
    EXPECT_EQ(readBytes(kFolder + "door.ogv"), video);
    EXPECT_EQ(m_log.errors(), Lines{});
}

TEST_F(Program, UnsavedWorkComesBackInTheNextRunAndGoesWithTheSave) {
    constexpr const char16_t* kOpenScene = u"OpenSceneWindow";
    constexpr const char16_t* kBranches = u"QuorvelWindow";
    const auto isKept = [] {
        return support::exists("Drafts") && !support::filesBelow("Drafts").empty();
    };
    const auto click = [](tour::Script& script, const char16_t* window, const char16_t* control) {
        script.on(window, [&script, control] { script.click(control); });
    };
    const auto leave = [&](tour::Script& script) {
        click(script, kBranches, u"ButtonExit");
        click(script, u"ConfirmationWindow", u"ButtonYes");
    };
    const std::string saved = readBytes(kFolder + "Scene.xml");
    tour::Script first("./");
    click(first, kOpenScene, u"ButtonLoadScene");
    click(first, kBranches, u"ButtonAddBranch");
    leave(first);
    EXPECT_EQ(run("", first), 0);
    EXPECT_EQ(readBytes(kFolder + "Scene.xml"), saved);
    EXPECT_TRUE(isKept());

    tour::Script second("./");
    click(second, kOpenScene, u"ButtonRestoreDraft");
    second.on(kBranches, [&] {
        EXPECT_EQ(second.get<toolkit::CControlUI>(u"LabelState").GetText(), u"Modified");
        EXPECT_EQ(second.get<toolkit::CControlUI>(u"EditBranchName").GetText(), u"New Branch 2");
        EXPECT_TRUE(isKept()) << "until it is saved";
        second.click(u"ButtonSave");
    });
    leave(second);
    EXPECT_EQ(run("", second), 0);
    EXPECT_NE(readBytes(kFolder + "Scene.xml").find("<ID>New Branch 2</ID>"), std::string::npos);
    EXPECT_FALSE(isKept());
    EXPECT_EQ(m_log.errors(), Lines{});
}

/// What the authoring pass is to leave, made without windows.
std::string plannedScene(const std::vector<std::string>& videos) {
    const auto session = scene::SceneSession::create(scene::SceneManager::create());
    session->newScene(core::storedText(tour::kPlannedScene));
    const auto nameOf = [](int branch) { return core::storedText(tour::kPlannedBranches[branch]); };
    for (int i = 0; i < static_cast<int>(std::size(tour::kPlannedBranches)); ++i) {
        session->addBranch();
        session->renameBranch(i, nameOf(i));
        session->setVideo(i, videos[static_cast<std::size_t>(tour::kPlannedVideos[i])]);
    }
    session->setFirstBranch(nameOf(0));
    for (const tour::PlannedAction& action : tour::kPlannedActions) {
        const int row = session->actionCount(action.branch);
        session->addAction(action.branch);
        session->setType(action.branch, row, action.condition);
        if (action.letter >= 0) {
            session->setParameter(action.branch, row,
                                  std::string(1, static_cast<char>('A' + action.letter)));
        }
        session->setTarget(action.branch, row, nameOf(action.target));
        session->setImmediate(action.branch, row, action.isImmediate);
    }
    return session->savedForm();
}

TEST_F(Program, MakesTheSameSceneByKeysAloneAndByAScreenReadersActionsAlone) {
    const std::vector<std::string> videos{"a.ogv", "b.ogv"};
    const support::Bytes clip = support::makeClip({});
    for (const std::string& video : videos) {
        writeBytes("from/" + video, clip);
    }
    m_chosenFiles = {core::services().fileSystem->fullPath("from") + "/", videos};
    const std::string wanted = plannedScene(videos);
    const std::string folder = "Scenes/" + core::storedText(tour::kPlannedScene) + "/";
    for (const bool isByKeys : {true, false}) {
        SCOPED_TRACE(isByKeys);
        tour::Script script("./");
        script.skipWaits();
        tour::KeyHands keys(script);
        tour::AccessibleHands reader(script);
        tour::writeAuthoringPass(script, isByKeys ? static_cast<tour::Hands&>(keys) : reader);
        EXPECT_EQ(run("", script), 0);
        EXPECT_EQ(readBytes(folder + "Scene.xml"), wanted);
        EXPECT_EQ(support::filesBelow(folder), (Lines{"Scene.xml", "a.ogv", "b.ogv"}));
        std::filesystem::remove_all("Scenes");
        writeBytes(kFolder + "Scene.xml", "<Scene><Name>\xC3\x9C</Name></Scene>");
    }
    EXPECT_EQ(m_log.errors(), Lines{});
}

} // namespace
