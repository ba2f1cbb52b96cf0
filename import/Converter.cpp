#include "import/Converter.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "core/Paths.h"
#include "core/Text.h"
#include "platform/Environment.h"
#include "platform/ProgramFolder.h"

namespace imports {
namespace {

bool isProgram(platform::FileSystem& files, const std::string& path) {
    const std::optional<platform::FileInfo> info = files.info(path);
    return info && !info->isFolder;
}

bool isAbsolute(platform::FileSystem& files, const std::string& path) {
    if (path.empty()) {
        return false;
    }
    const bool hasDrive = path.size() > 2 && path[1] == ':' && (path[2] == '/' || path[2] == '\\');
    const bool isRooted = path.front() == '/' || path.starts_with("\\\\");
    return (hasDrive || isRooted) && !files.fullPath(path).empty();
}

/// Comparable, on systems that ignore case as well: one kind of separator, one at the end.
std::string normalised(platform::FileSystem& files, const std::string& folder) {
    std::string path = files.fullPath(folder);
    std::replace(path.begin(), path.end(), '\\', '/');
    return core::withSeparator(core::lowerCase(path));
}

bool isForbidden(platform::FileSystem& files, const std::string& folder,
                 const std::vector<std::string>& forbidden) {
    const std::string path = normalised(files, folder);
    return std::any_of(forbidden.begin(), forbidden.end(), [&](const std::string& other) {
        return !other.empty() && path.starts_with(normalised(files, other));
    });
}

/// Both programs in `folder`; empty if one is missing.
Converter inFolder(platform::FileSystem& files, const std::string& folder) {
    const std::string start = core::withSeparator(folder);
    Converter found{start + "ffmpeg" + platform::programSuffix(),
                    start + "ffprobe" + platform::programSuffix()};
    return isProgram(files, found.ffmpeg) && isProgram(files, found.ffprobe) ? found : Converter();
}

/// The author's choice may be named otherwise, "ffmpeg-6.exe"; its probe is the one beside it.
Converter chosen(platform::FileSystem& files, const std::string& path) {
    const std::optional<platform::FileInfo> info = files.info(path);
    if (!info || info->isFolder) {
        return info ? inFolder(files, path) : Converter();
    }
    std::string other = core::fileName(path);
    const std::size_t at = other.find("ffmpeg");
    if (at == std::string::npos) {
        return inFolder(files, core::folderOf(path));
    }
    other.replace(at, 6, "ffprobe");
    Converter found{path, core::folderOf(path) + other};
    return isProgram(files, found.ffprobe) ? found : inFolder(files, core::folderOf(path));
}

} // namespace

ConverterPlaces usualPlaces(platform::FileSystem& files, const std::string& configured) {
    ConverterPlaces places{configured, platform::programFolder(), platform::searchPath(), {}};
    const std::string current = files.currentFolder();
    if (normalised(files, current) != normalised(files, places.programFolder)) {
        places.forbidden.push_back(current);
    }
    return places;
}

Converter findConverter(platform::FileSystem& files, const ConverterPlaces& places) {
    const auto isAllowed = [&](const std::string& place) {
        return isAbsolute(files, place) && !isForbidden(files, place, places.forbidden);
    };
    if (isAllowed(places.configured)) {
        const Converter found = chosen(files, places.configured);
        if (found.isFound()) {
            return found;
        }
    }
    std::vector<std::string> folders{places.programFolder};
    folders.insert(folders.end(), places.path.begin(), places.path.end());
    for (const std::string& folder : folders) {
        const Converter found = isAllowed(folder) ? inFolder(files, folder) : Converter();
        if (found.isFound()) {
            return found;
        }
    }
    return {};
}

} // namespace imports
