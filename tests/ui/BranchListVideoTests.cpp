// The videos of the branch editor: which are listed, copying new ones, and the way to the zones.
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "core/Services.h"
#include "core/Text.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"
#include "ui/VideoImport.h"

namespace {

using support::exists;
using support::readBytes;
using support::writeBytes;
using test::itemsOf;
using test::pumpUntil;
using test::WindowDriver;
using toolkit::CComboUI;
using Texts = std::vector<std::u16string>;

/// Where the copying thread waits until the test opens it.
class Gate {
public:
    void close() {
        const std::lock_guard lock(m_mutex);
        m_open = false;
    }
    void open() {
        const std::lock_guard lock(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }
    void pass() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_open; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = true;
};

class BranchVideos : public test::WindowTest<ui::BranchList> {
protected:
    BranchVideos() {
        scene().newScene("Fire");
        scene().AddBranch();
        scene().setBranchFilename(0, "first.ogv");
        m_files.setRule(
            [this](const support::Call& call) {
                if (call.path.ends_with(ui::kImportTemporary) && call.operation == "open") {
                    m_gate.pass();
                }
                return support::Fault::none;
            },
            0);
    }
    ~BranchVideos() override {
        m_gate.open();
        m_driver.reset();
        m_window.reset();
    }
    void addBranchWith(const std::string& video) {
        scene().AddBranch();
        scene().setBranchFilename(scene().branchCount() - 1, video);
    }
    CComboUI& videos() { return m_driver->get<CComboUI>(u"ComboVideoName"); }
    bool isCopying() { return !m_driver->get(u"ButtonSave").IsEnabled(); }
    void choose(const std::string& folder, const std::vector<std::string>& names) {
        m_gui.dialog.answer = platform::OpenFilesResult{folder, names};
    }
    /// Presses Add Video and waits for the copies.
    void addVideos() {
        m_driver->click(u"ButtonAddVideo");
        ASSERT_TRUE(pumpUntil([this] { return !isCopying(); }));
    }

    Gate m_gate;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_override{{&m_files, core::services().clock, core::services().process}};
};

TEST_F(BranchVideos, EachVideoIsListedOnce) {
    scene().setBranchFilename(0, "b.ogv");
    for (const char* name : {"a.ogv", "b.ogv", "", "A.ogv", "", "a.ogv"}) {
        addBranchWith(name);
    }
    WindowDriver& driver = show();
    EXPECT_EQ(itemsOf(videos()), (Texts{u"b.ogv", u"a.ogv", u"", u"A.ogv"}));
    EXPECT_EQ(videos().GetText(), u"b.ogv");
    driver.pick(u"ComboBranchName", 4);
    EXPECT_EQ(videos().GetText(), u"A.ogv");
}

TEST_F(BranchVideos, ABranchWithoutVideoKeepsTheListAsItIs) {
    scene().setBranchFilename(0, "a.ogv");
    addBranchWith("b.ogv");
    addBranchWith("");
    WindowDriver& driver = show();
    driver.pick(u"ComboBranchName", 1);
    driver.pick(u"ComboBranchName", 2);
    EXPECT_EQ(videos().GetText(), u"b.ogv");
    EXPECT_EQ(scene().branchFilename(2), "");
    // The video already shown can be picked all the same.
    driver.pick(u"ComboVideoName", 1);
    EXPECT_EQ(scene().branchFilename(2), "b.ogv");
}

TEST_F(BranchVideos, AfterARequestForANewSceneNoVideosAreListed) {
    scene().setBranchFilename(0, "a.ogv");
    m_state.newSceneRequest = true;
    show();
    EXPECT_EQ(videos().GetCount(), 0);
    EXPECT_EQ(videos().GetCurSel(), -1) << "the branch's video is not on offer";
    EXPECT_EQ(scene().branchFilename(0), "a.ogv");
    EXPECT_FALSE(m_driver->get(u"ButtonEditZones").IsEnabled());
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
    EXPECT_EQ(videos().GetCount(), 1) << "cancelled";
}

TEST_F(BranchVideos, CopiesOneVideoAndChoosesNothing) {
    writeBytes("from/clip.ogv", "video");
    show();
    choose(m_folder.path() + "from/", {"clip.ogv"});
    addVideos();
    EXPECT_EQ(readBytes("Scenes/Fire/clip.ogv"), "video");
    EXPECT_EQ(itemsOf(videos()), (Texts{u"first.ogv", u"clip.ogv"}));
    EXPECT_EQ(videos().GetCurSel(), 0);
    EXPECT_EQ(scene().branchFilename(0), "first.ogv");
    m_driver->pick(u"ComboVideoName", 1);
    EXPECT_EQ(scene().branchFilename(0), "clip.ogv");
}

TEST_F(BranchVideos, CopiesSeveralAndTakesBackTheOnesThatFail) {
    const std::string odd = "50 % \xC3\xA4 & 'x'.ogv";
    writeBytes("from/a.ogv", "a");
    writeBytes("from/" + odd, "odd");
    writeBytes("from/c.OGG", "c");
    show();
    choose(m_folder.path() + "from/", {"a.ogv", "missing.ogv", odd, "c.OGG"});
    addVideos();
    EXPECT_EQ(itemsOf(videos()), (Texts{u"first.ogv", u"a.ogv", core::displayText(odd), u"c.OGG"}));
    EXPECT_EQ(support::filesBelow("Scenes/Fire"),
              (std::vector<std::string>{odd, "a.ogv", "c.OGG"}));
    EXPECT_TRUE(m_log.errors().empty());
}

TEST_F(BranchVideos, WithoutAVideoListNothingIsCopied) {
    std::string layout = readBytes("UI/BranchList.xml");
    layout.replace(layout.find("ComboVideoName"), 5, "Other");
    writeBytes("UI/BranchList.xml", layout);
    writeBytes("from/clip.ogv", "video");
    show();
    choose(m_folder.path() + "from/", {"clip.ogv"});
    addVideos();
    EXPECT_FALSE(exists("Scenes/Fire/clip.ogv"));
}

TEST_F(BranchVideos, AListedNameIsNeitherCopiedNorOverwritten) {
    scene().setBranchFilename(0, "clip.ogv");
    writeBytes("Scenes/Fire/clip.ogv", "old");
    writeBytes("from/clip.ogv", "new");
    show();
    choose(m_folder.path() + "from/", {"clip.ogv"});
    addVideos();
    EXPECT_EQ(readBytes("Scenes/Fire/clip.ogv"), "old");
    EXPECT_EQ(videos().GetCount(), 1);
}

TEST_F(BranchVideos, AFileOfTheSceneFolderIsListedAndStaysWhole) {
    writeBytes("Scenes/Fire/clip.ogv", "only copy");
    for (const std::string& folder :
         {m_folder.path() + "Scenes\\Fire\\", m_folder.path() + "Scenes/Fire/",
          m_folder.path() + "Scenes/../Scenes/Fire/"}) {
        show();
        choose(folder, {"clip.ogv"});
        addVideos();
        EXPECT_EQ(itemsOf(videos()), (Texts{u"first.ogv", u"clip.ogv"})) << folder;
        EXPECT_EQ(readBytes("Scenes/Fire/clip.ogv"), "only copy") << folder;
    }
}

TEST_F(BranchVideos, NothingElseCanBeDoneWhileAVideoIsCopied) {
    writeBytes("from/a.ogv", "a");
    writeBytes("from/b.ogv", "b");
    show();
    choose(m_folder.path() + "from/", {"a.ogv", "b.ogv"});
    m_gate.close();
    m_driver->click(u"ButtonAddVideo");
    for (const auto* name :
         {u"ButtonExit", u"ButtonSave", u"ButtonAddBranch", u"ButtonAddVideo", u"ButtonEditZones",
          u"ButtonAddAction", u"ButtonRemoveAction", u"ComboBranchName", u"ComboVideoName",
          u"EditBranchName", u"CheckFirst", u"BranchList"}) {
        EXPECT_FALSE(m_driver->get(name).IsEnabled()) << core::storedText(name);
    }
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText().substr(0, 22), u"Copying a.ogv (1 of 2)");
    m_driver->click(u"ButtonAddBranch");
    EXPECT_EQ(scene().branchCount(), 1);
    m_gate.open();
    ASSERT_TRUE(pumpUntil([this] { return !isCopying(); }));
    EXPECT_EQ(videos().GetCount(), 3);
    EXPECT_EQ(m_driver->focusName(), u"ButtonAddVideo");
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText(),
              u"Changes are kept in memory until you press Save.");
    m_driver->click(u"ButtonAddBranch");
    EXPECT_EQ(scene().branchCount(), 2);
}

TEST_F(BranchVideos, EscapeCancelsTheCopyAndAllThatFollow) {
    writeBytes("from/a.ogv", std::string(3'000'000, 'a'));
    writeBytes("from/b.ogv", "b");
    writeBytes("Scenes/Fire/a.ogv", "old");
    show();
    choose(m_folder.path() + "from/", {"a.ogv", "b.ogv"});
    m_gate.close();
    m_driver->click(u"ButtonAddVideo");
    EXPECT_EQ(itemsOf(videos()), (Texts{u"first.ogv", u"a.ogv"}));
    m_driver->press(platform::Key::escape);
    m_gate.open();
    ASSERT_TRUE(pumpUntil([this] { return !isCopying(); }));
    EXPECT_EQ(itemsOf(videos()), Texts{u"first.ogv"});
    EXPECT_EQ(readBytes("Scenes/Fire/a.ogv"), "old");
    EXPECT_EQ(support::filesBelow("Scenes/Fire"), std::vector<std::string>{"a.ogv"});
}

TEST_F(BranchVideos, AWindowThatClosesDuringACopyEndsIt) {
    writeBytes("from/a.ogv", std::string(3'000'000, 'a'));
    show();
    choose(m_folder.path() + "from/", {"a.ogv"});
    m_gate.close();
    m_driver->click(u"ButtonAddVideo");
    test::input().requestClose(m_driver->native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window));
    // The copy is held at the gate; the window's end cancels it and waits.
    std::thread opener([this] { m_gate.open(); });
    m_driver.reset();
    m_window.reset();
    opener.join();
    test::pump();
    EXPECT_FALSE(exists(std::string("Scenes/Fire/") + ui::kImportTemporary));
}

TEST_F(BranchVideos, ZonesOfANewVideoAreOfferedInTheNextWindow) {
    writeBytes("Scenes/Fire/clip-ZoneInfo.xml",
               "<ZoneInfo><Zone><Name>Door</Name></Zone></ZoneInfo>");
    writeBytes("from/clip.ogv", "video");
    const auto action = scene::Action::create();
    action->SetType(scene::Action::kZoneAction);
    scene().addAction(0, action);
    show();
    choose(m_folder.path() + "from/", {"clip.ogv"});
    addVideos();
    m_driver->pick(u"ComboVideoName", 1);
    const auto parameters = [this] {
        return itemsOf(test::inRow<CComboUI>(*m_driver, u"BranchList", 0, u"ComboParameter"));
    };
    EXPECT_EQ(parameters(), Texts());
    show();
    EXPECT_EQ(parameters(), Texts{u"Door"});
}

TEST_F(BranchVideos, EditZonesTakesTheVideoOfTheBranchAtTheVideosPlace) {
    const struct {
        const char* what;
        std::vector<std::string> videos; ///< of the branches
        int branch;
        std::string opens; ///< empty: stays
        std::vector<std::string> errors;
    } cases[] = {
        {"one branch, one video", {"a.ogv"}, 0, "a.ogv", {}},
        {"lists in the same order", {"a.ogv", "b.ogv"}, 1, "b.ogv", {}},
        {"lists in another order", {"a.ogv", "a.ogv", "b.ogv"}, 2, "a.ogv", {}},
        {"a branch without video at that place", {"", "b.ogv"}, 1, "b.ogv", {}},
        {"no video there", {"b.ogv", "", "c.ogv"}, 0, "b.ogv", {}},
    };
    for (const auto& test : cases) {
        scene().newScene("Fire");
        for (const std::string& video : test.videos) {
            addBranchWith(video);
        }
        m_state.zoneEditRequest = false;
        m_state.zoneEditVideo.clear();
        show();
        m_driver->pick(u"ComboBranchName", test.branch);
        m_driver->click(u"ButtonEditZones");
        EXPECT_EQ(m_state.zoneEditRequest, !test.opens.empty()) << test.what;
        EXPECT_EQ(m_state.zoneEditVideo, sceneFolder("Fire") + test.opens) << test.what;
        EXPECT_TRUE(isClosed(*m_window)) << test.what;
    }
}

TEST_F(BranchVideos, EditZonesWithoutAVideoAtThatPlaceDoesNothing) {
    scene().newScene("Fire");
    addBranchWith("a.ogv");
    addBranchWith("");
    addBranchWith("b.ogv");
    show();
    m_driver->pick(u"ComboBranchName", 0);
    m_driver->pick(u"ComboVideoName", 1); // the empty name of the second branch
    EXPECT_EQ(scene().branchFilename(0), "");
    m_driver->click(u"ButtonEditZones");
    EXPECT_FALSE(m_state.zoneEditRequest);
    EXPECT_FALSE(isClosed(*m_window));
    EXPECT_TRUE(m_log.errors().empty());
}

TEST_F(BranchVideos, EditZonesBeyondTheBranchesIsReported) {
    scene().setBranchFilename(0, "a.ogv");
    writeBytes("from/b.ogv", "b");
    show();
    choose(m_folder.path() + "from/", {"b.ogv"});
    addVideos();
    m_driver->pick(u"ComboVideoName", 1);
    m_driver->click(u"ButtonEditZones");
    EXPECT_FALSE(m_state.zoneEditRequest);
    EXPECT_FALSE(isClosed(*m_window));
    EXPECT_EQ(m_log.errors(),
              std::vector<std::string>{"..\\BranchManager.cpp:351 Invalid branch index"});
}

} // namespace
