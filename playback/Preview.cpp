#include "playback/Preview.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "player/Clip.h"
#include "src/TheoraVideoClip.h"

namespace playback {
namespace {

constexpr std::size_t kMostAhead = 3; // clips: each holds some pictures

std::vector<std::string> videosOf(const player::Story& story) {
    std::vector<std::string> videos;
    for (const player::Branch& branch : story.branches) {
        videos.push_back(branch.video);
    }
    return videos;
}

} // namespace

Preview::Preview(Setup setup)
    : m_folder(std::move(setup.folder)), m_transport(setup.sound, setup.clock),
      m_shelf(setup.files), m_videos(videosOf(setup.story)),
      m_player(
          std::move(setup.story), [this](const std::string& video) { return bringUp(video); },
          setup.seed) {}

Preview::~Preview() {
    m_transport.load(nullptr, 0.0);
}

void Preview::startAt(std::string_view branch) {
    m_player.start(branch);
    m_isNew = true;
    follow();
}

void Preview::startAt(int branch) {
    m_player.start(branch);
    m_isNew = true;
    follow();
}

// Called by the player whenever a branch comes up.
std::shared_ptr<const player::Clip> Preview::bringUp(const std::string& video) {
    putClipAway();
    m_clip = m_shelf.take(m_folder + video);
    m_isNew = true;
    return m_clip ? m_clip->facts() : nullptr;
}

void Preview::putClipAway() {
    m_run.end();
    if (m_clip) {
        m_dropped += m_clip->clip().getNumDroppedFrames();
        m_shelf.putAway(std::move(m_clip));
    }
}

void Preview::begin(int frame) {
    m_run.begin(*m_clip, frame);
}

void Preview::follow() {
    if (m_player.state() != player::Player::State::playing) {
        m_hasChanged = m_hasChanged || m_clip != nullptr || m_isNew;
        m_isNew = m_isShown = false;
        putClipAway();
    } else if (std::exchange(m_isNew, false)) {
        m_hasChanged = true;
        m_isShown = false;
        m_frame = 0;
        begin(0);
        openAhead();
    }
}

void Preview::openAhead() {
    std::vector<std::string> paths;
    for (const int branch : m_player.likelyNext()) {
        const std::string& video = m_videos[static_cast<std::size_t>(branch)];
        if (!video.empty() && paths.size() < kMostAhead) {
            paths.push_back(m_folder + video);
        }
    }
    m_shelf.want(std::move(paths));
}

bool Preview::press(std::string_view key) {
    const bool isAnswered = m_isShown && m_player.press(key, m_frame);
    follow();
    return isAnswered;
}

bool Preview::click(platform::Point pixel) {
    const bool isAnswered = m_isShown && m_player.click(pixel, m_frame);
    follow();
    return isAnswered;
}

bool Preview::choose(int action) {
    const bool isAnswered = m_isShown && m_player.choose(action, m_frame);
    follow();
    return isAnswered;
}

void Preview::restart() {
    m_player.restart();
    m_isNew = true;
    follow();
}

bool Preview::back() {
    const bool isBack = m_player.back();
    m_isNew = m_isNew || isBack;
    follow();
    return isBack;
}

void Preview::seek(int frame) {
    if (m_clip && frameCount() > 0) {
        const int wanted = std::clamp(frame, 0, frameCount() - 1);
        m_clip->seek(wanted);
        begin(wanted);
    }
}

void Preview::replaceStory(player::Story story, std::span<const int> moved) {
    m_videos = videosOf(story);
    m_player.replaceStory(std::move(story), moved);
    if (m_clip) {
        openAhead();
    }
}

int Preview::frameCount() const {
    return m_clip ? m_clip->facts()->frameCount : -1;
}

double Preview::framesPerSecond() const {
    return m_clip && m_clip->facts()->framesPerSecond > 0 ? m_clip->facts()->framesPerSecond : 1.0;
}

PictureCount Preview::pictures() const {
    const unsigned dropped = m_clip ? m_clip->clip().getNumDroppedFrames() : 0;
    return {m_run.shownCount(), m_dropped + dropped, m_run.lateCount()};
}

bool Preview::tick(const PictureSink& show) {
    if (m_clip) {
        if (m_run.tick(show)) {
            m_frame = m_run.frame();
            m_isShown = true;
        }
        if (m_run.isAtEnd()) {
            m_player.clipEnded(m_run.endFrame());
            follow();
        }
    }
    return std::exchange(m_hasChanged, false);
}

} // namespace playback
