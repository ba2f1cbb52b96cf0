// Makes tiny Ogg Theora clips with libtheora's encoder, in layouts that the usual encoders never
// write. The luma of every frame encodes its number, so that tests can identify frames.
#pragma once

#include <cstdint>
#include <functional>

#include "tests/support/OggPager.h"
#include "tests/support/SoundMaker.h"

namespace support {

enum class Chroma { yuv420, yuv422, yuv444 };
enum class Sound { none, before, after }; ///< order of the streams in the file

struct ClipSpec {
    int width = 64; ///< of the frame, multiples of 16, at least 64 x 32
    int height = 48;
    int pictureWidth = 0; ///< of the visible picture inside it; 0 = all
    int pictureHeight = 0;
    int pictureX = 0;
    int pictureY = 0;
    int frames = 30; ///< 25 a second
    Chroma chroma = Chroma::yuv420;
    int keyframeDistance = 8;
    int granuleShift = -1;   ///< -1 = the smallest that fits the distance
    int quality = 40;        ///< 0 to 63
    bool version320 = false; ///< version 3.2.0, whose granule positions count from 0
    PageLayout pages = {};   ///< repeatsBegin holds for the sound too
    /// Frames that are stored as an empty packet: they repeat the picture before. Null = none.
    std::function<bool(int frame)> isEmpty = {};
    Sound sound = Sound::none;
    int soundDelay = 0;            ///< samples that the sound starts after the pictures
    std::int64_t soundBegins = -1; ///< the position of an empty page before the sound; -1 = no page
    unsigned claimedSoundRate = kClipSoundRate; ///< samples a second, as the header says
    bool skeleton = false;                      ///< a metadata stream in front
    bool secondTheora = false;                  ///< another Theora stream after the first
    bool emptyLastPage = false;
    std::int64_t lastPageGranule = -1; ///< of that page
    std::int64_t firstNumber = 0;      ///< of the first frame, as in a file cut from a longer one
    bool numbersJump = false;          ///< pages of the headers seem to be missing
    int flatFrames = 0;                ///< frames at the start of one colour
    /// The grey values of a picture that shows no number. Null = none.
    std::function<std::uint8_t(int frame, int x, int y)> luma = {};
    int damagedFrame = -1; ///< this packet is invalid; -1 = none
    int dropFrames = 0;    ///< frames missing at the start of the data (cut streams)
};

inline constexpr int kClipFramesPerSecond = 25;

/// The whole file.
[[nodiscard]] Bytes makeClip(const ClipSpec& spec);

/// The number encoded in a frame of packed R, G, B rows, top row first; other pixel formats will do
/// if their second byte is G. -1 when there is none. An empty frame shows the number of the frame
/// that it repeats.
[[nodiscard]] int readFrameNumber(const std::uint8_t* rgb, int width, int height,
                                  int pixelBytes = 3);

} // namespace support
