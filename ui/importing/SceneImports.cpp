#include "ui/importing/SceneImports.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "edit/History.h"
#include "scene/SceneChange.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSession.h"

namespace ui {
namespace {

using imports::ImportItem;
using imports::ImportState;
using imports::Quality;

constexpr std::string_view kQualityKey = "importQuality";
constexpr std::string_view kSoundKey = "importSound";
constexpr std::array kQualities{std::pair{Quality::small, std::string_view("small")},
                                std::pair{Quality::standard, std::string_view("standard")},
                                std::pair{Quality::high, std::string_view("high")}};

} // namespace

SceneImports::SceneImports(platform::EventLoop& loop, platform::FileSystem& files,
                           std::shared_ptr<scene::SceneSession> session,
                           std::shared_ptr<core::EditorSettings> settings, std::string folder,
                           Finder find)
    : m_find(std::move(find)), m_session(std::move(session)), m_settings(std::move(settings)),
      m_folder(std::move(folder)), m_queue(loop, files, scene::endingInSlash(m_folder)),
      m_looking(loop) {
    if (!m_find) {
        m_find = [&files](const std::string& chosen) {
            return imports::findConverter(files, imports::usualPlaces(files, chosen));
        };
    }
    m_queue.setSettings(rememberedSettings());
    m_queue.onChanged = [this] { changed(); };
    m_queue.onDone = [this](const ImportItem& item) { joinScene(item); };
    lookAgain();
}

SceneImports::~SceneImports() {
    m_queue.onChanged = nullptr;
    m_queue.onDone = nullptr;
}

imports::ImportSettings SceneImports::rememberedSettings() const {
    imports::ImportSettings settings;
    if (m_settings != nullptr) {
        const std::string name = m_settings->getString(kQualityKey, {});
        for (const auto& [quality, word] : kQualities) {
            settings.quality = name == word ? quality : settings.quality;
        }
        settings.keepsSound = m_settings->getBool(kSoundKey, true);
    }
    return settings;
}

void SceneImports::setSettings(const imports::ImportSettings& settings) {
    m_queue.setSettings(settings);
    if (m_settings != nullptr) {
        for (const auto& [quality, word] : kQualities) {
            if (quality == settings.quality) {
                m_settings->set(kQualityKey, word); // a failed write is in the log
            }
        }
        m_settings->set(kSoundKey, settings.keepsSound ? "true" : "false");
    }
}

void SceneImports::lookAgain() {
    if (m_looking.isRunning()) {
        m_looksAgain = true;
        return;
    }
    m_looksAgain = false;
    const auto found = std::make_shared<imports::Converter>();
    const std::string chosen =
        m_settings != nullptr ? m_settings->getString(kConverterKey, {}) : std::string();
    m_looking.start(
        [found, chosen, find = m_find](jobs::BackgroundJob::Control&) { *found = find(chosen); },
        {},
        [this, found](bool) {
            if (m_looksAgain) {
                lookAgain();
            } else {
                takeConverter(*found);
            }
        });
}

void SceneImports::takeConverter(const imports::Converter& converter) {
    m_converter = converter;
    m_converterState = converter.isFound() ? ConverterState::found : ConverterState::missing;
    m_queue.setConverter(converter);
    if (converter.isFound()) {
        for (const Request& request : std::exchange(m_waiting, {})) {
            request.isRemake ? remake(request.file) : add({request.file});
        }
    }
    changed();
}

void SceneImports::add(const std::vector<std::string>& sources) {
    for (const std::string& source : sources) {
        if (m_converterState == ConverterState::found) {
            m_open.push_back(m_queue.add(source));
        } else {
            m_waiting.push_back({source, false});
        }
    }
    changed();
}

void SceneImports::remake(const std::string& clip) {
    if (m_converterState != ConverterState::found) {
        m_waiting.push_back({clip, true});
        return;
    }
    const std::vector<std::string> running = clipsBeingRemade();
    if (std::find(running.begin(), running.end(), clip) == running.end()) {
        m_open.push_back(m_queue.addRemake(clip));
        changed();
    }
}

bool SceneImports::retry(int id) {
    const ImportItem* item = m_queue.find(id);
    if (item == nullptr || item->state != ImportState::failed) {
        return false;
    }
    const imports::Failure failure = item->failure.kind;
    if (failure != imports::Failure::nameTaken && failure != imports::Failure::cut) {
        return false;
    }
    m_open.push_back(id);
    failure == imports::Failure::cut ? m_queue.importReadable(id) : m_queue.keepBoth(id);
    return true;
}

std::vector<std::string> SceneImports::clipsBeingRemade() const {
    std::vector<std::string> names;
    for (const ImportItem& item : m_queue.items()) {
        if (item.kind == imports::ImportKind::remake && imports::isUnderWay(item.state)) {
            names.push_back(core::fileName(item.source));
        }
    }
    return names;
}

void SceneImports::setWindowOpen(bool open) {
    m_isWindowOpen = open;
    changed();
}

void SceneImports::changed() {
    tellEnds();
    m_changes.notify();
}

void SceneImports::tellEnds() {
    for (std::size_t i = 0; i < m_open.size();) {
        const ImportItem* item = m_queue.find(m_open[i]);
        if (item != nullptr && imports::isUnderWay(item->state)) {
            ++i;
            continue;
        }
        m_open.erase(m_open.begin() + static_cast<std::ptrdiff_t>(i));
        if (item != nullptr) {
            m_ends.notify(ImportItem(*item)); // a listener may change the queue
        }
    }
}

void SceneImports::joinScene(const ImportItem& item) {
    if (m_session == nullptr) {
        return;
    }
    auto gesture = m_session->begin({scene::SceneStep::addVideo});
    m_session->addVideos({item.clip.name});
    if (item.kind == imports::ImportKind::remake) {
        const std::string before = core::fileName(item.source);
        for (int branch = 0; branch < m_session->branchCount(); ++branch) {
            if (m_session->video(branch) == before) {
                m_session->setVideo(branch, item.clip.name);
            }
        }
    }
    gesture.commit();
}

} // namespace ui
