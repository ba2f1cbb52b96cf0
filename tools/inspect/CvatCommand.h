// zones BASE --export cvat FILE, zones BASE --import cvat FILE
#pragma once

#include <optional>
#include <string>

#include "platform/Geometry.h"

namespace inspect {

struct CvatRequest {
    std::string base;
    std::string file;
    bool isImport = false;
    // What is not given is read from the clip at the base path.
    std::optional<platform::Size> size;
    std::optional<int> frameCount;
};

/// Returns the exit code. What it refuses or cannot keep is on stderr, and after a refusal nothing
/// is written.
[[nodiscard]] int runCvat(const CvatRequest& request);

} // namespace inspect
