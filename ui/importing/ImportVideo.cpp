#include "ui/importing/ImportVideo.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "app/state/SharedServices.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "import/ImportQueue.h"
#include "platform/FileDialog.h"
#include "platform/Window.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "toolkit/window/Notification.h"
#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/FileChoice.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ImportCommands.h"
#include "ui/importing/ConverterChoice.h"
#include "ui/importing/ImportRow.h"
#include "ui/importing/ImportTexts.h"
#include "ui/importing/SceneImports.h"
#include "ui/importing/VideoKinds.h"

namespace ui {
namespace {

using imports::ImportItem;
using imports::ImportState;
using imports::Quality;

constexpr std::u16string_view kList = u"ListImports";
constexpr std::u16string_view kQualityCombo = u"ComboQuality";
constexpr std::u16string_view kSoundCheck = u"CheckKeepSound";
constexpr std::u16string_view kHint = u"LabelHint";
constexpr std::array kQualities{Quality::small, Quality::standard, Quality::high};
/// Where the author chose videos to import last.
constexpr std::string_view kLastFolder = "importFolder";

} // namespace

std::shared_ptr<ImportVideo> ImportVideo::create(const WindowContext& context) {
    const std::shared_ptr<SceneImports> imports = context.services.sceneImports;
    return imports ? std::make_shared<ImportVideo>(context, imports) : nullptr;
}

ImportVideo::ImportVideo(const WindowContext& context, std::shared_ptr<SceneImports> imports)
    : EditorWindow(context, {kImportCommands, kImportContexts, kImportPanes}),
      m_imports(std::move(imports)) {
    bindCommands();
}

ImportVideo::~ImportVideo() {
    m_changed.reset();
    m_imports->setWindowOpen(false);
}

void ImportVideo::bindCommands() {
    CommandSet& commands = this->commands();
    commands.bind(command::kImportAdd, [this] { addFiles(); });
    commands.bind(
        command::kImportStop, [this] { m_imports->queue().cancelAll(); },
        [this] { return m_imports->queue().isBusy(); });
    commands.bind(command::kImportClose, [this] { Close(1); });
    commands.bind(command::kFindConverter, [this] { findConverter(); });
    commands.bind(
        command::kLookAgain, [this] { m_imports->lookAgain(); },
        [this] { return m_imports->converterState() != SceneImports::ConverterState::looking; });
    commands.bind(
        command::kImportEnd, [this] { end(chosen()->id); }, [this] { return chosen() != nullptr; });
    commands.bind(
        command::kImportRemedy, [this] { remedy(chosen()->id); },
        [this] {
            const ImportItem* item = chosen();
            return item != nullptr && item->state == ImportState::failed &&
                   !importRemedyText(item->failure).empty();
        });
    commands.bind(
        command::kImportClear, [this] { clear(); },
        [this] {
            const auto& items = m_imports->items();
            return std::any_of(items.begin(), items.end(),
                               [](const auto& item) { return item.state == ImportState::done; });
        });
}

void ImportVideo::InitWindow() {
    if (const auto& session = context().services.sceneSession) {
        setTextOf(u"LabelImportScene",
                  core::tr("Videos become part of \"{0}\". The originals stay as they are."_tr,
                           session->scene().Name()));
    }
    if (platform::NativeWindow* native = GetNative()) {
        native->setTakesFiles(true);
    }
    fillQuality();
    m_changed = m_imports->observe([this] { refresh(); });
    m_imports->setWindowOpen(true);
    controls().setFocus(u"ButtonImportAdd");
}

void ImportVideo::fillQuality() {
    // A copy: each control that is filled tells what all of them show.
    const imports::ImportSettings settings = m_imports->queue().settings();
    if (auto* sound = find<toolkit::COptionUI>(kSoundCheck)) {
        sound->Selected(settings.keepsSound);
    }
    if (auto* combo = find<toolkit::CComboUI>(kQualityCombo)) {
        auto texts = std::make_shared<toolkit::CComboUI::Texts>();
        for (const Quality quality : kQualities) {
            texts->push_back(core::tr(imports::factsOf(quality).name));
        }
        combo->SetItemTexts(texts);
        const auto now = std::find(kQualities.begin(), kQualities.end(), settings.quality);
        combo->SelectItem(static_cast<int>(now - kQualities.begin()));
    }
}

void ImportVideo::takeSettings() {
    imports::ImportSettings settings = m_imports->queue().settings();
    if (const auto* combo = find<toolkit::CComboUI>(kQualityCombo);
        combo != nullptr && combo->GetCurSel() >= 0) {
        settings.quality = kQualities.at(static_cast<std::size_t>(combo->GetCurSel()));
    }
    if (const auto* sound = find<toolkit::COptionUI>(kSoundCheck)) {
        settings.keepsSound = sound->IsSelected();
    }
    m_imports->setSettings(settings);
    setTextOf(u"LabelQuality", qualityText(settings.quality));
}

void ImportVideo::OnItemSelect(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kQualityCombo) {
        takeSettings();
    } else {
        showProblem({}, kHint);
        commands().showEnabled();
    }
}

void ImportVideo::OnSelectChanged(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kSoundCheck) {
        takeSettings();
    }
}

bool ImportVideo::HandleMessage(const platform::Event& event) {
    if (event.kind == platform::EventKind::filesDropped) {
        m_imports->add(event.files);
        return true;
    }
    return EditorWindow::HandleMessage(event);
}

void ImportVideo::refresh() {
    if (IsClosing()) {
        return;
    }
    const bool isMissing = m_imports->converterState() == SceneImports::ConverterState::missing;
    setVisibleOf(u"PaneImport", !isMissing);
    setVisibleOf(u"PaneMissing", isMissing);
    setVisibleOf(u"ButtonImportStop", !isMissing);
    if (isMissing) {
        showProblem({}, kHint);
    }
    if (auto* list = find<toolkit::CListUI>(kList)) {
        showRows(*list);
    }
    showWhole();
    setTextOf(u"LabelQuality", qualityText(m_imports->queue().settings().quality));
    setVisibleOf(kHint, !isMissing && !controls().isUsable(u"LabelProblem"));
    commands().showEnabled();
}

void ImportVideo::showRows(toolkit::CListUI& list) {
    const std::vector<ImportItem>& items = m_imports->items();
    for (std::size_t row = 0; row < m_ids.size();) {
        if (row < items.size() && items[row].id == m_ids[row]) {
            showImport(*list.GetItemAt(static_cast<int>(row)), items[row]);
            ++row;
        } else { // new items only come last
            list.RemoveAt(static_cast<int>(row));
            m_ids.erase(m_ids.begin() + static_cast<std::ptrdiff_t>(row));
        }
    }
    for (std::size_t row = m_ids.size(); row < items.size(); ++row) {
        list.Add(makeImportRow(items[row]));
        m_ids.push_back(items[row].id);
    }
    setVisibleOf(u"EmptyHeading", items.empty());
    setVisibleOf(u"EmptyLine", items.empty());
}

void ImportVideo::showWhole() {
    const std::vector<ImportItem>& items = m_imports->items();
    const auto done = std::count_if(items.begin(), items.end(), [](const ImportItem& item) {
        return item.state == ImportState::done;
    });
    setTextOf(u"LabelImport", items.empty() ? std::u16string()
                                            : core::tr("{0} of {1} done"_tr, done, items.size()));
    if (auto* bar = find<toolkit::CProgressUI>(u"ProgressImport")) {
        bar->SetPercent(items.empty() ? 0 : m_imports->queue().percent());
    }
}

const ImportItem* ImportVideo::chosen() {
    const auto* list = find<toolkit::CListUI>(kList);
    const int row = list != nullptr ? list->GetCurSel() : -1;
    return row >= 0 && static_cast<std::size_t>(row) < m_ids.size()
               ? m_imports->queue().find(m_ids[static_cast<std::size_t>(row)])
               : nullptr;
}

const ImportItem* ImportVideo::itemOf(const toolkit::CControlUI& button) {
    const auto* list = find<toolkit::CListUI>(kList);
    for (std::size_t row = 0; list != nullptr && row < m_ids.size(); ++row) {
        if (list->GetItemAt(static_cast<int>(row)) == button.GetParent()) {
            return m_imports->queue().find(m_ids[row]);
        }
    }
    return nullptr;
}

void ImportVideo::OnClick(toolkit::TNotifyUI& message) {
    toolkit::CControlUI& button = *message.pSender;
    const std::u16string name = button.GetName();
    if (name != kRowEnd && name != kRowRemedy) {
        EditorWindow::OnClick(message);
        return;
    }
    const ImportItem* item = itemOf(button);
    if (item == nullptr) {
        return;
    }
    if (name == kRowRemedy) {
        remedy(item->id);
    } else if (item->state == ImportState::done) {
        toolkit::MenuPopup::of(GetPaintManager())
            .open(button,
                  {{.text = core::tr("Command.RemoveFromTheList|Remove from the List"_tr),
                    .run = [this, id = item->id] { end(id); }},
                   {.text = core::tr("Remove All That Is Done"_tr), .run = [this] { clear(); }}});
    } else {
        end(item->id);
    }
}

void ImportVideo::end(int id) {
    const ImportItem* item = m_imports->queue().find(id);
    if (item != nullptr && imports::isUnderWay(item->state)) {
        m_imports->queue().cancel(id);
    } else {
        m_imports->queue().remove(id);
    }
}

void ImportVideo::clear() {
    const std::vector<ImportItem> items = m_imports->items();
    for (const ImportItem& item : items) {
        if (item.state == ImportState::done) {
            m_imports->queue().remove(item.id);
        }
    }
}

void ImportVideo::remedy(int id) {
    const ImportItem* item = m_imports->queue().find(id);
    if (item == nullptr || item->state != ImportState::failed) {
        return;
    }
    if (!m_imports->retry(id)) {
        showProblem(core::displayText(item->failure.details), kHint);
    }
}

void ImportVideo::addFiles() {
    platform::OpenFilesRequest request;
    request.owner = GetNative();
    request.title = core::trStored("Import Video"_tr);
    request.filterName = core::trStored("Videos"_tr);
    request.filterPatterns = std::string(kVideoPatterns);
    request.initialFolder = scene::scenesFolderPath();
    const Companions::Pause pause(companions());
    const auto chosen =
        chooseFiles(context().gui, context().services.editorSettings.get(), kLastFolder, request);
    if (!chosen) {
        return;
    }
    std::vector<std::string> files;
    for (const std::string& name : chosen->names) {
        files.push_back(chosen->folder + name);
    }
    m_imports->add(files);
}

void ImportVideo::findConverter() {
    if (chooseConverter(context(), GetNative(), companions())) {
        m_imports->lookAgain();
    }
}

} // namespace ui
