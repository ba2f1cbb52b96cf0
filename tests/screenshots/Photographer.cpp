#include "tests/screenshots/Photographer.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/services/Startup.h"
#include "core/Services.h"
#include "scene/SceneFolders.h"
#include "stills/Still.h"
#include "stills/StillService.h"
#include "tests/screenshots/Demo.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/TestGui.h"
#include "tools/tour/PngFile.h"
#include "tools/tour/WindowPicture.h"
#include "ui/EditorWindow.h"
#include "ui/branch_editor/ClipCard.h"
#include "ui/map/MapStills.h"

namespace screenshots {

namespace {

constexpr int kLowScreen = 800;

}

std::string sizeSuffix(platform::Size size) {
    return "@" + std::to_string(size.width) + "x" + std::to_string(size.height);
}

Photographer::Photographer(std::filesystem::path folder, bool plain)
    : m_gui(test::gui()), m_folder(std::move(folder)), m_isPlain(plain) {
    std::filesystem::create_directories(m_folder);
    m_isGood = app::createServices(m_services, m_state);
}

void Photographer::require(bool works, std::string_view what) {
    if (!works) {
        std::cerr << "screenshots: did not come: " << what << '\n';
        m_isGood = false;
    }
}

void Photographer::loadDemo() {
    require(session().load(kScene), "the demo scene");
}

void Photographer::startStills() {
    if (m_services.stills == nullptr) {
        m_services.stills =
            std::make_shared<stills::StillService>(m_gui.loop(), *core::services().fileSystem, "");
    }
}

void Photographer::makeStills() {
    startStills();
    std::vector<stills::StillRequest> wanted;
    for (int branch = 0; branch < session().branchCount(); ++branch) {
        const std::string& video = session().video(branch);
        for (const platform::Size box : {ui::MapStills::kStillBox, ui::ClipCard::kStillBox}) {
            if (!video.empty()) {
                wanted.push_back({scene::sceneFolderPath(kScene) + video, box});
            }
        }
    }
    stills::StillClient client(*m_services.stills, [](const auto& /*request*/) {});
    client.want(wanted);
    require(test::pumpUntil([&] {
                return std::all_of(wanted.begin(), wanted.end(), [&](const auto& request) {
                    return client.find(request) != nullptr;
                });
            }),
            "the stills of the scene");
}

void Photographer::useLowScreen() {
    m_gui.host.screenHeight = kLowScreen;
}

void Photographer::setSuffix(std::string suffix) {
    m_suffix = std::move(suffix);
}

void Photographer::open(toolkit::WindowImplBase& window, platform::NativeWindow* owner) {
    require(window.Create(owner, u"Quorvel", ui::kScreenStyle, ui::kScreenExtendedStyle),
            "a window");
    test::WindowDriver driver(window);
    driver.show();
    driver.hover(platform::Point{1, 1}); // away from whatever the pointer happened to rest on
    settle(window);
}

platform::Bitmap Photographer::pictureOf(toolkit::WindowImplBase& window) const {
    if (m_isPlain) {
        wipeTexts(window);
    }
    test::pump();
    return tour::pictureOf(window);
}

void Photographer::save(const std::string& name, const platform::Bitmap& picture) const {
    tour::writePng(picture, (m_folder / (name + m_suffix + ".png")).string());
    std::cout << name << " " << picture.size().width << "x" << picture.size().height << "\n";
}

void Photographer::shoot(const std::string& name, toolkit::WindowImplBase& window) const {
    save(name, pictureOf(window));
}

} // namespace screenshots
