#include "toolkit/layout/SizeRanges.h"

#include <algorithm>

#include "toolkit/controls/CControlUI.h"

namespace toolkit {
namespace {

bool holds(const SizeRanges::Range& range, platform::Size window) {
    return window.width >= range.from.width && window.height >= range.from.height;
}

} // namespace

void SizeRanges::add(CControlUI& control, Values usual, std::vector<Range> ranges) {
    std::vector<bool> holding(ranges.size());
    m_followers.push_back({&control, std::move(usual), std::move(ranges), std::move(holding)});
}

void SizeRanges::forget(const CControlUI& control) {
    std::erase_if(m_followers,
                  [&](const Follower& follower) { return follower.control == &control; });
}

void SizeRanges::apply(platform::Size window) {
    for (Follower& follower : m_followers) {
        std::vector<bool> holding;
        for (const Range& range : follower.ranges) {
            holding.push_back(holds(range, window));
        }
        if (holding == follower.holding) {
            continue;
        }
        follower.holding = std::move(holding);
        for (const auto& [name, usual] : follower.usual) {
            std::u16string value = usual;
            for (const Range& range : follower.ranges) {
                const auto found =
                    std::find_if(range.values.begin(), range.values.end(),
                                 [&key = name](const auto& own) { return own.first == key; });
                if (found != range.values.end() && holds(range, window)) {
                    value = found->second;
                }
            }
            follower.control->SetAttribute(name, value);
        }
    }
}

} // namespace toolkit
