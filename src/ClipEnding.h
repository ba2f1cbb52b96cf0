// Gives a clip the length that it was meant to have. A picture that repeats the one before it is a
// Theora packet without bytes. Some writers of Ogg files leave such packets out behind the last one
// with bytes: where a clip stands still at its end, nothing then says how long.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/FileSystem.h"

namespace theora {

/// Repeats the last picture of the clip at `path` (UTF-8) until it has `frameCount` frames. True if
/// it has as many then, or had more. False, and the file is as it was unless writing it failed,
/// when it cannot be read, when more are missing than may follow its last key frame, or once
/// `isStopped`, which is not empty, returns true. Never throws. Any thread.
[[nodiscard]] bool extendClip(const std::string& path, std::int64_t frameCount,
                              platform::FileSystem& files, const std::function<bool()>& isStopped);

} // namespace theora
