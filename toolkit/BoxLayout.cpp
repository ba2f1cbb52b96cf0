#include "toolkit/BoxLayout.h"

#include <algorithm>
#include <cstddef>

namespace toolkit {
namespace {

int limit(const BoxPart& part, int length) {
    length = part.highest > 0 ? std::min(length, part.highest) : length;
    return std::max({length, part.lowest, 0});
}

} // namespace

std::vector<int> shareLength(const std::vector<BoxPart>& parts, int available, int gap) {
    std::vector<int> lengths(parts.size(), -1);
    int left = available - gap * std::max(0, static_cast<int>(parts.size()) - 1);
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
        const int share = std::max(left, 0) / open;
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
            length = (std::max(left, 0) + open - 1) / open;
            left -= length;
            --open;
        }
    }
    return lengths;
}

int centredStart(int begin, int end, int paddingBefore, int paddingAfter, int size) {
    const int middle = begin + (end - begin - size) / 2;
    const int highest = end - paddingAfter - size;
    return std::max(begin + paddingBefore, std::min(middle, highest));
}

} // namespace toolkit
