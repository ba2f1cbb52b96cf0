// Pictures of every window for the documents.
//
//   screenshots FOLDER [small] [plain]
//
// Runs in a folder with UI/, Translations.ini and the demo scenes, as the editor does. "small"
// shows the zone editor of a low screen alone. "plain" leaves out all texts, which each system
// draws in its own way: the rest is the same to the pixel.

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "ZoneEdit/ZoneEdit.h"
#include "app/services/Startup.h"
#include "core/Log.h"
#include "core/Text.h"
#include "scene/SceneManager.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CListUI.h"
#include "tools/tour/PngFile.h"
#include "ui/BranchList.h"
#include "ui/Confirmation.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "zone/ZoneManager.h"

namespace screenshots {

namespace {

constexpr const char* kScene = "Fire Drill Level 1";
constexpr const char* kVideo = "alarm-corridor.ogv";
const std::u16string kFrame = u"62";
constexpr int kLowScreen = 800;
constexpr int kHalfNumber = 6;

class Photographer {
public:
    Photographer(std::filesystem::path folder, bool plain)
        : m_folder(std::move(folder)), m_plain(plain) {
        std::filesystem::create_directories(m_folder);
        m_good = app::createServices(m_services, m_state);
    }

    bool takeAll() {
        openScene();
        newScene();
        branchEditor();
        emptyStates();
        return zoneEditor("ZoneEdit");
    }

    bool smallZoneEditor() {
        m_gui.host.screenHeight = kLowScreen;
        return zoneEditor("ZoneEditSmall");
    }

    bool zoneEditor(const std::string& name) {
        m_state.zoneEditVideo =
            (std::filesystem::current_path() / "Scenes" / kScene / kVideo).string();
        const auto window = zoneedit::ZoneEdit::create(context());
        open(*window);
        // The zone whose shape is large in this frame, and one of its points.
        window->FindControl<toolkit::CComboUI>(u"ComboZone")->SelectItem(0);
        click(*window, u"EditCurrentFrame");
        test::press(*window->GetNative(), platform::Key::a, {.control = true});
        test::type(*window->GetNative(), kFrame);
        test::press(*window->GetNative(), platform::Key::enter);
        settle(*window);
        selectPoint(*window, 1);
        platform::Bitmap picture = plainOrNot(*window);
        if (m_plain) {
            hideNumbers(picture, *window);
        }
        save(name, picture);
        zone::setCurrentZoneManager(nullptr);
        return m_good;
    }

private:
    [[nodiscard]] ui::WindowContext context() { return {m_gui, m_state, m_services}; }

    void open(toolkit::WindowImplBase& window, platform::NativeWindow* owner = nullptr) {
        m_good =
            window.Create(owner, u"Quorvel", ui::kScreenStyle, ui::kScreenExtendedStyle) && m_good;
        show(window);
    }

    [[nodiscard]] platform::Bitmap plainOrNot(toolkit::WindowImplBase& window) const {
        if (m_plain) {
            wipeTexts(window);
        }
        return pictureOf(window);
    }

    void shoot(const std::string& name, toolkit::WindowImplBase& window) {
        save(name, plainOrNot(window));
    }

    /// Paints over the numbers of the points, within their circles.
    static void hideNumbers(platform::Bitmap& picture, toolkit::WindowImplBase& window) {
        const toolkit::CControlUI* video = window.GetPaintManager().FindControl(u"Video");
        const auto shape =
            zone::currentZoneManager()->zone(0)->shape(core::convertStringToInt(kFrame));
        for (const platform::Point at : shape->points) {
            const platform::Point middle{video->GetPos().left + at.x, video->GetPos().top + at.y};
            for (int y = middle.y - kHalfNumber; y <= middle.y + kHalfNumber; ++y) {
                for (int x = middle.x - kHalfNumber; x <= middle.x + kHalfNumber; ++x) {
                    picture.row(y)[x] = 0xFFFFFFFF;
                }
            }
        }
    }

    void save(const std::string& name, const platform::Bitmap& picture) {
        tour::writePng(picture, (m_folder / (name + ".png")).string());
        std::cout << name << " " << picture.size().width << "x" << picture.size().height << "\n";
    }

    /// Clicks a corner of the zone on show; the pointer stays over the picture.
    void selectPoint(toolkit::WindowImplBase& window, std::size_t point) {
        const auto zones = zone::currentZoneManager();
        const auto shape =
            zones ? zones->zone(0)->shape(core::convertStringToInt(kFrame)) : nullptr;
        const toolkit::CControlUI* video = window.GetPaintManager().FindControl(u"Video");
        if (shape && point < shape->points.size() && video != nullptr) {
            const platform::Point at = shape->points[point];
            test::click(*window.GetNative(),
                        {video->GetPos().left + at.x, video->GetPos().top + at.y});
        }
    }

    void openScene() {
        const auto window = ui::OpenScene::create(context());
        open(*window);
        shoot("OpenScene", *window);
    }

    void newScene() {
        const auto window = ui::NewScene::create(context());
        open(*window);
        click(*window, u"EditSceneName");
        test::type(*window->GetNative(), u"Ladder Inspection");
        shoot("NewScene", *window);
    }

    void branchEditor() {
        m_good = m_services.sceneManager->Load(kScene) && m_good;
        const auto window = ui::BranchList::create(context());
        open(*window);
        auto* actions = window->FindControl<toolkit::CListUI>(u"BranchList");
        actions->SelectItem(0);
        shoot("BranchList", *window);

        auto* target = toolkit::controlCast<toolkit::CComboUI>(
            toolkit::controlCast<toolkit::CContainerUI>(actions->GetItemAt(1))
                ->FindSubControl(u"ComboBranches"));
        target->Drop();
        shoot("BranchList-combo", *window);
        target->CloseDrop();

        question(*window);
        tabTo(*window, u"ButtonEditZones");
        shoot("BranchList-focus", *window);
    }

    void question(ui::BranchList& asker) {
        ui::Confirmation dialog(context(), asker, "Exit?", "Are you sure you want to exit?");
        platform::Bitmap picture = pictureOf(asker);
        open(dialog, asker.GetNative());
        if (m_plain) {
            wipeTexts(dialog);
        }
        drawOver(picture, *asker.GetNative(), *dialog.GetNative());
        save("Confirmation", picture);
    }

    /// In a folder without scenes, with a new scene.
    void emptyStates() {
        const std::filesystem::path here = std::filesystem::current_path();
        const std::filesystem::path bare = here / "no-scenes";
        std::filesystem::remove_all(bare);
        std::filesystem::create_directories(bare);
        std::filesystem::copy(here / "UI", bare / "UI", std::filesystem::copy_options::recursive);
        std::filesystem::current_path(bare);
        {
            const auto window = ui::OpenScene::create(context());
            open(*window);
            shoot("OpenScene-empty", *window);
        }
        std::filesystem::current_path(here);
        m_services.sceneManager = scene::SceneManager::create();
        m_services.sceneManager->SetName("Ladder Inspection");
        const auto window = ui::BranchList::create(context());
        open(*window);
        shoot("BranchList-empty", *window);
    }

    test::ScriptedGui m_gui{test::gui()};
    std::filesystem::path m_folder;
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    bool m_plain;
    bool m_good = false;
};

int run(const std::vector<std::string_view>& arguments) {
    bool small = false;
    bool plain = false;
    bool understood = !arguments.empty();
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        small = small || arguments[i] == "small";
        plain = plain || arguments[i] == "plain";
        understood = understood && (arguments[i] == "small" || arguments[i] == "plain");
    }
    if (!understood) {
        std::cerr << "usage: screenshots FOLDER [small] [plain]\n";
        return 2;
    }
    Photographer photographer(std::filesystem::absolute(arguments.front()), plain);
    const bool good = small ? photographer.smallZoneEditor() : photographer.takeAll();
    return good ? 0 : 1;
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
