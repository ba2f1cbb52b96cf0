// Attributes that hold only while the window is large enough: what a layout says in "Range"
// elements. UI thread only.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;

class SizeRanges {
public:
    using Values = std::vector<std::pair<std::u16string, std::u16string>>;

    struct Range {
        platform::Size from; ///< least size of the window
        Values values;
    };

    /// Has `control` follow the window's size; it has the `usual` values now. Of several ranges
    /// that hold, the last one counts for each attribute.
    void add(CControlUI& control, Values usual, std::vector<Range> ranges);
    /// The control leaves the window.
    void forget(const CControlUI& control);
    void clear() { m_followers.clear(); }

    /// Sets what changes in a window of this size.
    void apply(platform::Size window);

private:
    struct Follower {
        CControlUI* control;
        Values usual;
        std::vector<Range> ranges;
        std::vector<bool> holding; ///< which of them held last
    };

    std::vector<Follower> m_followers;
};

} // namespace toolkit
