#include "publish/PublishJob.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "import/ImportTypes.h"
#include "import/WebClip.h"
#include "platform/Geometry.h"
#include "playback/ClipZones.h"
#include "playback/SceneStory.h"
#include "player/Clip.h"
#include "player/Story.h"
#include "scene/SceneManager.h"
#include "src/TheoraSurvey.h"

namespace publish {
namespace {

using State = PublishResult::State;
using std::chrono::steady_clock;

constexpr const char* kStill = "still.jpg";
constexpr int kStillWidth = 1280;
constexpr int kGuessedFrames = 250; ///< of a clip of unknown length
constexpr double kSecondsBeforeEstimate = 1.5;

/// Branches may name any file; a page takes those of the scene's own folder.
bool isPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\:") == std::string::npos;
}

int framesOf(const PageClip& clip) {
    return clip.frameCount > 0 ? clip.frameCount : kGuessedFrames;
}

class Publishing {
public:
    Publishing(platform::FileSystem& files, const PublishRequest& request,
               const std::function<void(const PublishProgress&)>& onProgress,
               const std::function<bool()>& isCancelled)
        : m_files(files), m_request(request), m_onProgress(onProgress), m_isCancelled(isCancelled),
          m_folder(files, request.folder) {}

    PublishResult run() {
        for (const auto step :
             {&Publishing::readScene, &Publishing::begin, &Publishing::convertClips,
              &Publishing::makeStill, &Publishing::writePage, &Publishing::commit}) {
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
            clip.file = "clips/" + std::to_string(++m_count) + ".webm";
            clip.frameCount = facts.frameCount;
            clip.framesPerSecond = facts.framesPerSecond;
            clip.frame = {facts.width, facts.height};
            m_totalFrames += framesOf(clip);
        }
    }

    PublishFailure convertClips() {
        m_begun = steady_clock::now();
        PublishFailure failure = PublishFailure::none;
        for (std::size_t i = 0; i < m_content.clips.size(); ++i) {
            PageClip& clip = m_content.clips[i];
            if (failure == PublishFailure::none && !clip.file.empty() && !m_isCancelled()) {
                ++m_number;
                failure = convert(clip);
                m_doneFrames += framesOf(clip);
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
        report(clip, 0);
        const imports::ImportFailure failure = imports::makeWebClip(
            m_files, requestFor(clip, clip.file), [&](int frames, double) { report(clip, frames); },
            m_isCancelled);
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

    void report(const PageClip& clip, int frames) const {
        const std::int64_t done = m_doneFrames + std::min(frames, framesOf(clip));
        const double part =
            m_totalFrames > 0 ? static_cast<double>(done) / static_cast<double>(m_totalFrames) : 0;
        const double elapsed = std::chrono::duration<double>(steady_clock::now() - m_begun).count();
        const bool isKnown = part > 0 && elapsed > kSecondsBeforeEstimate;
        m_onProgress({clip.video, m_number, m_count, static_cast<int>(part * 100),
                      isKnown ? elapsed * (1 - part) / part : -1});
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
    steady_clock::time_point m_begun{};
    int m_number = 0;
    int m_count = 0;
    std::int64_t m_doneFrames = 0;
    std::int64_t m_totalFrames = 0;
};

} // namespace

std::string publishFailureText(const PublishResult& result) {
    switch (result.failure) {
    case PublishFailure::none:
        break;
    case PublishFailure::notEmpty:
        return "the folder is not empty.";
    case PublishFailure::noSpace:
        return "no space left.";
    case PublishFailure::noVideo:
        return "no branch has a video.";
    case PublishFailure::notSaved:
        return "the scene could not be saved.";
    case PublishFailure::sceneUnreadable:
        return "the scene cannot be read.";
    case PublishFailure::notWritable:
        return "the folder cannot be written.";
    case PublishFailure::inUse:
        return "the folder is in use by another program.";
    case PublishFailure::busy:
        return "it is being published already.";
    case PublishFailure::noConverter:
        return "the converter is not installed.";
    case PublishFailure::notConverted:
        return core::validUtf8(result.video) + ": " + result.reason;
    case PublishFailure::noMemory:
        return "there is not enough memory.";
    }
    return {};
}

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
