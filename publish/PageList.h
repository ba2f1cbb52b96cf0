// The list of a published folder's files, by which it is known as ours and its clips are known
// again. Used by PublishFolder.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace publish {

/// Stands for the bytes of a file, for one that changes by chance, not on purpose.
using Mark = std::uint64_t;

struct PageFile {
    std::string name{}; ///< in the folder, with "/"
    Mark source = 0;    ///< of a clip: of all that it was made from; 0: unknown
    Mark contents = 0;  ///< of a clip
};

/// In the order of the list; empty if there is none at `path`. Anybody may have written it: names
/// and marks are claims.
[[nodiscard]] std::vector<PageFile> readPageList(const std::string& path);
[[nodiscard]] std::string pageListText(std::span<const PageFile> list);

/// Of more bytes behind those that `before` stands for.
[[nodiscard]] Mark markOf(std::string_view bytes, Mark before = 0);

/// Of a file's bytes. `onBytes` gets them all, if it is set, and ends it by false. Empty then, and
/// when the file cannot be read. Never 0.
[[nodiscard]] std::optional<Mark> markOfFile(platform::FileSystem& files, const std::string& path,
                                             Mark before,
                                             const std::function<bool(std::string_view)>& onBytes);

} // namespace publish
