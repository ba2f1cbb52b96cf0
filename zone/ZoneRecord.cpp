// The binary record of a zone: its shapes behind one another, after a short header.

#include <algorithm>
#include <cstring>
#include <limits>

#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zone {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kWord = 4;

/// How far reading the frames came.
struct FramesRead {
    bool complete = false;
    std::size_t size = 0; ///< of frame count and shape records
};

/// Appends the frames that `bytes`, from the frame count on, hold, up to `limit`; the others are
/// checked only. Stops at the first that does not fit.
FramesRead readFrames(Bytes bytes, int limit, ShapeTrack& track) {
    track.clear();
    const std::optional<Scale> scale = currentScale();
    if (bytes.size() < kWord) {
        return {};
    }
    const std::uint32_t stored = loadU32(bytes.data());
    if (!scale) {
        return {stored == 0, kWord};
    }
    const std::uint32_t kept = std::min(stored, static_cast<std::uint32_t>(std::max(limit, 0)));
    track.reserveFor(kept, bytes.size() - kWord);
    std::size_t at = kWord;
    Bytes previous;
    for (std::uint32_t frame = 0; frame < stored; ++frame) {
        const std::optional<ShapeRecord> record = findShapeRecord(bytes.subspan(at));
        if (!record) {
            track.trim();
            return {false, at};
        }
        const Bytes raw = bytes.subspan(at, record->size);
        at += record->size;
        if (frame >= kept) {
            continue;
        }
        const bool repeats = raw.size() == previous.size() &&
                             std::memcmp(raw.data(), previous.data(), raw.size()) == 0;
        if (repeats) {
            track.appendSame();
        } else {
            track.append(*record, *scale);
        }
        previous = raw;
    }
    track.trim();
    return {true, at};
}

std::string nameFrom(Bytes bytes) {
    std::string name;
    for (const std::uint8_t byte : bytes) {
        if (byte != 0) {
            name += static_cast<char>(byte);
        }
        if (name.size() > kMaxNameBytes) {
            break; // what comes after is cut anyway
        }
    }
    return name;
}

} // namespace

bool Zone::write(core::File& file) const {
    const std::optional<Scale> scale = currentScale();
    if (!scale) {
        return false;
    }
    std::uint64_t size = kWord + m_name.size() + 1 + kWord;
    for (std::size_t run = 0; run < m_track.runCount(); ++run) {
        const auto frames =
            static_cast<std::uint64_t>(m_track.endFrame(run) - m_track.run(run).firstFrame);
        size += frames * (kShapeHeaderSize + kPointSize * m_track.run(run).pointCount);
    }
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    RecordWriter writer(file, *scale);
    writer.u32(kZoneTag);
    writer.u32(static_cast<std::uint32_t>(size));
    writer.u32(static_cast<std::uint32_t>(m_name.size() + 1));
    // Without a name not even its zero byte is written, though both sizes count it. Intended: files
    // written so exist, and their reader expects it.
    if (!m_name.empty()) {
        writer.bytes({reinterpret_cast<const std::uint8_t*>(m_name.c_str()), m_name.size() + 1});
    }
    writer.u32(static_cast<std::uint32_t>(m_track.frameCount()));
    for (std::size_t run = 0; run < m_track.runCount(); ++run) {
        for (int frame = m_track.run(run).firstFrame; frame < m_track.endFrame(run); ++frame) {
            writer.shape(m_track.run(run).active != 0, m_track.points(run));
        }
    }
    return writer.finish();
}

ZoneReadResult Zone::read(std::span<const std::uint8_t> body, std::size_t statedSize,
                          int frameCount) {
    m_centers.clear();
    const bool keepsStored = frameCount == kStoredFrameCount;
    const int limit = keepsStored ? std::numeric_limits<int>::max() : frameCount;
    ZoneReadResult result;
    m_track.clear();
    if (body.size() >= kWord) {
        const std::size_t nameSize = loadU32(body.data());
        body = body.subspan(kWord);
        // A name that does not fit leaves the one of the information file.
        if (nameSize == 1) {
            m_name.clear();
            result = readUnnamed(body, statedSize - kWord, limit);
        } else if (nameSize <= body.size()) {
            setName(nameFrom(body.first(nameSize)));
            result.complete = readFrames(body.subspan(nameSize), limit, m_track).complete;
        }
    }
    if (!keepsStored && (!result.complete || m_track.frameCount() > 0)) {
        m_track.extendLast(frameCount);
    }
    return result;
}

ZoneReadResult Zone::readUnnamed(std::span<const std::uint8_t> body, std::size_t statedSize,
                                 int limit) {
    if (!body.empty() && body[0] == 0) {
        const FramesRead named = readFrames(body.subspan(1), limit, m_track);
        if (named.complete && named.size + 1 == statedSize) {
            return {true, false};
        }
    }
    const FramesRead unnamed = readFrames(body, limit, m_track);
    return {unnamed.complete, unnamed.complete && unnamed.size + 1 == statedSize};
}

} // namespace zone
