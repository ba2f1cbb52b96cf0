// Progress and result of importing several videos, as values that windows turn into text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jobs/VideoImport.h"

namespace jobs {

/// The video being copied.
struct CopyStatus {
    std::string name;
    int number = 1; ///< 1 for the first of `count` files
    int count = 0;
    std::uint64_t copiedBytes = 0;
    std::uint64_t totalBytes = 0;
};

struct ImportOutcome {
    int added = 0; ///< successfully imported
    int listedAlready = 0;
    std::vector<std::string> notTheora; ///< copied, but of another kind
    std::vector<std::string> faulty;    ///< copied, but not playable for another reason
    std::string fault;                  ///< of the first that is faulty
    std::vector<std::string> failed;
    std::string failure; ///< of the first that failed

    void note(const std::string& name, const ImportReport& report);
};

} // namespace jobs
