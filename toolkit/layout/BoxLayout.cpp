#include "toolkit/layout/BoxLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>

namespace toolkit {
namespace {

int limit(const BoxPart& part, int length) {
    length = part.highest > 0 ? std::min(length, part.highest) : length;
    return std::max({length, part.lowest, 0});
}

/// Positions stay below this, so that a part's own size can be added to one.
constexpr std::int64_t kFarthest = 1 << 29;

int shareOf(std::int64_t left, int count) {
    return static_cast<int>(std::clamp<std::int64_t>(left / count, 0, kFarthest));
}

} // namespace

std::vector<int> shareLength(const std::vector<BoxPart>& parts, int available, int gap) {
    std::vector<int> lengths(parts.size(), -1);
    std::int64_t left = available - std::int64_t{gap} * (std::ssize(parts) - 1);
    int open = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        left -= parts[i].padding;
        if (parts[i].wanted > 0) {
            lengths[i] = limit(parts[i], parts[i].wanted);
            left -= lengths[i];
        } else {
            ++open;
        }
    }
    // A share that meets a limit changes the others' share: settle those first, the lowest sizes
    // before the highest, because they leave less for all.
    const auto settle = [&](bool lowest) {
        const int share = shareOf(left, open);
        bool settled = false;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const int limited = limit(parts[i], share);
            if (lengths[i] < 0 && (lowest ? limited > share : limited < share)) {
                lengths[i] = limited;
                left -= limited;
                --open;
                settled = true;
            }
        }
        return settled;
    };
    while (open > 0 && (settle(true) || settle(false))) {
    }
    for (int& length : lengths) {
        if (length < 0) {
            length = shareOf(left + open - 1, open);
            left -= length;
            --open;
        }
    }
    return lengths;
}

int advanced(int position, std::initializer_list<int> lengths) {
    const std::int64_t next =
        std::accumulate(lengths.begin(), lengths.end(), std::int64_t{position});
    return static_cast<int>(std::clamp(next, -kFarthest, kFarthest));
}

int centredStart(int begin, int end, int paddingBefore, int paddingAfter, int size) {
    const int middle = begin + (end - begin - size) / 2;
    const int highest = end - paddingAfter - size;
    return std::max(begin + paddingBefore, std::min(middle, highest));
}

} // namespace toolkit
