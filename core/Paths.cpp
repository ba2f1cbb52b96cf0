#include "core/Paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "core/Services.h"
#include "core/Text.h"
#include "platform/FileSystem.h"
#include "platform/QuickInfo.h"

namespace core {
namespace {

std::size_t nameStart(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? 0 : separator + 1;
}

char separatorOf(const std::string& path) {
    return path.find('\\') == std::string::npos ? '/' : '\\';
}

/// The start of the UTF-8 sequence after the one at `at`.
std::size_t nextCharacter(std::string_view text, std::size_t at) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) {
        ++at;
    }
    return at;
}

/// "*" matches any run of characters, "?" a single one. Both texts are in lower case.
bool matches(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0; // end of the last star's match so far
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            n = nextCharacter(name, n);
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool listMatches(const std::string& pattern, bool folders, std::vector<std::string>& names) {
    names.clear();
    std::vector<platform::FolderEntry> entries;
    const bool complete = services().fileSystem->list(folderOf(pattern), entries);
    // "*.*" traditionally matches every name, even without a dot.
    const std::string wanted = fileName(pattern) == "*.*" ? "*" : lowerCase(fileName(pattern));
    for (const platform::FolderEntry& entry : entries) {
        if (entry.isFolder == folders && matches(lowerCase(entry.name), wanted)) {
            names.push_back(entry.name);
        }
    }
    return complete;
}

} // namespace

std::string fileTitle(const std::string& path) {
    const std::string name = fileName(path);
    return name.substr(0, name.rfind('.'));
}

std::string fileName(const std::string& path) {
    return path.substr(nameStart(path));
}

std::string folderOf(const std::string& path) {
    return path.substr(0, nameStart(path));
}

std::string withoutExtension(const std::string& path) {
    return folderOf(path) + fileTitle(path);
}

bool isDeviceName(std::string_view name) {
    constexpr std::array<std::string_view, 4> kDevices{"con", "prn", "aux", "nul"};
    const std::string stem = lowerCase(name.substr(0, name.find('.')));
    const bool isPort = stem.size() == 4 && stem.back() >= '0' && stem.back() <= '9' &&
                        (stem.starts_with("com") || stem.starts_with("lpt"));
    return isPort || std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end();
}

std::string withSeparator(const std::string& folder) {
    const bool complete = folder.empty() || folder.back() == '/' || folder.back() == '\\';
    return complete ? folder : folder + separatorOf(folder);
}

std::string currentDirectory() {
    return withSeparator(services().fileSystem->currentFolder());
}

bool listFiles(const std::string& pattern, std::vector<std::string>& names) {
    return listMatches(pattern, false, names);
}

bool listFolders(const std::string& folder, std::vector<std::string>& names) {
    return listMatches(withSeparator(folder) + "*.*", true, names);
}

void createFolders(platform::FileSystem& files, const std::string& path) {
    for (std::size_t end = path.find_first_of("/\\", 1); end != std::string::npos;
         end = path.find_first_of("/\\", end + 1)) {
        const std::string part = path.substr(0, end);
        if (!files.info(part)) {
            int error = 0;
            files.createFolder(part, error);
        }
    }
}

std::string hereOrIn(const std::string& folder, const std::string& name) {
    return folder.empty() || services().fileSystem->info(name) ? name
                                                               : withSeparator(folder) + name;
}

bool isFile(const std::string& path) {
    const auto info = platform::quickInfo(*services().fileSystem, path);
    return info && !info->isFolder;
}

bool isFolder(const std::string& path) {
    const auto info = platform::quickInfo(*services().fileSystem, path);
    return info && info->isFolder;
}

} // namespace core
