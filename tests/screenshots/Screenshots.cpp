// Pictures of every window for the documents.
//
//   screenshots FOLDER [plain|sizes|dark]
//
// Runs in a folder with UI/, Translations.ini and the demo scenes, as the editor does. "plain"
// leaves out all texts, which each system draws in its own way: the rest is the same to the pixel.
// "sizes" shows the windows in other sizes and at 200 % instead, on a screen of 3840 x 2160; "dark"
// shows them dark.

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream> // IWYU pragma: keep
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEdit.h"
#include "app/services/Startup.h"
#include "check/Finding.h"
#include "core/Log.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "import/Converter.h"
#include "import/ImportTypes.h"
#include "platform/FileSystem.h"
#include "publish/PublishJob.h"
#include "recovery/Backups.h"
#include "recovery/Versions.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "stills/Still.h"
#include "stills/StillService.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "tools/tour/PngFile.h"
#include "tools/tour/WindowPicture.h"
#include "ui/BranchList.h"
#include "ui/Confirmation.h"
#include "ui/EarlierVersions.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "ui/SettingsWindow.h"
#include "ui/VersionHistory.h"
#include "ui/importing/ImportRow.h"
#include "ui/importing/ImportVideo.h"
#include "ui/importing/SceneImports.h"
#include "ui/keys/KeysWindow.h"
#include "ui/map/MapPresenter.h"
#include "ui/publishing/PublishWindow.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace screenshots {

namespace {

constexpr const char* kScene = "Fire Drill Level 1";
constexpr const char* kVideo = "alarm-corridor.ogv";
constexpr int kFrame = 62;
constexpr int kLowScreen = 800;
constexpr int kHalfNumber = 6;

class Photographer {
public:
    Photographer(std::filesystem::path folder, bool plain)
        : m_folder(std::move(folder)), m_plain(plain) {
        std::filesystem::create_directories(m_folder);
        m_good = app::createServices(m_services, m_state);
    }

    void setDark() { m_gui.windows().setAppearance(platform::Appearance::dark); }

    void takeAll() {
        take<ui::OpenScene>("OpenScene");
        take<ui::NewScene>("NewScene", [](test::WindowDriver& driver) {
            driver.retype(u"EditSceneName", u"Ladder Inspection");
        });
        settings("Settings");
        take<ui::KeysWindow>("Keys");
        branchEditor();
        if (!m_plain) { // it has pictures of clips
            map();
            m_good = m_services.sceneSession->load(kScene) && m_good;
            takeTour({1366, 728}, 1);
            preview();
        }
        emptyStates();
        zoneEditor("ZoneEdit");
        if (!m_plain) {
            followedZone();
            wideZoneEditor();
        }
        m_gui.host.screenHeight = kLowScreen;
        zoneEditor("ZoneEditSmall");
    }

    /// "BranchList@1366x728": in a window of that size; "BranchList@200": at 200 %.
    void takeSizes() {
        m_good = m_services.sceneSession->load(kScene) && m_good;
        {
            const auto window = ui::BranchList::create(context());
            open(*window);
            takeSizesOf("BranchList", *window);
        }
        for (const platform::Size size : {platform::Size{884, 672}, {1600, 900}}) {
            takeTour(size);
        }
        for (const char* name : {"ZoneEdit", "ZoneEditSmall"}) {
            m_state.zoneEditVideo = demoVideo();
            const auto window = zoneedit::ZoneEdit::create(context());
            open(*window);
            showZone(*window);
            takeSizesOf(name, *window);
            zoneedit::setCurrentZoneManager(nullptr);
            m_gui.host.screenHeight = kLowScreen;
        }
        m_gui.windows().setZoom(2);
        m_suffix = "@200";
        take<ui::OpenScene>("OpenScene");
        take<ui::NewScene>("NewScene");
        settings("Settings");
        take<ui::KeysWindow>("Keys");
        {
            const auto window = ui::BranchList::create(context());
            open(*window);
            question(*window);
        }
        earlierVersions();
        importVideo();
        publish();
        m_services.sceneImports.reset();
        m_gui.windows().setZoom(1);
    }

    /// Whether every window and the demo scene could be opened.
    [[nodiscard]] bool isGood() const { return m_good; }

private:
    [[nodiscard]] ui::WindowContext context() { return {m_gui, m_state, m_services}; }

    void open(toolkit::WindowImplBase& window, platform::NativeWindow* owner = nullptr) {
        m_good =
            window.Create(owner, u"Quorvel", ui::kScreenStyle, ui::kScreenExtendedStyle) && m_good;
        test::WindowDriver(window).show();
        settle(window);
    }

    [[nodiscard]] platform::Bitmap plainOrNot(toolkit::WindowImplBase& window) const {
        if (m_plain) {
            wipeTexts(window);
        }
        test::pump();
        return tour::pictureOf(window);
    }

    void shoot(const std::string& name, toolkit::WindowImplBase& window) {
        save(name, plainOrNot(window));
    }

    /// All its steps: "Tour-1@884x672"; or one of them: "Tour".
    void takeTour(platform::Size size, int step = -1) {
        m_state.tourStep = std::max(step, 0);
        const auto window = ui::BranchList::create(context());
        open(*window);
        const test::WindowDriver driver(*window);
        driver.native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        while (m_state.tourStep >= 0) {
            settle(*window);
            if (step >= 0) {
                shoot("Tour", *window);
                break;
            }
            shoot("Tour-" + std::to_string(m_state.tourStep + 1) + "@" +
                      std::to_string(size.width) + "x" + std::to_string(size.height),
                  *window);
            driver.click(u"ButtonTourNext");
        }
        m_state.tourStep = -1;
    }

    [[nodiscard]] static std::string demoVideo() {
        return (std::filesystem::current_path() / "Scenes" / kScene / kVideo).string();
    }

    /// The zone whose shape is large in this frame.
    static void showZone(zoneedit::ZoneEdit& window) {
        const test::WindowDriver driver(window);
        driver.get<toolkit::CComboUI>(u"ComboZone").SelectItem(0);
        driver.enter(u"EditCurrentFrame", core::displayText(std::to_string(kFrame)));
        settle(window);
    }

    void takeSizesOf(const std::string& name, toolkit::WindowImplBase& window) {
        platform::NativeWindow& native = *window.GetNative();
        const platform::Size least = window.leastSize();
        for (const platform::Size size :
             {least, platform::Size{1366, 728}, {1600, 900}, {1920, 1040}}) {
            native.setGeometry(platform::Rect::at(0, 0, size.width, size.height));
            settle(window);
            shoot(name + "@" + std::to_string(size.width) + "x" + std::to_string(size.height),
                  window);
        }
        m_gui.windows().setZoom(2);
        for (const platform::Size size : {least, platform::Size{1920, 1080}}) {
            native.setGeometry(platform::Rect::at(0, 0, size.width, size.height));
            settle(window);
            shoot(name + (size == least ? "@200" : "@3840x2160"), window);
        }
        m_gui.windows().setZoom(1);
    }

    /// With one of the zone's points chosen.
    void zoneEditor(const std::string& name) {
        m_state.zoneEditVideo = demoVideo();
        const auto window = zoneedit::ZoneEdit::create(context());
        open(*window);
        showZone(*window);
        const test::WindowDriver driver(*window);
        const platform::Point corner = driver.get(u"Video").GetPos().topLeft();
        const auto shape = zoneedit::currentZoneManager()->zone(0)->shape(kFrame);
        const platform::Point chosen = shape->points.at(1);
        driver.click(platform::Point{corner.x + chosen.x, corner.y + chosen.y});
        platform::Bitmap picture = plainOrNot(*window);
        for (const platform::Point at : shape->points) {
            if (m_plain) {
                hideNumber(picture, {corner.x + at.x, corner.y + at.y});
            }
        }
        save(name, picture);
        zoneedit::setCurrentZoneManager(nullptr);
    }

    /// A new zone around what the first one marks, after it was followed.
    void followedZone() {
        constexpr int kFrom = 45;
        m_state.zoneEditVideo = demoVideo();
        const auto window = zoneedit::ZoneEdit::create(context());
        open(*window);
        showZone(*window);
        test::WindowDriver driver(*window);
        driver.enter(u"EditCurrentFrame", core::displayText(std::to_string(kFrom)));
        const auto shape = zoneedit::currentZoneManager()->zone(0)->shape(kFrom);
        driver.click(u"ButtonAddZone");
        driver.enter(u"EditZone", u"Sign");
        driver.click(u"OptionAddMultiPoint");
        const platform::Point corner = driver.get(u"Video").GetPos().topLeft();
        for (const platform::Point at : shape->points) {
            driver.click(platform::Point{corner.x + at.x, corner.y + at.y});
        }
        driver.manager().SetFocus(nullptr);
        driver.press(platform::Key::escape);
        driver.press(platform::Key::f);
        m_good =
            test::pumpUntil([&driver] { return driver.get(u"ButtonFollowDiscard").IsVisible(); }) &&
            m_good;
        driver.enter(u"EditCurrentFrame", core::displayText(std::to_string(kFrame)));
        settle(*window);
        shoot("ZoneEdit-followed", *window);
        zoneedit::setCurrentZoneManager(nullptr);
    }

    /// With a range and all that can be shown.
    void wideZoneEditor() {
        m_state.zoneEditVideo = demoVideo();
        const auto window = zoneedit::ZoneEdit::create(context());
        open(*window);
        window->GetNative()->setGeometry(platform::Rect::at(0, 0, 1920, 1040));
        showZone(*window);
        test::WindowDriver driver(*window);
        constexpr const char16_t* kShown[] = {u"CheckAllZones", u"CheckOnion", u"CheckLoupe"};
        for (const char16_t* name : kShown) {
            driver.click(name);
        }
        driver.enter(u"EditRangeFrom", u"30");
        driver.enter(u"EditRangeTo", u"62");
        driver.manager().SetFocus(nullptr);
        settle(*window);
        shoot("ZoneEdit-wide", *window);
        for (const char16_t* name : kShown) { // the next window begins as the last one ended
            driver.click(name);
        }
        zoneedit::setCurrentZoneManager(nullptr);
    }

    /// Paints over the number of a point, within its circle.
    static void hideNumber(platform::Bitmap& picture, platform::Point middle) {
        for (int y = middle.y - kHalfNumber; y <= middle.y + kHalfNumber; ++y) {
            std::uint32_t* row = picture.row(y) + middle.x;
            std::fill(row - kHalfNumber, row + kHalfNumber + 1, 0xFFFFFFFF);
        }
    }

    void save(const std::string& name, const platform::Bitmap& picture) {
        tour::writePng(picture, (m_folder / (name + m_suffix + ".png")).string());
        std::cout << name << " " << picture.size().width << "x" << picture.size().height << "\n";
    }

    template <class Window>
    void take(
        const std::string& name,
        const std::function<void(test::WindowDriver&)>& act = [](test::WindowDriver&) {}) {
        const auto window = Window::create(context());
        open(*window);
        test::WindowDriver driver(*window);
        act(driver);
        shoot(name, *window);
    }

    /// With the place of scenes that an author would see.
    void settings(const std::string& name) {
        take<ui::SettingsWindow>(name, [](test::WindowDriver& driver) {
            driver.get(u"EditScenesFolder")
                .SetText(u"/home/anna/.local/share/quorvel/Programs/Quorvel/Scenes");
        });
    }

    void branchEditor() {
        m_good = m_services.sceneSession->load(kScene) && m_good;
        const auto window = ui::BranchList::create(context());
        open(*window);
        test::WindowDriver driver(*window);
        auto& actions = driver.get<toolkit::CListUI>(u"BranchList");
        actions.SelectItem(0);
        shoot("BranchList", *window);

        auto& target = driver.getIn<toolkit::CComboUI>(*actions.GetItemAt(1), u"ComboBranches");
        target.Drop();
        shoot("BranchList-combo", *window);
        target.CloseDrop();

        if (!m_plain) { // a menu's texts are the commands', which stay
            driver.click(u"ButtonMenu");
            driver.press(platform::Key::down);
            shoot("BranchList-menu", *window);
            driver.press(platform::Key::escape);
        }

        question(*window);
        while (driver.focusName() != u"ButtonEditZones") {
            driver.press(platform::Key::tab);
        }
        shoot("BranchList-focus", *window);
        earlierVersions();
        importVideo();
        publish();
        m_services.sceneImports.reset();
    }

    /// Of a scene with an action that leads nowhere.
    void publish() {
        check::Finding finding =
            check::finding(check::Kind::missingTarget, {"Evacuate", "Call for help"});
        finding.branch = 1;
        finding.action = 1;
        m_services.sceneSession->addBranch();
        const auto window = std::make_shared<ui::PublishWindow>(
            context(), ui::PublishTask{scene::sceneFolderPath(kScene), {finding}});
        open(*window);
        shoot("Publish", *window);
        window->showProgress({"way-out.ogv", 3, 4, 58, 38});
        shoot("Publish-running", *window);
        publish::PublishResult result;
        result.state = publish::PublishResult::State::published;
        result.fileCount = 13;
        result.videoCount = 4;
        result.bytes = 2'300'000;
        result.hasStill = true;
        window->showResult(result);
        shoot("Publish-done", *window);
        m_services.sceneSession->undo();
    }

    /// Files in every state, as if the converter had worked on them.
    void importVideo() {
        using imports::ImportState;
        const auto open = [this](const imports::Converter& converter) {
            m_services.sceneImports = std::make_shared<ui::SceneImports>(
                m_gui.loop(), platform::nativeFileSystem(), m_services.sceneSession, nullptr,
                scene::sceneFolderPath(kScene), [converter](const auto&) { return converter; });
            auto window = ui::ImportVideo::create(context());
            this->open(*window);
            return window;
        };
        {
            const auto window = open({});
            test::WindowDriver driver(*window);
            m_good =
                test::pumpUntil([&] { return driver.get(u"PaneMissing").IsVisible(); }) && m_good;
            shoot("ImportVideo-missing", *window);
        }
        const auto window = open({"/usr/bin/ffmpeg", "/usr/bin/ffprobe"});
        test::WindowDriver driver(*window);
        auto& list = driver.get<toolkit::CListUI>(u"ListImports");
        const imports::SourceFacts full{42.1, {1920, 1080}, true};
        const imports::ImportItem films[] = {
            {.source = "lobby-wide.mp4",
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
        shoot("ImportVideo", *window);
    }

    /// The demo scene grown to a dozen branches, with a choice that leads back, one that leads
    /// nowhere and a branch that nothing leads to.
    void map() {
        m_good = m_services.sceneSession->load(kScene) && m_good;
        m_services.stills = std::make_shared<stills::StillService>(
            test::gui().loop(), *core::services().fileSystem, "");
        scene::SceneSession& session = *m_services.sceneSession;
        for (const char* name : {"Help a colleague", "Stairs A", "Stairs B", "Assembly point",
                                 "Headcount", "Someone is missing", "Debriefing"}) {
            session.addBranch();
            session.renameBranch(session.branchCount() - 1, name);
            session.setVideo(session.branchCount() - 1, session.video(session.branchCount() % 4));
        }
        session.setVideo(session.branchCount() - 1, {});
        constexpr struct {
            int branch;
            int type;
            const char* parameter;
            const char* target;
        } kMore[] = {{1, 1, "H", "Help a colleague"},
                     {2, 0, "", "Stairs A"},
                     {3, 1, "S", "Stairs B"},
                     {4, 1, "A", "Assembly point"},
                     {5, 0, "", "Stairs A"},
                     {6, 0, "", "Assembly point"},
                     {6, 1, "R", "Take the lift"},
                     {7, 3, "", "Assembly point"},
                     {7, 3, "", "Someone is missing"},
                     {8, 0, "", "Headcount"},
                     {9, 1, "M", "Someone is missing"},
                     {10, 1, "B", "Stairs B"},
                     {11, 0, "", "Headcount"}};
        for (const auto& more : kMore) {
            session.addAction(more.branch);
            const int action = session.actionCount(more.branch) - 1;
            session.setType(more.branch, action, more.type);
            session.setParameter(more.branch, action, more.parameter);
            session.setTarget(more.branch, action, more.target);
        }
        const auto window = ui::BranchList::create(context());
        open(*window);
        const test::WindowDriver driver(*window);
        driver.native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
        waitForStills();
        settle(*window);
        shoot("Map", *window);
        driver.click(u"ButtonMapIn");
        driver.click(u"ButtonMapIn");
        driver.native().setGeometry(platform::Rect::at(0, 0, 884, 672));
        settle(*window);
        driver.press(platform::Key::m, {.control = true});
        settle(*window);
        shoot("Map@884x672", *window);
    }

    void waitForStills() {
        stills::StillClient client(*m_services.stills,
                                   [](const stills::StillRequest& /*request*/) {});
        std::vector<stills::StillRequest> wanted;
        for (int branch = 0; branch < m_services.sceneSession->branchCount(); ++branch) {
            const std::string& video = m_services.sceneSession->video(branch);
            if (!video.empty()) {
                wanted.push_back(
                    {scene::sceneFolderPath(kScene) + video, ui::MapPresenter::kStillBox});
            }
        }
        client.want(wanted);
        m_good = test::pumpUntil([&] {
                     return std::all_of(wanted.begin(), wanted.end(), [&](const auto& request) {
                         return client.find(request) != nullptr;
                     });
                 }) &&
                 m_good;
    }

    /// In the middle of the first clip, paused.
    void preview() {
        m_services.stills.reset(); // they would come at any time
        m_good = m_services.sceneSession->load(kScene) && m_good;
        const auto window = ui::BranchList::create(context());
        open(*window);
        const test::WindowDriver driver(*window);
        driver.native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
        test::pump();
        driver.press(platform::Key::f5);
        m_good =
            test::pumpUntil([&] { return !driver.textOf(u"LabelPreviewTime").empty(); }) && m_good;
        driver.press(platform::Key::space);
        driver.click(u"SliderPreview");
        driver.click(u"CheckShowZones");
        driver.click(*driver.get<toolkit::CListUI>(u"ListChoices").GetItemAt(0));
        shoot("Preview", *window);
    }

    /// As if the scene had grown from one branch, by one Save after the other.
    void earlierVersions() {
        scene::SceneSession& session = *m_services.sceneSession;
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
        m_good = session.load(kScene) && m_good;
        ui::EarlierVersions window(
            context(), ui::sceneHistory(session, {"Default", "Keypress", "Zone", "Random"}));
        open(window);
        const test::WindowDriver driver(window);
        const auto& list = driver.get<toolkit::CListUI>(u"ListVersions");
        m_good = test::pumpUntil([&list] { return list.GetCount() > 5; }) && m_good;
        driver.click(*list.GetItemAt(2));
        m_good = test::pumpUntil(
                     [&driver] { return driver.get(u"ButtonRestoreVersion").IsEnabled(); }) &&
                 m_good;
        shoot("EarlierVersions", window);
        std::filesystem::remove_all("Backups");
    }

    void question(ui::BranchList& asker) {
        ui::Confirmation dialog(context(), asker, "Exit?", "Are you sure you want to exit?");
        platform::Bitmap picture = tour::pictureOf(asker);
        open(dialog, asker.GetNative());
        if (m_plain) {
            wipeTexts(dialog);
        }
        tour::overlay(picture, *asker.GetNative(), *dialog.GetNative());
        save("Confirmation", picture);
    }

    /// Without scenes, with a new scene.
    void emptyStates() {
        std::filesystem::rename("Scenes", "away");
        take<ui::OpenScene>("OpenScene-empty");
        std::filesystem::rename("away", "Scenes");
        m_services.sceneManager = scene::SceneManager::create();
        m_services.sceneManager->SetName("Ladder Inspection");
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        take<ui::BranchList>("BranchList-empty");
    }

    test::ScriptedGui m_gui{test::gui()};
    std::filesystem::path m_folder;
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    std::string m_suffix; ///< of the files' names
    bool m_plain;
    bool m_good = false;
};

int run(const std::vector<std::string_view>& arguments) {
    const std::string_view mode = arguments.size() == 2 ? arguments[1] : std::string_view();
    if (arguments.empty() ||
        (arguments.size() > 1 && mode != "plain" && mode != "sizes" && mode != "dark")) {
        std::cerr << "usage: screenshots FOLDER [plain|sizes|dark]\n";
        return 2;
    }
    Photographer photographer(std::filesystem::absolute(arguments.front()), mode == "plain");
    if (mode == "dark") {
        photographer.setDark();
    }
    if (mode == "sizes") {
        photographer.takeSizes();
    } else {
        photographer.takeAll();
    }
    return photographer.isGood() ? 0 : 1;
}

} // namespace

} // namespace screenshots

int main(int argc, char** argv) {
    try {
        const int code = screenshots::run({argv + 1, argv + argc});
        test::endGui();
        core::Log::release();
        return code;
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << "\n";
        return 1;
    }
}
