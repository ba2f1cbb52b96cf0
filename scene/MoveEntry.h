// Moves one entry of a list. Used by this module's sources only.
#pragma once

#include <algorithm>
#include <vector>

namespace scene {

/// Moves the entry at `from` so that it ends up at `to`. An index out of range is ignored.
template <class T>
void moveEntry(std::vector<T>& list, int from, int to) {
    const int count = static_cast<int>(list.size());
    if (from < 0 || from >= count || to < 0 || to >= count) {
        return;
    }
    const auto first = list.begin();
    if (from < to) {
        std::rotate(first + from, first + from + 1, first + to + 1);
    } else {
        std::rotate(first + to, first + from, first + from + 1);
    }
}

} // namespace scene
