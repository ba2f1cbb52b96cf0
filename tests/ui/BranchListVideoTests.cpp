// The videos of the branch editor: which are listed, copying new ones, and the way to the zones.
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "jobs/VideoImport.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "stills/StillService.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/Gate.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CPictureUI.h"
#include "ui/FigureTexts.h"

namespace {

using support::exists;
using support::readBytes;
using support::writeBytes;
using test::itemsOf;
using test::pumpUntil;
using test::Texts;

constexpr int kNotFound = 2; // on every system

std::string clipBytes() {
    const support::Bytes clip = support::makeClip({.frames = 2});
    return {clip.begin(), clip.end()};
}

class BranchVideos : public test::BranchEditorTest {
protected:
    BranchVideos() {
        m_gate.open();
        makeScene({"Alarm"}, {"first.ogv"});
        writeBytes("from/a.ogv", clipBytes() + std::string(3'000'000, 'a'));
        writeBytes("from/b.ogv", clipBytes());
        m_files.setRule(
            [this](const support::Call& call) {
                if (call.path.ends_with(jobs::importTemporary()) && call.operation == "open") {
                    m_gate.wait();
                }
                return support::Fault::none;
            },
            0);
    }
    void TearDown() override {
        m_gate.open(); // the window waits for its copies
        BranchEditorTest::TearDown();
    }
    toolkit::CComboUI& videos() { return combo(u"ComboVideoName"); }
    Texts listed() { return itemsOf(videos()); }
    void waitForCopies() {
        ASSERT_TRUE(pumpUntil([this] { return isEnabled(u"ButtonSave"); }));
    }
    /// Presses Add Video, for these files of `folder`.
    void pressAddVideo(const std::vector<std::string>& names, const std::string& folder = "from/") {
        m_gui.dialog.answer = platform::OpenFilesResult{m_folder.path() + folder, names};
        m_driver->click(u"ButtonAddVideo");
    }
    void addVideos(const std::vector<std::string>& names, const std::string& folder = "from/") {
        pressAddVideo(names, folder);
        waitForCopies();
    }

    support::Gate m_gate; ///< closed, it holds up the copying thread before it writes
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_disk{{&m_files, core::services().clock, core::services().process}};
};

TEST_F(BranchVideos, EachVideoIsListedOnceAndABranchWithoutKeepsWhatIsShown) {
    makeScene({"1", "2", "3", "4", "5"}, {"b.ogv", "a.ogv", "", "A.ogv", "a.ogv"});
    show();
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 884, 712)); // room for the hint
    test::pump();
    EXPECT_EQ(listed(), (Texts{u"b.ogv", u"a.ogv", u"", u"A.ogv"}));
    for (const auto& [branch, shown] : {std::pair{0, u"b.ogv"}, {3, u"A.ogv"}, {2, u"A.ogv"}}) {
        m_driver->pick(u"ComboBranchName", branch);
        EXPECT_EQ(videos().GetText(), shown);
        EXPECT_EQ(isVisible(u"LabelOwnVideo"), branch == 2);
        EXPECT_EQ(isVisible(u"LabelZonesHint"), branch != 2);
    }
    EXPECT_EQ(m_driver->textOf(u"LabelOwnVideo"), u"This branch has no video yet.");
    EXPECT_EQ(scene().branchFilename(2), "");
    m_driver->pick(u"ComboVideoName", 3); // the one on show already
    EXPECT_EQ(scene().branchFilename(2), "A.ogv");
    EXPECT_FALSE(isVisible(u"LabelOwnVideo"));
    m_state.newSceneRequest = true; // none is listed then
    show();
    EXPECT_EQ(listed(), Texts{});
    EXPECT_EQ(videos().GetCurSel(), -1);
    EXPECT_EQ(scene().branchFilename(0), "b.ogv");
    EXPECT_EQ(m_driver->textOf(u"LabelOwnVideo"), u"Its video is \"b.ogv\".");
    EXPECT_FALSE(isEnabled(u"ButtonEditZones"));
}

TEST_F(BranchVideos, TheDialogAsksForTheoraFilesAndTheDirectoryStays) {
    show();
    m_gui.dialog.whileOpen = [] { std::filesystem::current_path("/"); };
    m_driver->click(u"ButtonAddVideo");
    ASSERT_EQ(m_gui.dialog.requests.size(), 1U);
    const platform::OpenFilesRequest& request = m_gui.dialog.requests.front();
    EXPECT_EQ(request.title, "Select Video");
    EXPECT_EQ(request.filterName, "Theora Video Files");
    EXPECT_EQ(request.filterPatterns, "*.ogg;*.ogv");
    EXPECT_EQ(request.initialFolder, m_folder.path() + "Scenes/");
    EXPECT_EQ(request.owner, m_window->GetNative());
    EXPECT_EQ(std::filesystem::current_path() / "", std::filesystem::path(m_folder.path()));
    EXPECT_EQ(listed(), Texts{u"first.ogv"}) << "cancelled";
}

TEST_F(BranchVideos, CopiesThoseThatAreNotListedAndChoosesNothing) {
    const std::string odd = "50 % \xC3\xA4 & 'x'.ogv";
    writeBytes("from/" + odd, "odd");
    writeBytes("from/cut.ogv", clipBytes().substr(0, 100));
    writeBytes("from/first.ogv", "new");
    writeBytes("Scenes/Fire/first.ogv", "old");
    writeZones("b", {"Door"});
    addAction(scene::Action::kZoneAction);
    show();
    addVideos({"first.ogv", "a.ogv", "missing.ogv", odd, "b.ogv", "cut.ogv"});
    EXPECT_EQ(listed(),
              (Texts{u"first.ogv", u"a.ogv", core::displayText(odd), u"b.ogv", u"cut.ogv"}));
    EXPECT_EQ(readBytes("Scenes/Fire/first.ogv"), "old");
    EXPECT_EQ(readBytes("Scenes/Fire/a.ogv"), readBytes("from/a.ogv"));
    EXPECT_FALSE(exists("Scenes/Fire/missing.ogv"));
    EXPECT_EQ(readBytes("Scenes/Fire/" + odd), "odd");
    EXPECT_EQ(videos().GetCurSel(), 0);
    EXPECT_EQ(scene().branchFilename(0), "first.ogv");
    EXPECT_TRUE(m_log.errors().empty());
    EXPECT_TRUE(isVisible(u"LabelProblem"));
    std::string reason = m_files.errorText(kNotFound);
    if (reason.ends_with('.')) { // some systems end their texts themselves
        reason.pop_back();
    }
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"),
              core::displayText("Not added: missing.ogv: " + reason +
                                ". \"cut.ogv\" cannot be played: "
                                "End of file found prematurely. \"" +
                                odd +
                                "\" is not a Theora video and cannot be played. "
                                "2 videos are in the list now; choose them for branches. "
                                "A video of this name was in the list already."));
    // One that lies in the scene's folder already is listed and stays whole.
    writeBytes("Scenes/Fire/c.ogv", clipBytes());
    addVideos({"c.ogv", "a.ogv"}, "Scenes\\Fire\\");
    EXPECT_EQ(videos().GetItemText(5), u"c.ogv");
    EXPECT_EQ(readBytes("Scenes/Fire/c.ogv"), clipBytes());
    EXPECT_FALSE(isVisible(u"LabelProblem"));
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"),
              u"The video is in the list now; choose it for a branch. "
              u"A video of this name was in the list already.");
    // Zones of a new one are offered in the next window only.
    m_driver->pick(u"ComboVideoName", 3);
    EXPECT_EQ(scene().branchFilename(0), "b.ogv");
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), Texts{});
    show();
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), Texts{u"Door"});
}

TEST_F(BranchVideos, NothingElseCanBeDoneWhileAVideoIsCopied) {
    show();
    m_gate.close();
    pressAddVideo({"a.ogv", "b.ogv"});
    for (const auto* name :
         {u"ButtonExit", u"ButtonSave", u"ButtonAddBranch", u"ButtonAddVideo", u"ButtonEditZones",
          u"ButtonAddAction", u"ButtonRemoveAction", u"ComboBranchName", u"ComboVideoName",
          u"EditBranchName", u"CheckFirst", u"BranchList"}) {
        EXPECT_FALSE(isEnabled(name)) << core::storedText(name);
    }
    m_driver->press(platform::Key::s, {.control = true});
    EXPECT_FALSE(std::filesystem::exists("Scenes/Fire/Scene.xml"));
    EXPECT_EQ(m_driver->textOf(u"LabelStatus").substr(0, 22), u"Copying a.ogv (1 of 2)");
    m_gate.open();
    waitForCopies();
    EXPECT_EQ(videos().GetCount(), 3);
    EXPECT_EQ(m_driver->focusName(), u"ButtonAddVideo");
    const auto* const added = u"2 videos are in the list now; choose them for branches.";
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), added);
    m_driver->pick(u"ComboVideoName", 1);
    EXPECT_NE(m_driver->textOf(u"LabelStatus"), added);
    addVideos({"b.ogv"});
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"A video of this name was in the list already.");
    // All that one press added is one step; the files stay.
    const std::string form = session().savedForm();
    m_driver->click(u"ButtonUndo");
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(listed(), Texts{u"first.ogv"});
    EXPECT_TRUE(exists("Scenes/Fire/a.ogv") && exists("Scenes/Fire/b.ogv"));
    EXPECT_TRUE(session().restore(form));
    EXPECT_EQ(listed(), (Texts{u"first.ogv", u"a.ogv"}));
    EXPECT_EQ(videos().GetText(), u"a.ogv");
    EXPECT_EQ(session().history().undoLabel()->step, scene::SceneStep::restoreVersion);
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(videos().GetText(), u"first.ogv");
    addVideos({"b.ogv"});
    m_driver->click(u"ButtonUndo");
    writeZones("b", {"Door"});
    addAction(scene::Action::kZoneAction);
    show(); // as after a visit to the zone editor
    m_driver->click(u"ButtonRedo");
    m_driver->pick(u"ComboVideoName", 1);
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), Texts{u"Door"});
    m_driver->click(u"ButtonUndo");
    show();
    EXPECT_EQ(listed(), (Texts{u"first.ogv", u"b.ogv"}));
}

TEST_F(BranchVideos, EscapeCancelsTheCopyAndAllThatFollow) {
    writeBytes("Scenes/Fire/a.ogv", "old");
    show();
    m_gate.close();
    pressAddVideo({"a.ogv", "b.ogv"});
    EXPECT_EQ(listed(), (Texts{u"first.ogv", u"a.ogv"}));
    m_driver->press(platform::Key::escape);
    m_gate.open();
    waitForCopies();
    EXPECT_EQ(listed(), Texts{u"first.ogv"});
    EXPECT_EQ(readBytes("Scenes/Fire/a.ogv"), "old");
    EXPECT_EQ(support::filesBelow("Scenes/Fire"), std::vector<std::string>{"a.ogv"});
}

TEST_F(BranchVideos, AWindowThatClosesDuringACopyEndsIt) {
    show();
    m_gate.close();
    pressAddVideo({"a.ogv"});
    test::input().requestClose(m_driver->native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window));
    // The copy is held at the gate; the window's end cancels it and waits.
    std::thread opener([this] { m_gate.open(); });
    endWindow();
    opener.join();
    test::pump();
    EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{});
}

TEST_F(BranchVideos, EditZonesTakesTheVideoOfTheBranchAtTheVideosPlace) {
    const struct {
        const char* what;
        std::vector<std::string> videos; ///< of the branches
        std::string opens;               ///< empty: stays
    } cases[] = {
        {"lists in the same order", {"a.ogv", "b.ogv"}, "b.ogv"},
        {"lists in another order", {"a.ogv", "a.ogv", "b.ogv"}, "a.ogv"},
        {"no video at that place", {"a.ogv", "", "b.ogv"}, ""},
        {"no branch at that place", {"a.ogv"}, ""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        makeScene(test.videos, test.videos);
        m_state = {};
        show();
        addVideos({"b.ogv"});
        m_driver->pick(u"ComboVideoName", 1);
        const bool leaves = !test.opens.empty();
        EXPECT_EQ(m_driver->get(u"ButtonEditZones").GetToolTip(),
                  core::displayText("Draw the zones of this video" +
                                    (leaves ? ": " + test.opens : std::string())));
        const bool isOther = m_driver->textOf(u"LabelStatus") ==
                             u"Edit Zones opens \"a.ogv\" here. This Branch's Zones opens "
                             u"\"b.ogv\".";
        EXPECT_EQ(isOther, test.opens == "a.ogv");
        m_driver->click(u"ButtonEditZones");
        EXPECT_EQ(m_state.zoneEditRequest, leaves);
        EXPECT_EQ(m_state.zoneEditVideo, leaves ? sceneFolder("Fire") + test.opens : "");
        EXPECT_EQ(isClosed(*m_window), leaves);
        EXPECT_TRUE(leaves || m_driver->textOf(u"LabelStatus") ==
                                  u"Edit Zones opens the video of the branch at the same "
                                  u"position in the list; there is no branch 2 with a video.");
    }
    EXPECT_EQ(m_log.errors(),
              std::vector<std::string>{"..\\BranchManager.cpp:351 Invalid branch index"});
}

TEST_F(BranchVideos, AVisitToTheZonesOfTheBranchOnShowEndsWhereItBegan) {
    makeScene({"1", "2", "3"}, {"a.ogv", "a.ogv", ""});
    for (int i = 0; i < 40; ++i) {
        addAction(scene::Action::kZoneAction, i % 2 == 0 ? "Door" : "Hall", "1", 1);
    }
    addAction(scene::Action::kZoneAction, "Door", "1", 0);
    m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
    show();
    m_driver->pick(u"ComboBranchName", 2);
    EXPECT_FALSE(isEnabled(u"ButtonEditBranchZones"));
    EXPECT_TRUE(isVisible(u"LabelNoVideo")) << "not the name of the last one";
    m_driver->pick(u"ComboBranchName", 1);
    EXPECT_FALSE(isVisible(u"LabelNoVideo"));
    actions().SelectItem(30);
    m_window->GetPaintManager().UpdateLayout();
    const int row = actions().GetItemAt(30)->GetPos().top;
    m_driver->click(u"ButtonEditBranchZones");
    EXPECT_TRUE(isClosed(*m_window) && m_state.zoneEditRequest && m_state.zoneEditResumes);
    EXPECT_EQ(m_state.zoneEditVideo, sceneFolder("Fire") + "a.ogv");
    m_state.zoneEditRequest = false;
    show(app_state::ScreenResult{{}, {{"Hall", "Yard"}, {"Wall", "W"}, {"Door", "Gate"}}});
    EXPECT_EQ(combo(u"ComboBranchName").GetCurSel(), 1);
    EXPECT_EQ(actions().GetCurSel(), 30);
    m_window->GetPaintManager().UpdateLayout();
    EXPECT_EQ(actions().GetItemAt(30)->GetPos().top, row);

    EXPECT_EQ(m_driver->textOf(u"LabelStrip"), u"21 actions still name the zone \"Door\".");
    m_driver->click(u"ButtonRetarget");
    EXPECT_EQ(session().actionsWaitingFor("a.ogv", "Gate").size(), 21U);
    EXPECT_EQ(m_driver->textOf(u"LabelStrip"), u"20 actions still name the zone \"Hall\".");
    m_driver->press(platform::Key::z, {.control = true});
    EXPECT_EQ(session().actionsWaitingFor("a.ogv", "Door").size(), 21U) << "one step each";
    show(app_state::ScreenResult{{}, {{"Hall", "Yard"}, {"Wall", "W"}, {"Door", "Gate"}}});
    m_driver->manager().SetFocus(&combo(u"ComboVideoName"));
    m_driver->click(u"ButtonCloseNotice");
    EXPECT_EQ(m_driver->textOf(u"LabelStrip"), u"20 actions still name the zone \"Hall\".");
    m_driver->click(u"ButtonRetarget");
    EXPECT_FALSE(isVisible(u"PanelNotice"));
    EXPECT_EQ(m_driver->focusName(), u"ComboVideoName") << "where it was before the strip";
    show();
    EXPECT_EQ(combo(u"ComboBranchName").GetCurSel(), 0) << "at another opening";
    EXPECT_FALSE(isVisible(u"PanelNotice"));
}

TEST_F(BranchVideos, AVideoThatTheZoneEditorCouldNotReadIsReportedOnce) {
    show(app_state::ScreenResult{sceneFolder("Fire") + "first.ogv"});
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"), u"The video \"first.ogv\" could not be read: "
                                                 u"the file is missing or is not a Theora video.");
    EXPECT_TRUE(isVisible(u"LabelProblem"));
    m_driver->click(u"ButtonAddAction");
    EXPECT_FALSE(isVisible(u"LabelProblem"));
}

TEST_F(BranchVideos, TheCardShowsTheClipOfTheBranchOnShow) {
    m_services.stills = std::make_shared<stills::StillService>(
        m_gui.loop(), platform::nativeFileSystem(), std::string());
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    makeScene({"Alarm", "Empty", "Odd"}, {"a.ogv", "", "odd.ogv"});
    writeBytes("Scenes/Fire/odd.ogv", std::string("no clip"));
    show();
    const auto says = [this](std::u16string_view label, std::u16string_view text) {
        return pumpUntil([&] { return m_driver->textOf(label) == text; });
    };
    EXPECT_TRUE(says(u"LabelClipLength", u"File missing"));
    pressAddVideo({"a.ogv"}); // in the list already
    writeBytes("Scenes/Fire/a.ogv", clipBytes());
    pressAddVideo({"b.ogv"});
    EXPECT_TRUE(says(u"LabelClipLength", u"0:00.08, 64 × 48")) << "looked up again after a copy";
    EXPECT_EQ(m_gui.dialog.requests.back().initialFolder, m_folder.path() + "from/");
    waitForCopies();
    const auto& image = m_driver->get<toolkit::CPictureUI>(u"ImageClip");
    EXPECT_NE(image.GetPicture(), nullptr);
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 884, 720));
    EXPECT_TRUE(says(u"LabelClipLength", u"0:00.08"));
    EXPECT_EQ(m_driver->textOf(u"LabelClipSize"), u"64 × 48");
    EXPECT_EQ(m_driver->textOf(u"LabelClipBytes"), ui::bytesText(clipBytes().size()));
    m_driver->pick(u"ComboBranchName", 1);
    EXPECT_FALSE(isVisible(u"ImageClip"));
    EXPECT_TRUE(isVisible(u"LabelOwnVideo"));
    m_driver->pick(u"ComboBranchName", 2);
    EXPECT_TRUE(says(u"LabelClipLength", u"Cannot be read"));
    EXPECT_EQ(image.GetPicture()->isEmpty(), true);
    EXPECT_EQ(ui::lengthText(3725.5) + u" " + ui::bytesText(842'499) + u" " +
                  ui::bytesText(8'249'999) + u" " + ui::bytesText(1'250'000'000),
              u"62:05.50 842 KB 8.2 MB 1.3 GB");
    EXPECT_EQ(ui::lengthText(-1) + ui::lengthText(1e300), u"");
}

} // namespace
