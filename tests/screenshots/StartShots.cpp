#include "tests/screenshots/StartShots.h"

#include <filesystem>
#include <memory>

#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CPictureUI.h"
#include "ui/BranchList.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"
#include "ui/SettingsWindow.h"
#include "ui/keys/KeysWindow.h"

namespace screenshots {

void takeStart(Photographer& photographer, const std::u16string& newScene) {
    photographer.take<ui::OpenScene>("OpenScene", [&photographer](test::WindowDriver& driver) {
        const auto& list = driver.get<toolkit::CListUI>(u"ListScenes");
        for (int row = 0; photographer.services().stills != nullptr && row < list.GetCount();
             ++row) {
            const auto& still = driver.getIn<toolkit::CPictureUI>(*list.GetItemAt(row), u"Still");
            photographer.require(
                test::pumpUntil([&still] { return still.GetPicture() != nullptr; }),
                "the still of a scene");
        }
    });
    photographer.take<ui::NewScene>("NewScene", [&newScene](test::WindowDriver& driver) {
        if (!newScene.empty()) {
            driver.retype(u"EditSceneName", newScene);
        }
    });
    photographer.take<ui::SettingsWindow>("Settings", [](test::WindowDriver& driver) {
        // As an author would see it.
        driver.get(u"EditScenesFolder")
            .SetText(u"/home/anna/.local/share/quorvel/Programs/Quorvel/Scenes");
    });
    photographer.take<ui::KeysWindow>("Keys");
}

void takeEmptyStates(Photographer& photographer) {
    std::filesystem::rename("Scenes", "away");
    photographer.take<ui::OpenScene>("OpenScene-empty");
    std::filesystem::rename("away", "Scenes");
    app_state::SharedServices& services = photographer.services();
    services.sceneManager = scene::SceneManager::create();
    services.sceneManager->SetName("Ladder Inspection");
    services.sceneSession = scene::SceneSession::create(services.sceneManager);
    photographer.take<ui::BranchList>("BranchList-empty");
}

} // namespace screenshots
