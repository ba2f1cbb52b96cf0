// The binary record of a zone: its shapes behind one another, after a short header.

#include <algorithm>
#include <cstring>
#include <limits>

#include "zone/ShapeRecord.h"
#include "zone/ShapeTrack.h"
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
    bool regular = true;  ///< no shape's size has bytes that are no point
    std::uint32_t frames = 0;
    std::uint32_t stored = 0;

    [[nodiscard]] ZoneReadResult resultAt(std::size_t statedSize) const {
        const bool fits = stored <= (statedSize - std::min(statedSize, kWord)) / kShapeHeaderSize;
        return {complete, complete && regular && size == statedSize, false, frames,
                fits ? stored : 0};
    }
};

/// Appends the frames that `bytes`, from the frame count on, hold, up to `limit`; the others are
/// checked only. Stops at the first that does not fit.
FramesRead readFrames(Bytes bytes, int limit, std::optional<Scale> scale, ShapeTrack& track) {
    track.clear();
    if (bytes.size() < kWord) {
        return {};
    }
    const std::uint32_t stored = loadU32(bytes.data());
    if (!scale) {
        return {.complete = stored == 0, .size = kWord, .stored = stored};
    }
    const std::uint32_t kept = std::min(stored, static_cast<std::uint32_t>(std::max(limit, 0)));
    track.reserveFor(kept, bytes.size() - kWord);
    FramesRead read{.size = kWord, .stored = stored};
    Bytes previous;
    for (; read.frames < stored; ++read.frames) {
        const std::optional<ShapeRecord> record = findShapeRecord(bytes.subspan(read.size));
        if (!record) {
            break;
        }
        const Bytes raw = bytes.subspan(read.size, record->size);
        read.size += record->size;
        read.regular = read.regular && raw.size() == kShapeHeaderSize + record->points.size();
        if (read.frames >= kept) {
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
    read.complete = read.frames == stored;
    return read;
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

bool Zone::write(core::File& file, Scale scale) const {
    std::uint64_t size = kWord + m_name.size() + 1 + kWord;
    for (std::size_t run = 0; run < m_track->runCount(); ++run) {
        const auto frames =
            static_cast<std::uint64_t>(m_track->endFrame(run) - m_track->run(run).firstFrame);
        size += frames * (kShapeHeaderSize + kPointSize * m_track->run(run).pointCount);
    }
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    RecordWriter writer(file, scale);
    writer.u32(kZoneTag);
    writer.u32(static_cast<std::uint32_t>(size));
    writer.u32(static_cast<std::uint32_t>(m_name.size() + 1));
    // Without a name not even its zero byte is written, though both sizes count it. Intended: files
    // written so exist, and their reader expects it.
    if (!m_name.empty()) {
        writer.bytes({reinterpret_cast<const std::uint8_t*>(m_name.c_str()), m_name.size() + 1});
    }
    writer.u32(static_cast<std::uint32_t>(m_track->frameCount()));
    for (std::size_t run = 0; run < m_track->runCount(); ++run) {
        for (int frame = m_track->run(run).firstFrame; frame < m_track->endFrame(run); ++frame) {
            writer.shape(m_track->run(run).active != 0, m_track->points(run));
        }
    }
    return writer.finish();
}

std::optional<int> Zone::firstDifference(const Zone& other, Scale scale, int from) const {
    const ShapeTrack& a = m_track.get();
    const ShapeTrack& b = other.m_track.get();
    const int end = std::min(a.frameCount(), b.frameCount());
    if (&a == &b || from >= end) {
        return std::nullopt;
    }
    const Scale toFile{1.0F / scale.x, 1.0F / scale.y};
    std::size_t inA = a.indexOf(from);
    std::size_t inB = b.indexOf(from);
    for (int frame = from; frame < end;) {
        if (a.run(inA).active != b.run(inB).active ||
            !areStoredAlike(a.points(inA), b.points(inB), toFile)) {
            return frame;
        }
        frame = std::min(a.endFrame(inA), b.endFrame(inB));
        inA += a.endFrame(inA) == frame ? 1 : 0;
        inB += b.endFrame(inB) == frame ? 1 : 0;
    }
    return std::nullopt;
}

ZoneReadResult Zone::read(std::span<const std::uint8_t> body, std::size_t statedSize,
                          int frameCount, std::optional<Scale> scale) {
    const bool keepsStored = frameCount == kStoredFrameCount;
    const int limit = keepsStored ? std::numeric_limits<int>::max() : frameCount;
    ZoneReadResult result;
    ShapeTrack& track = m_track.own();
    track.clear();
    if (body.size() >= kWord) {
        const std::size_t nameSize = loadU32(body.data());
        body = body.subspan(kWord);
        // A name that does not fit leaves the one of the information file.
        if (nameSize == 1) {
            m_name.clear();
            result = readUnnamed(track, body, statedSize - kWord, limit, scale);
        } else if (nameSize <= body.size()) {
            setName(nameFrom(body.first(nameSize)));
            result = readFrames(body.subspan(nameSize), limit, scale, track)
                         .resultAt(statedSize - kWord - nameSize);
        }
    }
    if (!keepsStored && (!result.complete || track.frameCount() > 0)) {
        track.extendLast(frameCount);
    }
    return result;
}

ZoneReadResult Zone::readUnnamed(ShapeTrack& track, std::span<const std::uint8_t> body,
                                 std::size_t statedSize, int limit, std::optional<Scale> scale) {
    if (!body.empty() && body[0] == 0) {
        const FramesRead named = readFrames(body.subspan(1), limit, scale, track);
        if (named.complete && named.size + 1 == statedSize) {
            return named.resultAt(statedSize - 1);
        }
    }
    const FramesRead unnamed = readFrames(body, limit, scale, track);
    ZoneReadResult result = unnamed.resultAt(statedSize);
    if (unnamed.complete && unnamed.size + 1 == statedSize) {
        result.endsOneEarly = true;
        result.whole = unnamed.regular;
    }
    return result;
}

} // namespace zone
