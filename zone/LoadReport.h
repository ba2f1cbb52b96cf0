// What reading a pair of zone files came to: how much of it was read, and what is wrong with the
// rest. For the window that says so, and for the save that keeps such a pair. A value.
#pragma once

#include <cstdint>

namespace zone {

enum class LoadProblem {
    none,             ///< everything was read, or there was nothing to read
    binaryMissing,    ///< the list names zones and there is no binary file
    binaryUnreadable, ///< it cannot be opened or read
    binaryDamaged,    ///< it is cut, ends too soon for the list, or a record does not fit
    binaryForeign,    ///< all zones were read, but it holds chunks that are no zones
    listDamaged       ///< nothing was read because of the list
};

struct LoadReport {
    LoadProblem problem = LoadProblem::none;
    int zones = 0;      ///< that the list names or the binary file begins, whichever is more
    int wholeZones = 0; ///< of these, read to the end of a record as a save writes it
    int partZones = 0;  ///< of the others, those with frames
    std::uint32_t partFrames = 0;   ///< read of the first of these
    std::uint32_t storedFrames = 0; ///< according to its record; 0 when that cannot be true

    bool operator==(const LoadReport&) const = default;
};

} // namespace zone
