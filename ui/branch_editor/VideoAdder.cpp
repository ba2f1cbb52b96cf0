#include "ui/branch_editor/VideoAdder.h"

#include <string_view>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "jobs/VideoImport.h"
#include "platform/FileDialog.h"
#include "scene/SceneFolders.h"
#include "src/TheoraProbe.h"
#include "ui/FileChoice.h"

namespace ui {

namespace {

/// Where the author chose videos last.
constexpr std::string_view kLastFolder = "videoFolder";

} // namespace

VideoAdder::VideoAdder(platform::Gui& gui, core::EditorSettings* settings, VideoPresenter& videos,
                       std::string folder, Listener& listener)
    : m_gui(gui), m_settings(settings), m_videos(videos), m_folder(std::move(folder)),
      m_listener(listener), m_import(gui.loop(), *core::services().fileSystem) {}

std::optional<platform::OpenFilesResult> VideoAdder::chooseFiles(ConfirmCallback& asker) {
    platform::OpenFilesRequest request;
    request.owner = asker.GetParentWindow();
    request.title = core::trStored("Select Video"_tr);
    request.filterName = core::trStored("Theora Video Files"_tr);
    request.filterPatterns = "*.ogg;*.ogv";
    request.initialFolder = scene::scenesFolderPath();
    const AskingScope asking(asker);
    return ui::chooseFiles(m_gui, m_settings, kLastFolder, request);
}

void VideoAdder::ask(ConfirmCallback& asker) {
    const auto chosen = chooseFiles(asker);
    if (!chosen || isRunning()) {
        return;
    }
    std::vector<Source> sources;
    for (const std::string& name : chosen->names) {
        sources.push_back({chosen->folder, name});
    }
    add(sources);
}

void VideoAdder::add(const std::vector<std::string>& paths) {
    std::vector<Source> sources;
    for (const std::string& path : paths) {
        sources.push_back({core::folderOf(path), core::fileName(path)});
    }
    add(sources);
}

void VideoAdder::add(const std::vector<Source>& sources) {
    if (m_folder.empty()) {
        return;
    }
    if (!isRunning()) {
        m_count = 0;
        m_outcome = {};
        m_foreign.clear();
    }
    m_sources.insert(m_sources.end(), sources.begin(), sources.end());
    m_count += static_cast<int>(sources.size());
    if (!isRunning()) {
        next();
        if (!isRunning()) {
            m_listener.copied(m_outcome, false);
        }
    }
}

void VideoAdder::next() {
    while (!m_sources.empty() && !isRunning()) {
        const Source source = m_sources.front();
        if (m_videos.isListed(source.name)) {
            ++m_outcome.listedAlready;
            m_sources.pop_front();
        } else if (m_videos.addItem(source.name)) {
            m_import.start(
                source.folder + source.name, m_folder + core::fileName(source.name),
                [this] { m_listener.copying(status()); },
                [this, source](const jobs::ImportReport& report) { done(source, report); });
            m_listener.copying(status());
        } else {
            m_sources.clear(); // no list to add to
        }
    }
}

void VideoAdder::done(const Source& source, const jobs::ImportReport& report) {
    const bool cancelled = report.result == jobs::ImportResult::cancelled;
    if (cancelled) {
        m_sources.clear();
    } else {
        m_sources.pop_front();
    }
    if (cancelled || report.result == jobs::ImportResult::failed) {
        m_videos.removeItem(source.name);
    } else {
        m_added.push_back(source.name);
        if (!report.probe.isTheora) {
            m_foreign.push_back(source.folder + source.name);
        }
    }
    m_outcome.note(source.name, report);
    next();
    if (!isRunning()) {
        m_videos.added(std::exchange(m_added, {}));
        m_listener.copied(m_outcome, true);
    }
}

jobs::CopyStatus VideoAdder::status() const {
    jobs::CopyStatus status;
    status.name = m_sources.front().name;
    status.count = m_count;
    status.number = m_count - static_cast<int>(m_sources.size()) + 1;
    status.copiedBytes = m_import.copiedBytes();
    status.totalBytes = m_import.totalBytes();
    return status;
}

} // namespace ui
