// Copies of zone files that could not be read whole, made before a save replaces them. Nothing
// reads or lists the copies as zone files. This module's sources only.
#pragma once

#include <string>

#include "core/FileError.h"

namespace zone {

struct KeptPair {
    std::string name; ///< of the copies, without folders and extension; empty when none was made
    core::FileError failure; ///< empty when nothing failed
    bool isFull = false;     ///< all numbers are taken
};

/// Copies what there is of BASE-ZoneInfo.bin and .xml to BASE-ZoneInfo.damaged-N.bin and .xml,
/// where N is the first of 1 to 3 that no file has. With all three taken, nothing is copied; when
/// one of the two cannot be copied, none is left. The originals are only read, and a copy has its
/// name only once it is whole and on the disk.
[[nodiscard]] KeptPair keepDamagedPair(const std::string& basePath);

} // namespace zone
