#include "publish/ConversionCount.h"

#include <algorithm>

#include "import/ConverterRun.h"

namespace publish {
namespace {

using std::chrono::steady_clock;

constexpr int kGuessedFrames = 250; ///< of a clip of unknown length

int guessed(int frames) {
    return frames > 0 ? frames : kGuessedFrames;
}

} // namespace

void ConversionCount::plan(int frames) {
    ++m_count;
    m_totalFrames += guessed(frames);
}

void ConversionCount::begin(const std::string& video, int frames) {
    m_begun = m_number == 0 ? steady_clock::now() : m_begun;
    ++m_number;
    m_video = video;
    m_frames = guessed(frames);
}

void ConversionCount::end() {
    m_doneFrames += m_frames;
}

PublishProgress ConversionCount::at(int frame) const {
    const std::int64_t done = m_doneFrames + std::min(frame, m_frames);
    const double part = static_cast<double>(done) / static_cast<double>(m_totalFrames);
    const double elapsed = std::chrono::duration<double>(steady_clock::now() - m_begun).count();
    return {m_video, m_number, m_count, static_cast<int>(part * 100),
            imports::secondsLeft(part, elapsed)};
}

} // namespace publish
