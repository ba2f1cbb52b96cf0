// Prints frames as "NUMBER HASH" lines, "NUMBER -" for missing ones, which it also reports on
// stderr.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>

#include "tools/inspect/FrameFetcher.h"
#include "tools/inspect/FrameList.h"

namespace inspect {

/// Result for one frame number.
struct FoundFrame {
    std::optional<std::uint64_t> hash; ///< empty: no picture
    bool isOwn = false;                ///< the clip has a frame with this number
};

/// Where the pictures come from.
class FrameSource {
public:
    virtual ~FrameSource() = default;
    [[nodiscard]] virtual FoundFrame find(int frame) = 0;
    /// The first frame after that of the last find(); empty when there is none.
    [[nodiscard]] virtual std::optional<int> next() = 0;
};

/// Seeks to each frame. For a number without a frame, the picture is that of the nearest one; past
/// the end of a clip whose length is known, there is none.
class SeekedFrames : public FrameSource {
public:
    /// clip: outlives it.
    explicit SeekedFrames(FrameFetcher& clip) : m_clip(clip) {}
    [[nodiscard]] FoundFrame find(int frame) override;
    [[nodiscard]] std::optional<int> next() override;

private:
    FrameFetcher& m_clip;
    bool m_isPastEnd = false; ///< the last find() was
};

/// Plays up to frame `last` at once, then returns those frames.
class PlayedFrames : public FrameSource {
public:
    PlayedFrames(FrameFetcher& clip, int last);
    [[nodiscard]] FoundFrame find(int frame) override;
    [[nodiscard]] std::optional<int> next() override;

private:
    std::map<int, std::uint64_t> m_hashes;
    int m_lastFound = -1;
};

class FramePrinter {
public:
    /// source, out: outlive it. file: for messages. frameCount: -1 = not known.
    FramePrinter(FrameSource& source, const std::string& file, int frameCount, std::ostream& out)
        : m_source(source), m_file(file), m_frameCount(frameCount), m_out(out) {}

    void print(const FrameItem& item);
    /// kFindings when a frame was missing.
    [[nodiscard]] int result() const { return m_result; }

private:
    void printRange(const FrameRange& range);
    void printRandom(const RandomFrames& frames);
    void printLine(int number, const std::optional<std::uint64_t>& hash);
    void report(const std::string& message);

    FrameSource& m_source;
    const std::string m_file;
    const int m_frameCount;
    std::ostream& m_out;
    int m_result = 0;
};

/// Plays the whole clip; fewer frames than it claims are a finding. Returns the exit code.
[[nodiscard]] int playAll(FrameFetcher& clip, const std::string& file, std::ostream& out);

} // namespace inspect
