// Importing videos: the window for it, what the branch editor says meanwhile, files that are
// dropped into the editor, and converting a clip that the findings complain of.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "import/Converter.h"
#include "import/ImportTypes.h"
#include "jobs/ImportOutcome.h"
#include "platform/Event.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "scene/SceneFolders.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/RefusedMemory.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CListUI.h"
#include "ui/SceneHints.h"
#include "ui/importing/SceneImports.h"

namespace {

using imports::ImportState;
using platform::Key;
using support::exists;
using support::readBytes;
using support::writeBytes;
using test::itemsOf;
using test::pumpUntil;
using test::Texts;
using test::WindowDriver;

class Importing : public test::BranchEditorTest {
protected:
    Importing() {
        const support::Bytes clip = support::makeClip({.frames = 10});
        m_clip.assign(clip.begin(), clip.end());
        makeScene({"Alarm", "Lift", "End"}, {"first.ogv", "first.ogv", "other.ogv"});
        for (const char* name :
             {"Scenes/Fire/first.ogv", "Scenes/Fire/other.ogv", "from/a.ogv", "from/good.ogv"}) {
            writeBytes(name, m_clip);
        }
        for (const char* name : {"hall.mov", "probe fails.avi", "dies.mov", "hangs.mov"}) {
            writeBytes(std::string("from/") + name, "a film");
        }
        m_services.sceneImports = std::make_shared<ui::SceneImports>(
            m_gui.loop(), m_files, m_services.sceneSession, m_services.editorSettings,
            scene::sceneFolderPath("Fire"), [this](const std::string& chosen) {
                return m_hasConverter || !chosen.empty()
                           ? imports::Converter{FAKE_CONVERTER, FAKE_CONVERTER}
                           : imports::Converter();
            });
    }
    ~Importing() override { m_services.sceneImports.reset(); }
    ui::SceneImports& imports() { return *m_services.sceneImports; }
    Texts videos() { return itemsOf(combo(u"ComboVideoName")); }
    std::vector<std::string> from(const std::vector<std::string>& names) {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            paths.push_back(m_folder.path() + "from/" + name);
        }
        return paths;
    }
    /// The Import window, on top now.
    static WindowDriver importWindow() {
        EXPECT_TRUE(pumpUntil([] { return test::topWindow().GetSkinFile() == "ImportVideo.xml"; }));
        return WindowDriver(test::topWindow());
    }
    WindowDriver openImports() {
        m_driver->click(u"ButtonImportVideo");
        return importWindow();
    }
    void addFiles(const WindowDriver& window, const std::vector<std::string>& names) {
        m_gui.dialog.answer = platform::OpenFilesResult{m_folder.path() + "from/", names};
        window.click(u"ButtonImportAdd");
    }
    static toolkit::CControlUI& row(const WindowDriver& window, int index) {
        return *window.get<toolkit::CListUI>(u"ListImports").GetItemAt(index);
    }
    bool waitFor(std::size_t item, ImportState state) {
        return pumpUntil([&] {
            return item < imports().items().size() && imports().items()[item].state == state;
        });
    }
    /// Only whole files may be in the scene's folder.
    static std::vector<std::string> sceneFiles() {
        std::vector<platform::FolderEntry> entries;
        EXPECT_TRUE(platform::nativeFileSystem().list("Scenes/Fire", entries));
        std::vector<std::string> names;
        for (const platform::FolderEntry& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    std::string m_clip;
    bool m_hasConverter = true;
};

TEST_F(Importing, EachFileJoinsTheListAsAStepOrSaysWhyNot) {
    show();
    const WindowDriver window = openImports();
    EXPECT_TRUE(window.get(u"EmptyHeading").IsVisible());
    addFiles(window, {"probe fails.avi", "dies.mov", "hall.mov"});
    EXPECT_FALSE(window.get(u"EmptyHeading").IsVisible());
    ASSERT_TRUE(waitFor(2, ImportState::done)) << "one failure does not stop the rest";
    EXPECT_EQ(row(window, 0).accessibleName(),
              u"probe fails.avi, Not converted: the file cannot be read.");
    EXPECT_EQ(row(window, 1).accessibleName(),
              u"dies.mov, 0:00.40, 64 × 48, Not converted: the converter stopped (9).");
    EXPECT_TRUE(row(window, 2).accessibleName().starts_with(u"hall.mov, 0:00.40, 64 × 48, Done, "));
    EXPECT_EQ(window.textOf(u"LabelImport"), u"1 of 3 done");
    EXPECT_FALSE(window.get(u"ButtonImportStop").IsEnabled());
    EXPECT_EQ(videos(), (Texts{u"first.ogv", u"other.ogv", u"hall.ogv"}));
    EXPECT_EQ(sceneFiles(), (std::vector<std::string>{"first.ogv", "hall.ogv", "other.ogv"}));
    window.click(window.getIn(row(window, 0), u"ButtonRowRemedy"));
    EXPECT_EQ(window.textOf(u"LabelProblem"), u"Invalid data found when processing input");
    window.click(window.getIn(row(window, 0), u"ButtonRowEnd"));
    EXPECT_EQ(imports().items().size(), 2U);
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(videos(), (Texts{u"first.ogv", u"other.ogv"}));

    addFiles(window, {"hall.mov"});
    ASSERT_TRUE(waitFor(2, ImportState::failed));
    EXPECT_EQ(window.textOf(u"LabelImport"), u"1 of 3 done");
    window.click(window.getIn(row(window, 2), u"ButtonRowRemedy"));
    ASSERT_TRUE(waitFor(2, ImportState::done));
    EXPECT_EQ(videos().back(), u"hall 2.ogv");
    window.pick(u"ComboQuality", 0);
    window.click(u"CheckKeepSound");
    EXPECT_EQ(window.textOf(u"LabelQuality"), u"About 4 MB a minute, 640 × 352 at most");
    EXPECT_EQ(m_services.editorSettings->getString("importQuality", {}), "small");
    EXPECT_FALSE(m_services.editorSettings->getBool("importSound", true));
}

TEST_F(Importing, GoesOnWithoutTheWindowAndEndsWithTheProgram) {
    show();
    const WindowDriver window = openImports();
    addFiles(window, {"hangs.mov", "hall.mov"});
    ASSERT_TRUE(pumpUntil([&] { return imports().queue().percent() == 25; }));
    EXPECT_FALSE(isVisible(u"PanelNotice")) << "the window says it";
    window.press(Key::escape);
    test::pump();
    EXPECT_TRUE(isVisible(u"ButtonShowImport"));
    EXPECT_EQ(m_driver->textOf(u"LabelStrip"), u"Importing hangs.mov: 50 %.");
    m_driver->click(u"ButtonMenu");
    m_driver->press(Key::escape);
    m_driver->click(u"ButtonRemoveBranch"); // another offer, and then this one again
    EXPECT_FALSE(isVisible(u"ButtonShowImport"));
    m_driver->click(u"ButtonNoticeUndo");
    EXPECT_TRUE(isVisible(u"ButtonShowImport"));

    show(); // as after a visit to the zone editor
    EXPECT_EQ(m_driver->textOf(u"LabelStrip"), u"Importing hangs.mov: 50 %.");
    m_driver->click(u"ButtonShowImport");
    const WindowDriver again = importWindow();
    EXPECT_FALSE(isVisible(u"PanelNotice"));
    again.click(again.getIn(row(again, 0), u"ButtonRowEnd"));
    ASSERT_TRUE(waitFor(0, ImportState::cancelled));
    ASSERT_TRUE(waitFor(1, ImportState::done)) << "the rest goes on";
    addFiles(again, {"hangs.mov", "dies.mov"});
    ASSERT_TRUE(waitFor(2, ImportState::converting));
    endWindow();
    m_services.sceneImports.reset();
    EXPECT_EQ(sceneFiles(), (std::vector<std::string>{"first.ogv", "hall.ogv", "other.ogv"}));
}

TEST_F(Importing, NoFaultHoldsUpTheWindowOrLeavesAnything) {
    using Clock = std::chrono::steady_clock;
    struct Case {
        const char* file;
        imports::Failure failure; ///< none: it is cancelled once it converts
        int refusal = 0;          ///< what the scene's folder answers when a file is made
    };
    using imports::Failure;
    const Case cases[] = {
        {"dies", Failure::stopped},
        {"disk full", Failure::diskFull},
        {"nothing", Failure::stopped},
        {"probe nonsense", Failure::noPicture},
        {"probe floods", Failure::unreadable},
        {"complains", Failure::stopped},
        {"floods", Failure::stopped},
        {"grows", Failure::tooLarge},
        {"read-only", Failure::notWritable, EACCES},
        {"hangs", Failure::none},
        {"babbles", Failure::none},
    };
    show();
    const WindowDriver window = openImports();
    Clock::duration longestPause{};
    Clock::duration longestCancel{};
    const auto runUntil = [&](const std::function<bool()>& done) {
        const Clock::time_point begun = Clock::now();
        for (Clock::time_point last = begun; !done(); std::this_thread::yield()) {
            last = Clock::now();
            m_gui.loop().processEvents(false);
            longestPause = std::max(longestPause, Clock::now() - last);
        }
        return Clock::now() - begun;
    };
    std::size_t row = 0;
    for (const auto& [file, failure, refusal] : cases) {
        const std::string name = std::string(file) + ".mov";
        writeBytes("from/" + name, "a film");
        m_files.setRule(
            [isRefused = refusal != 0](const support::Call& call) {
                const bool isClip = call.path.find("Fire") != call.path.npos;
                return isRefused && isClip && call.operation == "open" ? support::Fault::fail
                                                                       : support::Fault::none;
            },
            refusal);
        addFiles(window, {name});
        runUntil([&] { return imports().items().size() > row; });
        const imports::ImportItem& item = imports().items()[row++];
        if (failure == Failure::none) {
            const auto hasEnded = [&item] { return item.state > ImportState::converting; };
            runUntil([&] { return item.percent > 0 || hasEnded(); });
            imports().queue().cancelAll();
            longestCancel = std::max(longestCancel, runUntil(hasEnded));
            EXPECT_EQ(item.state, ImportState::cancelled) << name;
        } else {
            runUntil([&] { return item.state == ImportState::failed; });
        }
        EXPECT_EQ(item.failure.kind, failure) << name;
        EXPECT_EQ(sceneFiles(), (std::vector<std::string>{"first.ogv", "other.ogv"})) << name;
    }
    const auto milliseconds = [](Clock::duration time) {
        return static_cast<int>(
            std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
    };
    RecordProperty("longestPauseMs", milliseconds(longestPause));
    RecordProperty("longestCancelMs", milliseconds(longestCancel));
}

TEST_F(Importing, WithoutAConverterTheWindowAsksForOne) {
    m_hasConverter = false;
    imports().lookAgain();
    show();
    const WindowDriver window = openImports();
    ASSERT_TRUE(pumpUntil([&] { return window.get(u"PaneMissing").IsVisible(); }));
    EXPECT_FALSE(window.get(u"PaneImport").IsVisible());
    test::input().dropFiles(window.native(), from({"hall.mov"}));
    test::pump();
    EXPECT_TRUE(imports().items().empty()) << "waits for a converter";
    m_gui.dialog.answer = platform::OpenFilesResult{m_folder.path(), {"ffmpeg"}};
    window.click(u"ButtonFindConverter");
    EXPECT_EQ(m_services.editorSettings->getString(ui::kConverterKey, {}),
              m_folder.path() + "ffmpeg");
    ASSERT_TRUE(waitFor(0, ImportState::done));
    EXPECT_TRUE(window.get(u"PaneImport").IsVisible());
}

TEST_F(Importing, AChosenConverterServesEvenIfItCannotBeRemembered) {
    m_hasConverter = false;
    imports().lookAgain();
    support::makeFolder("Editor.ini"); // in place of the file
    show();
    const WindowDriver window = openImports();
    ASSERT_TRUE(pumpUntil([&] { return window.get(u"PaneMissing").IsVisible(); }));
    m_gui.dialog.answer = platform::OpenFilesResult{m_folder.path(), {"ffmpeg"}};
    window.click(u"ButtonFindConverter");
    EXPECT_TRUE(pumpUntil([&] { return window.get(u"PaneImport").IsVisible(); }));
}

TEST_F(Importing, DroppedFilesAreAddedImportedOrNamed) {
    show();
    writeBytes("from/plan.txt", "text");
    writeBytes("from/film.MP4", "a film");
    test::input().dropFiles(m_driver->native(), from({"a.ogv", "film.MP4", "plan.txt", "."}));
    const WindowDriver window = importWindow();
    ASSERT_TRUE(waitFor(0, ImportState::done));
    EXPECT_EQ(imports().items()[0].source, from({"film.MP4"})[0]);
    ASSERT_TRUE(pumpUntil([&] { return videos().size() == 4; }));
    EXPECT_EQ(readBytes("Scenes/Fire/a.ogv"), readBytes("from/a.ogv"));
    ASSERT_TRUE(pumpUntil([&] { return isVisible(u"LabelProblem"); }));
    const std::u16string problem = m_driver->textOf(u"LabelProblem");
    EXPECT_TRUE(problem.starts_with(u"Not added: ")) << core::storedText(problem);
    EXPECT_NE(problem.find(u"is a folder: drop the videos in it. \"plan.txt\" is not a video."),
              std::u16string::npos)
        << core::storedText(problem);
    window.press(Key::escape);
}

#if !defined(__SANITIZE_THREAD__)
TEST_F(Importing, DroppedFilesThatMemoryIsTooShortForAreSaidAndLaterOnesTaken) {
    show();
    writeBytes("from/plan.txt", "text");
    platform::Event drop;
    drop.kind = platform::EventKind::filesDropped;
    std::string path = from({""})[0];
    for (int i = 0; i < 150; ++i) { // a size that nothing else has
        path += "./";
    }
    drop.files = {path + "plan.txt"};
    const auto problem = [this] { return m_driver->textOf(u"LabelProblem"); };
    // The first copy is made by the window, others by the thread that looks at the files: one of
    // these in the reader of clips, on one system, where it means no more than that this is none.
    int said = 0;
    for (const int copies : {0, 1, 2}) {
        SCOPED_TRACE(copies);
        m_driver->click(u"ButtonAddBranch"); // takes the note before away
        EXPECT_EQ(problem(), u"");
        support::allowedOfSize = copies;
        support::refusedBytes = drop.files[0].size() + 1;
        m_window->HandleMessage(drop);
        EXPECT_TRUE(pumpUntil([&] { return !problem().empty(); }));
        support::refusedBytes = 0;
        said += problem() == u"Not added: there is not enough memory." ? 1 : 0;
        EXPECT_TRUE(said > 0) << core::storedText(problem());
    }
    EXPECT_GE(said, 2);
    m_driver->click(u"ButtonAddBranch");
    m_window->HandleMessage(drop);
    EXPECT_TRUE(pumpUntil([&] { return problem().find(u"plan.txt") != std::u16string::npos; }))
        << core::storedText(problem());
}
#endif

TEST_F(Importing, OneMoreAndSeveralMoreReadAsTheLanguageHasThem) {
    core::setTexts(m_services.translations->in("German"));
    jobs::ImportOutcome outcome;
    outcome.notTheora = {"a.ogv", "b.ogv"};
    EXPECT_TRUE(ui::importProblem(outcome).starts_with(u"„a.ogv“ und eine weitere Datei sind "));
    outcome.notTheora.emplace_back("c.ogv");
    EXPECT_TRUE(ui::importProblem(outcome).starts_with(u"„a.ogv“ und 2 weitere Dateien sind "));
    core::setTexts(nullptr);
}

TEST_F(Importing, AnAddedFileThatIsNoTheoraVideoCanBeImported) {
    writeBytes("from/talk.ogg", "no pictures");
    show();
    m_gui.dialog.answer = platform::OpenFilesResult{m_folder.path() + "from/", {"talk.ogg"}};
    m_driver->click(u"ButtonAddVideo");
    ASSERT_TRUE(pumpUntil([&] { return isVisible(u"ButtonConvertIt"); }));
    EXPECT_EQ(core::storedText(m_driver->textOf(u"LabelStrip")),
              "\"talk.ogg\" is not a Theora video and cannot be played.");
    EXPECT_EQ(m_driver->textOf(u"ButtonConvertIt"), u"Import");
    m_driver->click(u"ButtonConvertIt");
    (void)importWindow();
    ASSERT_TRUE(pumpUntil([&] { return imports().items().size() == 1; }));
    EXPECT_EQ(imports().items()[0].source, from({"talk.ogg"})[0]);
}

TEST_F(Importing, ConvertItHasAllBranchesShowTheNewClipAsOneStep) {
    writeBytes("Scenes/Fire/first.ogv", "damaged");
    writeBytes("Scenes/Fire/good.ogv", m_clip); // what the converter makes of it
    show();
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1600, 760));
    test::pump();
    auto& findings = m_driver->get<toolkit::CListUI>(u"ListFindings");
    int found = -1;
    ASSERT_TRUE(pumpUntil([&] {
        for (int i = 0; i < findings.GetCount(); ++i) {
            const std::u16string name = findings.GetItemAt(i)->accessibleName();
            found = name.find(u"first.ogv") != std::u16string::npos ? i : found;
        }
        return found >= 0;
    }));
    m_driver->click(*findings.GetItemAt(found));
    ASSERT_TRUE(isVisible(u"ButtonConvertIt"));
    m_driver->click(u"ButtonConvertIt");
    EXPECT_FALSE(isVisible(u"ButtonConvertIt"));
    ASSERT_TRUE(waitFor(0, ImportState::done));
    EXPECT_EQ(session().video(0), "first 2.ogv");
    EXPECT_EQ(session().video(1), "first 2.ogv");
    EXPECT_EQ(session().video(2), "other.ogv");
    EXPECT_TRUE(exists("Scenes/Fire/first.ogv")) << "the old file stays";
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(session().video(0), "first.ogv");
    EXPECT_EQ(session().video(1), "first.ogv");
    EXPECT_FALSE(isEnabled(u"ButtonUndo"));
}

} // namespace
