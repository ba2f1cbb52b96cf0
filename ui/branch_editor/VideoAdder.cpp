#include "ui/branch_editor/VideoAdder.h"

#include <string_view>
#include <utility>

#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "jobs/VideoImport.h"
#include "platform/FileDialog.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"

namespace ui {

namespace {

/// Where the author chose videos last.
constexpr std::string_view kLastFolder = "videoFolder";

/// Brings the working directory back: a file dialog may leave another one behind.
class KeptDirectory {
public:
    KeptDirectory() : m_folder(core::services().fileSystem->currentFolder()) {}
    ~KeptDirectory() { core::services().fileSystem->setCurrentFolder(m_folder); }
    KeptDirectory(const KeptDirectory&) = delete;
    KeptDirectory& operator=(const KeptDirectory&) = delete;

private:
    std::string m_folder;
};

} // namespace

VideoAdder::VideoAdder(platform::Gui& gui, core::EditorSettings* settings, VideoPresenter& videos,
                       std::string folder, Listener& listener)
    : m_gui(gui), m_settings(settings), m_videos(videos), m_folder(std::move(folder)),
      m_listener(listener), m_import(gui.loop(), *core::services().fileSystem) {}

std::optional<platform::OpenFilesResult> VideoAdder::chooseFiles(ConfirmCallback& asker) {
    const KeptDirectory kept;
    platform::OpenFilesRequest request;
    request.owner = asker.GetParentWindow();
    request.title = "Select Video";
    request.filterName = "Theora Video Files";
    request.filterPatterns = "*.ogg;*.ogv";
    request.initialFolder = scene::scenesFolderPath();
    const std::string last = m_settings != nullptr ? m_settings->getString(kLastFolder, {}) : "";
    if (!last.empty() && core::isFolder(last)) {
        request.initialFolder = last;
    }
    const AskingScope asking(asker);
    auto chosen = m_gui.fileDialog().openFiles(request);
    if (chosen && m_settings != nullptr && chosen->folder != last) {
        m_settings->set(kLastFolder, chosen->folder);
    }
    return chosen;
}

void VideoAdder::ask(ConfirmCallback& asker) {
    const auto chosen = chooseFiles(asker);
    if (!chosen || m_folder.empty() || isRunning()) {
        return;
    }
    m_from = chosen->folder;
    m_names.assign(chosen->names.begin(), chosen->names.end());
    m_count = static_cast<int>(m_names.size());
    m_outcome = {};
    next();
    if (!isRunning()) {
        m_listener.copied(m_outcome, false);
    }
}

void VideoAdder::next() {
    while (!m_names.empty() && !isRunning()) {
        const std::string name = m_names.front();
        if (m_videos.isListed(name)) {
            ++m_outcome.listedAlready;
            m_names.pop_front();
        } else if (m_videos.addItem(name)) {
            m_import.start(
                m_from + name, m_folder + core::fileName(name),
                [this] { m_listener.copying(status()); },
                [this, name](const jobs::ImportReport& report) { done(name, report); });
            m_listener.copying(status());
        } else {
            m_names.clear(); // no list to add to
        }
    }
}

void VideoAdder::done(const std::string& name, const jobs::ImportReport& report) {
    const bool cancelled = report.result == jobs::ImportResult::cancelled;
    if (cancelled) {
        m_names.clear();
    } else {
        m_names.pop_front();
    }
    if (cancelled || report.result == jobs::ImportResult::failed) {
        m_videos.removeItem(name);
    } else {
        m_added.push_back(name);
    }
    m_outcome.note(name, report);
    next();
    if (!isRunning()) {
        m_videos.added(std::exchange(m_added, {}));
        m_listener.copied(m_outcome, true);
    }
}

jobs::CopyStatus VideoAdder::status() const {
    jobs::CopyStatus status;
    status.name = m_names.front();
    status.count = m_count;
    status.number = m_count - static_cast<int>(m_names.size()) + 1;
    status.copiedBytes = m_import.copiedBytes();
    status.totalBytes = m_import.totalBytes();
    return status;
}

} // namespace ui
