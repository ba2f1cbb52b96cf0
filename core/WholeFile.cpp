#include "core/WholeFile.h"

#include <cstdint>

#include "core/File.h"

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
    const std::string part = path + ".part";
    int error = 0;
    files.removeFile(part, error); // a link there is not followed
    const auto isWritten = [&] {
        const auto stream = files.open(part, platform::OpenMode::write, error);
        return stream && stream->write(bytes.data(), bytes.size()) == bytes.size() &&
               stream->close();
    };
    if (!isWritten() || !files.replaceFile(part, path, error)) {
        files.removeFile(part, error);
    }
}

} // namespace core
