#include "core/WholeFile.h"

#include <cstdint>

#include "core/File.h"
#include "core/UnfinishedFile.h"

namespace core {

std::optional<std::string> readWholeFile(const std::string& path, std::size_t maxBytes) {
    File file;
    if (!file.open(path, "rb")) {
        return std::nullopt;
    }
    const std::int64_t size = file.size();
    if (size < 0 || static_cast<std::uint64_t>(size) > maxBytes) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes.data(), bytes.size())) {
        return std::nullopt;
    }
    // A file that reports size 0 but cannot be read is not an empty file.
    char more = 0;
    if (file.read(&more, 1) || file.lastError() != 0) {
        return std::nullopt;
    }
    return bytes;
}

void replaceWholeFile(platform::FileSystem& files, const std::string& path,
                      std::string_view bytes) {
    UnfinishedFile part(files, path + ".part");
    int error = 0;
    const auto stream = part.make(error);
    if (stream && stream->write(bytes.data(), bytes.size()) == bytes.size() && stream->close() &&
        files.replaceFile(part.path(), path, error)) {
        part.keep();
    }
}

} // namespace core
