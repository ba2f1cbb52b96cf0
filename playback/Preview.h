// Plays a scene: the rules of the player, the picture and the sound of its clips. Without a window:
// its owner hands on what the author does, calls tick() many times a second and shows the pictures.
//
//   Preview preview({story, folder, files, clock, sound, seed});
//   preview.startAt(story.first);
//   if (preview.tick(showPicture)) { ... }    // true: a branch came up, or playing has stopped
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "platform/Sound.h"
#include "playback/ClipRun.h"
#include "playback/ClipShelf.h"
#include "playback/OpenClip.h"
#include "playback/Transport.h"
#include "player/Player.h"
#include "player/Story.h"

namespace playback {

/// How the pictures came since the start.
struct PictureCount {
    unsigned shown = 0;
    unsigned dropped = 0; ///< too late to be shown at all
    unsigned late = 0;    ///< shown when the next was due already
};

/// UI thread only.
class Preview {
public:
    struct Setup {
        player::Story story;
        std::string folder; ///< of the clips, ending in a separator
        platform::FileSystem& files;
        platform::Clock& clock;
        platform::SoundSystem& sound;
        std::uint32_t seed = 0;
    };
    /// What `setup` refers to outlives the preview.
    explicit Preview(Setup setup);
    ~Preview();
    Preview(const Preview&) = delete;
    Preview& operator=(const Preview&) = delete;

    void startAt(std::string_view branch);
    void startAt(int branch);

    // The learner's part; see player/Player.h. All count on the frame on show; until a picture of
    // the branch is, nothing answers.
    bool press(std::string_view key);
    bool click(platform::Point pixel);
    bool choose(int action);
    // The author's.
    void restart();
    bool back();
    void seek(int frame);
    void setPaused(bool paused) { m_transport.setPaused(paused); }
    void setSpeed(double speed) { m_transport.setSpeed(speed); }
    void setAudible(bool audible) { m_transport.setAudible(audible); }
    void replaceStory(player::Story story, std::span<const int> moved);

    /// Goes on to the present: shows the picture that is due and follows the clip's end. True when
    /// another branch has come up, or playing has ended or stopped, since the last call.
    bool tick(const PictureSink& show);
    /// The picture of this moment, or the sound after it, has not been decoded yet.
    [[nodiscard]] bool isWaiting() const { return m_run.isWaiting(); }

    [[nodiscard]] const player::Player& player() const { return m_player; }
    [[nodiscard]] const Transport& transport() const { return m_transport; }
    /// Whether the branch's clip is on show: since it came up or began again, a picture of it came.
    [[nodiscard]] bool isShown() const { return m_isShown; }
    /// The frame on show; 0 before the first.
    [[nodiscard]] int frame() const { return m_frame; }
    [[nodiscard]] int frameCount() const; ///< -1 when unknown
    [[nodiscard]] double framesPerSecond() const;
    [[nodiscard]] PictureCount pictures() const;

private:
    [[nodiscard]] std::shared_ptr<const player::Clip> bringUp(const std::string& video);
    void begin(int frame);
    void putClipAway();
    void openAhead();
    /// After the player may have moved on.
    void follow();

    std::string m_folder;
    Transport m_transport;
    ClipRun m_run{m_transport};
    ClipShelf m_shelf;
    std::vector<std::string> m_videos; ///< of the story's branches
    player::Player m_player;
    std::unique_ptr<OpenClip> m_clip; ///< on show
    bool m_isNew = false;             ///< a branch came up
    bool m_isShown = false;
    bool m_hasChanged = false;
    int m_frame = 0;
    unsigned m_dropped = 0; ///< of the clips that were put away
};

} // namespace playback
