#include "import/Names.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "core/Paths.h"
#include "core/Text.h"

namespace imports {
namespace {

constexpr std::size_t kMaxBytes = 100;
constexpr int kMaxNumber = 9999;
constexpr std::string_view kRefused = "<>:\"/\\|?*&"; // "<" and "&" by the scene's file

bool isRefused(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return byte < 0x20 || byte == 0x7F || kRefused.find(letter) != std::string_view::npos;
}

void trim(std::string& name) {
    while (!name.empty() && (name.back() == ' ' || name.back() == '.')) {
        name.pop_back();
    }
    name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
}

/// All letters that differ in case alone are alike.
std::u16string folded(std::string_view name) {
    return core::foldCase(core::displayText(name));
}

bool isFreeIn(const std::vector<platform::FolderEntry>& entries, const std::string& baseName) {
    const std::vector<std::u16string> taken{folded(baseName + ".ogv"), folded(baseName + ".ogg"),
                                            folded(baseName + "-ZoneInfo.xml"),
                                            folded(baseName + "-ZoneInfo.bin")};
    return std::none_of(entries.begin(), entries.end(), [&](const platform::FolderEntry& entry) {
        return std::find(taken.begin(), taken.end(), folded(entry.name)) != taken.end();
    });
}

std::string cut(const std::string& name, std::size_t room) {
    std::string result(core::cutUtf8(name, room));
    trim(result);
    return result;
}

} // namespace

std::string baseNameFor(const std::string& source) {
    std::string name = core::validUtf8(core::fileTitle(source));
    constexpr std::string_view kBad = "\xEF\xBF\xBD";
    for (std::size_t at = name.find(kBad); at != std::string::npos; at = name.find(kBad)) {
        name.replace(at, kBad.size(), "_");
    }
    std::replace_if(name.begin(), name.end(), isRefused, '_');
    trim(name);
    if (name.starts_with('.')) {
        name.front() = '_'; // else it would be hidden
    }
    name = cut(name, kMaxBytes - std::string_view(kExtension).size());
    if (core::isDeviceName(name)) {
        name = '_' + name;
    }
    return name.empty() ? "video" : name;
}

bool isFree(platform::FileSystem& files, const std::string& folder, const std::string& baseName) {
    std::vector<platform::FolderEntry> entries;
    return files.list(folder, entries) && isFreeIn(entries, baseName);
}

std::string freeName(platform::FileSystem& files, const std::string& folder,
                     const std::string& baseName) {
    std::vector<platform::FolderEntry> entries;
    if (!files.list(folder, entries)) {
        return {};
    }
    if (isFreeIn(entries, baseName)) {
        return baseName;
    }
    for (int number = 2; number <= kMaxNumber; ++number) {
        const std::string end = ' ' + std::to_string(number);
        const std::size_t room = kMaxBytes - std::string_view(kExtension).size() - end.size();
        const std::string name = cut(baseName, room) + end;
        if (isFreeIn(entries, name)) {
            return name;
        }
    }
    return {};
}

} // namespace imports
