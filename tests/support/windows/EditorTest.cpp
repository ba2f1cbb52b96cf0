#include "tests/support/windows/EditorTest.h"

#include <filesystem>
#include <memory>

#include "core/EditorSettings.h"
#include "core/Translations.h"
#include "toolkit/controls/COptionUI.h"

namespace test {

std::vector<std::u16string> itemsOf(const toolkit::CComboUI& combo) {
    std::vector<std::u16string> texts;
    for (int index = 0; index < combo.GetCount(); ++index) {
        texts.push_back(combo.GetItemText(index));
    }
    return texts;
}

bool isChecked(const WindowDriver& driver, std::u16string_view name) {
    return driver.get<toolkit::COptionUI>(name).IsSelected();
}

void copySkin() {
    const std::filesystem::path data(QUORVEL_DATA_FOLDER);
    std::filesystem::copy(data / "UI", "UI", std::filesystem::copy_options::recursive);
    std::filesystem::copy(data / "Translations.ini", "Translations.ini");
}

EditorTest::EditorTest() {
    copySkin();
    m_services.translations = core::Translations::create("Translations.ini", "English");
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    m_services.sceneManager = scene::SceneManager::create();
    m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
}

EditorTest::~EditorTest() {
    forgetQuit();
}

void EditorTest::forgetQuit() {
    test::pump();
    test::gui().loop().postQuit(0);
    test::gui().loop().run();
}

} // namespace test
