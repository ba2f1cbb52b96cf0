// Shares a length among neighbours: those with a size keep it, the others share what is left.
#pragma once

#include <initializer_list>
#include <vector>

namespace toolkit {

struct BoxPart {
    int wanted = 0;  ///< 0: takes a share of what is left
    int padding = 0; ///< before and after together
    int lowest = 0;
    int highest = 0; ///< 0: no limit
};

/// The parts' lengths, without padding, in order; never negative. What is left after fixed parts is
/// shared evenly, the first parts getting the odd pixels; a part at a limit keeps it and the others
/// share the rest.
[[nodiscard]] std::vector<int> shareLength(const std::vector<BoxPart>& parts, int available,
                                           int gap);

/// Where the next neighbour begins: `position` and the lengths behind it, kept so far from the
/// numbers' end that a part's own size can be added.
[[nodiscard]] int advanced(int position, std::initializer_list<int> lengths);

/// The start of something `size` long in a cell [begin, end): in the cell's middle, but no nearer
/// to its ends than the paddings.
[[nodiscard]] int centredStart(int begin, int end, int paddingBefore, int paddingAfter, int size);

} // namespace toolkit
