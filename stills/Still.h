// A small picture of a clip, with the facts that go beside it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <tuple>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"

namespace stills {

struct Still {
    platform::Bitmap picture{}; ///< empty where a window shows the icon of a clip
    platform::Size frame{};     ///< empty for what is no clip
    double seconds = -1;        ///< -1 = unknown
    std::uint64_t bytes = 0;    ///< of the file
    std::int64_t modified = 0;  ///< of the file; with its size, shows when it has changed
    bool exists = false;        ///< there is such a file
};
/// Shared by all who show it; never changes.
using StillPtr = std::shared_ptr<const Still>;

/// What a window asks for.
struct StillRequest {
    std::string path;   ///< absolute, UTF-8
    platform::Size box; ///< the picture fits into it

    friend bool operator==(const StillRequest&, const StillRequest&) = default;
    friend bool operator<(const StillRequest& a, const StillRequest& b) {
        return std::tie(a.path, a.box.width, a.box.height) <
               std::tie(b.path, b.box.width, b.box.height);
    }
};

} // namespace stills
