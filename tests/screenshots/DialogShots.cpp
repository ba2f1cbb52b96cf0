#include "tests/screenshots/DialogShots.h"

#include <cstdint>
#include <filesystem>
#include <fstream> // IWYU pragma: keep
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "check/Finding.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "import/Converter.h"
#include "import/ImportTypes.h"
#include "platform/FileSystem.h"
#include "recovery/Backups.h"
#include "recovery/Versions.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSession.h"
#include "tests/screenshots/Demo.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/Published.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "tools/tour/WindowPicture.h"
#include "ui/Confirmation.h"
#include "ui/EarlierVersions.h"
#include "ui/VersionHistory.h"
#include "ui/importing/ImportRow.h"
#include "ui/importing/ImportVideo.h"
#include "ui/importing/SceneImports.h"
#include "ui/publishing/PublishWindow.h"

namespace screenshots {

namespace {

/// As if the scene had grown from one branch, by one Save after the other.
void takeEarlierVersions(Photographer& photographer) {
    scene::SceneSession& session = photographer.session();
    constexpr std::int64_t kFirst = 1'763'460'720; // 18 November 2025
    constexpr std::int64_t kHours[] = {49, 46, 25, 5};
    for (const std::int64_t hours : kHours) {
        session.removeAction(0, 0);
        if (hours < kHours[0]) {
            session.removeBranch(session.branchCount() - 1);
        }
        recovery::Version version;
        version.kept = version.saved = kFirst + hours * 3600;
        const std::string path = version.baseIn(recovery::sceneVersionsFolder(kScene)) +
                                 std::string(recovery::kSceneVersionEnding);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << session.savedForm();
    }
    photographer.loadDemo();
    const auto& conditions = photographer.services().translations;
    ui::EarlierVersions window(
        photographer.context(),
        ui::sceneHistory(session,
                         {conditions->translate("Default"), conditions->translate("Keypress"),
                          conditions->translate("Zone"), conditions->translate("Random")}));
    photographer.open(window);
    const test::WindowDriver driver(window);
    const auto& list = driver.get<toolkit::CListUI>(u"ListVersions");
    photographer.require(test::pumpUntil([&list] { return list.GetCount() > 5; }),
                         "the earlier versions");
    driver.click(*list.GetItemAt(2));
    photographer.require(
        test::pumpUntil([&driver] { return driver.get(u"ButtonRestoreVersion").IsEnabled(); }),
        "what a version holds");
    photographer.shoot("EarlierVersions", window);
    std::filesystem::remove_all("Backups");
}

[[nodiscard]] std::shared_ptr<ui::ImportVideo> openImport(Photographer& photographer,
                                                          const imports::Converter& converter) {
    photographer.services().sceneImports = std::make_shared<ui::SceneImports>(
        photographer.gui().loop(), platform::nativeFileSystem(),
        photographer.services().sceneSession, nullptr, scene::sceneFolderPath(kScene),
        [converter](const auto&) { return converter; });
    return photographer.opened<ui::ImportVideo>();
}

/// Files in every state, as if the converter had worked on them.
void takeImportVideo(Photographer& photographer) {
    using imports::ImportState;
    {
        const auto window = openImport(photographer, {});
        const test::WindowDriver driver(*window);
        photographer.require(
            test::pumpUntil([&] { return driver.get(u"PaneMissing").IsVisible(); }),
            "the pane without a converter");
        photographer.shoot("ImportVideo-missing", *window);
    }
    const auto window = openImport(photographer, {"/usr/bin/ffmpeg", "/usr/bin/ffprobe"});
    const test::WindowDriver driver(*window);
    auto& list = driver.get<toolkit::CListUI>(u"ListImports");
    const imports::SourceFacts full{42.1, {1920, 1080}, true};
    const imports::ImportItem films[] = {{.source = "lobby-wide.mp4",
                                          .state = ImportState::done,
                                          .facts = full,
                                          .clip = {"lobby-wide.ogv", 8'200'000, true}},
                                         {.source = "reception.mov",
                                          .state = ImportState::converting,
                                          .facts = imports::SourceFacts{75.32, {1920, 1080}, true},
                                          .percent = 46,
                                          .secondsLeft = 38},
                                         {.source = "parking.webm",
                                          .state = ImportState::waiting,
                                          .facts = imports::SourceFacts{20, {1280, 720}, true}},
                                         {.source = "notes.avi",
                                          .state = ImportState::failed,
                                          .failure = {imports::Failure::noPicture}}};
    for (const imports::ImportItem& film : films) {
        list.Add(ui::makeImportRow(film));
    }
    for (const std::u16string_view name : {u"EmptyHeading", u"EmptyLine"}) {
        driver.get(name).SetVisible(false);
    }
    driver.get(u"LabelImport").SetText(core::tr("{0} of {1} done"_tr, 1, std::size(films)));
    driver.get<toolkit::CProgressUI>(u"ProgressImport").SetPercent(38);
    driver.get(u"ButtonImportStop").SetEnabled(true);
    photographer.shoot("ImportVideo", *window);
}

/// Of a scene with an action that leads nowhere.
void takePublish(Photographer& photographer) {
    check::Finding finding =
        check::finding(check::Kind::missingTarget, {"Evacuate", "Call for help"});
    finding.branch = 1;
    finding.action = 1;
    photographer.session().addBranch();
    const auto window = std::make_shared<ui::PublishWindow>(
        photographer.context(), ui::PublishTask{scene::sceneFolderPath(kScene), {finding}});
    photographer.open(*window);
    photographer.shoot("Publish", *window);
    window->showProgress({"way-out.ogv", 3, 4, 58, 38});
    photographer.shoot("Publish-running", *window);
    window->showResult(test::publishedScene());
    photographer.shoot("Publish-done", *window);
    photographer.session().undo();
}

} // namespace

void takeQuestion(Photographer& photographer, ui::BranchList& asker) {
    ui::Confirmation dialog(photographer.context(), asker, core::trStored("ExitQuestion|Exit?"_tr),
                            core::trStored("Are you sure you want to exit?"_tr));
    platform::Bitmap picture = tour::pictureOf(asker);
    photographer.open(dialog, asker.GetNative());
    if (photographer.isPlain()) {
        wipeTexts(dialog);
    }
    tour::overlay(picture, *asker.GetNative(), *dialog.GetNative());
    photographer.save("Confirmation", picture);
}

void takeDialogs(Photographer& photographer) {
    takeEarlierVersions(photographer);
    takeImportVideo(photographer);
    takePublish(photographer);
    photographer.services().sceneImports.reset();
}

} // namespace screenshots
