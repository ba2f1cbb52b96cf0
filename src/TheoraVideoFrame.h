// One picture of the frame queue, converted to the clip's output mode. Made once and refilled for
// the whole life of the queue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "src/TheoraOutputMode.h"
#include "src/TheoraPicture.h"

namespace theora {

/// What a frame needs to know of its clip.
struct TheoraFrameFormat {
    TheoraOutputMode mode = TheoraOutputMode::TH_RGB;
    int width = 0;  ///< shown pixels of a row: half the picture's when the mode has alpha
    int height = 0; ///< rows
    int stride = 0; ///< pixels of a row that memory is reserved for, at least `width`
};

/// The worker fills a frame that it took from the queue; the display reads one that the queue
/// handed out. The queue's lock passes it from one to the other.
class TheoraVideoFrame {
public:
    /// Fills the buffer with 0xFF bytes. Throws std::bad_alloc.
    explicit TheoraVideoFrame(const TheoraFrameFormat& format);
    virtual ~TheoraVideoFrame() = default;
    TheoraVideoFrame(const TheoraVideoFrame&) = delete;
    TheoraVideoFrame& operator=(const TheoraVideoFrame&) = delete;

    /// Converts the picture's top left getWidth() x getHeight() pixels into the buffer. Pixels that
    /// the picture lacks keep what the buffer held.
    virtual void decode(const TheoraPicture& picture);
    /// Takes a picture that is already in the output mode: getHeight() rows, `rowBytes` apart.
    void copyConverted(const std::uint8_t* pixels, std::ptrdiff_t rowBytes);
    /// Shows the pixels of `other` from now on, nothing being copied: clips repeat pictures. The
    /// next picture of either frame goes into memory of its own. other: of the same format.
    void sharePixels(TheoraVideoFrame& other);
    /// Exchanges the memory, and so the pictures. other: of the same format.
    void swapPixels(TheoraVideoFrame& other) { m_pixels.swap(other.m_pixels); }
    /// TheoraPicture::identity of what the buffer holds; 0 = not known.
    [[nodiscard]] std::uint64_t getPictureIdentity() const { return m_pixels->identity; }

    /// getHeight() rows from the top, packed at getRowBytes(), bytes in the order of the mode. The
    /// memory has room for stride * height pixels.
    [[nodiscard]] const std::uint8_t* getBuffer() const { return m_pixels->bytes.get(); }
    [[nodiscard]] std::size_t getBufferSize() const;
    [[nodiscard]] int getRowBytes() const { return m_format.width * m_bpp; }
    [[nodiscard]] int getWidth() const { return m_format.width; }
    [[nodiscard]] int getHeight() const { return m_format.height; }
    /// Bytes per pixel.
    [[nodiscard]] int getBpp() const { return m_bpp; }

    [[nodiscard]] int getFrameNumber() const { return m_frameNumber; }
    /// Seconds on the clip's timer.
    [[nodiscard]] float getTimeToDisplay() const { return m_timeToDisplay; }
    /// 0 or 1: which pass over the clip the frame belongs to; toggles at every restart.
    [[nodiscard]] int getIteration() const { return m_iteration; }

    /// False: the clip has no frame of this number, and the nearest picture is shown instead.
    [[nodiscard]] bool hasOwnPicture() const { return m_hasOwnPicture; }

    void setFrameNumber(int number) { m_frameNumber = number; }
    void setTimeToDisplay(float time) { m_timeToDisplay = time; }
    void setIteration(int iteration) { m_iteration = iteration; }
    void setHasOwnPicture(bool isOwn) { m_hasOwnPicture = isOwn; }

private:
    /// Held by every frame that shows them. `spares`: what those frames had before, one less than
    /// they are, so that a frame which needs memory of its own again always finds some.
    struct Pixels {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::uint64_t identity = 0;
        std::vector<std::shared_ptr<Pixels>> spares;
    };

    void ownPixels();

    TheoraFrameFormat m_format;
    int m_bpp;
    std::shared_ptr<Pixels> m_pixels = std::make_shared<Pixels>();
    int m_frameNumber = 0;
    float m_timeToDisplay = 0.0F;
    int m_iteration = 0;
    bool m_hasOwnPicture = true;
};

} // namespace theora
