#include "video/Video.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <utility>

#include "core/Log.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraTimer.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoFrame.h"

namespace video {

namespace {

constexpr int kWorkers = 1;
constexpr std::size_t kBytesPerPixel = 3;
constexpr std::size_t kPlayedBytesPerPixel = 4;

std::uint32_t readWord(const std::uint8_t* from) {
    std::uint32_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

void writeWord(std::uint8_t* to, std::uint32_t word) {
    std::memcpy(to, &word, sizeof word);
}

/// Swaps red and blue: four pixels at a time in three words where their bytes lie in this order,
/// else byte by byte.
void copyPixels(const std::uint8_t* source, std::uint8_t* target, std::size_t pixels) {
    constexpr std::size_t kAtOnce = 4;
    constexpr std::size_t kBytes = kAtOnce * kBytesPerPixel;
    std::size_t done = 0;
    if constexpr (std::endian::native == std::endian::little) {
        for (; done + kAtOnce <= pixels; done += kAtOnce, source += kBytes, target += kBytes) {
            // R0 G0 B0 R1, G1 B1 R2 G2, B2 R3 G3 B3
            const std::uint32_t a = readWord(source);
            const std::uint32_t b = readWord(source + 4);
            const std::uint32_t c = readWord(source + 8);
            writeWord(target, (a >> 16U & 0xFFU) | (a & 0xFF00U) | (a & 0xFFU) << 16U |
                                  (b & 0xFF00U) << 16U);
            writeWord(target + 4, (b & 0xFF0000FFU) | (a >> 16U & 0xFF00U) | (c & 0xFFU) << 16U);
            writeWord(target + 8, (b >> 16U & 0xFFU) | (c >> 16U & 0xFF00U) | (c & 0xFF0000U) |
                                      (c & 0xFF00U) << 16U);
        }
    }
    for (; done < pixels; ++done, source += kBytesPerPixel, target += kBytesPerPixel) {
        target[0] = source[2];
        target[1] = source[1];
        target[2] = source[0];
    }
}

} // namespace

void copyBottomUp(const std::uint8_t* source, int width, int height, std::uint8_t* target,
                  std::size_t targetBytes) {
    if (width < 1 || height < 1) {
        return;
    }
    const std::size_t rowPixels = static_cast<std::size_t>(width);
    const std::size_t rowBytes = rowPixels * kBytesPerPixel;
    for (std::size_t row = static_cast<std::size_t>(height); row-- > 0; source += rowBytes) {
        const std::size_t offset = row * rowBytes;
        if (offset < targetBytes) {
            const std::size_t room = (targetBytes - offset) / kBytesPerPixel;
            copyPixels(source, target + offset, std::min(rowPixels, room));
        }
    }
}

Video::Video() : m_manager(std::make_unique<theora::TheoraVideoManager>(kWorkers)) {}

bool Video::Load(const std::string& path) {
    try {
        m_clip = m_manager->createClip(path, theora::TheoraOutputMode::TH_RGB);
        if (m_clip != nullptr) {
            m_clip->setOutputMode(theora::TheoraOutputMode::TH_RGB);
        }
    } catch (const std::exception&) { // the library's own, or no memory
        m_clip = nullptr;
    }
    if (m_clip == nullptr) {
        core::Log::get()->Error("Unable to load Theora video");
        return false;
    }
    m_clip->setRestartAtEnd(false);
    m_clip->getTimer().pause();
    frameCount = m_clip->getNumFrames();
    width = m_clip->getWidth();
    height = m_clip->getHeight();
    framesPerSecond = static_cast<double>(m_clip->getFPS());
    if (frameCount > 0) {
        seekTo(0);
    }
    return true;
}

bool Video::seekTo(int target) {
    if (target < 0 || target >= frameCount) {
        return false;
    }
    currentFrame = target;
    m_isPlayed = false;
    if (m_clip != nullptr) {
        m_clip->requestSeek(target);
    }
    return true;
}

theora::TheoraVideoFrame* Video::dueFrame() {
    m_manager->updateClips(0.0F);
    if (m_clip == nullptr) {
        return nullptr;
    }
    m_clip->advanceToDueFrame();
    return m_clip->peekReadyFrame();
}

bool Video::hasDueFrame() {
    return dueFrame() != nullptr;
}

bool Video::RenderFrame(platform::FrameBuffer* target) {
    const theora::TheoraVideoFrame* frame = dueFrame();
    if (frame == nullptr) {
        return false;
    }
    const bool isShown = !m_isPlayed;
    if (isShown && target != nullptr) {
        copyBottomUp(frame->getBuffer(), width, height, target->bits(), target->byteCount());
    }
    shownFrame = isShown ? frame->getFrameNumber() : shownFrame;
    m_clip->releaseShownFrame();
    return isShown;
}

void Video::takePlayed(int frame, const std::uint8_t* pixels, platform::Size size,
                       platform::FrameBuffer* target) {
    if (size != platform::Size{width, height}) {
        return;
    }
    currentFrame = shownFrame = std::clamp(frame, 0, std::max(frameCount - 1, 0));
    m_isPlayed = true;
    if (target == nullptr) {
        return;
    }
    const std::size_t rowPixels = static_cast<std::size_t>(width);
    std::size_t offset = 0;
    for (int row = height - 1; row >= 0; --row, offset += rowPixels * kBytesPerPixel) {
        if (offset + rowPixels * kBytesPerPixel > target->byteCount()) {
            return;
        }
        const std::uint8_t* from =
            pixels + static_cast<std::size_t>(row) * rowPixels * kPlayedBytesPerPixel;
        std::uint8_t* to = target->bits() + offset;
        for (std::size_t i = 0; i < rowPixels; ++i, from += kPlayedBytesPerPixel) {
            *to++ = from[0];
            *to++ = from[1];
            *to++ = from[2];
        }
    }
}

void Video::setFrameReadyCallback(std::function<void()> callback) {
    m_manager->setFrameReadyCallback(std::move(callback));
}

} // namespace video
