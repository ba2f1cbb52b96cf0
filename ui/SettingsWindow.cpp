#include "ui/SettingsWindow.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "import/Converter.h"
#include "platform/FileSystem.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "recovery/Drafts.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/ChosenLanguage.h"
#include "ui/FigureTexts.h"
#include "ui/SkinChoice.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/SettingsCommands.h"
#include "ui/importing/ConverterChoice.h"
#include "ui/importing/SceneImports.h"

namespace ui {

namespace {

/// A box and the setting that it shows.
struct Box {
    std::u16string_view name;
    bool (core::EditorSettings::*isOn)() const;
    bool (core::EditorSettings::*set)(bool);
};

constexpr std::u16string_view kKeepDrafts = u"CheckKeepDrafts";
constexpr Box kBoxes[] = {
    {kKeepDrafts, &core::EditorSettings::keepDrafts, &core::EditorSettings::setKeepDrafts},
    {u"CheckKeepBackups", &core::EditorSettings::keepBackups,
     &core::EditorSettings::setKeepBackups},
};

constexpr std::u16string_view kComboLanguage = u"ComboLanguage";
constexpr std::u16string_view kComboSkin = u"ComboSkin";
constexpr std::u16string_view kComboScale = u"ComboScale";
constexpr std::u16string_view kConverterEdit = u"EditConverter";
constexpr std::array kScales{100, 125, 150, 200};

} // namespace

std::shared_ptr<SettingsWindow> SettingsWindow::create(const WindowContext& context) {
    return std::make_shared<SettingsWindow>(context);
}

SettingsWindow::SettingsWindow(const WindowContext& context)
    : EditorWindow(context, {kSettingsCommands}), m_looking(context.gui.loop()),
      m_scenesPlace(context, controls()) {
    commands().bind(command::kSettingsClose, [this] { Close(1); });
    commands().bind(command::kChooseConverter, [this] { chooseConverter(); });
    commands().bind(command::kChooseScenesFolder,
                    [this] { m_scenesPlace.choose(GetNative(), companions()); });
}

void SettingsWindow::chooseConverter() {
    if (ui::chooseConverter(context(), GetNative(), companions())) {
        showConverter();
        if (const auto& imports = context().services.sceneImports) {
            imports->lookAgain();
        }
    }
}

void SettingsWindow::showConverter() {
    const auto& settings = context().services.editorSettings;
    if (m_looking.isRunning()) {
        m_looksAgain = true;
        return;
    }
    m_looksAgain = false;
    const std::string chosen = settings ? settings->getString(kConverterKey, {}) : std::string();
    const auto found = std::make_shared<imports::Converter>();
    m_looking.start(
        [found, chosen](jobs::BackgroundJob::Control&) {
            platform::FileSystem& files = platform::nativeFileSystem();
            *found = imports::findConverter(files, imports::usualPlaces(files, chosen));
        },
        {},
        [this, found](bool) {
            if (m_looksAgain) {
                showConverter();
            } else {
                showConverter(*found);
            }
        });
}

void SettingsWindow::showConverter(const imports::Converter& converter) {
    const bool isFound = converter.isFound();
    setTextOf(kConverterEdit,
              isFound ? core::tr("ConverterFound|found: {0}"_tr, core::fileTitle(converter.ffmpeg))
                      : core::tr("ConverterNotFound|not found"_tr));
    if (toolkit::CControlUI* field = findControl(kConverterEdit); field != nullptr && isFound) {
        field->SetToolTip(core::displayText(converter.ffmpeg));
    }
}

void SettingsWindow::showLanguages() {
    auto* combo = find<toolkit::CComboUI>(kComboLanguage);
    const auto& translations = context().services.translations;
    if (combo == nullptr || !translations) {
        return;
    }
    std::map<std::string, std::string> left; // by their small letters, as the catalogue has them
    for (const std::string& language : translations->languages()) {
        left.emplace(core::lowerCase(language), language);
    }
    left.emplace("english", "English"); // is in the program
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    for (const auto& [name, shown] : kLanguages) {
        if (left.erase(core::lowerCase(name)) > 0) {
            m_languages.emplace_back(name);
            texts->emplace_back(shown);
        }
    }
    for (const auto& [folded, language] : left) {
        m_languages.push_back(language);
        texts->push_back(core::displayText(language));
    }
    const auto now =
        std::find_if(m_languages.begin(), m_languages.end(), [&](const std::string& language) {
            return core::lowerCase(language) == core::lowerCase(chosenLanguage(context().services));
        });
    combo->SetItemTexts(texts);
    combo->SelectItem(now != m_languages.end() ? static_cast<int>(now - m_languages.begin()) : -1);
}

void SettingsWindow::InitWindow() {
    showLanguages();
    const auto& settings = context().services.editorSettings;
    for (const Box& box : kBoxes) {
        if (auto* option = find<toolkit::COptionUI>(box.name); option != nullptr && settings) {
            option->Selected(((*settings).*box.isOn)());
        }
    }
    if (settings) {
        showScale(*settings);
        showSkin(*settings);
    }
    showConverter();
    m_scenesPlace.show();
    GetPaintManager().SetFocus(findControl(kBoxes[0].name));
}

void SettingsWindow::showScale(const core::EditorSettings& settings) {
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    for (const int scale : kScales) {
        texts->push_back(percentText(scale));
    }
    const auto now = std::find(kScales.begin(), kScales.end(), settings.scale());
    if (auto* combo = find<toolkit::CComboUI>(kComboScale)) {
        combo->SetItemTexts(texts);
        combo->SelectItem(now != kScales.end() ? static_cast<int>(now - kScales.begin()) : -1);
    }
}

void SettingsWindow::showSkin(const core::EditorSettings& settings) {
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    for (const SkinChoice& choice : kSkinChoices) {
        texts->push_back(core::tr(choice.text));
    }
    if (auto* combo = find<toolkit::CComboUI>(kComboSkin)) {
        combo->SetItemTexts(texts);
        combo->SelectItem(static_cast<int>(&chosenSkin(settings) - kSkinChoices.data()));
    }
}

void SettingsWindow::OnItemSelect(toolkit::TNotifyUI& message) {
    const auto& settings = context().services.editorSettings;
    const auto* combo = toolkit::controlCast<toolkit::CComboUI>(message.pSender);
    if (!settings || combo == nullptr || combo->GetCurSel() < 0) {
        return;
    }
    // What cannot be kept counts for this run; the log says why.
    const auto chosen = static_cast<std::size_t>(combo->GetCurSel());
    if (combo->GetName() == kComboLanguage) {
        if (core::lowerCase(m_languages.at(chosen)) !=
            core::lowerCase(chosenLanguage(context().services))) {
            settings->set(core::kLanguageKey, m_languages.at(chosen));
        }
    } else if (combo->GetName() == kComboSkin &&
               kSkinChoices.at(chosen).value != chosenSkin(*settings).value) {
        keepSkin(*settings, kSkinChoices.at(chosen));
        context().gui.windows().setAppearance(kSkinChoices.at(chosen).appearance);
    } else if (combo->GetName() == kComboScale && kScales.at(chosen) != settings->scale()) {
        settings->setScale(kScales.at(chosen));
        context().gui.windows().setZoom(kScales.at(chosen) / 100.0);
    }
}

void SettingsWindow::OnSelectChanged(toolkit::TNotifyUI& message) {
    const auto& settings = context().services.editorSettings;
    const auto* option = toolkit::controlCast<toolkit::COptionUI>(message.pSender);
    for (const Box& box : kBoxes) {
        if (settings && option != nullptr && option->GetName() == box.name) {
            ((*settings).*box.set)(option->IsSelected()); // a failed write is in the log
            if (const auto& drafts = context().services.drafts; drafts && box.name == kKeepDrafts) {
                drafts->keepingChanged();
            }
        }
    }
}

} // namespace ui
