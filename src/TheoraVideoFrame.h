// One picture of the frame queue, converted to the clip's output mode. Reused for the life of the
// queue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "src/TheoraOutputMode.h"
#include "src/TheoraPicture.h"

namespace theora {

/// What a frame needs to know about its clip.
struct TheoraFrameFormat {
    TheoraOutputMode mode = TheoraOutputMode::TH_RGB;
    int width = 0;  ///< shown pixels of a row: half the picture's when the mode has alpha
    int height = 0; ///< rows
    int stride = 0; ///< allocated pixels per row, at least `width`
};

/// Filled by a worker, then read by the display; the queue's lock synchronises the hand-over.
class TheoraVideoFrame {
public:
    /// Fills the buffer with 0xFF bytes. Throws std::bad_alloc.
    explicit TheoraVideoFrame(const TheoraFrameFormat& format);
    virtual ~TheoraVideoFrame() = default;
    TheoraVideoFrame(const TheoraVideoFrame&) = delete;
    TheoraVideoFrame& operator=(const TheoraVideoFrame&) = delete;

    /// Converts the picture's top left getWidth() x getHeight() pixels into the buffer. Pixels
    /// outside the picture keep their old values.
    virtual void decode(const TheoraPicture& picture);
    /// Takes a picture that is already in the output mode: getHeight() rows, `rowBytes` apart.
    void copyConverted(const std::uint8_t* pixels, std::ptrdiff_t rowBytes);
    /// Shares the pixels of `other` without copying, since clips repeat pictures. The next picture
    /// of either frame goes into separate memory. other: of the same format.
    void sharePixels(TheoraVideoFrame& other);
    /// Exchanges the memory, and so the pictures. other: of the same format.
    void swapPixels(TheoraVideoFrame& other) { m_pixels.swap(other.m_pixels); }
    /// TheoraPicture::identity of the picture; 0 = unknown.
    [[nodiscard]] std::uint64_t getPictureIdentity() const { return m_pixels->identity; }

    /// getHeight() rows from the top, packed at getRowBytes(), byte order as in the mode. Allocated
    /// for stride * height pixels.
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

    /// False: the clip has no frame with this number; this is the nearest picture.
    [[nodiscard]] bool hasOwnPicture() const { return m_hasOwnPicture; }

    void setFrameNumber(int number) { m_frameNumber = number; }
    void setTimeToDisplay(float time) { m_timeToDisplay = time; }
    void setIteration(int iteration) { m_iteration = iteration; }
    void setHasOwnPicture(bool isOwn) { m_hasOwnPicture = isOwn; }

private:
    /// Shared by the frames that show them. `spares`: the former buffers of all but one of these
    /// frames, so that each can get its own buffer back.
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
