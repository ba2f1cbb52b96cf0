#include "publish/PublishJob.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "core/Paths.h"
#include "import/ImportTypes.h"
#include "import/WebClip.h"
#include "platform/Geometry.h"
#include "playback/ClipZones.h"
#include "playback/SceneStory.h"
#include "player/Clip.h"
#include "player/Story.h"
#include "publish/ConversionCount.h"
#include "publish/PageList.h"
#include "scene/SceneManager.h"
#include "src/TheoraSurvey.h"

namespace publish {
namespace {

using State = PublishResult::State;

constexpr const char* kStill = "still.jpg";
constexpr int kStillWidth = 1280;

/// Branches may name any file; a page takes those of the scene's own folder.
bool isPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\:") == std::string::npos;
}

class Publishing {
public:
    Publishing(platform::FileSystem& files, const PublishRequest& request,
               const std::function<void(const PublishProgress&)>& onProgress,
               const std::function<bool()>& isCancelled)
        : m_files(files), m_request(request), m_onProgress(onProgress), m_isCancelled(isCancelled),
          m_folder(files, request.folder) {}

    PublishResult run() {
        for (const auto step : {&Publishing::readScene, &Publishing::begin, &Publishing::reuseClips,
                                &Publishing::convertClips, &Publishing::makeStill,
                                &Publishing::writePage, &Publishing::commit}) {
            const PublishFailure failure = (this->*step)();
            if (m_isCancelled() && step != &Publishing::commit) {
                m_result.state = State::cancelled;
                return m_result;
            }
            if (failure != PublishFailure::none) {
                m_result.failure = failure;
                m_result.details = m_result.details.empty() ? m_folder.details() : m_result.details;
                return m_result;
            }
        }
        m_result.state = State::published;
        return m_result;
    }

private:
    PublishFailure readScene() {
        if (!m_request.converter.isFound()) {
            return PublishFailure::noConverter;
        }
        const std::shared_ptr<scene::SceneManager> scene = scene::SceneManager::create();
        if (!scene || !scene->loadFolder(m_request.scene)) {
            return PublishFailure::sceneUnreadable;
        }
        m_content.story = playback::storyOf(*scene);
        m_content.options = m_request.options;
        if (m_content.options.title.empty()) {
            m_content.options.title = scene->Name();
        }
        for (const player::Branch& branch : m_content.story.branches) {
            const bool isNew =
                std::none_of(m_content.clips.begin(), m_content.clips.end(),
                             [&](const PageClip& clip) { return clip.video == branch.video; });
            if (isNew && !branch.video.empty()) {
                m_content.clips.push_back({branch.video});
            }
        }
        return m_content.clips.empty() ? PublishFailure::noVideo : PublishFailure::none;
    }

    PublishFailure begin() {
        for (PageClip& clip : m_content.clips) {
            survey(clip);
        }
        return m_folder.begin();
    }

    [[nodiscard]] std::string pathOf(const PageClip& clip) const {
        return m_request.scene + clip.video;
    }

    /// Gives the clip a file if it can be played.
    void survey(PageClip& clip) {
        if (!isPlainName(clip.video)) {
            return;
        }
        const theora::ClipSurvey facts = theora::surveyClip(pathOf(clip), m_files, m_isCancelled);
        if (facts.isDecodable && facts.frameCount != 0) {
            clip.file = "clips/" + std::to_string(++m_clipCount) + ".webm";
            clip.frameCount = facts.frameCount;
            clip.framesPerSecond = facts.framesPerSecond;
            clip.frame = {facts.width, facts.height};
        }
    }

    /// Those that the page before has as they would be made now.
    PublishFailure reuseClips() {
        for (const PageClip& clip : m_content.clips) {
            const Mark source = clip.file.empty() ? 0 : sourceOf(clip);
            const bool isReused =
                !clip.file.empty() && m_folder.reuse(clip.file, source, m_isCancelled);
            m_sources.push_back(source);
            if (isReused) {
                ++m_result.videoCount;
            } else if (!clip.file.empty()) {
                m_count.plan(clip.frameCount);
            }
            m_isReused.push_back(isReused);
        }
        return PublishFailure::none;
    }

    /// Of the clip, the converter, and what this program does with them; 0: unknown.
    [[nodiscard]] Mark sourceOf(const PageClip& clip) const {
        const std::string& converter = m_request.converter.ffmpeg;
        const std::optional<platform::FileInfo> info = m_files.info(converter);
        if (!info) {
            return 0;
        }
        std::string facts = QUORVEL_VERSION "\n" + converter;
        for (const std::int64_t number :
             {static_cast<std::int64_t>(info->size), info->modified,
              std::int64_t{info->modifiedNanoseconds}, std::int64_t{clip.frameCount}}) {
            facts += "\n" + std::to_string(number);
        }
        facts += "\n" + std::to_string(clip.framesPerSecond);
        return markOfFile(m_files, pathOf(clip), markOf(facts),
                          [this](std::string_view) { return !m_isCancelled(); })
            .value_or(0);
    }

    PublishFailure convertClips() {
        PublishFailure failure = PublishFailure::none;
        for (std::size_t i = 0; i < m_content.clips.size(); ++i) {
            PageClip& clip = m_content.clips[i];
            if (failure == PublishFailure::none && !clip.file.empty() && !m_isReused[i] &&
                !m_isCancelled()) {
                m_count.begin(clip.video, clip.frameCount);
                failure = convert(clip);
                m_folder.setSource(clip.file, m_sources[i]);
                m_count.end();
            }
            if (failure == PublishFailure::none && !clip.file.empty() && !m_isCancelled()) {
                failure = writeZones(i);
            }
        }
        return failure;
    }

    [[nodiscard]] imports::WebClipRequest requestFor(const PageClip& clip,
                                                     const std::string& name) {
        return {pathOf(clip),    m_folder.add(name),   m_request.converter,
                clip.frameCount, clip.framesPerSecond, m_request.limits};
    }

    PublishFailure convert(PageClip& clip) {
        m_onProgress(m_count.at(0));
        const imports::ImportFailure failure = imports::makeWebClip(
            m_files, requestFor(clip, clip.file),
            [&](int frames) { m_onProgress(m_count.at(frames)); }, m_isCancelled);
        switch (failure.kind) {
        case imports::Failure::none:
            ++m_result.videoCount;
            return PublishFailure::none;
        case imports::Failure::diskFull:
            return PublishFailure::noSpace;
        case imports::Failure::noConverter:
            return PublishFailure::noConverter;
        default:
            m_result.video = clip.video;
            m_result.reason = imports::failureText(failure);
            m_result.details = failure.details;
            return PublishFailure::notConverted;
        }
    }

    PublishFailure writeZones(std::size_t number) {
        PageClip& clip = m_content.clips[number];
        if (clip.frameCount < 0) {
            return PublishFailure::none;
        }
        const std::vector<player::ZoneTrack> zones = playback::readZones(pathOf(clip), clip.frame);
        if (zones.empty()) {
            return PublishFailure::none;
        }
        clip.zones = core::withoutExtension(clip.file) + ".js";
        return m_folder.write(clip.zones, zonesScript(number, zones));
    }

    /// Of the first branch's clip, else of the first that there is; null: none can be played.
    [[nodiscard]] const PageClip* clipOfStill() const {
        const auto first = std::find_if(
            m_content.story.branches.begin(), m_content.story.branches.end(),
            [&](const player::Branch& branch) { return branch.name == m_content.story.first; });
        const PageClip* found = nullptr;
        for (const PageClip& clip : m_content.clips) {
            const bool isFirst =
                first != m_content.story.branches.end() && first->video == clip.video;
            if (!clip.file.empty() && (found == nullptr || isFirst)) {
                found = &clip;
            }
        }
        return found;
    }

    /// A page can do without.
    PublishFailure makeStill() {
        const PageClip* shown = clipOfStill();
        if (shown == nullptr) {
            return PublishFailure::none;
        }
        imports::WebClipRequest still = requestFor(*shown, kStill);
        const imports::ImportFailure failure =
            imports::makeWebStill(m_files, still, kStillWidth, m_isCancelled);
        m_result.hasStill =
            failure.kind == imports::Failure::none && m_files.info(still.target).has_value();
        if (m_result.hasStill) {
            m_content.still = kStill;
        } else {
            m_folder.forget(kStill);
        }
        return failure.kind == imports::Failure::diskFull ? PublishFailure::noSpace
                                                          : PublishFailure::none;
    }

    PublishFailure writePage() {
        const std::pair<const char*, std::string> texts[] = {
            {"index.html", indexPage(m_content)},
            {"player.css", std::string(playerStyle())},
            {"player.js", std::string(playerScript())},
            {"scene.js", sceneScript(m_content)}};
        for (const auto& [name, text] : texts) {
            if (const PublishFailure failure = m_folder.write(name, text);
                failure != PublishFailure::none) {
                return failure;
            }
        }
        return PublishFailure::none;
    }

    PublishFailure commit() {
        const PublishFailure failure = m_folder.commit();
        m_result.folder = m_folder.path();
        m_result.fileCount = static_cast<int>(m_folder.fileCount());
        m_result.bytes = m_folder.bytes();
        return failure;
    }

    platform::FileSystem& m_files;
    const PublishRequest& m_request;
    const std::function<void(const PublishProgress&)>& m_onProgress;
    const std::function<bool()>& m_isCancelled;
    PublishFolder m_folder;
    PageContent m_content;
    PublishResult m_result;
    // By clip:
    std::vector<Mark> m_sources;
    std::vector<bool> m_isReused;
    int m_clipCount = 0; ///< that have a file
    ConversionCount m_count;
};

} // namespace

PublishResult publishScene(platform::FileSystem& files, const PublishRequest& request,
                           const std::function<void(const PublishProgress&)>& onProgress,
                           const std::function<bool()>& isCancelled) {
    const core::LogCollector unlogged;
    try {
        return Publishing(files, request, onProgress, isCancelled).run();
    } catch (const std::bad_alloc&) {
        PublishResult result;
        result.failure = PublishFailure::noMemory;
        return result;
    }
}

} // namespace publish
