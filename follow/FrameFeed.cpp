#include "follow/FrameFeed.h"

#include <algorithm>
#include <cstddef>

#include "platform/Geometry.h"
#include "src/TheoraPicture.h"

namespace follow {
namespace {

constexpr std::int64_t kMostBytes = std::int64_t{48} << 20U;
constexpr int kMostFrames = 32;

} // namespace

track::GreyView FrameFeed::frame(int number) {
    const platform::Size size = m_reader.size();
    if (number < 0) {
        return {};
    }
    if (!m_backwards) {
        if (!m_reader.goTo(number)) {
            return {};
        }
        const theora::TheoraPlane plane = m_reader.luma();
        return {plane.data, size.width, size.height, plane.rowBytes};
    }
    const int end = m_first + static_cast<int>(m_kept.size());
    if ((number < m_first || number >= end) && !fill(number)) {
        return {};
    }
    return {m_kept[static_cast<std::size_t>(number - m_first)].data(), size.width, size.height,
            size.width};
}

bool FrameFeed::fill(int last) {
    const platform::Size size = m_reader.size();
    const std::int64_t bytes = std::int64_t{size.width} * size.height;
    const int count =
        static_cast<int>(std::clamp<std::int64_t>(kMostBytes / bytes, 1, kMostFrames));
    m_first = std::max(0, last - count + 1);
    m_kept.clear();
    for (int number = m_first; number <= last; ++number) {
        if (!m_reader.goTo(number)) {
            m_kept.clear();
            return false;
        }
        const theora::TheoraPlane plane = m_reader.luma();
        std::vector<std::uint8_t>& kept = m_kept.emplace_back();
        kept.reserve(static_cast<std::size_t>(bytes));
        for (int y = 0; y < size.height; ++y) {
            const std::uint8_t* row = plane.data + y * plane.rowBytes;
            kept.insert(kept.end(), row, row + size.width);
        }
    }
    return true;
}

} // namespace follow
