#include "ui/publishing/PublishWindow.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "import/ImportQueue.h"
#include "platform/Desktop.h"
#include "platform/FileDialog.h"
#include "platform/Gui.h"
#include "publish/PageText.h"
#include "publish/PublishFolder.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/FileChoice.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/PublishCommands.h"
#include "ui/importing/SceneImports.h"
#include "ui/publishing/PublishTexts.h"

namespace ui {
namespace {

using publish::PublishFailure;
using publish::PublishProgress;
using publish::PublishResult;

constexpr std::u16string_view kPublishButton = u"ButtonPublish";
constexpr std::u16string_view kState = u"LabelPublishState";

constexpr int kUsualWidth = 100; ///< of that button
constexpr int kSavingWidth = 160;

} // namespace

PublishWindow::PublishWindow(const WindowContext& context, PublishTask task)
    : EditorWindow(context, {kPublishCommands, {}, kPublishPanes}), m_task(std::move(task)),
      m_run(
          context.gui.loop(),
          [this](const PublishProgress& progress) {
              if (!IsClosing()) {
                  showProgress(progress);
              }
          },
          [this](PublishResult result) {
              if (!IsClosing()) {
                  showResult(std::move(result));
              }
          }) {
    bindCommands();
}

PublishWindow::~PublishWindow() = default;

void PublishWindow::bindCommands() {
    CommandSet& commands = this->commands();
    commands.bind(
        command::kPublishNow, [this] { publish(); },
        [this] { return m_phase == Phase::asking && !isImporting(); });
    commands.bind(command::kPublishCancel, [this] { m_run.cancel(); });
    commands.bind(command::kPublishClose, [this] { Close(1); });
    commands.bind(command::kStop, [this] {
        if (m_phase == Phase::running) {
            m_run.cancel();
        } else {
            Close(1);
        }
    });
    commands.bind(
        command::kPublishFolder, [this] { chooseFolder(); },
        [this] { return m_phase == Phase::asking; });
    commands.bind(command::kPublishShow, [this] {
        m_showsFinding = true;
        Close(1);
    });
    commands.bind(command::kPublishOpen, [this] {
        if (!context().gui.desktop().openFile(m_result.folder + "/index.html")) {
            showProblem(core::tr("No browser can open it."_tr), {});
        }
    });
    commands.bind(command::kPublishReveal, [this] {
        if (!context().gui.desktop().openFile(m_result.folder)) {
            showProblem(core::tr("The folder cannot be opened."_tr), {});
        }
    });
    commands.bind(command::kPublishAgain, [this] { show(Phase::asking); });
}

void PublishWindow::show(const WindowContext& context, ConfirmCallback& owner, PublishTask task) {
    const auto window = std::make_shared<PublishWindow>(context, std::move(task));
    if (!window->runAbove(owner, core::tr("Publish as a Web Page"_tr))) {
        core::Log::get()->Error("Unable to show the Publish window");
    }
    if (window->m_showsFinding) {
        window->m_task.showPlace(window->m_task.findings.front());
    }
}

void PublishWindow::Close(int code) {
    m_importsChanged.reset();
    EditorWindow::Close(code);
}

void PublishWindow::InitWindow() {
    const auto& texts = context().services.translations;
    m_form.fill(sceneName(), texts ? texts->language() : std::string(),
                context().services.editorSettings.get());
    showFindings();
    if (const auto& imports = context().services.sceneImports) {
        m_importsChanged = imports->observe([this] {
            if (!IsClosing()) {
                showState();
            }
        });
    }
    show(Phase::asking);
    controls().startTyping(PublishForm::kFolder);
}

void PublishWindow::showFindings() {
    if (!m_task.findings.empty()) {
        setTextOf(u"LabelPublishFindings", publishFindingsText(m_task.findings.size()));
        setTextOf(u"LabelPublishCheck",
                  publishFindingText(m_task.findings.front(), *context().services.sceneSession));
    }
}

void PublishWindow::show(Phase phase) {
    m_phase = phase;
    const bool isAsking = phase == Phase::asking;
    setVisibleOf(u"PanePublish", phase != Phase::done);
    setVisibleOf(u"PanelPublishCheck", isAsking && !m_task.findings.empty());
    setVisibleOf(u"PanelPublishRunning", phase == Phase::running);
    setVisibleOf(u"PanePublished", phase == Phase::done);
    m_form.setEnabled(isAsking);
    setVisibleOf(u"ButtonPublishCancel", phase == Phase::running);
    setVisibleOf(u"ButtonPublishClose", phase != Phase::running);
    setVisibleOf(u"ButtonPublishAgain", phase == Phase::done);
    setVisibleOf(u"LabelPublishKept", phase == Phase::running);
    showProblem({}, {});
    showState();
}

const std::string& PublishWindow::sceneName() const {
    return context().services.sceneSession->scene().Name();
}

bool PublishWindow::isModified() const {
    return context().services.sceneSession->isModified();
}

bool PublishWindow::isImporting() const {
    const auto& imports = context().services.sceneImports;
    return imports && imports->queue().isBusy();
}

void PublishWindow::showState() {
    const bool isAsking = m_phase == Phase::asking;
    if (auto* button = findControl(kPublishButton)) {
        button->SetText(core::tr(isModified() ? "Save and Publish"_tr : "Publish"_tr));
        button->SetFixedWidth(isModified() ? kSavingWidth : kUsualWidth);
        button->SetVisible(isAsking);
    }
    setTextOf(kState,
              isImporting()  ? core::tr("Videos are being imported: publishing waits for that."_tr)
              : isModified() ? core::tr("The scene is modified: publishing saves it first."_tr)
                             : std::u16string());
    const bool hasProblem = controls().isUsable(u"LabelProblem");
    setVisibleOf(kState, isAsking && !hasProblem);
    commands().showEnabled();
}

void PublishWindow::Notify(toolkit::TNotifyUI& message) {
    if (message.sType == toolkit::kTextChanged && m_phase == Phase::asking) {
        showProblem({}, kState);
        showState();
    }
    EditorWindow::Notify(message);
}

publish::PublishRequest PublishWindow::request() const {
    publish::PublishRequest request;
    request.options = m_form.options();
    request.scene = scene::endingInSlash(m_task.folder);
    request.folder = m_form.folderPath();
    if (const auto& imports = context().services.sceneImports) {
        request.converter = imports->converter();
    }
    request.limits.isBackground = true;
    return request;
}

void PublishWindow::publish() {
    publish::PublishRequest request = this->request();
    PublishForm::remember(request.options, context().services.editorSettings.get());
    setTextOf(u"LabelPublish", core::tr("Saving"_tr));
    setTextOf(u"LabelPublishLeft", {});
    showPercent(0);
    show(Phase::running);
    controls().setFocus(u"ButtonPublishCancel");
    m_result = {};
    if (isModified() && !m_task.save()) {
        PublishResult notSaved;
        notSaved.failure = PublishFailure::notSaved;
        showResult(std::move(notSaved));
        return;
    }
    const auto& settings = context().services.editorSettings;
    m_run.start(std::move(request),
                settings ? settings->getString(kConverterKey, {}) : std::string());
}

void PublishWindow::showProgress(const PublishProgress& progress) {
    if (m_phase != Phase::running) {
        show(Phase::running);
    }
    setTextOf(u"LabelPublish", publishProgressText(progress));
    setTextOf(u"LabelPublishLeft", publishLeftText(progress));
    showPercent(progress.percent);
}

void PublishWindow::showPercent(int percent) {
    if (auto* bar = find<toolkit::CProgressUI>(u"ProgressPublish")) {
        bar->SetPercent(percent);
    }
}

void PublishWindow::showResult(PublishResult result) {
    m_result = std::move(result);
    const bool isPublished = m_result.state == PublishResult::State::published;
    show(isPublished ? Phase::done : Phase::asking);
    if (isPublished) {
        showDone();
    } else {
        controls().setFocus(kPublishButton);
    }
    if (m_result.state == PublishResult::State::failed) {
        showProblem(notPublishedText(m_result), kState);
        if (toolkit::CControlUI* problem = findControl(u"LabelProblem")) {
            problem->SetToolTip(core::displayText(m_result.details));
        }
    }
}

void PublishWindow::showDone() {
    setTextOf(u"LabelPublished", publishedText(m_result, m_form.folder()));
    setTextOf(u"LabelPublishedVideos",
              core::tr("{0} video|{0} videos"_trn, static_cast<std::size_t>(m_result.videoCount)));
    setVisibleOf(u"LabelPublishedStill", m_result.hasStill);
    setVisibleOf(u"LabelPublishedStillUse", m_result.hasStill);
    controls().setFocus(u"ButtonPublishOpen");
}

void PublishWindow::chooseFolder() {
    platform::FolderRequest request;
    request.owner = GetNative();
    request.title = core::trStored("Publish as a Web Page"_tr);
    request.initialFolder = core::currentDirectory();
    std::optional<std::string> chosen;
    {
        const Companions::Pause pause(companions());
        chosen = ui::chooseFolder(context().gui, request);
    }
    if (!chosen) {
        return;
    }
    m_form.setFolder(*chosen, sceneName());
    showProblem({}, kState);
    showState();
    controls().setFocus(PublishForm::kFolder);
}

} // namespace ui
