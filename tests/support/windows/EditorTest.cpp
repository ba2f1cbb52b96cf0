#include "tests/support/windows/EditorTest.h"

#include <filesystem>
#include <memory>

#include "core/EditorSettings.h"
#include "core/Translations.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/MenuPopup.h"

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

std::vector<std::u16string> menuOf(const WindowDriver& driver) {
    std::vector<std::u16string> texts;
    if (const toolkit::CMenuUI* menu = toolkit::MenuPopup::of(driver.manager()).menu()) {
        for (int row = 0; row < menu->GetCount(); ++row) {
            const std::u16string text = menu->GetItemAt(row)->GetText();
            texts.push_back(text.empty() ? u"-" : text);
        }
    }
    return texts;
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

void EditorTest::inWindow(const std::string& layout,
                          const std::function<void(const WindowDriver&)>& act) {
    m_gui.loop().post([this, layout, act] {
        if (topWindow().GetSkinFile() == layout) {
            act(WindowDriver(topWindow()));
        } else {
            inWindow(layout, act);
        }
    });
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
