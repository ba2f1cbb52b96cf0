#include "ui/publishing/PublishForm.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/FileSystem.h"
#include "publish/PublishFolder.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/ChosenLanguage.h"
#include "ui/publishing/PublishPlace.h"

namespace ui {
namespace {

using publish::PageOptions;

constexpr std::u16string_view kTitle = u"EditPublishTitle";
constexpr std::u16string_view kLanguage = u"ComboPublishLanguage";
constexpr std::string_view kLanguageKey = "publishLanguage";
/// A box, the option that it stands for, and where that is remembered.
struct Box {
    std::u16string_view name;
    bool PageOptions::*option;
    std::string_view key;
};
constexpr std::array kBoxes{Box{u"CheckPublishHints", &PageOptions::hasOutlines, "publishHints"},
                            Box{u"CheckPublishKeys", &PageOptions::hasKeys, "publishKeys"},
                            Box{u"CheckPublishReport", &PageOptions::hasReport, "publishReport"}};

std::u16string textOf(const Controls& controls, std::u16string_view name) {
    const toolkit::CControlUI* control = controls.find(name);
    return control != nullptr ? std::u16string(control->GetText()) : std::u16string();
}

void offerLanguages(toolkit::CComboUI& combo, const std::string& code) {
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    int chosen = 0;
    for (const publish::Language& language : publish::languages()) {
        chosen = code == language.code ? static_cast<int>(texts->size()) : chosen;
        texts->push_back(core::displayText(language.name));
    }
    combo.SetItemTexts(texts);
    combo.SelectItem(chosen);
}

} // namespace

void PublishForm::fill(const std::string& sceneName, const std::string& spoken,
                       const core::EditorSettings* settings) {
    m_controls.setText(
        kFolder, core::displayText(usualPublishFolder(*core::services().fileSystem, sceneName)));
    m_controls.setText(kTitle, core::displayText(sceneName));
    const PageOptions usual;
    if (auto* combo = m_controls.find<toolkit::CComboUI>(kLanguage)) {
        const auto* editors = publish::findLanguage(core::storedText(ownNameOf(spoken)));
        const std::string language = editors != nullptr ? editors->code : usual.language;
        offerLanguages(*combo, settings != nullptr ? settings->getString(kLanguageKey, language)
                                                   : language);
    }
    for (const Box& box : kBoxes) {
        if (auto* option = m_controls.find<toolkit::COptionUI>(box.name)) {
            const bool usually = usual.*box.option;
            option->Selected(settings != nullptr ? settings->getBool(box.key, usually) : usually);
        }
    }
}

void PublishForm::setEnabled(bool enabled) {
    for (const std::u16string_view name : {kFolder, kTitle, kLanguage}) {
        m_controls.setEnabled(name, enabled);
    }
    for (const Box& box : kBoxes) {
        m_controls.setEnabled(box.name, enabled);
    }
}

PageOptions PublishForm::options() const {
    PageOptions options;
    options.title = core::storedText(textOf(m_controls, kTitle));
    if (const auto* combo = m_controls.find<toolkit::CComboUI>(kLanguage);
        combo != nullptr && combo->GetCurSel() >= 0) {
        options.language = publish::languages()[static_cast<std::size_t>(combo->GetCurSel())].code;
    }
    for (const Box& box : kBoxes) {
        const auto* option = m_controls.find<toolkit::COptionUI>(box.name);
        options.*box.option = option != nullptr && option->IsSelected();
    }
    return options;
}

void PublishForm::remember(const PageOptions& options, core::EditorSettings* settings) {
    if (settings == nullptr) {
        return;
    }
    settings->set(kLanguageKey, options.language); // a failed write is in the log
    for (const Box& box : kBoxes) {
        settings->set(box.key, options.*box.option ? "true" : "false");
    }
}

std::u16string PublishForm::folder() const {
    return textOf(m_controls, kFolder);
}

std::string PublishForm::folderPath() const {
    const std::string path = core::storedText(folder());
    return path.empty() ? path : core::services().fileSystem->fullPath(path);
}

void PublishForm::setFolder(const std::string& path, const std::string& sceneName) {
    platform::FileSystem& files = *core::services().fileSystem;
    std::vector<platform::FolderEntry> entries;
    const bool isFree = files.list(path, entries) && entries.empty();
    const bool isPage = core::isFile(core::withSeparator(path) + std::string(publish::kListName));
    const std::string folder =
        isFree || isPage ? path
                         : core::withSeparator(path) + publishFolderName(files, path, sceneName);
    m_controls.setText(kFolder, core::displayText(folder));
}

} // namespace ui
